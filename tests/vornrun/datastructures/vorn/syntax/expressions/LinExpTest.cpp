#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "tests/support/AllocationCounter.h"
#include "tests/support/CaseName.h"
#include "tests/support/Printed.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/LinearFixtures.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {
namespace {

using parser::OperatorType;
using test::comparison;
using test::number;
using test::printed;

constexpr Time INF = TimeInterval::INF_TIME;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

/// The delays of one comparison on its own.
TimeInterval delaysOf(const LinExp& expression) {
    TimeInterval running = TimeInterval::InfiniteInterval;
    expression.restrict(running);
    return running;
}

void expectRanges(const TimeInterval& actual, const std::vector<TimeRange>& expected) {
    ASSERT_EQ(actual.ranges.size(), expected.size()) << actual;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_DOUBLE_EQ(actual.ranges[i].lower, expected[i].lower);
        EXPECT_DOUBLE_EQ(actual.ranges[i].upper, expected[i].upper);
    }
}

struct DelayCase {
    const char* name;
    double x, rate;
    OperatorType op;
    double bound;
    std::vector<TimeRange> holds;
};
void PrintTo(const DelayCase& delayCase, std::ostream* stream) { *stream << delayCase.name; }

class Delays : public testing::TestWithParam<DelayCase> {};

TEST_P(Delays, AreThoseAtWhichTheComparisonHolds) {
    const auto& [name, x, rate, op, bound, holds] = GetParam();
    const std::unique_ptr<LinExp> expression(comparison(x, rate, op, bound));
    TimeInterval running = TimeInterval::InfiniteInterval;
    EXPECT_TRUE(expression->restrict(running));
    expectRanges(running, holds);
}

INSTANTIATE_TEST_SUITE_P(
    LinExp, Delays,
    testing::Values(
        DelayCase{"StrictUpperBoundStopsShortOfIt", 3, 1, OperatorType::Lt, 5, {{0, 1.999999}}},
        DelayCase{"UpperBoundIsReached", 3, 1, OperatorType::LEq, 5, {{0, 2}}},
        DelayCase{"StrictLowerBoundStartsBehindIt", 3, 1, OperatorType::Gt, 5, {{2.000001, INF}}},
        DelayCase{"LowerBoundIsIncluded", 3, 1, OperatorType::GEq, 5, {{2, INF}}},
        DelayCase{"MovingAwayFromALowerBoundNeverHolds", 3, -1, OperatorType::Gt, 5, {}},
        DelayCase{"MovingAwayFromAnUpperBoundAlwaysHolds", 3, -1, OperatorType::Lt, 5, {{0, INF}}},
        DelayCase{"FallingTowardsALowerBoundHoldsUntilThere", 7, -1, OperatorType::GEq, 5, {{0, 2}}},
        DelayCase{"FallingTowardsAStrictLowerBoundStopsShort", 7, -1, OperatorType::Gt, 5, {{0, 1.999999}}},
        DelayCase{"FallingTowardsAnUpperBoundHoldsFromThere", 7, -1, OperatorType::LEq, 5, {{2, INF}}},
        DelayCase{"FallingTowardsAStrictUpperBoundStartsBehind", 7, -1, OperatorType::Lt, 5, {{2.000001, INF}}},
        DelayCase{"AnUpperBoundAlreadyPassedNeverHolds", 7, 1, OperatorType::LEq, 5, {}},
        DelayCase{"ALowerBoundAlreadyPassedAlwaysHolds", 7, 1, OperatorType::GEq, 5, {{0, INF}}},
        DelayCase{"EqualityIsASinglePoint", 3, 1, OperatorType::Eq, 5, {{2, 2}}},
        DelayCase{"EqualityWhileFallingIsTheSamePoint", 7, -1, OperatorType::Eq, 5, {{2, 2}}},
        DelayCase{"EqualityInThePastNeverHolds", 7, 1, OperatorType::Eq, 5, {}},
        DelayCase{"EqualityNowIsThePresentMoment", 5, 1, OperatorType::Eq, 5, {{0, 0}}},
        DelayCase{"InequalityLeavesOutItsPoint", 3, 1, OperatorType::NEq, 5, {{0, 1.999999}, {2.000001, INF}}},
        DelayCase{
            "InequalityWhileFallingLeavesOutItsPoint", 7, -1, OperatorType::NEq, 5, {{0, 1.999999}, {2.000001, INF}}},
        DelayCase{"InequalityNowStartsJustBehindNow", 5, 1, OperatorType::NEq, 5, {{1e-6, INF}}},
        DelayCase{"InequalityOfThePastAlwaysHolds", 7, 1, OperatorType::NEq, 5, {{0, INF}}},
        DelayCase{"AStrictUpperBoundNowNeverHolds", 5, 1, OperatorType::Lt, 5, {}},
        DelayCase{"AnUpperBoundNowHoldsOnlyNow", 5, 1, OperatorType::LEq, 5, {{0, 0}}},
        DelayCase{"TheRateScalesTheDelay", 3, 4, OperatorType::LEq, 5, {{0, 0.5}}},
        DelayCase{"ARateJustAboveTheToleranceDependsOnTime", 3, 2e-6, OperatorType::LEq, 5, {{0, 1e6}}},
        DelayCase{"ATimeDependentComparisonByAnotherOperatorIsSkipped", 3, 1, OperatorType::Plus, 5, {{0, INF}}},
        DelayCase{"AnotherOperatorIsSkippedWhileFallingToo", 3, -1, OperatorType::Plus, 5, {{0, INF}}}),
    test::CaseName());

