#pragma once
/// \file
/// Short access to the parts of a parsed implementation, for the tests of its parser.

#include <concepts>
#include <sstream>
#include <string>

#include "tests/support/ParseModel.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun::test {

/// An implementation of the package "main".
inline const VornComponentImplementation& implementation(const VornSpecification& specification,
                                                         const std::string& name = "T.i") {
    return *specification.packages().at("main")->findImplementation(name);
}

/// What a part prints.
template <class Printable>
std::string text(const Printable& printable) {
    std::ostringstream stream;
    if constexpr (std::derived_from<Printable, Vorn>)
        printable.printVorn(stream);
    else
        printable.print(stream);
    return stream.str();
}

// Variables of the models. The operands of `illTyped` are valid, but the operation does not exist for their types.
inline const Var x = var("x", Type::Clock);
inline const Var y = var("y", Type::Continuous);
inline const Var b = var("b", Type::Bool);
inline const Var n = var("n", Type::Int);
inline const Expr illTyped = b + 1;

}  // namespace vornrun::test
