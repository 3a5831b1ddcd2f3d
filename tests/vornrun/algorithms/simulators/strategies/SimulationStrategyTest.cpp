#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/CapturedLog.h"
#include "tests/support/RunningModel.h"
#include "tests/vornrun/algorithms/simulators/strategies/ActingStrat.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

constexpr Time INF = TimeInterval::INF_TIME;

/// A pump that leaks and fails by itself, and that only a failure stops.
void addPump(ModelWriter& model) {
    model.type("Pump").errorPort("fail", 0.5).errorPort("leak", 0.25);
    model.implementation("Pump.i")
        .mode("up")
        .mode("down", ModeKind::Error)
        .transition("up", "up", on("leak"))
        .transition("up", "down", on("fail"));
}

ModelWriter onePump() {
    ModelWriter model;
    addPump(model);
    return model;
}

/// A plant with a switch; the pump `a` exists only while the plant is on, `b` always.
ModelWriter switchedPlant() {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").mode("up").mode("down", ModeKind::Error).transition("up", "down", on("fail"));
    model.implementation("Plant.i")
        .mode("on")
        .mode("off")
        .transition("on", "off")
        .transition("off", "on")
        .subcomponent("a", "Pump.i", inModes("on"))
        .subcomponent("b", "Pump.i");
    return model;
}

/// Flips the switch of the plant.
SimulationStep* flip(ActingStrat& strategy, RunningModel& running) {
    EDA* plant = running.eda("main");
    for (const auto& transition : plant->component()->transitions())
        if (transition->source() == plant->currentMode()) return strategy.take({plant, transition.get()});
    return nullptr;
}

void flipNext(RunningModel& running) {
    running.strategyAs<ActingStrat>().act = [&running](ActingStrat& strategy) { return flip(strategy, running); };
}
void waitNext(RunningModel& running, Time delay) {
    running.strategyAs<ActingStrat>().act = [delay](ActingStrat& strategy) { return strategy.wait(delay); };
}
void useSampleNext(RunningModel& running) {
    running.strategyAs<ActingStrat>().act = [](ActingStrat& strategy) { return strategy.useFirstSample(); };
}

/// The race as "main.a.fail@3 main.b.fail@-", "-" standing for no sample.
std::string race(RunningModel& running) {
    std::ostringstream text;
    const char* separator = "";
    for (const auto& [time, event] : running.strategy().eventSamples()) {
        text << separator << event.first->identifier() << "." << event.second->identifier() << "@";
        if (time == INF) {
            text << "-";
        } else {
            text << time;
        }
        separator = " ";
    }
    return text.str();
}

}  // namespace

// ---- The race

TEST(SimulationStrategy, EntersTheStochasticPortsInTheOrderOfTheNetwork) {
    RunningModel running(switchedPlant(), ActingStrat());
    EXPECT_EQ(race(running), "main.a.fail@- main.b.fail@-");
}

TEST(SimulationStrategy, AModelWithoutStochasticPortsHasNoRace) {
    ModelWriter model;
    model.type("Lamp").outEvent("click").errorPort("never");
    model.implementation("Lamp.i");
    RunningModel running(model, ActingStrat());
    EXPECT_TRUE(running.strategy().eventSamples().empty());
    const auto [time, event] = running.strategy().getFirstSample();
    EXPECT_EQ(time, INF);
    EXPECT_EQ(event, QualifiedEvent(nullptr, nullptr));
}

TEST(SimulationStrategy, SamplesAreRoundedDownToAGridOfTwoToTheMinusFourteen) {
    RunningModel running(onePump(), ActingStrat());
    auto& script = running.script({exponentialDraw(0.70001), exponentialDraw(2.0)});
    running.strategy().generateSamples();
    // 0.70001 * 16384 = 11468.96...
    EXPECT_EQ(running.strategy().eventSamples().front().first, 11468.0 / 16384.0);
    EXPECT_EQ(race(running), "main.fail@0.699951 main.leak@2");
    EXPECT_EQ(argumentsOf(script), (std::vector<double>{0.5, 0.25})) << "each with the rate of its port";
}

