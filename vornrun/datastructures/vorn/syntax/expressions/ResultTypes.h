#pragma once
/// \file
/// The type rules of the language, as traits: which operand types an operator takes, and what type results.

#include <type_traits>

#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun {

template <class T, class... Candidates>
inline constexpr bool isOneOf = (std::is_same_v<T, Candidates> || ...);

template <class Op>
inline constexpr bool isLogicOperator = isOneOf<Op, VornAnd, VornOr, VornImp, VornIff>;
template <class Op>
inline constexpr bool isArithmeticOperator = isOneOf<Op, VornPlus, VornMinus, VornMultiply, VornDivide>;
template <class Op>
inline constexpr bool isOrderOperator = isOneOf<Op, VornLt, VornLEq, VornGt, VornGEq>;
template <class Op>
inline constexpr bool isEqualityOperator = isOneOf<Op, VornEq, VornNEq>;
template <class Op>
inline constexpr bool isComparisonOperator = isOrderOperator<Op> || isEqualityOperator<Op>;

/// The numeric types from low to high; arithmetic results in the higher type of its two operands.
template <NumericTag T>
inline constexpr int numericRank = -1;
template <>
inline constexpr int numericRank<VornInterval> = 0;
template <>
inline constexpr int numericRank<VornInt> = 1;
template <>
inline constexpr int numericRank<VornReal> = 2;
template <>
inline constexpr int numericRank<VornClock> = 3;
template <>
inline constexpr int numericRank<VornContinuous> = 4;

template <NumericTag Left, NumericTag Right>
using HigherType = std::conditional_t<(numericRank<Left> < numericRank<Right>), Right, Left>;

/// `valid` says whether the operator takes these operand types; if so, `type` is the tag class of the result.
template <class Op, class Left, class Right, class = void>
struct BinaryResultType {
    static constexpr bool valid = false;
};

template <class Op>
requires isLogicOperator<Op>
struct BinaryResultType<Op, VornBool, VornBool, void> {
    static constexpr bool valid = true;
    using type = VornBool;
};

template <class Op, NumericTag Left, NumericTag Right>
requires isArithmeticOperator<Op>
struct BinaryResultType<Op, Left, Right, void> {
    static constexpr bool valid = true;
    using type = HigherType<Left, Right>;
};

template <IntegerTag Left, IntegerTag Right>
struct BinaryResultType<VornMod, Left, Right, void> {
    static constexpr bool valid = true;
    using type = HigherType<Left, Right>;
};

template <class Op, NumericTag Left, NumericTag Right>
requires isComparisonOperator<Op>
struct BinaryResultType<Op, Left, Right, void> {
    static constexpr bool valid = true;
    using type = VornBool;
};

template <class Op, class T>
requires(isEqualityOperator<Op> && !NumericTag<T>) struct BinaryResultType<Op, T, T, void> {
    static constexpr bool valid = true;
    using type = VornBool;
};

/// The same for the operators on one operand.
template <class Op, class Sub, class = void>
struct UnaryResultType {
    static constexpr bool valid = false;
};

template <>
struct UnaryResultType<VornNot, VornBool, void> {
    static constexpr bool valid = true;
    using type = VornBool;
};

template <NumericTag Sub>
struct UnaryResultType<VornInvert, Sub, void> {
    static constexpr bool valid = true;
    using type = Sub;
};

}  // namespace vornrun
