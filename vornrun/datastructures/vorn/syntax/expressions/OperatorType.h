#pragma once
/// \file
/// The numbers by which a model file names operators.

namespace vornrun::parser {

/// Operators as the model file encodes them. 11, 13 and 14 name no operator. Only Lt to NEq compare, and only they
/// make sense in a LinExp.
enum class OperatorType : int {
    Lt = 0,
    LEq = 1,
    Gt = 2,
    GEq = 3,
    Eq = 4,
    NEq = 5,
    Plus = 6,
    Minus = 7,
    Multiply = 8,
    Divide = 9,
    And = 10,
    Or = 12,
    Not = 15,
    Invert = 16,
    Iff = 17,
    Imp = 18,
    Mod = 19
};

}  // namespace vornrun::parser