TEST(SimulationStrategy, ADrawBelowTheGridIsASampleOfZeroThatFiresAtOnce) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(6.1e-5), exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(running);
    EXPECT_EQ(running.step(), "0: main: up -> down");
}

TEST(SimulationStrategy, ASampleIsKeptFromStepToStep) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(3.0), exponentialDraw(2.0)});
    waitNext(running, 0.5);
    running.step();
    EXPECT_EQ(race(running), "main.leak@1.5 main.fail@2.5");
    running.step();
    EXPECT_EQ(race(running), "main.leak@1 main.fail@2");
}

TEST(SimulationStrategy, AStepOfZeroLeavesAllSamplesAsTheyAre) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(3.0), exponentialDraw(2.0)});
    running.step();
    running.strategy().updateSamples(-0.0);
    EXPECT_EQ(race(running), "main.leak@2 main.fail@3");
}

TEST(SimulationStrategy, AnEventThatAnActiveAutomatonNoLongerOffersLosesItsSample) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(1.0), exponentialDraw(3.0), integerDraw(0)});
    useSampleNext(running);
    EXPECT_EQ(running.step(), "1: main: up -> down");
    EXPECT_EQ(race(running), "main.fail@- main.leak@2") << "dropped only when samples are next generated";
    waitNext(running, 0.0);
    running.step();
    EXPECT_EQ(race(running), "main.fail@- main.leak@-");
}

TEST(SimulationStrategy, EqualSamplesStandInTheOrderOfAutomataAndThenOfPorts) {
    ModelWriter model;
    addPump(model);
    model.implementation("Plant.i").subcomponent("b", "Pump.i").subcomponent("a", "Pump.i");
    RunningModel running(model, ActingStrat());
    running.script({exponentialDraw(2.0), exponentialDraw(1.0), exponentialDraw(2.0), exponentialDraw(1.0)});
    running.strategy().generateSamples();
    EXPECT_EQ(race(running), "main.a.leak@1 main.b.leak@1 main.a.fail@2 main.b.fail@2");
}

TEST(SimulationStrategy, TheOrderOfTheRaceOutlivesAResetAndGovernsTheNextDraws) {
    RunningModel running(onePump(), ActingStrat());
    auto& script = running.script(
        {exponentialDraw(2.0), exponentialDraw(1.0), exponentialDraw(1.0), exponentialDraw(1.0)});
    running.strategy().generateSamples();
    running.simulator().reset();
    EXPECT_EQ(race(running), "main.leak@- main.fail@-");
    running.strategy().generateSamples();
    EXPECT_EQ(argumentsOf(script), (std::vector<double>{0.5, 0.25, 0.25, 0.5}));
    EXPECT_EQ(race(running), "main.fail@1 main.leak@1") << "the tie falls by the order of ports";
}

TEST(SimulationStrategy, ALargeRaceIsSortedByTimeAndThenByTheOrderOfTheNetwork) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5).errorPort("leak", 0.25);
    model.implementation("Pump.i").transition("main", "main", on("leak")).transition("main", "main", on("fail"));
    auto& plant = model.implementation("Plant.i");
    for (int i = 0; i < 150; ++i) plant.subcomponent("p" + std::to_string(i), "Pump.i");
    RunningModel running(model, ActingStrat());
    // From fresh samples in every order, and again after each step in which some of them are drawn anew.
    running.strategy().setRandomGenerator(new FewValuesGenerator(7));
    for (int step = 0; step < 20; ++step) {
        running.strategy().generateSamples();
        const auto& samples = running.strategy().eventSamples();
        ASSERT_EQ(samples.size(), 300U);
        for (std::size_t i = 1; i < samples.size(); ++i) {
            const auto key = [](const SimulationStrategy::Sample& s) {
                return std::tuple(s.first, s.second.first->index(), s.second.second->id());
            };
            ASSERT_LT(key(samples[i - 1]), key(samples[i])) << "at " << i << " in step " << step;
        }
        running.strategy().updateSamples(0.75);
        if (step % 5 == 4) running.simulator().reset();
    }
}

