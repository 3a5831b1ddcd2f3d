#pragma once
/// \file
/// A place in an input file.

#include <string>

namespace vornrun {

struct SourcePlace {
    std::string file;     ///< as it was given to the parser
    unsigned int line;    ///< from 1
    unsigned int column;  ///< from 1, in UTF-16 units
};

}  // namespace vornrun
