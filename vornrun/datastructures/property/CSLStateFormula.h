#pragma once
/// \file
/// Formulas about one state.

#include "vornrun/datastructures/property/CSLFormula.h"

namespace vornrun {

class CSLStateFormula : public CSLFormula {
  public:
    CSLStateFormula* clone() const override = 0;
};

}  // namespace vornrun
