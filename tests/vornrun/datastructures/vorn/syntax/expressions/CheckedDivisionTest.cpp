#include "vornrun/datastructures/vorn/syntax/expressions/CheckedDivision.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

constexpr long LOWEST = std::numeric_limits<long>::min();

/// `left Op right`, checked.
template <class Op, class Left = VornInt, class Right = VornInt>
Tree checked(long left, long right) {
    using Result = typename BinaryResultType<Op, Left, Right>::type;
    const TypedBinaryOperator<Op, Result, Left, Right> plain(nullptr, nullptr);
    return Tree(checkedDivision(&plain, {constant<Left>(left), constant<Right>(right)}));
}

TEST(CheckedDivision, HasTheResultOfTheUncheckedOne) {
    EXPECT_EQ(valueOf<VornInt>(checked<VornDivide>(-7, 2)), -3);
    EXPECT_EQ(valueOf<VornInt>(checked<VornMod>(-7, 2)), -1);
    EXPECT_EQ(valueOf<VornInt>(checked<VornDivide>(LOWEST, 1)), LOWEST);
    EXPECT_EQ(valueOf<VornInt>(checked<VornDivide>(LOWEST + 1, -1)), -(LOWEST + 1));
    EXPECT_EQ(valueOf<VornInt>(checked<VornMod>(5, -1)), 0);
}

TEST(CheckedDivision, ThrowsForAZeroDivisor) {
    EXPECT_THAT([] { return valueOf<VornInt>(checked<VornDivide>(7, 0)); },
                ThrowsMessage<arithmetic_fault>("No result of '7 / 0': division by zero"));
    EXPECT_THAT([] { return valueOf<VornInt>(checked<VornMod>(7, 0)); },
                ThrowsMessage<arithmetic_fault>("No result of '7 mod 0': division by zero"));
}

TEST(CheckedDivision, ThrowsForTheLowestIntegerByMinusOne) {
    const std::string lowest = std::to_string(LOWEST);
    EXPECT_THAT([] { return valueOf<VornInt>(checked<VornDivide>(LOWEST, -1)); },
                ThrowsMessage<arithmetic_fault>("No result of '" + lowest + " / -1': overflow"));
    EXPECT_THAT([] { return valueOf<VornInt>(checked<VornMod>(LOWEST, -1)); },
                ThrowsMessage<arithmetic_fault>("No result of '" + lowest + " mod -1': overflow"));
}

TEST(CheckedDivision, KeepsTheTypeOfEachPairOfIntegers) {
    EXPECT_EQ((checked<VornDivide, VornInt, VornInt>(4, 2)->type()), VornDataTypeTag::VornInt);
    EXPECT_EQ((checked<VornDivide, VornInterval, VornInt>(4, 2)->type()), VornDataTypeTag::VornInt);
    EXPECT_EQ((checked<VornMod, VornInt, VornInterval>(4, 2)->type()), VornDataTypeTag::VornInt);
    EXPECT_EQ((checked<VornMod, VornInterval, VornInterval>(4, 2)->type()), VornDataTypeTag::VornInterval);
}

TEST(CheckedDivision, EvaluatesLeftThenRight) {
    std::vector<std::string> events;
    const TypedBinaryOperator<VornDivide, VornInt, VornInt, VornInt> plain(nullptr, nullptr);
    Tree tree(checkedDivision(&plain, {new Probe<VornInt>("left", 1, events), new Probe<VornInt>("right", 0, events)}));
    EXPECT_THROW(static_cast<void>(valueOf<VornInt>(tree)), arithmetic_fault);
    EXPECT_THAT(events, ElementsAre("left evaluated", "right evaluated"));
    tree.reset();
    EXPECT_THAT(events, ElementsAre("left evaluated", "right evaluated", "left deleted", "right deleted"));
}

TEST(CheckedDivision, ItsCopiesAreCheckedToo) {
    const Tree tree = checked<VornDivide>(7, 0);
    const Tree copy(tree->clone());
    const Tree rebuilt(tree->clone({constant<VornInt>(1), constant<VornInt>(0)}));
    EXPECT_THROW(static_cast<void>(valueOf<VornInt>(copy)), arithmetic_fault);
    EXPECT_THROW(static_cast<void>(valueOf<VornInt>(rebuilt)), arithmetic_fault);
    EXPECT_EQ(printed(rebuilt), "1 / 0");
}

TEST(CheckedDivision, AMissingOperandFailsAsInTheUncheckedOne) {
    const TypedBinaryOperator<VornDivide, VornInt, VornInt, VornInt> plain(nullptr, nullptr);
    const Tree tree(checkedDivision(&plain, {constant<VornInt>(1), nullptr}));
    EXPECT_THROW(static_cast<void>(valueOf<VornInt>(tree)), missing_operand);
}

TEST(CheckedDivision, IsNothingForOtherNodes) {
    const TypedBinaryOperator<VornDivide, VornReal, VornReal, VornInt> reals(nullptr, nullptr);
    const TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt> sum(nullptr, nullptr);
    EXPECT_EQ(checkedDivision(&reals, {}), nullptr);
    EXPECT_EQ(checkedDivision(&sum, {}), nullptr);
}

}  // namespace
}  // namespace vornrun::test