// A variable at rate 0: 0 compares with rest = bound - x, the tolerance favouring the comparison.
struct ConstantCase {
    const char* name;
    OperatorType op;
    double rest;
    bool holds;
};
void PrintTo(const ConstantCase& constantCase, std::ostream* stream) { *stream << constantCase.name; }

class ConstantComparison : public testing::TestWithParam<ConstantCase> {};

TEST_P(ConstantComparison, KeepsOrEmptiesTheRunningSet) {
    const std::unique_ptr<LinExp> expression(comparison(0.0, 0.0, GetParam().op, GetParam().rest));
    TimeInterval running(1.0, 4.0);
    EXPECT_EQ(expression->restrict(running), GetParam().holds);
    expectRanges(running, GetParam().holds ? std::vector<TimeRange>{{1.0, 4.0}} : std::vector<TimeRange>{});
}

TEST_P(ConstantComparison, IsTheSameWithoutAnyTerm) {
    const LinExp expression(number(GetParam().rest), GetParam().op);
    TimeInterval running(1.0, 4.0);
    EXPECT_EQ(expression.restrict(running), GetParam().holds);
}

INSTANTIATE_TEST_SUITE_P(
    LinExp, ConstantComparison,
    testing::Values(ConstantCase{"LessThanHolds", OperatorType::Lt, 1, true},
                    ConstantCase{"LessThanToleratesALittleBelow", OperatorType::Lt, -5e-7, true},
                    ConstantCase{"LessThanEndsAtTheTolerance", OperatorType::Lt, -1e-6, false},
                    ConstantCase{"LessThanFails", OperatorType::Lt, -1, false},
                    ConstantCase{"LessOrEqualHolds", OperatorType::LEq, 0, true},
                    ConstantCase{"LessOrEqualIncludesTheTolerance", OperatorType::LEq, -1e-6, true},
                    ConstantCase{"LessOrEqualFails", OperatorType::LEq, -2e-6, false},
                    ConstantCase{"GreaterThanHolds", OperatorType::Gt, -1, true},
                    ConstantCase{"GreaterThanToleratesALittleAbove", OperatorType::Gt, 5e-7, true},
                    ConstantCase{"GreaterThanEndsAtTheTolerance", OperatorType::Gt, 1e-6, false},
                    ConstantCase{"GreaterThanFails", OperatorType::Gt, 1, false},
                    ConstantCase{"GreaterOrEqualHolds", OperatorType::GEq, 0, true},
                    ConstantCase{"GreaterOrEqualIncludesTheTolerance", OperatorType::GEq, 1e-6, true},
                    ConstantCase{"GreaterOrEqualFails", OperatorType::GEq, 2e-6, false},
                    ConstantCase{"EqualHolds", OperatorType::Eq, 0, true},
                    ConstantCase{"EqualIncludesTheTolerance", OperatorType::Eq, 1e-6, true},
                    ConstantCase{"EqualIncludesTheNegativeTolerance", OperatorType::Eq, -1e-6, true},
                    ConstantCase{"EqualFails", OperatorType::Eq, -2e-6, false},
                    ConstantCase{"UnequalHolds", OperatorType::NEq, -2e-6, true},
                    ConstantCase{"UnequalFailsAtTheTolerance", OperatorType::NEq, 1e-6, false},
                    ConstantCase{"UnequalFails", OperatorType::NEq, 0, false},
                    ConstantCase{"AnotherOperatorNeverHolds", OperatorType::Multiply, 0, false},
                    ConstantCase{"AnOperatorBeyondTheTableNeverHolds", static_cast<OperatorType>(99), 0, false},
                    ConstantCase{"LessThanFailsOnNotANumber", OperatorType::Lt, NOT_A_NUMBER, false},
                    ConstantCase{"EqualFailsOnNotANumber", OperatorType::Eq, NOT_A_NUMBER, false},
                    ConstantCase{"UnequalFailsOnNotANumber", OperatorType::NEq, NOT_A_NUMBER, false}),
    test::CaseName());

