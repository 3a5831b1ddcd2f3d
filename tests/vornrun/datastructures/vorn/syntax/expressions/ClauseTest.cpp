#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/CapturedLog.h"
#include "tests/support/Printed.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/LinearFixtures.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {
namespace {

using parser::OperatorType;
using test::clause;
using test::comparison;
using test::number;
using test::printed;
using test::truth;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Clause, IsTheIntersectionOfItsComparisons) {
    const std::unique_ptr<Clause> during(test::during(1, 4));
    EXPECT_THAT(during->holdsWhile().ranges, ElementsAre(TimeRange{1, 4}));
}

TEST(Clause, WithoutAnythingHoldsForEver) {
    const std::unique_ptr<Clause> empty(clause(nullptr, {}));
    EXPECT_THAT(empty->holdsWhile().ranges, ElementsAre(TimeRange{0, TimeInterval::INF_TIME}));
}

TEST(Clause, WithATrueConditionLeavesTheComparisonsToDecide) {
    const std::unique_ptr<Clause> decided(clause(truth(true), {comparison(0, 1, OperatorType::LEq, 2)}));
    EXPECT_THAT(decided->holdsWhile().ranges, ElementsAre(TimeRange{0, 2}));
}

TEST(Clause, WithAFalseConditionEvaluatesNoComparison) {
    test::Probe<VornReal>::State constant;
    const std::unique_ptr<Clause> never(
        clause(truth(false), {new LinExp(new test::Probe<VornReal>(constant), OperatorType::Eq)}));
    const TimeInterval delays = never->holdsWhile();
    EXPECT_THAT(delays.ranges, IsEmpty());
    EXPECT_EQ(delays.lower, 1.0);
    EXPECT_EQ(delays.upper, 0.0);
    EXPECT_EQ(constant.evaluations, 0);
}

TEST(Clause, WithAFalseConditionKeepsItsLastResult) {
    test::Probe<VornBool>::State condition;
    const std::unique_ptr<Clause> changing(
        clause(new test::Probe<VornBool>(condition), {comparison(0, 1, OperatorType::LEq, 2)}));
    changing->holdsWhile();
    EXPECT_EQ(changing->lastResult(), nullptr);
    condition.value = true;
    changing->holdsWhile();
    condition.value = false;
    changing->holdsWhile();
    ASSERT_NE(changing->lastResult(), nullptr);
    EXPECT_THAT(changing->lastResult()->ranges, ElementsAre(TimeRange{0, 2}));
}

TEST(Clause, LeavesOutComparisonsBehindOneThatNeverHolds) {
    test::Probe<VornReal>::State later;
    const std::unique_ptr<Clause> aborted(clause(
        nullptr,
        {comparison(0, 0, OperatorType::Eq, 1), new LinExp(new test::Probe<VornReal>(later), OperatorType::Eq)}));
    EXPECT_THAT(aborted->holdsWhile().ranges, IsEmpty());
    EXPECT_EQ(later.evaluations, 0);
    ASSERT_NE(aborted->lastResult(), nullptr);
    EXPECT_THAT(aborted->lastResult()->ranges, IsEmpty());
}

TEST(Clause, GoesOnBehindATimeDependentComparisonThatLeavesNothing) {
    test::Probe<VornReal>::State later;
    const std::unique_ptr<Clause> emptied(clause(
        nullptr,
        {comparison(7, 1, OperatorType::LEq, 5), new LinExp(new test::Probe<VornReal>(later), OperatorType::Eq)}));
    EXPECT_THAT(emptied->holdsWhile().ranges, IsEmpty());
    EXPECT_EQ(later.evaluations, 1);
}

TEST(Clause, SkipsATimeDependentComparisonByAnotherOperator) {
    const std::unique_ptr<Clause> skipping(
        clause(nullptr, {comparison(0, 1, OperatorType::And, 1), comparison(0, 1, OperatorType::LEq, 2)}));
    EXPECT_THAT(skipping->holdsWhile().ranges, ElementsAre(TimeRange{0, 2}));
}

