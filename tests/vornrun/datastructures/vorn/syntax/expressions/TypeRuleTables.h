#pragma once
/// \file
/// The type rules written out as matrices: left operand down, right operand across, both in tag order. The letter is
/// the result's type, a dash an illegal pair.

#include <array>
#include <string_view>
#include <tuple>

#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {

/// One letter per type, at the position of its tag: bool, real, int, continuous, clock (k), enum, interval (v), mode.
inline constexpr std::string_view TYPE_LETTERS = "brickevm";

using TypeMatrix = std::array<std::string_view, 8>;

inline constexpr TypeMatrix LOGIC_RESULTS = {"b-------", "--------", "--------", "--------",
                                             "--------", "--------", "--------", "--------"};
inline constexpr TypeMatrix ARITHMETIC_RESULTS = {"--------", "-rrck-r-", "-rick-i-", "-cccc-c-",
                                                  "-kkck-k-", "--------", "-rick-v-", "--------"};
inline constexpr TypeMatrix MODULO_RESULTS = {"--------", "--------", "--i---i-", "--------",
                                              "--------", "--------", "--i---v-", "--------"};
inline constexpr TypeMatrix ORDER_RESULTS = {"--------", "-bbbb-b-", "-bbbb-b-", "-bbbb-b-",
                                             "-bbbb-b-", "--------", "-bbbb-b-", "--------"};
inline constexpr TypeMatrix EQUALITY_RESULTS = {"b-------", "-bbbb-b-", "-bbbb-b-", "-bbbb-b-",
                                                "-bbbb-b-", "-----b--", "-bbbb-b-", "-------b"};

inline constexpr std::string_view NOT_RESULTS = "b-------";
inline constexpr std::string_view INVERT_RESULTS = "-rick-v-";

using AllTypes =
    std::tuple<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornEnum, VornInterval, VornModeVal>;

template <class Op>
struct OperatorRule {
    using Operator = Op;
    const TypeMatrix& results;
    int legalPairs;
};

/// Every binary operator with its matrix and the number of its legal pairs.
inline constexpr auto BINARY_RULES = std::tuple{OperatorRule<VornAnd>{LOGIC_RESULTS, 1},
                                                OperatorRule<VornOr>{LOGIC_RESULTS, 1},
                                                OperatorRule<VornImp>{LOGIC_RESULTS, 1},
                                                OperatorRule<VornIff>{LOGIC_RESULTS, 1},
                                                OperatorRule<VornPlus>{ARITHMETIC_RESULTS, 25},
                                                OperatorRule<VornMinus>{ARITHMETIC_RESULTS, 25},
                                                OperatorRule<VornMultiply>{ARITHMETIC_RESULTS, 25},
                                                OperatorRule<VornDivide>{ARITHMETIC_RESULTS, 25},
                                                OperatorRule<VornMod>{MODULO_RESULTS, 4},
                                                OperatorRule<VornEq>{EQUALITY_RESULTS, 28},
                                                OperatorRule<VornNEq>{EQUALITY_RESULTS, 28},
                                                OperatorRule<VornLt>{ORDER_RESULTS, 25},
                                                OperatorRule<VornLEq>{ORDER_RESULTS, 25},
                                                OperatorRule<VornGt>{ORDER_RESULTS, 25},
                                                OperatorRule<VornGEq>{ORDER_RESULTS, 25}};

}  // namespace vornrun::test
