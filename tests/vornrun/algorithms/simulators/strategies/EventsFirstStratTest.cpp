#include "vornrun/algorithms/simulators/strategies/EventsFirstStrat.h"

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/DrivenModel.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

ModelWriter pump(const Expr& bound) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(bound))
        .mode("down", ModeKind::Error)
        .transition("up", "down", on("fail"))
        .transition("down", "up", when(x >= 2.0));
    return model;
}

ModelWriter idle(const Expr& bound) {
    ModelWriter model;
    model.implementation("Idle.i").data(x).mode("idle", invariant(bound));
    return model;
}

}  // namespace

TEST(EventsFirstStrat, TellsItsNameAndClonesItself) {
    const std::unique_ptr<SimulationStrategy> copy(EventsFirstStrat().clone());
    EXPECT_EQ(copy->name(), "EventsFirstStrat");
}

TEST(EventsFirstStrat, TakesWhatIsEnabledBeforeAnyTimePasses) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i").mode("a").mode("b").mode("c").transition("a", "b").transition("a", "c").transition(
        "a", "a", on("fail"));
    DrivenModel driven(model, EventsFirstStrat());
    driven.script({exponentialDraw(0.0), integerDraw(1, 0, 1), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "0: main: a -> c") << "the stochastic transition is no candidate";
}

TEST(EventsFirstStrat, TheSampleFiresBeforeAnUnboundedDelay) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").mode("up").mode("down").transition("up", "down", on("fail"));
    DrivenModel driven(model, EventsFirstStrat());
    driven.script({exponentialDraw(7.0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "7: main: up -> down");
}

TEST(EventsFirstStrat, NothingEnabledAndNoSampleJumpsByAllTime) {
    ModelWriter model;
    model.implementation("Idle.i");
    DrivenModel driven(model, EventsFirstStrat());
    driven.script({});
    const std::unique_ptr<SimulationStep> step(driven.strategy().executeStep());
    EXPECT_NE(dynamic_cast<TimeSimulationStep*>(step.get()), nullptr);
    EXPECT_EQ(step->time(), TimeInterval::INF_TIME);
}

TEST(EventsFirstStrat, AtTheEndOfAnInvariantItStepsByZero) {
    DrivenModel driven(idle(x <= 0.0), EventsFirstStrat());
    driven.script({});
    EXPECT_EQ(driven.step(), "0");
    EXPECT_EQ(driven.step(), "0");
}

TEST(EventsFirstStrat, TakesAllTheTimeThatTheInvariantsAllow) {
    DrivenModel driven(idle(x <= 2.5), EventsFirstStrat());
    driven.script({});
    EXPECT_EQ(driven.step(), "2.5");
    EXPECT_EQ(driven.data(), "x = 2.5");
}

TEST(EventsFirstStrat, ATieBetweenDelayAndSampleIsTheDelays) {
    DrivenModel driven(pump(x <= 2.5), EventsFirstStrat());
    driven.script({exponentialDraw(2.5)});
    EXPECT_EQ(driven.step(), "2.5");
    EXPECT_EQ(driven.mode(), "up");
}

TEST(EventsFirstStrat, AnEarlierSampleFires) {
    DrivenModel driven(pump(x <= 2.5), EventsFirstStrat());
    driven.script({exponentialDraw(2.25), integerDraw(0)});
    EXPECT_EQ(driven.step(), "2.25: main: up -> down");
}

TEST(EventsFirstStrat, FailedInvariantsAreADeadlockWithoutASuffix) {
    DrivenModel driven(idle(x <= -1.0), EventsFirstStrat());
    driven.script({});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found");
}

TEST(EventsFirstStrat, LogsWhatItTries) {
    const auto texts = [](const ModelWriter& model, const std::vector<ScriptedDraw>& draws) {
        DrivenModel driven(model, EventsFirstStrat());
        driven.script(draws);
        const CapturedLog log(LogLevel::Debug);
        try {
            driven.step();
        } catch (const deadlock_exception&) {
        }
        return log.texts("root.sim.strat");
    };
    const std::string trying = "Trying to find active communication transitions (closed world)";
    ModelWriter job;
    job.implementation("Job.i").transition("main", "main");
    EXPECT_EQ(texts(job, {integerDraw(0), integerDraw(0)}),
              (std::vector<std::string>{trying, "Found 1 enabled transitions"}));
    EXPECT_EQ(texts(idle(x <= 2.5), {}),
              (std::vector<std::string>{trying, "No active event transition found", "Trying to find timed transition",
                                        "Found time interval: [0, 2.5]"}));
    EXPECT_EQ(texts(idle(x <= -1.0), {}),
              (std::vector<std::string>{trying, "No active event transition found", "Trying to find timed transition",
                                        "Empty time interval and no active events -> Deadlock"}));
}

}  // namespace vornrun::test