TEST(SimulationStrategy, APortOfRateZeroNeverFires) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.0);
    model.implementation("Pump.i").transition("main", "main", on("fail"));
    RunningModel running(model, ActingStrat());
    running.script({exponentialDraw(std::numeric_limits<double>::infinity())});
    useSampleNext(running);
    EXPECT_DEADLOCK(running.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

// ---- Sleeping automata

TEST(SimulationStrategy, TheSampleOfASleepingAutomatonStandsStill) {
    RunningModel running(switchedPlant(), ActingStrat());
    running.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    flipNext(running);
    running.step();
    waitNext(running, 5.0);
    running.step();
    EXPECT_EQ(race(running), "main.a.fail@3 main.b.fail@4");
    flipNext(running);
    running.step();
    EXPECT_EQ(running.eda("main.a")->active(), true);
    EXPECT_EQ(race(running), "main.a.fail@3 main.b.fail@4");
}

TEST(SimulationStrategy, DropInactiveDropsTheSampleOfASleepingAutomaton) {
    RunningModel running(switchedPlant(), ActingStrat());
    running.strategy().setSamplePolicy(SamplePolicy::DropInactive);
    running.script({exponentialDraw(3.0), exponentialDraw(9.0), exponentialDraw(2.0)});
    flipNext(running);
    running.step();
    EXPECT_EQ(race(running), "main.a.fail@3 main.b.fail@9");
    running.step();
    EXPECT_EQ(race(running), "main.b.fail@9 main.a.fail@-");
    waitNext(running, 0.0);
    running.step();
    EXPECT_EQ(race(running), "main.a.fail@2 main.b.fail@9") << "drawn anew once it is awake";
}

TEST(SimulationStrategy, AlwaysFreshDrawsForEveryActiveEventInEachStep) {
    RunningModel running(switchedPlant(), ActingStrat());
    running.strategy().setSamplePolicy(SamplePolicy::AlwaysFresh);
    running.script({exponentialDraw(3.0), exponentialDraw(9.0), exponentialDraw(4.0)});
    flipNext(running);
    running.step();
    waitNext(running, 1.0);
    running.step();
    EXPECT_EQ(race(running), "main.b.fail@3 main.a.fail@-");
}

TEST(SimulationStrategy, ActivityAfterTheStepDecidesWhichSamplesItCountsDown) {
    RunningModel running(switchedPlant(), ActingStrat());
    running.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    // The plant is switched off by a step that is told to have lasted 2.
    running.strategyAs<ActingStrat>().act = [&running](ActingStrat& strategy) -> SimulationStep* {
        delete flip(strategy, running);
        return new TimeSimulationStep(2.0);
    };
    running.step();
    EXPECT_EQ(race(running), "main.a.fail@3 main.b.fail@7");
}

TEST(SimulationStrategy, ASleepingAutomatonIsNoFirstSample) {
    RunningModel running(switchedPlant(), ActingStrat());
    running.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    flipNext(running);
    running.step();
    EXPECT_EQ(running.strategy().getFirstSample().first, 9.0);
    EXPECT_EQ(running.strategy().getFirstSample().second.first, running.eda("main.b"));
}

// ---- Samples that a step overshoots

TEST(SimulationStrategy, AnOvershotSampleIsReportedDroppedAndDrawnAnew) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(1.0), exponentialDraw(9.0), exponentialDraw(4.0)});
    waitNext(running, 1.00001);
    const CapturedLog log(LogLevel::Warn);
    running.step();
    EXPECT_EQ(log.records(),
              (std::vector<LogRecord>{{LogLevel::Warn, "root.sim.strat", "Sample became negative!"}}));
    EXPECT_EQ(running.strategy().eventSamples().front().first, INF);
    waitNext(running, 0.0);
    running.step();
    EXPECT_EQ(race(running), "main.fail@4 main.leak@7.99999");
}

