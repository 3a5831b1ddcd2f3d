#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/AllocationCounter.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Printed.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/LinearFixtures.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {
namespace {

using parser::OperatorType;
using test::clause;
using test::comparison;
using test::during;
using test::number;
using test::printed;
using test::truth;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(VornLinearExpression, WithoutClausesIsSimple) { EXPECT_TRUE(VornLinearExpression(truth(true), {}).isSimple()); }

TEST(VornLinearExpression, WithConditionsOnlyIsSimple) {
    EXPECT_TRUE(VornLinearExpression(truth(true), {clause(truth(true), {}), clause(nullptr, {})}).isSimple());
}

TEST(VornLinearExpression, WithOneComparisonInAnyClauseIsNotSimple) {
    EXPECT_FALSE(VornLinearExpression(truth(true), {clause(truth(true), {}), during(0, 1)}).isSimple());
}

TEST(VornLinearExpression, WhenSimpleHoldsForEverOrNever) {
    EXPECT_THAT(VornLinearExpression(truth(true), {}).holdsWhile().ranges,
                ElementsAre(TimeRange{0, TimeInterval::INF_TIME}));
    EXPECT_THAT(VornLinearExpression(truth(false), {}).holdsWhile().ranges, IsEmpty());
}

TEST(VornLinearExpression, WhenSimpleCostsOneEvaluationOfThePlainForm) {
    test::Probe<VornBool>::State plain, condition;
    const VornLinearExpression simple(new test::Probe<VornBool>(plain),
                                      {clause(new test::Probe<VornBool>(condition), {})});
    const test::AllocationCounter allocations;
    simple.holdsWhile();
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_EQ(plain.evaluations, 1);
    EXPECT_EQ(condition.evaluations, 0);
}

TEST(VornLinearExpression, HoldsAsThePlainFormDoesNow) {
    test::Probe<VornBool>::State plain;
    const VornLinearExpression expression(new test::Probe<VornBool>(plain), {during(0, 1)});
    EXPECT_FALSE(expression.holds());
    plain.value = true;
    EXPECT_TRUE(expression.holds());
    EXPECT_EQ(plain.evaluations, 2);
}

TEST(VornLinearExpression, AnalysesItsClausesWithoutThePlainForm) {
    test::Probe<VornBool>::State plain;
    const VornLinearExpression expression(new test::Probe<VornBool>(plain), {during(0, 1)});
    EXPECT_THAT(expression.holdsWhile().ranges, ElementsAre(TimeRange{0, 1}));
    EXPECT_EQ(plain.evaluations, 0);
}

TEST(VornLinearExpression, UnitesItsClauses) {
    const VornLinearExpression expression(truth(true), {during(0, 1), during(3, 4)});
    const TimeInterval delays = expression.holdsWhile();
    EXPECT_THAT(delays.ranges, ElementsAre(TimeRange{0, 1}, TimeRange{3, 4}));
    EXPECT_EQ(delays.lower, 0.0);
    EXPECT_EQ(delays.upper, 4.0);
    EXPECT_EQ(delays.length, 2.0);
}

TEST(VornLinearExpression, UnitesClausesInAnyOrder) {
    const VornLinearExpression expression(truth(true),
                                          {during(6, 7), clause(truth(false), {}), during(0, 1), during(1, 2)});
    EXPECT_THAT(expression.holdsWhile().ranges, ElementsAre(TimeRange{0, 2}, TimeRange{6, 7}));
}

TEST(VornLinearExpression, StoresWhatItReturned) {
    const VornLinearExpression expression(truth(true), {during(1, 5)});
    EXPECT_THAT(expression.lastResult().ranges, IsEmpty());
    expression.holdsWhile();
    EXPECT_THAT(expression.lastResult().ranges, ElementsAre(TimeRange{1, 5}));
}

TEST(VornLinearExpression, WhenSimpleStoresNothing) {
    const VornLinearExpression simple(truth(true), {});
    simple.holdsWhile();
    EXPECT_THAT(simple.lastResult().ranges, IsEmpty());
}

TEST(VornLinearExpression, OffsettingShiftsTheClausesButNotItsOwnResult) {
    const VornLinearExpression expression(truth(true), {during(1, 5), during(0, 1)});
    expression.holdsWhile();
    expression.offsetCache(2);
    EXPECT_THAT(expression.clauses()[0]->lastResult()->ranges, ElementsAre(TimeRange{0, 3}));
    EXPECT_THAT(expression.clauses()[1]->lastResult()->ranges, IsEmpty());
    EXPECT_THAT(expression.lastResult().ranges, ElementsAre(TimeRange{0, 5}));
}

TEST(VornLinearExpression, RecomputesAfterOffsetting) {
    const VornLinearExpression expression(truth(true), {during(1, 5)});
    expression.holdsWhile();
    expression.offsetCache(2);
    EXPECT_THAT(expression.holdsWhile().ranges, ElementsAre(TimeRange{1, 5}));
}

TEST(VornLinearExpression, InvalidatingForgetsTheResultsOfAllClauses) {
    const VornLinearExpression expression(truth(true), {during(1, 5), during(0, 1)});
    expression.holdsWhile();
    expression.invalidateCache();
    EXPECT_EQ(expression.clauses()[0]->lastResult(), nullptr);
    EXPECT_EQ(expression.clauses()[1]->lastResult(), nullptr);
}

TEST(VornLinearExpression, WithoutAPlainFormSaysSoAtItsFirstEvaluation) {
    const VornLinearExpression expression(nullptr, {});
    EXPECT_EQ(expression.plain(), nullptr);
    EXPECT_TRUE(expression.isSimple());
    expression.offsetCache(1);
    expression.invalidateCache();
    EXPECT_EQ(printed(expression), "(null)");
    try {
        expression.holds();
        FAIL() << "evaluated without a plain form";
    } catch (const missing_operand& error) {
        EXPECT_STREQ(error.what(), "The plain form of a linear expression is missing");
    }
    EXPECT_THROW(expression.holdsWhile(), missing_operand);
}

TEST(VornLinearExpression, WithAMissingTreeInAComparisonCopesUntilItIsEvaluated) {
    auto* const incomplete = new LinExp(number(1.0), OperatorType::Lt);
    incomplete->addTerm(nullptr, nullptr, nullptr);
    const VornLinearExpression expression(truth(true), {clause(nullptr, {incomplete})});
    expression.offsetCache(1);
    expression.invalidateCache();
    EXPECT_TRUE(expression.holds());
    EXPECT_THROW(expression.holdsWhile(), missing_operand);
    expression.offsetCache(1);
    EXPECT_EQ(expression.clauses()[0]->lastResult(), nullptr);
}

TEST(VornLinearExpression, PrintsItsPlainForm) {
    const VornLinearExpression expression(new TypedVornVariable<VornBool>("sub.on"), {during(0, 1)});
    EXPECT_EQ(printed(expression), "sub.on");
}

TEST(VornLinearExpression, WhenSimpleTracesTheAnswer) {
    const VornLinearExpression yes(truth(true), {});
    const VornLinearExpression no(truth(false), {});
    const test::CapturedLog log(LogLevel::Trace);
    yes.holdsWhile();
    no.holdsWhile();
    EXPECT_THAT(log.records(),
                ElementsAre(test::LogRecord{LogLevel::Trace, "root.expr.linear", "Simple invariant holds: 1"},
                            test::LogRecord{LogLevel::Trace, "root.expr.linear", "Simple invariant holds: 0"}));
}

TEST(VornLinearExpression, UpToTwoRangesAllocateNothing) {
    const VornLinearExpression one(truth(true), {during(0, 2), during(1, 3)});
    const VornLinearExpression two(truth(true), {during(0, 1), during(3, 4)});
    const test::AllocationCounter allocations;
    const TimeInterval oneRange = one.holdsWhile();
    one.offsetCache(0.5);
    const TimeInterval twoRanges = two.holdsWhile();
    two.offsetCache(0.5);
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_THAT(oneRange.ranges, ElementsAre(TimeRange{0, 3}));
    EXPECT_THAT(twoRanges.ranges, ElementsAre(TimeRange{0, 1}, TimeRange{3, 4}));
}

}  // namespace
}  // namespace vornrun
