#include "vornrun/algorithms/simulators/strategies/ProgressiveStrat.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "tests/support/CapturedLog.h"
#include "tests/support/DrivenModel.h"
#include "tests/support/ScriptedConsole.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

/// One automaton that is done when the guard lets it.
ModelWriter job(const Expr& guard, const Expr& bound) {
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(bound))
        .mode("done")
        .transition("busy", "done", when(guard));
    return model;
}

/// The same with a stochastic event.
ModelWriter failingJob(const Expr& guard, const Expr& bound) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(bound))
        .mode("done")
        .mode("dead", ModeKind::Error)
        .transition("busy", "done", when(guard))
        .transition("busy", "dead", on("fail"));
    return model;
}

/// One automaton with three ways out of its first mode, until 4.
ModelWriter fork() {
    ModelWriter model;
    model.implementation("Fork.i")
        .data(x)
        .mode("in", invariant(x <= 4.0))
        .mode("a")
        .mode("b")
        .mode("c")
        .transition("in", "a")
        .transition("in", "b")
        .transition("in", "c");
    return model;
}

ModelWriter twoJobs() {
    ModelWriter model;
    model.implementation("Job.i").data(x).mode("busy", invariant(x <= 4.0)).mode("done").transition("busy", "done");
    model.implementation("Plant.i").subcomponent("a", "Job.i").subcomponent("b", "Job.i");
    return model;
}

/// A job that can be done until 1, in a mode that lasts until 3: draws behind 1 fail.
DrivenModel conservativeJob() {
    ProgressiveStrat strategy;
    strategy.setAttitude(ProgressiveAttitude::Conservative);
    return DrivenModel(job(x <= 1.0, x <= 3.0), strategy);
}

}  // namespace

TEST(ProgressiveStrat, StartsWithTheSettingsOfTheTool) {
    const ProgressiveStrat strategy;
    EXPECT_EQ(strategy.name(), "ProgressiveStrat");
    EXPECT_TRUE(strategy.localChoice());
    EXPECT_TRUE(strategy.extendToInvariant());
    EXPECT_EQ(strategy.attitude(), ProgressiveAttitude::TakeDelay);
    EXPECT_EQ(strategy.retries(), 0U);
}

// ---- Delays of one transition

