#include "vornrun/algorithms/simulators/strategies/MaxTimeProgressStrat.h"

#include <gtest/gtest.h>

#include "tests/support/DrivenModel.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

/// A job that may be done from `from` on and has to be by `bound`, and fails by itself.
ModelWriter job(double from, double bound) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(x <= bound))
        .mode("done")
        .mode("dead", ModeKind::Error)
        .transition("busy", "done", when(x >= from))
        .transition("busy", "dead", on("fail"));
    return model;
}

ModelWriter quietJob(const Expr& guard, const Expr& bound) {
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(bound))
        .mode("done")
        .transition("busy", "done", when(guard));
    return model;
}

}  // namespace

TEST(MaxTimeProgressStrat, TellsItsNameAndClonesItself) {
    const std::unique_ptr<SimulationStrategy> copy(MaxTimeProgressStrat().clone());
    EXPECT_EQ(copy->name(), "MaxTimeProgressStrat");
}

TEST(MaxTimeProgressStrat, WaitsForTheEndOfTheInvariantsBeforeItActs) {
    DrivenModel driven(job(1.0, 4.0), MaxTimeProgressStrat());
    driven.script({exponentialDraw(9.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "4: main: busy -> done") << "the stochastic transition is no candidate";
}

TEST(MaxTimeProgressStrat, ATieWithTheSampleIsTheStrategys) {
    DrivenModel driven(job(1.0, 4.0), MaxTimeProgressStrat());
    driven.script({exponentialDraw(4.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "4: main: busy -> done");
}

TEST(MaxTimeProgressStrat, AnEarlierSampleFires) {
    DrivenModel driven(job(1.0, 4.0), MaxTimeProgressStrat());
    driven.script({exponentialDraw(3.5), integerDraw(0)});
    EXPECT_EQ(driven.step(), "3.5: main: busy -> dead");
}

TEST(MaxTimeProgressStrat, WithoutADelayTheStepIsDiscrete) {
    DrivenModel driven(quietJob(x >= 0.0, x <= 0.0), MaxTimeProgressStrat());
    driven.script({integerDraw(0), integerDraw(0)});
    const std::unique_ptr<SimulationStep> step(driven.strategy().executeStep());
    EXPECT_EQ(dynamic_cast<TimeSimulationStep*>(step.get()), nullptr);
    EXPECT_EQ(tell(*step), "0: main: busy -> done");
}

TEST(MaxTimeProgressStrat, InvariantsThatHaveRunOutAllowADelayOfZero) {
    DrivenModel driven(quietJob(x >= 0.0, x <= -1.0), MaxTimeProgressStrat());
    driven.script({integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "0: main: busy -> done");
}

TEST(MaxTimeProgressStrat, TimePassesWhenNothingIsEnabledAfterIt) {
    DrivenModel driven(quietJob(x <= 1.0, x <= 4.0), MaxTimeProgressStrat());
    driven.script({});
    EXPECT_EQ(driven.step(), "4");
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Deadlock");
}

TEST(MaxTimeProgressStrat, ASampleBehindTheEndOfTheInvariantsIsADeadlockAfterTheDelay) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(x <= 4.0))
        .mode("down", ModeKind::Error)
        .transition("up", "down", on("fail"));
    DrivenModel driven(model, MaxTimeProgressStrat());
    driven.script({exponentialDraw(6.0)});
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
    EXPECT_EQ(driven.data(), "x = 4") << "the whole delay has passed before";
}

TEST(MaxTimeProgressStrat, OnlyStochasticTransitionsAfterTheDelayLetTheSampleFireAfterAFurtherOne) {
    // The invariant allows 3 first and everything from then on: a condition is not looked ahead for.
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(x)
        .mode("up")
        .mode("down", ModeKind::Error)
        .transition("up", "down", on("fail"));
    model.implementation("Plant.i")
        .data(x)
        .mode("calm", invariant(x <= 3.0 || x >= 3.0, {clause({lin({{1.0, x}}, Op::LEq, 3.0)}), clause(x >= 3.0)}))
        .subcomponent("pump", "Pump.i");
    DrivenModel driven(model, MaxTimeProgressStrat());
    driven.script({exponentialDraw(4.0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "4: main.pump: up -> down");
    EXPECT_EQ(driven.data(), "x = 7") << "3 passed before the sample";
    EXPECT_EQ(driven.data("main.pump"), "x = 7");
}

TEST(MaxTimeProgressStrat, WithoutABoundOrASampleItJumpsByAllTime) {
    ModelWriter model;
    model.implementation("Idle.i").transition("main", "main", when(x <= -1.0)).data(x);
    DrivenModel driven(model, MaxTimeProgressStrat());
    driven.script({});
    EXPECT_EQ(driven.step(), "1.79769e+308") << "nothing is enabled behind all time";
}

}  // namespace vornrun::test