TEST(LinExp, ARateBelowTheToleranceCountsAsConstant) {
    const std::unique_ptr<LinExp> holding(comparison(3, 5e-7, OperatorType::LEq, 5));
    EXPECT_EQ(delaysOf(*holding).ranges, TimeInterval::InfiniteInterval.ranges);
    const std::unique_ptr<LinExp> failing(comparison(3, -5e-7, OperatorType::GEq, 5));
    EXPECT_TRUE(delaysOf(*failing).empty());
}

TEST(LinExp, ARateOfExactlyTheToleranceCountsAsConstant) {
    const std::unique_ptr<LinExp> expression(comparison(3, 1e-6, OperatorType::LEq, 5));
    EXPECT_EQ(delaysOf(*expression).ranges, TimeInterval::InfiniteInterval.ranges);
}

TEST(LinExp, RatesThatCancelMakeTheComparisonConstant) {
    LinExp expression(number(1.0), OperatorType::LEq);
    expression.addTerm(number(5.0), number(2.0), number(1.0));
    expression.addTerm(number(4.0), number(1.0), number(-2.0));
    EXPECT_EQ(delaysOf(expression).ranges, TimeInterval::InfiniteInterval.ranges);  // 5 - 8 <= 1, for ever
}

TEST(LinExp, SumsItsTermsWithTheirCoefficients) {
    // 2 x - 3 y <= 4 with x = 1 at rate 2 and y = 3 at rate 1: -7 + t <= 4 for t <= 11.
    LinExp expression(number(4.0), OperatorType::LEq);
    expression.addTerm(number(1.0), number(2.0), number(2.0));
    expression.addTerm(number(3.0), number(1.0), number(-3.0));
    expectRanges(delaysOf(expression), {{0, 11}});
}

TEST(LinExp, ReadsEveryNumericTypeInItsTrees) {
    LinExp expression(new TypedVornValue<VornInt>(5), OperatorType::LEq);
    expression.addTerm(new TypedVornValue<VornClock>(3.0), new TypedVornValue<VornContinuous>(0.5),
                       new TypedVornValue<VornInterval>(1));
    expectRanges(delaysOf(expression), {{0, 4}});
}

TEST(LinExp, NarrowsTheRunningSet) {
    const std::unique_ptr<LinExp> expression(comparison(0, 1, OperatorType::NEq, 5));
    TimeInterval running(4.0, 7.0);
    expression->restrict(running);
    expectRanges(running, {{4, 5 - 1e-6}, {5 + 1e-6, 7}});
}

TEST(LinExp, InfiniteBoundsDoNotLeaveTheFiniteDelays) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::unique_ptr<LinExp> below(comparison(0, 1, OperatorType::LEq, infinity));
    EXPECT_EQ(delaysOf(*below).ranges, TimeInterval::InfiniteInterval.ranges);
    const std::unique_ptr<LinExp> above(comparison(0, 1, OperatorType::GEq, infinity));
    EXPECT_TRUE(delaysOf(*above).empty());
    const std::unique_ptr<LinExp> equal(comparison(0, 1, OperatorType::Eq, infinity));
    EXPECT_TRUE(delaysOf(*equal).empty());
}

TEST(LinExp, EvaluatesEachTreeOnce) {
    test::Probe<VornReal>::State constant, coefficient;
    test::Probe<VornClock>::State variable, rate;
    rate.value = 1.0;
    coefficient.value = 1.0;
    LinExp expression(new test::Probe<VornReal>(constant), OperatorType::GEq);
    expression.addTerm(new test::Probe<VornClock>(variable), new test::Probe<VornClock>(rate),
                       new test::Probe<VornReal>(coefficient));
    delaysOf(expression);
    EXPECT_EQ(constant.evaluations, 1);
    EXPECT_EQ(coefficient.evaluations, 1);
    EXPECT_EQ(variable.evaluations, 1);
    EXPECT_EQ(rate.evaluations, 1);
}

TEST(LinExp, PassesOnThatAVariableIsOnlyAName) {
    LinExp expression(number(1.0), OperatorType::LEq);
    expression.addTerm(new TypedVornVariable<VornClock>("x"), new TypedVornVariable<VornClock>("x"), number(1.0));
    EXPECT_THROW(delaysOf(expression), IdentifierEvaluation);
}

struct MissingCase {
    const char* name;
    bool constant, variable, rate, coefficient;
    const char* message;
};
void PrintTo(const MissingCase& missingCase, std::ostream* stream) { *stream << missingCase.name; }

class MissingTree : public testing::TestWithParam<MissingCase> {};

