#include "vornrun/algorithms/simulators/strategies/LocalStrat.h"

#include <gtest/gtest.h>

#include "tests/support/DrivenModel.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);
// Far enough in [0, INF_TIME] for the product with 2^32 to overflow.
constexpr double ANY_UNBOUNDED_DRAW = 1e300;

/// A job that may be done from `from` on and has to be by `bound`.
ModelWriter job(double from, double bound) {
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(x <= bound))
        .mode("done")
        .transition("busy", "done", when(x >= from));
    return model;
}

}  // namespace

TEST(LocalStrat, TellsItsNameAndClonesItself) {
    const std::unique_ptr<SimulationStrategy> copy(LocalStrat().clone());
    EXPECT_EQ(copy->name(), "LocalStrat");
}

TEST(LocalStrat, TheLeastProposalOfAllAutomataIsTheDelay) {
    ModelWriter model;
    model.implementation("Slow.i")
        .data(x)
        .mode("busy", invariant(x <= 8.0))
        .mode("done")
        .transition("busy", "done", when(x >= 1.0));
    model.implementation("Fast.i")
        .data(x)
        .mode("busy", invariant(x <= 4.0))
        .mode("done")
        .transition("busy", "done", when(x >= 3.0));
    model.implementation("Plant.i").subcomponent("a", "Slow.i").subcomponent("b", "Fast.i");
    DrivenModel driven(model, LocalStrat());
    driven.script({realDraw(ANY_UNBOUNDED_DRAW, 0.0, TimeInterval::INF_TIME), realDraw(5.0, 0.0, 8.0),
                   realDraw(2.5, 0.0, 4.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "2.5: main.a: busy -> done") << "b is not enabled yet";
}

TEST(LocalStrat, AnAutomatonWithoutAnInvariantLeavesTheDelayToTheOthers) {
    DrivenModel driven(job(0.0, 4.0), LocalStrat());
    driven.script({realDraw(2.5), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "2.5: main: busy -> done");
    // All unbounded: the delay stays unbounded, without a sample to compare with.
    ModelWriter free;
    free.type("Never").errorPort("fail", 0.5);
    free.implementation("Never.i").data(x).transition("main", "main", when(x <= -1.0));
    DrivenModel unbounded(free, LocalStrat());
    unbounded.script({realDraw(ANY_UNBOUNDED_DRAW)});
    const std::unique_ptr<SimulationStep> step(unbounded.strategy().executeStep());
    EXPECT_EQ(step->time(), TimeInterval::INF_TIME);
}

TEST(LocalStrat, ADrawNearZeroOfAnUnboundedSetIsAProposal) {
    ModelWriter model;
    model.implementation("Job.i").data(x).mode("busy").mode("done").transition("busy", "done", when(x >= 1.0));
    DrivenModel driven(model, LocalStrat());
    driven.script({realDraw(1.5, 0.0, TimeInterval::INF_TIME), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "1.5: main: busy -> done");
}

TEST(LocalStrat, AnAutomatonWhoseInvariantHasRunOutProposesOne) {
    ModelWriter model;
    model.implementation("Job.i").data(x).mode("busy", invariant(x <= -1.0)).mode("done").transition("busy", "done");
    DrivenModel driven(model, LocalStrat());
    driven.script({integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "1: main: busy -> done") << "no draw for the empty set";
}

TEST(LocalStrat, ADelayOfZeroIsStillACombinedStep) {
    DrivenModel driven(job(0.0, 4.0), LocalStrat());
    driven.script({realDraw(0.0), integerDraw(0), integerDraw(0)});
    const std::unique_ptr<SimulationStep> step(driven.strategy().executeStep());
    EXPECT_NE(dynamic_cast<CombinedSimulationStep*>(step.get()), nullptr);
    EXPECT_EQ(step->time(), 0.0);
}

TEST(LocalStrat, TimePassesWhenNothingIsEnabledAfterTheDelay) {
    DrivenModel driven(job(3.0, 4.0), LocalStrat());
    driven.script({realDraw(2.0)});
    EXPECT_EQ(driven.step(), "2");
    EXPECT_EQ(driven.mode(), "busy");
}

TEST(LocalStrat, NothingEnabledAtTheEndOfTheInvariantsIsADeadlock) {
    DrivenModel driven(job(3.0, 0.0), LocalStrat());
    driven.script({});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Deadlock");
}

TEST(LocalStrat, OnlyStochasticTransitionsAfterTheDelayLeaveTheDelay) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(x <= 4.0))
        .mode("down")
        .transition("up", "down", on("fail"));
    DrivenModel driven(model, LocalStrat());
    driven.script({exponentialDraw(3.0), realDraw(2.0)});
    EXPECT_EQ(driven.step(), "2");
    EXPECT_EQ(driven.mode(), "up");
}

TEST(LocalStrat, OnlyStochasticTransitionsAtTheEndOfTheInvariantsAreAStepOfZero) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(x <= 0.0))
        .mode("down")
        .transition("up", "down", on("fail"));
    DrivenModel driven(model, LocalStrat());
    driven.script({exponentialDraw(3.0)});
    EXPECT_EQ(driven.step(), "0");
}

TEST(LocalStrat, TheSampleFiresOnlyWhenItIsEarlierThanTheDelay) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(x <= 4.0))
        .mode("down")
        .transition("up", "down", on("fail"))
        .transition("up", "up");
    DrivenModel driven(model, LocalStrat());
    driven.script({exponentialDraw(1.0), realDraw(1.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "1: main: up -> up") << "a tie is the strategy's";
    driven.simulator().reset();
    driven.script({exponentialDraw(1.0), realDraw(1.5), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "1: main: up -> down");
}

TEST(LocalStrat, SleepingAutomataProposeNothing) {
    ModelWriter model;
    model.implementation("Job.i").data(x).mode("busy", invariant(x <= 1.0));
    model.implementation("Plant.i")
        .data(x)
        .mode("off", invariant(x <= 6.0))
        .mode("on")
        .transition("off", "on")
        .subcomponent("job", "Job.i", inModes("on"));
    DrivenModel driven(model, LocalStrat());
    driven.script({realDraw(5.0, 0.0, 6.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "5: main: off -> on");
}

TEST(LocalStrat, WithoutActiveTransitionsItEndsAsADeadlockOrActionlock) {
    for (const auto& [bound, text] : {std::pair(0.0, "No possible simulation step found: Deadlock"),
                                      std::pair(3.0, "No possible simulation step found: Actionlock")}) {
        ModelWriter model;
        model.implementation("Job.i").data(x).mode("stuck", invariant(x <= bound));
        DrivenModel driven(model, LocalStrat());
        driven.script({});
        EXPECT_DEADLOCK(driven.step(), text);
    }
}

}  // namespace vornrun::test
