#include "vornrun/datastructures/vorn/syntax/expressions/ResultTypes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/TypeRuleTables.h"

namespace vornrun::test {
namespace {

constexpr std::size_t TYPE_COUNT = std::tuple_size_v<AllTypes>;

/// The letter of the type that a trait gives; a dash where it gives none.
template <class ResultType>
constexpr char letterOf() {
    if constexpr (ResultType::valid) {
        return TYPE_LETTERS[static_cast<std::size_t>(ResultType::type::tag)];
    } else {
        return '-';
    }
}

/// Calls `f(letter by the trait, left index, right index)` for all 64 pairs.
template <class Op, class F>
constexpr void forEachPair(F f) {
    const auto row = [&]<class Left, std::size_t... Right>(std::size_t left, std::index_sequence<Right...>) {
        (f(letterOf<BinaryResultType<Op, Left, std::tuple_element_t<Right, AllTypes>>>(), left, Right), ...);
    };
    const auto all = [&]<std::size_t... Left>(std::index_sequence<Left...>) {
        (row.template operator()<std::tuple_element_t<Left, AllTypes>>(Left, std::make_index_sequence<TYPE_COUNT>()),
         ...);
    };
    all(std::make_index_sequence<TYPE_COUNT>());
}

template <class Op>
constexpr int legalPairs() {
    int count = 0;
    forEachPair<Op>([&](char letter, std::size_t, std::size_t) { count += letter == '-' ? 0 : 1; });
    return count;
}

template <class Op>
constexpr bool agrees(const OperatorRule<Op>& rule) {
    bool same = true;
    forEachPair<Op>(
        [&](char letter, std::size_t left, std::size_t right) { same = same && letter == rule.results[left][right]; });
    return same && legalPairs<Op>() == rule.legalPairs;
}

template <class Op>
constexpr bool unaryAgrees(std::string_view results) {
    return [&]<std::size_t... Sub>(std::index_sequence<Sub...>) {
        return ((letterOf<UnaryResultType<Op, std::tuple_element_t<Sub, AllTypes>>>() == results[Sub]) && ...);
    }
    (std::make_index_sequence<TYPE_COUNT>());
}

static_assert(std::apply([](const auto&... rule) { return (agrees(rule) && ...); }, BINARY_RULES),
              "the traits and the written type rules differ");
static_assert(std::tuple_size_v<decltype(BINARY_RULES)> == 15);
static_assert(std::apply([]<class... Op>(const OperatorRule<Op>&...) { return (legalPairs<Op>() + ...); },
                         BINARY_RULES) == 264);
static_assert(unaryAgrees<VornNot>(NOT_RESULTS) && unaryAgrees<VornInvert>(INVERT_RESULTS));

template <class Op, class Left, class Right>
using Result = typename BinaryResultType<Op, Left, Right>::type;

TEST(ResultTypes, AllTriplesAgreeWithTheWrittenTableAndCountTo264) {
    int legal = 0;
    std::apply(
        [&]<class... Op>(const OperatorRule<Op>&... rule) {
            const auto check = [&legal]<class One>(const OperatorRule<One>& one) {
                EXPECT_TRUE(agrees(one)) << One::text;
                legal += legalPairs<One>();
            };
            (check(rule), ...);
        },
        BINARY_RULES);
    EXPECT_EQ(legal, 264);
}

TEST(ResultTypes, IntervalGivesWayToEveryOtherNumericType) {
    EXPECT_TRUE((std::is_same_v<Result<VornPlus, VornInt, VornInterval>, VornInt>));
    EXPECT_TRUE((std::is_same_v<Result<VornPlus, VornInterval, VornInterval>, VornInterval>));
    EXPECT_TRUE((std::is_same_v<Result<VornPlus, VornInterval, VornReal>, VornReal>));
}

TEST(ResultTypes, ContinuousIsAboveClockAndClockAboveReal) {
    EXPECT_TRUE((std::is_same_v<Result<VornMinus, VornClock, VornClock>, VornClock>));
    EXPECT_TRUE((std::is_same_v<Result<VornPlus, VornClock, VornContinuous>, VornContinuous>));
    EXPECT_TRUE((std::is_same_v<Result<VornMultiply, VornReal, VornClock>, VornClock>));
}

TEST(ResultTypes, DivisionOfIntegersStaysInteger) {
    EXPECT_TRUE((std::is_same_v<Result<VornDivide, VornInt, VornInt>, VornInt>));
    EXPECT_TRUE((std::is_same_v<Result<VornDivide, VornInt, VornReal>, VornReal>));
}

TEST(ResultTypes, ModuloTakesIntegersOnly) {
    EXPECT_TRUE((std::is_same_v<Result<VornMod, VornInterval, VornInt>, VornInt>));
    EXPECT_FALSE((BinaryResultType<VornMod, VornReal, VornInt>::valid));
}

TEST(ResultTypes, EnumsModesAndBoolsCompareForEqualityWithTheirOwnTypeOnly) {
    EXPECT_TRUE((BinaryResultType<VornEq, VornEnum, VornEnum>::valid));
    EXPECT_FALSE((BinaryResultType<VornLt, VornEnum, VornEnum>::valid));
    EXPECT_TRUE((BinaryResultType<VornNEq, VornModeVal, VornModeVal>::valid));
    EXPECT_FALSE((BinaryResultType<VornEq, VornModeVal, VornInt>::valid));
    EXPECT_TRUE((BinaryResultType<VornEq, VornBool, VornBool>::valid));
    EXPECT_FALSE((BinaryResultType<VornAnd, VornBool, VornInt>::valid));
}

}  // namespace
}  // namespace vornrun::test