TEST(SimulationStrategy, ASampleWithinTheToleranceBelowZeroStays) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(1.0), exponentialDraw(9.0)});
    waitNext(running, 1.0000005);
    const CapturedLog log(LogLevel::Warn);
    running.step();
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(running.strategy().eventSamples().front().first, 1.0 - 1.0000005);
}

// ---- Letting the first sample fire

TEST(SimulationStrategy, TheFirstSampleFiresAfterItsDelayAndIsCleared) {
    RunningModel running(onePump(), ActingStrat());
    running.script({exponentialDraw(3.0), exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(running);
    EXPECT_EQ(running.step(), "2: main: up -> up");
    EXPECT_EQ(race(running), "main.leak@- main.fail@1");
}

TEST(SimulationStrategy, TheHeadOfTheRaceIsClearedAlsoWhenItIsASleepersSample) {
    RunningModel running(switchedPlant(), ActingStrat());
    running.script({exponentialDraw(1.0), exponentialDraw(2.0), integerDraw(0)});
    flipNext(running);
    running.step();
    useSampleNext(running);
    EXPECT_EQ(running.step(), "2: main.b: up -> down");
    EXPECT_EQ(race(running), "main.a.fail@- main.b.fail@0") << "the sleeper's is lost, the used one stays";
}

TEST(SimulationStrategy, AnEventChoosesAmongTheAlternativesOfItsOwnAutomaton) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .mode("up")
        .mode("slow")
        .mode("down")
        .transition("up", "slow", on("fail"))
        .transition("up", "down", on("fail"));
    RunningModel running(model, ActingStrat());
    running.script({exponentialDraw(2.0), integerDraw(1)});
    useSampleNext(running);
    EXPECT_EQ(running.step(), "2: main: up -> down");
}

TEST(SimulationStrategy, ASampleBehindTheEndOfTheInvariantsIsADeadlock) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(x).mode("up", invariant(x <= 1.0)).transition("up", "up", on("fail"));
    RunningModel running(model, ActingStrat());
    running.script({exponentialDraw(2.0)});
    useSampleNext(running);
    EXPECT_DEADLOCK(running.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
    EXPECT_EQ(running.data(), "x = 0") << "no time has passed";
}

TEST(SimulationStrategy, ASampleAtTheEndOfTheInvariantsFires) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(x).mode("up", invariant(x <= 2.0)).transition("up", "up", on("fail"));
    RunningModel running(model, ActingStrat());
    running.script({exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(running);
    EXPECT_EQ(running.step(), "2: main: up -> up");
}

TEST(SimulationStrategy, AnEventWhoseTransitionsAreAllBarredIsADeadlockAfterItsDelay) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(x).transition("main", "main", on("fail"), when(x >= 5.0));
    RunningModel running(model, ActingStrat());
    running.script({exponentialDraw(2.0)});
    useSampleNext(running);
    EXPECT_DEADLOCK(running.step(), "Deadlock detected for probabilistic event: No enabled transitions");
    EXPECT_EQ(running.data(), "x = 2");
}

TEST(SimulationStrategy, WithoutASampleAndABoundTheDeadlockSaysThatNothingCanOccur) {
    ModelWriter model;
    model.implementation("Lamp.i").data(var("x", Type::Clock));
    RunningModel running(model, ActingStrat());
    running.script({});
    useSampleNext(running);
    EXPECT_DEADLOCK(running.step(), "Deadlock detected for probabilistic event: No event can occur");
    EXPECT_EQ(running.data(), "x = 0");
}

TEST(SimulationStrategy, WithoutASampleTheInvariantsAreExceeded) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.implementation("Lamp.i").data(x).mode("on", invariant(x <= 4.0));
    RunningModel running(model, ActingStrat());
    running.script({});
    useSampleNext(running);
    EXPECT_DEADLOCK(running.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

TEST(SimulationStrategy, AnActiveAutomatonWithoutAnActiveEventLetsUnboundedTimePassInVain) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(var("x", Type::Clock)).mode("up").mode("down").transition("down", "up",
                                                                                                   on("fail"));
    RunningModel running(model, ActingStrat());
    running.script({});
    useSampleNext(running);
    EXPECT_DEADLOCK(running.step(), "Deadlock detected for probabilistic event: No enabled transitions");
    EXPECT_EQ(running.data(), "x = 1.79769e+308");
}

// ---- Delays from sets of delays

TEST(SimulationStrategy, ADelayFromOneRangeIsMeasuredFromItsLowerEnd) {
    RunningModel running(onePump(), ActingStrat());
    auto& script = running.script({realDraw(0.5)});
    EXPECT_EQ(running.strategy().sampleFromInterval(TimeInterval(2.0, 5.0)), 2.5);
    EXPECT_EQ(argumentsOf(script), (std::vector<double>{3.0})) << "drawn from 0 to the length";
}

TEST(SimulationStrategy, ADelayIsRoundedDownToAGridOfTwoToTheMinusThirtyTwo) {
    RunningModel running(onePump(), ActingStrat());
    running.script({realDraw(0.3)});
    // 0.3 * 2^32 = 1288490188.8
    EXPECT_EQ(running.strategy().sampleFromInterval(TimeInterval(0.0, 1.0)), 1288490188.0 / 4294967296.0);
}

TEST(SimulationStrategy, ADelayBehindTheFirstOfTwoRangesFallsIntoTheSecond) {
    RunningModel running(onePump(), ActingStrat());
    const TimeInterval interval(std::vector<TimeRange>{{0.0, 1.0}, {3.0, 4.0}});
    auto& script = running.script({realDraw(1.5), realDraw(1.0), realDraw(2.0)});
    EXPECT_EQ(running.strategy().sampleFromInterval(interval), 3.5);
    EXPECT_EQ(running.strategy().sampleFromInterval(interval), 1.0) << "not above the end of the first range";
    EXPECT_EQ(running.strategy().sampleFromInterval(interval), 4.0);
    EXPECT_EQ(argumentsOf(script), (std::vector<double>{2.0, 2.0, 2.0}));
}

TEST(SimulationStrategy, ADelayFromThreeRangesWalksThemAll) {
    RunningModel running(onePump(), ActingStrat());
    const TimeInterval interval(std::vector<TimeRange>{{1.0, 2.0}, {4.0, 4.5}, {8.0, 10.0}});
    running.script({realDraw(1.25), realDraw(2.0)});
    EXPECT_EQ(running.strategy().sampleFromInterval(interval), 4.25);
    EXPECT_EQ(running.strategy().sampleFromInterval(interval), 8.5);
}

TEST(SimulationStrategy, ADelayBehindAllRangesIsWhatTheLastSubtractionLeaves) {
    RunningModel running(onePump(), ActingStrat());
    const TimeInterval interval(std::vector<TimeRange>{{0.0, 1.0}, {3.0, 4.0}});
    running.script({realDraw(2.5)});
    EXPECT_EQ(running.strategy().sampleFromInterval(interval), 0.5) << "2.5 - 1 + 3 - 4";
}

TEST(SimulationStrategy, APointIsItsOwnDelayWithoutADraw) {
    RunningModel running(onePump(), ActingStrat());
    running.script({});
    EXPECT_EQ(running.strategy().sampleFromInterval(TimeInterval(2.0, 2.0)), 2.0);
    const TimeInterval points(std::vector<TimeRange>{{2.0, 2.0}, {5.0, 5.0}});
    EXPECT_EQ(running.strategy().sampleFromInterval(points), 2.0) << "the first point only";
    EXPECT_EQ(running.strategy().sampleFromInterval(TimeInterval::EmptyInterval), 1.0);
}

TEST(SimulationStrategy, AnUnboundedDelayOverflowsToInfinity) {
    RunningModel running(onePump(), ActingStrat());
    running.script({realDraw(INF / 2)});
    EXPECT_TRUE(std::isinf(running.strategy().sampleFromInterval(TimeInterval::InfiniteInterval)));
}

// ---- Alternatives

TEST(SimulationStrategy, EveryParticipantDrawsAlsoWithoutAChoice) {
    ModelWriter model;
    model.type("Ear").inEvent("go");
    model.implementation("Ear.i").mode("a").mode("b").mode("c").transition("a", "b", on("go")).transition("a", "c",
                                                                                                          on("go"));
    model.type("Plant").outEvent("go");
    model.implementation("Plant.i")
        .mode("idle")
        .mode("busy")
        .transition("idle", "busy", on("go"))
        .subcomponent("ear", "Ear.i")
        .connectEvent("go", "ear.go");
    RunningModel running(model, ActingStrat());
    EDA* plant = running.eda("main");
    const QualifiedTransition go(plant, plant->component()->transitions().front().get());
    const ConnectionAsTransitions options = running.network().enabledTransitions(go);
    ASSERT_EQ(options.size(), 2U);
    auto& script = running.script({integerDraw(0), integerDraw(1)});
    const QualifiedTransitions chosen = running.strategyAs<ActingStrat>().selectTransitions(options);
    EXPECT_EQ(argumentsOf(script), (std::vector<double>{0.0, 1.0})) << "the highest index of each";
    EXPECT_EQ(tell(DiscreteSimulationStep(chosen)), "0: main: idle -> busy, main.ear: a -> c");
}

TEST(SimulationStrategy, AnAutomatonWithNothingToChooseFromIsADeadlockThatNamesIt) {
    RunningModel running(onePump(), ActingStrat());
    running.script({});
    EXPECT_DEADLOCK(running.strategyAs<ActingStrat>().selectTransitions({{running.eda("main"), {}}}),
                    "No possible simulation step found: main in mode up has no reactivation transition to take");
}

// ---- Reactivation

TEST(SimulationStrategy, APendingReactivationIsTheWholeStep) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .mode("a")
        .mode("b")
        .mode("c")
        .transition("b", "c", on("fail"))
        .transition("c", "b", on("fail"))
        .reactivation("a", "b")
        .reactivation("a", "c");
    model.implementation("Plant.i").mode("off").mode("on").transition("off", "on").subcomponent("pump", "Pump.i",
                                                                                                inModes("on"));
    RunningModel running(model, ActingStrat());
    auto& script = running.script({integerDraw(1), exponentialDraw(2.0)});
    flipNext(running);
    running.step();
    ASSERT_TRUE(running.network().reactivationPending());
    EXPECT_EQ(running.step(), "0: main.pump: a -> c");
    EXPECT_EQ(running.strategyAs<ActingStrat>().steps, 1) << "the strategy itself is not asked";
    EXPECT_EQ(argumentsOf(script), (std::vector<double>{1.0})) << "no sample is drawn yet";
    EXPECT_FALSE(running.network().reactivationPending());
    waitNext(running, 0.5);
    EXPECT_EQ(running.step(), "0.5");
    EXPECT_EQ(race(running), "main.pump.fail@1.5");
}

// ---- Copies

TEST(SimulationStrategy, ACopyHasItsOwnGeneratorAndNoSamples) {
    RunningModel running(onePump(), ActingStrat());
    running.strategy().setSamplePolicy(SamplePolicy::DropInactive);
    auto& script = running.script({});
    const std::unique_ptr<SimulationStrategy> copy(running.strategy().clone());
    EXPECT_EQ(copy->name(), "ActingStrat");
    EXPECT_NE(copy->getRandomGenerator(), running.strategy().getRandomGenerator());
    EXPECT_EQ(&script, running.strategy().getRandomGenerator());
    EXPECT_TRUE(copy->eventSamples().empty());
    EXPECT_EQ(copy->samplePolicy(), SamplePolicy::DropInactive);
    EXPECT_EQ(running.strategy().eventSamples().size(), 2U);
}

TEST(SimulationStrategy, ANewStrategyKeepsSamplesOfSleepers) {
    EXPECT_EQ(ActingStrat().samplePolicy(), SamplePolicy::KeepWhileAsleep);
}

}  // namespace vornrun::test
