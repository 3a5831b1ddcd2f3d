#include "vornrun/api/Runner.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/vornrun/api/DoorModels.h"

namespace vornrun::test {
namespace {

TEST(Runner, SaysThatATraceSatisfiesItsQuestion) {
    Runner runner(modelOf(decay(100.0)), questionOf(reaches("over", 1e9)));
    TraceStream stream(1, 0);
    const Record record = runner.run(stream);
    EXPECT_EQ(record.verdict, Verdict::yes);
    EXPECT_EQ(record.ending, Ending::decided);
    EXPECT_EQ(record.steps, 1U);
    EXPECT_GT(record.time, 0.0);
}

TEST(Runner, SaysThatATraceDoesNot) {
    Runner runner(modelOf(decay(1e-9)), questionOf(reaches("over", 1.0)));
    TraceStream stream(1, 0);
    EXPECT_EQ(runner.run(stream).verdict, Verdict::no);
}

TEST(Runner, EndsUndecidedWhereNothingCanHappen) {
    Runner runner(modelOf(decay(1.0)), questionOf(eventually(falsity(), 0, 1e9)));
    TraceStream stream(1, 0);
    const Record record = runner.run(stream);
    EXPECT_EQ(record.verdict, Verdict::undecided);
    EXPECT_EQ(record.ending, Ending::deadlock);
    EXPECT_EQ(record.steps, 1U);
    EXPECT_FALSE(record.text.empty());
}

ModelWriter pendulum() {
    ModelWriter model;
    model.type("Root").errorPort("tick", 1.0);
    model.implementation("Root.i")
        .mode("left")
        .mode("right")
        .transition("left", "right", on("tick"))
        .transition("right", "left", on("tick"));
    return model;
}

TEST(Runner, EndsUndecidedAfterAsManyStepsAsTheLimitsAllow) {
    Runner runner(modelOf(pendulum()), questionOf(eventually(falsity(), 0, 1e9)), "asap", {.steps = 7});
    TraceStream stream(1, 0);
    const Record record = runner.run(stream);
    EXPECT_EQ(record.verdict, Verdict::undecided);
    EXPECT_EQ(record.ending, Ending::stepBound);
    EXPECT_EQ(record.steps, 7U);
}

TEST(Runner, CountsAVerdictAfterTheLastStep) {
    Runner runner(modelOf(decay(1.0)), questionOf(reaches("over", 1e9)), "asap", {.steps = 1});
    TraceStream stream(1, 0);
    EXPECT_EQ(runner.run(stream).verdict, Verdict::yes);
}

TEST(Runner, LooksAtTheInitialStateWithoutAnyStep) {
    Runner runner(modelOf(decay(1.0)), questionOf(reaches("alive", 1.0)), "asap", {.steps = 0});
    TraceStream stream(1, 0);
    const Record record = runner.run(stream);
    EXPECT_EQ(record.verdict, Verdict::yes);
    EXPECT_EQ(record.steps, 0U);
}

TEST(Runner, ReportsADivisionByZeroAsAFault) {
    const Var n = var("n", Type::Int), zero = var("zero", Type::Int);
    ModelWriter model;
    model.type("Root").errorPort("ends", 1.0);
    model.implementation("Root.i").data(n, 1).data(zero, 0).mode("alive").mode("over").transition(
        "alive", "over", on("ends"), set(n, n / zero));
    Runner runner(modelOf(model), questionOf(reaches("over", 1e9)));
    for (unsigned k = 0; k < 2; ++k) {
        TraceStream stream(1, k);
        const Record record = runner.run(stream);
        EXPECT_EQ(record.verdict, Verdict::undecided);
        EXPECT_EQ(record.ending, Ending::fault);
        EXPECT_NE(record.text.find("zero"), std::string::npos) << record.text;
    }
}

TEST(Runner, ReportsANameThatDoesNotResolveAsAFaultOfTheTraceThatNeedsIt) {
    Runner runner(modelOf(decay(1.0)), questionOf(eventually(var("nothing", Type::Bool), 0, 1)));
    ASSERT_FALSE(runner.warnings().empty());
    EXPECT_NE(runner.warnings().front().text.find("nothing"), std::string::npos);
    TraceStream stream(1, 0);
    EXPECT_EQ(runner.run(stream).ending, Ending::fault);
}

TEST(Runner, KnowsItsStrategies) {
    EXPECT_EQ(Runner::strategies(), (std::vector<std::string>{"asap", "event", "local", "maxtime", "progressive"}));
}

TEST(Runner, RefusesAStrategyThatDoesNotExist) {
    EXPECT_THROW(Runner(modelOf(decay(1.0)), questionOf(reaches("over", 1)), "soon"), FaultException);
}

TEST(Runner, RefusesTheStrategyThatAsksAPerson) {
    EXPECT_THROW(Runner(modelOf(decay(1.0)), questionOf(reaches("over", 1)), "input"), FaultException);
}

TEST(Runner, WritesToNoStandardStream) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Runner decided(modelOf(decay(1.0)), questionOf(reaches("over", 1)), "progressive");
    Runner bounded(modelOf(pendulum()), questionOf(eventually(falsity(), 0, 1e9)), "asap", {.steps = 3});
    Runner deadlocked(modelOf(decay(1.0)), questionOf(eventually(falsity(), 0, 1e9)));
    for (unsigned k = 0; k < 5; ++k) {
        TraceStream stream(1, k);
        decided.run(stream);
        bounded.run(stream);
        deadlocked.run(stream);
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Runner, EstimatesAnExponentialDistribution) {
    // P(F<=1 over) = 1 - exp(-1). By Hoeffding 20000 traces leave the band of 0.02 with probability at most
    // 2 exp(-2 * 20000 * 0.02^2) = 2.3e-7.
    Runner runner(modelOf(decay(1.0)), questionOf(reaches("over", 1.0)));
    int yes = 0;
    for (unsigned k = 0; k < 20000; ++k) {
        TraceStream stream(1, k);
        if (runner.run(stream).verdict == Verdict::yes) ++yes;
    }
    EXPECT_NEAR(yes / 20000.0, 1 - std::exp(-1.0), 0.02);
}

}  // namespace
}  // namespace vornrun::test
