#pragma once
/// \file
/// What a thing prints, as a string.

#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace vornrun::test {

/// The text of anything with an operation print() or printVorn(), or with an operator<<.
template <class Thing>
std::string printed(const Thing& thing) {
    std::ostringstream stream;
    if constexpr (requires { thing.print(stream); })
        thing.print(stream);
    else if constexpr (requires { thing.printVorn(stream); })
        thing.printVorn(stream);
    else
        stream << thing;
    return stream.str();
}
/// The same for a thing that is held by pointer; "(null)" for none.
template <class Thing>
std::string printed(const std::unique_ptr<Thing>& thing) {
    return thing == nullptr ? "(null)" : printed(*thing);
}

}  // namespace vornrun::test