TEST_P(MissingTree, IsNamedAtTheFirstEvaluation) {
    const MissingCase& has = GetParam();
    LinExp expression(has.constant ? number(5.0) : nullptr, OperatorType::Lt);
    expression.addTerm(number(1.0), number(1.0), number(2.0));
    expression.addTerm(has.variable ? number(3.0) : nullptr, has.rate ? number(1.0) : nullptr,
                       has.coefficient ? number(4.0) : nullptr);
    TimeInterval running = TimeInterval::InfiniteInterval;
    try {
        expression.restrict(running);
        FAIL() << "evaluated without the tree";
    } catch (const missing_operand& error) {
        EXPECT_STREQ(error.what(), has.message);
    }
}

INSTANTIATE_TEST_SUITE_P(
    LinExp, MissingTree,
    testing::Values(MissingCase{"Constant", false, true, true, true,
                                "The constant is missing in the linear comparison '1 * 2 + 3 * 4 < (null)'"},
                    MissingCase{"Variable", true, false, true, true,
                                "The variable of term 2 is missing in the linear comparison '1 * 2 + (null) * 4 < 5'"},
                    MissingCase{"Rate", true, true, false, true,
                                "The rate of term 2 is missing in the linear comparison '1 * 2 + 3 * 4 < 5'"},
                    MissingCase{
                        "Coefficient", true, true, true, false,
                        "The coefficient of term 2 is missing in the linear comparison '1 * 2 + 3 * (null) < 5'"}),
    test::CaseName());

TEST(LinExp, PrintsTermsOperatorAndConstantButNoRates) {
    LinExp expression(number(5.5), OperatorType::LEq);
    expression.addTerm(new TypedVornVariable<VornClock>("x"), number(77.0), number(2.0));
    expression.addTerm(new TypedVornVariable<VornContinuous>("sub.y"), number(88.0), number(-1.0));
    EXPECT_EQ(printed(expression), "x * 2 + sub.y * -1 <= 5.5");
}

TEST(LinExp, PrintsEveryOperator) {
    const std::pair<int, const char*> operators[] = {{0, " < 1"}, {1, " <= 1"}, {2, " > 1"},  {3, " >= 1"},
                                                     {4, " = 1"}, {5, " != 1"}, {6, " ?= 1"}, {-1, " ?= 1"}};
    for (const auto& [op, expected] : operators)
        EXPECT_EQ(printed(LinExp(number(1.0), static_cast<OperatorType>(op))), expected);
}

TEST(LinExp, OneRangeAllocatesNothing) {
    const std::unique_ptr<LinExp> expression(comparison(3, 1, OperatorType::LEq, 5));
    const test::AllocationCounter allocations;
    const TimeInterval delays = delaysOf(*expression);
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_EQ(delays.upper, 2.0);
}

bool compares(OperatorType op, double left, double right) {
    switch (op) {
        case OperatorType::Lt:
            return left < right;
        case OperatorType::LEq:
            return left <= right;
        case OperatorType::Gt:
            return left > right;
        case OperatorType::GEq:
            return left >= right;
        case OperatorType::Eq:
            return left == right;
        default:
            return left != right;
    }
}

// Values in quarters keep all arithmetic exact, and bounds within 1e-3 of a probe are left to the tables above.
TEST(LinExp, AgreesWithStepwiseEvaluationAwayFromItsBound) {
    for (std::uint64_t seed = 0; seed < 4000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 engine(seed);
        const auto quarter = [&engine] { return 0.25 * (static_cast<double>(engine() % 33) - 16.0); };
        const auto op = static_cast<OperatorType>(engine() % 6);
        const double constant = quarter();
        LinExp expression(number(constant), op);
        double value = 0.0;
        double slope = 0.0;
        for (auto terms = 1 + engine() % 3; terms > 0; --terms) {
            const double x = quarter(), rate = quarter(), coefficient = quarter();
            expression.addTerm(number(x), number(rate), number(coefficient));
            value += coefficient * x;
            slope += coefficient * rate;
        }
        const TimeInterval delays = delaysOf(expression);
        for (int step = 0; step <= 40; ++step) {
            const double delay = 0.5 * step;
            const double left = value + slope * delay;
            if (slope != 0.0 && std::abs((constant - value) / slope - delay) < 1e-3) continue;
            bool inside = false;
            for (const TimeRange& range : delays.ranges)
                inside = inside || (range.lower <= delay && delay <= range.upper);
            // Without a slope, the tolerance lets a strict comparison hold at equality too.
            const bool tolerated =
                slope == 0.0 && left == constant && (op == OperatorType::Lt || op == OperatorType::Gt);
            ASSERT_EQ(inside, tolerated || compares(op, left, constant)) << printed(expression) << " after " << delay;
        }
    }
}

}  // namespace
}  // namespace vornrun