TEST(ProgressiveStrat, ADelayWithinTheGuardTakesTheTransition) {
    DrivenModel driven(job(x <= 1.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(0.5, 0.0, 3.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "0.5: main: busy -> done");
}

TEST(ProgressiveStrat, ADelayInTheExtensionLetsTimePassWithoutTheTransition) {
    DrivenModel driven(job(x <= 1.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(2.0, 0.0, 3.0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "2");
    EXPECT_EQ(driven.mode(), "busy");
    EXPECT_EQ(driven.data(), "x = 2");
}

TEST(ProgressiveStrat, ADelayOfZeroIsADiscreteStep) {
    DrivenModel driven(job(x <= 1.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(0.0), integerDraw(0), integerDraw(0)});
    const std::unique_ptr<SimulationStep> step(driven.strategy().executeStep());
    EXPECT_EQ(dynamic_cast<TimeSimulationStep*>(step.get()), nullptr);
    EXPECT_EQ(tell(*step), "0: main: busy -> done");
}

TEST(ProgressiveStrat, WithoutTheExtensionDelaysStayWithinTheGuard) {
    ProgressiveStrat strategy;
    strategy.setExtendToInvariant(false);
    DrivenModel driven(job(x <= 1.0, x <= 3.0), strategy);
    driven.script({realDraw(0.5, 0.0, 1.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "0.5: main: busy -> done");
}

TEST(ProgressiveStrat, APointAtTheEndOfTheInvariantIsItsOwnDelay) {
    DrivenModel driven(job(x == 2.0, x <= 2.0), ProgressiveStrat());
    driven.script({integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "2: main: busy -> done") << "no real draw";
}

TEST(ProgressiveStrat, AGuardThatOutlastsTheInvariantIsNotExtended) {
    DrivenModel driven(job(x <= 5.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(1.0, 0.0, 3.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "1: main: busy -> done");
}

TEST(ProgressiveStrat, TheExtensionFollowsTheOwnInvariantAndTheCutThoseOfAll) {
    // The job's own invariant lasts until 6, the plant's until 2.
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(x <= 6.0))
        .mode("done")
        .transition("busy", "done", when(x <= 1.0));
    model.implementation("Plant.i").data(x).mode("run", invariant(x <= 2.0)).subcomponent("job", "Job.i");
    DrivenModel driven(model, ProgressiveStrat());
    driven.script({realDraw(1.5, 0.0, 2.0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "1.5");
}

TEST(ProgressiveStrat, AGapBeforeTheExtensionCannotArise) {
    // Enabled on [1, 2], extended to [1, 3]: measured from its lower end.
    DrivenModel driven(job(x >= 1.0 && x <= 2.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(0.5, 0.0, 2.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "1.5: main: busy -> done");
}

// ---- Against the stochastic events

TEST(ProgressiveStrat, UnboundedTransitionsDropOutAndTheSampleFires) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").mode("up").mode("down").transition("up", "down", on("fail")).transition("up", "up");
    DrivenModel driven(model, ProgressiveStrat());
    driven.script({exponentialDraw(3.0), realDraw(1e300, 0.0, TimeInterval::INF_TIME), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "3: main: up -> down");
}

TEST(ProgressiveStrat, OnlyUnboundedTransitionsAndNoSampleAreADeadlock) {
    ModelWriter model;
    model.implementation("Idle.i").transition("main", "main");
    DrivenModel driven(model, ProgressiveStrat());
    driven.script({realDraw(1e300)});
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: No event can occur");
}

TEST(ProgressiveStrat, OnlyDisabledTransitionsAndNoSampleExceedBoundedInvariants) {
    DrivenModel driven(job(x <= -1.0, x <= 3.0), ProgressiveStrat());
    driven.script({});
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

TEST(ProgressiveStrat, ADelayBehindTheSampleIsOutBeforeAnyPick) {
    DrivenModel driven(failingJob(x <= 2.0, x <= 2.0), ProgressiveStrat());
    driven.script({exponentialDraw(1.0), realDraw(1.5), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "1: main: busy -> dead") << "one integer draw, for the event's alternative";
}

TEST(ProgressiveStrat, ATieWithTheSampleIsTheSamplesAfterThePick) {
    DrivenModel driven(failingJob(x <= 2.0, x <= 2.0), ProgressiveStrat());
    driven.script({exponentialDraw(1.0), realDraw(1.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "1: main: busy -> dead") << "a draw for the pick, and one for the event's alternative";
}

TEST(ProgressiveStrat, AnEarlierDelayWinsAgainstTheSample) {
    DrivenModel driven(failingJob(x <= 2.0, x <= 2.0), ProgressiveStrat());
    driven.script({exponentialDraw(1.0), realDraw(0.75), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "0.75: main: busy -> done");
}

TEST(ProgressiveStrat, AnUnboundedDelayAgainstAnInfiniteSampleFindsNoStep) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").mode("up").mode("down").transition("up", "down", on("fail")).transition("up", "up");
    DrivenModel driven(model, ProgressiveStrat());
    driven.script({exponentialDraw(std::numeric_limits<double>::infinity()), realDraw(1e300)});
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

// ---- Among transitions

TEST(ProgressiveStrat, AnAutomatonKeepsItsEarliestTransition) {
    DrivenModel driven(fork(), ProgressiveStrat());
    driven.script({realDraw(3.0), realDraw(1.0), realDraw(2.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0),
                   integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "1: main: in -> b") << "one pick in the automaton, one among automata, one alternative";
}

TEST(ProgressiveStrat, ATieWithinAnAutomatonIsAUniformPick) {
    DrivenModel driven(fork(), ProgressiveStrat());
    driven.script({realDraw(1.0), realDraw(2.0), realDraw(1.0), integerDraw(1, 0, 1), integerDraw(0, 0, 0),
                   integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "1: main: in -> c");
}

TEST(ProgressiveStrat, WithoutLocalChoiceAnAutomatonKeepsARandomTransition) {
    ProgressiveStrat strategy;
    strategy.setLocalChoice(false);
    DrivenModel driven(fork(), strategy);
    driven.script({realDraw(3.0), realDraw(1.0), realDraw(2.0), integerDraw(2, 0, 2), integerDraw(0, 0, 0),
                   integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "2: main: in -> c");
}

TEST(ProgressiveStrat, ATieBetweenAutomataIsAUniformPick) {
    for (const unsigned long choice : {0UL, 1UL}) {
        DrivenModel driven(twoJobs(), ProgressiveStrat());
        driven.script({realDraw(1.0), realDraw(1.0), integerDraw(choice, 0, 1), integerDraw(0, 0, 0)});
        EXPECT_EQ(driven.step(), choice == 0 ? "1: main.a: busy -> done" : "1: main.b: busy -> done");
    }
}

TEST(ProgressiveStrat, TheEarliestAutomatonWins) {
    DrivenModel driven(twoJobs(), ProgressiveStrat());
    driven.script({realDraw(1.0), realDraw(0.5), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "0.5: main.b: busy -> done");
}

TEST(ProgressiveStrat, NoSecondCandidateIsTriedWhenTheEarliestCannotBeTaken) {
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(x <= 4.0))
        .mode("early")
        .mode("late")
        .transition("busy", "early", when(x <= 1.0))
        .transition("busy", "late");
    DrivenModel driven(model, ProgressiveStrat());
    driven.script({realDraw(2.0), realDraw(3.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "2");
    EXPECT_EQ(driven.mode(), "busy");
}

TEST(ProgressiveStrat, WithoutActiveTransitionsItEndsAsADeadlockOrActionlock) {
    for (const auto& [bound, text] : {std::pair(0.0, "No possible simulation step found: Deadlock"),
                                      std::pair(-1.0, "No possible simulation step found: Deadlock"),
                                      std::pair(3.0, "No possible simulation step found: Actionlock")}) {
        ModelWriter model;
        model.implementation("Job.i").data(x).mode("stuck", invariant(x <= bound));
        DrivenModel driven(model, ProgressiveStrat());
        driven.script({});
        EXPECT_DEADLOCK(driven.step(), text);
    }
}

TEST(ProgressiveStrat, ADelayBeforeTheTransitionIsEnabledIsReportedAndTaken) {
    // Only rounding in the draw leads there: here the draw is longer than the set of delays, [2, 3].
    DrivenModel driven(job(x >= 2.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(1.5, 0.0, 1.0), integerDraw(0)});
    const EDA* eda = driven.eda("main");
    std::ostringstream expected;
    expected << "TOO SMALL main " << *eda->component()->transitions().front() << "\n[2, INFTY]\n[2, 3]\n[0, 3]\n"
             << *eda << "\n";
    ScriptedConsole console;
    driven.strategy().setConsole(&console);
    EXPECT_EQ(driven.step(), "0.5");
    EXPECT_EQ(console.text(), expected.str());
    EXPECT_EQ(console.flushes(), 1);
}

TEST(ProgressiveStrat, WithoutAConsoleAnEarlyDelayIsTakenWithoutAReport) {
    DrivenModel driven(job(x >= 2.0, x <= 3.0), ProgressiveStrat());
    driven.script({realDraw(1.5, 0.0, 1.0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "0.5");
}

// ---- The conservative attitude

TEST(ProgressiveStrat, AConservativeSuccessKeepsTheStepAndNoSnapshot) {
    DrivenModel driven = conservativeJob();
    driven.script({realDraw(0.5), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "0.5: main: busy -> done");
    EXPECT_EQ(driven.data(), "x = 0.5");
    EXPECT_THROW(driven.network().popState(), std::logic_error);
}

TEST(ProgressiveStrat, AConservativeFailureTakesTheTimeBackAndDrawsAnew) {
    DrivenModel driven = conservativeJob();
    driven.script({realDraw(2.0), integerDraw(0), realDraw(0.25), integerDraw(0), integerDraw(0)});
    const CapturedLog log(LogLevel::Debug);
    EXPECT_EQ(driven.step(), "0");
    EXPECT_EQ(log.texts("root.sim.strat"), (std::vector<std::string>{"Conservative attitude: retry"}));
    EXPECT_EQ(driven.data(), "x = 0");
    EXPECT_EQ(driven.strategyAs<ProgressiveStrat>().retries(), 1U);
    EXPECT_EQ(driven.step(), "0.25: main: busy -> done");
    EXPECT_THROW(driven.network().popState(), std::logic_error);
}

TEST(ProgressiveStrat, TheEleventhConservativeFailureIsADeadlock) {
    DrivenModel driven = conservativeJob();
    std::vector<ScriptedDraw> draws;
    for (int i = 0; i < 12; ++i) {
        draws.push_back(realDraw(2.0));
        draws.push_back(integerDraw(0));
    }
    driven.script(draws);
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(driven.step(), "0");
        if (i == 4) driven.simulator().reset();  // the count goes on through all runs
    }
    const CapturedLog log(LogLevel::Info);
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Conservative");
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Error, "root.sim.strat",
                                                      "Conservative attitude: Too many retries, aborting"}}));
    EXPECT_EQ(driven.data(), "x = 0");
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Conservative");
    EXPECT_EQ(driven.strategyAs<ProgressiveStrat>().retries(), 12U);
}

TEST(ProgressiveStrat, ACloneTakesOverSettingsAndRetries) {
    DrivenModel driven = conservativeJob();
    driven.script({realDraw(2.0), integerDraw(0)});
    driven.step();
    driven.strategyAs<ProgressiveStrat>().setLocalChoice(false);
    driven.strategyAs<ProgressiveStrat>().setExtendToInvariant(false);
    const std::unique_ptr<ProgressiveStrat> copy(driven.strategyAs<ProgressiveStrat>().clone());
    EXPECT_FALSE(copy->localChoice());
    EXPECT_FALSE(copy->extendToInvariant());
    EXPECT_EQ(copy->attitude(), ProgressiveAttitude::Conservative);
    EXPECT_EQ(copy->retries(), 1U);
}

}  // namespace vornrun::test