TEST(Clause, RecomputesFromPresentValues) {
    test::Probe<VornReal>::State bound{.value = 2.0};
    auto* const upTo = new LinExp(new test::Probe<VornReal>(bound), OperatorType::LEq);
    upTo->addTerm(number(0.0), number(1.0), number(1.0));
    const std::unique_ptr<Clause> moving(clause(nullptr, {upTo}));
    EXPECT_THAT(moving->holdsWhile().ranges, ElementsAre(TimeRange{0, 2}));
    bound.value = 3.0;
    EXPECT_THAT(moving->holdsWhile().ranges, ElementsAre(TimeRange{0, 3}));
}

TEST(Clause, OffsetsItsLastResultOnlyWhilePresent) {
    const std::unique_ptr<Clause> during(test::during(1, 5));
    during->offsetCache(2);
    EXPECT_EQ(during->lastResult(), nullptr);
    during->holdsWhile();
    during->offsetCache(2);
    EXPECT_THAT(during->lastResult()->ranges, ElementsAre(TimeRange{0, 3}));
    during->invalidateCache();
    EXPECT_EQ(during->lastResult(), nullptr);
    during->offsetCache(2);
    during->holdsWhile();
    EXPECT_THAT(during->lastResult()->ranges, ElementsAre(TimeRange{1, 5}));
}

TEST(Clause, OffsettingDropsARangeThatHasPassed) {
    const std::unique_ptr<Clause> during(test::during(0, 1));
    during->holdsWhile();
    during->offsetCache(2);
    EXPECT_THAT(during->lastResult()->ranges, IsEmpty());
    EXPECT_EQ(during->lastResult()->lower, 1.0);
    EXPECT_EQ(during->lastResult()->upper, 0.0);
}

LinExp* named(const std::string& variable, OperatorType op, double bound) {
    auto* const result = new LinExp(number(bound), op);
    result->addTerm(new TypedVornVariable<VornClock>(variable), nullptr, number(1.0));
    return result;
}

TEST(Clause, PrintsComparisonsAndCondition) {
    const std::unique_ptr<Clause> both(clause(new TypedVornVariable<VornBool>("on"),
                                              {named("x", OperatorType::Lt, 5), named("y", OperatorType::GEq, 2)}));
    EXPECT_EQ(printed(*both), "x * 1 < 5 and y * 1 >= 2 and on");
    const std::unique_ptr<Clause> unconditional(clause(nullptr, {named("x", OperatorType::Lt, 5)}));
    EXPECT_EQ(printed(*unconditional), "x * 1 < 5");
}

TEST(Clause, WithOnlyAConditionStartsWithAnd) {
    const std::unique_ptr<Clause> conditional(clause(new TypedVornVariable<VornBool>("on"), {}));
    EXPECT_EQ(printed(*conditional), " and on");
    const std::unique_ptr<Clause> nothing(clause(nullptr, {}));
    EXPECT_EQ(printed(*nothing), "");
}

TEST(Clause, TracesItselfAndItsComparisons) {
    const std::unique_ptr<Clause> during(test::during(1, 4));
    const test::CapturedLog log(LogLevel::Trace);
    during->holdsWhile();
    const auto record = [](const char* message) {
        return test::LogRecord{LogLevel::Trace, "root.expr.linear", message};
    };
    EXPECT_THAT(log.records(), ElementsAre(record("Clause: 0 * 1 >= 1 and 0 * 1 <= 4"), record(" Linexp: 0 * 1 >= 1"),
                                           record(" Linexp: 0 * 1 <= 4")));
}

TEST(Clause, TracesThatItsConditionFails) {
    const std::unique_ptr<Clause> never(clause(truth(false), {comparison(0, 1, OperatorType::Lt, 5)}));
    const test::CapturedLog log(LogLevel::Trace);
    never->holdsWhile();
    EXPECT_THAT(log.texts("root.expr.linear"), ElementsAre("Clause: 0 * 1 < 5 and 0", "Condition negative"));
}

TEST(Clause, LogsNothingAboveTrace) {
    const std::unique_ptr<Clause> during(test::during(1, 4));
    const test::CapturedLog log(LogLevel::Debug);
    during->holdsWhile();
    EXPECT_THAT(log.records(), IsEmpty());
}

}  // namespace
}  // namespace vornrun
