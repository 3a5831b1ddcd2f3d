#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/CapturedLog.h"
#include "tests/support/DrivenModel.h"
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
SimulationStep* flip(ActingStrat& strategy, DrivenModel& driven) {
    EDA* plant = driven.eda("main");
    for (const auto& transition : plant->component()->transitions())
        if (transition->source() == plant->currentMode()) return strategy.take({plant, transition.get()});
    return nullptr;
}

void flipNext(DrivenModel& driven) {
    driven.strategyAs<ActingStrat>().act = [&driven](ActingStrat& strategy) { return flip(strategy, driven); };
}
void waitNext(DrivenModel& driven, Time delay) {
    driven.strategyAs<ActingStrat>().act = [delay](ActingStrat& strategy) { return strategy.wait(delay); };
}
void useSampleNext(DrivenModel& driven) {
    driven.strategyAs<ActingStrat>().act = [](ActingStrat& strategy) { return strategy.useFirstSample(); };
}

/// The race as "main.a.fail@3 main.b.fail@-", "-" standing for no sample.
std::string race(DrivenModel& driven) {
    std::ostringstream text;
    const char* separator = "";
    for (const auto& [time, event] : driven.strategy().eventSamples()) {
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
    DrivenModel driven(switchedPlant(), ActingStrat());
    EXPECT_EQ(race(driven), "main.a.fail@- main.b.fail@-");
}

TEST(SimulationStrategy, AModelWithoutStochasticPortsHasNoRace) {
    ModelWriter model;
    model.type("Lamp").outEvent("click").errorPort("never");
    model.implementation("Lamp.i");
    DrivenModel driven(model, ActingStrat());
    EXPECT_TRUE(driven.strategy().eventSamples().empty());
    const auto [time, event] = driven.strategy().getFirstSample();
    EXPECT_EQ(time, INF);
    EXPECT_EQ(event, QualifiedEvent(nullptr, nullptr));
}

TEST(SimulationStrategy, SamplesAreRoundedDownToAGridOfTwoToTheMinusFourteen) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(0.70001, 0.5), exponentialDraw(2.0, 0.25)});
    driven.strategy().generateSamples();
    // 0.70001 * 16384 = 11468.96...
    EXPECT_EQ(driven.strategy().eventSamples().front().first, 11468.0 / 16384.0);
    EXPECT_EQ(race(driven), "main.fail@0.699951 main.leak@2");
}

TEST(SimulationStrategy, ADrawBelowTheGridIsASampleOfZeroThatFiresAtOnce) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(6.1e-5), exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "0: main: up -> down");
}

TEST(SimulationStrategy, ASampleIsKeptFromStepToStep) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(2.0)});
    waitNext(driven, 0.5);
    driven.step();
    EXPECT_EQ(race(driven), "main.leak@1.5 main.fail@2.5");
    driven.step();
    EXPECT_EQ(race(driven), "main.leak@1 main.fail@2");
}

TEST(SimulationStrategy, AStepOfZeroLeavesAllSamplesAsTheyAre) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(2.0)});
    driven.step();
    driven.strategy().updateSamples(-0.0);
    EXPECT_EQ(race(driven), "main.leak@2 main.fail@3");
}

TEST(SimulationStrategy, AnEventThatAnActiveAutomatonNoLongerOffersLosesItsSample) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(1.0), exponentialDraw(3.0), integerDraw(0)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "1: main: up -> down");
    EXPECT_EQ(race(driven), "main.fail@- main.leak@2") << "dropped only when samples are next generated";
    waitNext(driven, 0.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.fail@- main.leak@-");
}

TEST(SimulationStrategy, EqualSamplesStandInTheOrderOfAutomataAndThenOfPorts) {
    ModelWriter model;
    addPump(model);
    model.implementation("Plant.i").subcomponent("b", "Pump.i").subcomponent("a", "Pump.i");
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(2.0), exponentialDraw(1.0), exponentialDraw(2.0), exponentialDraw(1.0)});
    driven.strategy().generateSamples();
    EXPECT_EQ(race(driven), "main.a.leak@1 main.b.leak@1 main.a.fail@2 main.b.fail@2");
}

TEST(SimulationStrategy, TheOrderOfTheRaceOutlivesAResetAndGovernsTheNextDraws) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script(
        {exponentialDraw(2.0, 0.5), exponentialDraw(1.0, 0.25), exponentialDraw(1.0, 0.25), exponentialDraw(1.0, 0.5)});
    driven.strategy().generateSamples();
    driven.simulator().reset();
    EXPECT_EQ(race(driven), "main.leak@- main.fail@-");
    driven.strategy().generateSamples();
    EXPECT_EQ(race(driven), "main.fail@1 main.leak@1") << "the tie falls by the order of ports";
}

TEST(SimulationStrategy, ALargeRaceIsSortedByTimeAndThenByTheOrderOfTheNetwork) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5).errorPort("leak", 0.25);
    model.implementation("Pump.i").transition("main", "main", on("leak")).transition("main", "main", on("fail"));
    auto& plant = model.implementation("Plant.i");
    for (int i = 0; i < 150; ++i) plant.subcomponent("p" + std::to_string(i), "Pump.i");
    DrivenModel driven(model, ActingStrat());
    // From fresh samples in every order, and again after each step in which some of them are drawn anew.
    driven.strategy().setRandomGenerator(new FewValuesGenerator(7));
    for (int step = 0; step < 20; ++step) {
        driven.strategy().generateSamples();
        const auto& samples = driven.strategy().eventSamples();
        ASSERT_EQ(samples.size(), 300U);
        for (std::size_t i = 1; i < samples.size(); ++i) {
            const auto key = [](const SimulationStrategy::Sample& s) {
                return std::tuple(s.first, s.second.first->index(), s.second.second->id());
            };
            ASSERT_LT(key(samples[i - 1]), key(samples[i])) << "at " << i << " in step " << step;
        }
        driven.strategy().updateSamples(0.75);
        if (step % 5 == 4) driven.simulator().reset();
    }
}

TEST(SimulationStrategy, AnInfiniteSampleNeverFires) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").transition("main", "main", on("fail"));
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(std::numeric_limits<double>::infinity())});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

// ---- Sleeping automata

TEST(SimulationStrategy, TheSampleOfASleepingAutomatonStandsStill) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    flipNext(driven);
    driven.step();
    waitNext(driven, 5.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.a.fail@3 main.b.fail@4");
    flipNext(driven);
    driven.step();
    EXPECT_EQ(driven.eda("main.a")->active(), true);
    EXPECT_EQ(race(driven), "main.a.fail@3 main.b.fail@4");
}

TEST(SimulationStrategy, DropInactiveDropsTheSampleOfASleepingAutomaton) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.strategy().setSamplePolicy(SamplePolicy::DropInactive);
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0), exponentialDraw(2.0)});
    flipNext(driven);
    driven.step();
    EXPECT_EQ(race(driven), "main.a.fail@3 main.b.fail@9");
    driven.step();
    EXPECT_EQ(race(driven), "main.b.fail@9 main.a.fail@-");
    waitNext(driven, 0.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.a.fail@2 main.b.fail@9") << "drawn anew once it is awake";
}

TEST(SimulationStrategy, AlwaysFreshDrawsForEveryActiveEventInEachStep) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.strategy().setSamplePolicy(SamplePolicy::AlwaysFresh);
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0), exponentialDraw(4.0)});
    flipNext(driven);
    driven.step();
    waitNext(driven, 1.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.b.fail@3 main.a.fail@-");
}

TEST(SimulationStrategy, ActivityAfterTheStepDecidesWhichSamplesItCountsDown) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    // The plant is switched off by a step that is told to have lasted 2.
    driven.strategyAs<ActingStrat>().act = [&driven](ActingStrat& strategy) -> SimulationStep* {
        delete flip(strategy, driven);
        return new TimeSimulationStep(2.0);
    };
    driven.step();
    EXPECT_EQ(race(driven), "main.a.fail@3 main.b.fail@7");
}

TEST(SimulationStrategy, ASleepingAutomatonIsNoFirstSample) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    flipNext(driven);
    driven.step();
    EXPECT_EQ(driven.strategy().getFirstSample().first, 9.0);
    EXPECT_EQ(driven.strategy().getFirstSample().second.first, driven.eda("main.b"));
}

// ---- Samples that a step overshoots

TEST(SimulationStrategy, AnOvershotSampleIsReportedDroppedAndDrawnAnew) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(1.0), exponentialDraw(9.0), exponentialDraw(4.0)});
    waitNext(driven, 1.00001);
    const CapturedLog log(LogLevel::Warn);
    driven.step();
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Warn, "root.sim.strat", "Sample became negative!"}}));
    EXPECT_EQ(driven.strategy().eventSamples().front().first, INF);
    waitNext(driven, 0.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.fail@4 main.leak@7.99999");
}

TEST(SimulationStrategy, ASampleWithinTheToleranceBelowZeroStays) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(1.0), exponentialDraw(9.0)});
    waitNext(driven, 1.0000005);
    const CapturedLog log(LogLevel::Warn);
    driven.step();
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(driven.strategy().eventSamples().front().first, 1.0 - 1.0000005);
}

// ---- Letting the first sample fire

TEST(SimulationStrategy, TheFirstSampleFiresAfterItsDelayAndIsCleared) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "2: main: up -> up");
    EXPECT_EQ(race(driven), "main.leak@- main.fail@1");
}

TEST(SimulationStrategy, TheHeadOfTheRaceIsClearedAlsoWhenItIsASleepersSample) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.script({exponentialDraw(1.0), exponentialDraw(2.0), integerDraw(0)});
    flipNext(driven);
    driven.step();
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "2: main.b: up -> down");
    EXPECT_EQ(race(driven), "main.a.fail@- main.b.fail@0") << "the sleeper's is lost, the used one stays";
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
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(2.0), integerDraw(1)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "2: main: up -> down");
}

TEST(SimulationStrategy, ASampleBehindTheEndOfTheInvariantsIsADeadlock) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(x).mode("up", invariant(x <= 1.0)).transition("up", "up", on("fail"));
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(2.0)});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
    EXPECT_EQ(driven.data(), "x = 0") << "no time has passed";
}

TEST(SimulationStrategy, ASampleAtTheEndOfTheInvariantsFires) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(x).mode("up", invariant(x <= 2.0)).transition("up", "up", on("fail"));
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "2: main: up -> up");
}

TEST(SimulationStrategy, AnEventWhoseTransitionsAreAllBarredIsADeadlockAfterItsDelay) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").data(x).transition("main", "main", on("fail"), when(x >= 5.0));
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(2.0)});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: No enabled transitions");
    EXPECT_EQ(driven.data(), "x = 2");
}

TEST(SimulationStrategy, WithoutASampleAndABoundTheDeadlockSaysThatNothingCanOccur) {
    ModelWriter model;
    model.implementation("Lamp.i").data(var("x", Type::Clock));
    DrivenModel driven(model, ActingStrat());
    driven.script({});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: No event can occur");
    EXPECT_EQ(driven.data(), "x = 0");
}

TEST(SimulationStrategy, WithoutASampleTheInvariantsAreExceeded) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.implementation("Lamp.i").data(x).mode("on", invariant(x <= 4.0));
    DrivenModel driven(model, ActingStrat());
    driven.script({});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

TEST(SimulationStrategy, AnActiveAutomatonWithoutAnActiveEventLetsUnboundedTimePassInVain) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i")
        .data(var("x", Type::Clock))
        .mode("up")
        .mode("down")
        .transition("down", "up", on("fail"));
    DrivenModel driven(model, ActingStrat());
    driven.script({});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: No enabled transitions");
    EXPECT_EQ(driven.data(), "x = 1.79769e+308");
}

// ---- Delays from sets of delays

TEST(SimulationStrategy, ADelayFromOneRangeIsMeasuredFromItsLowerEnd) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({realDraw(0.5, 0.0, 3.0)});
    EXPECT_EQ(driven.strategy().sampleFromInterval(TimeInterval(2.0, 5.0)), 2.5);
}

TEST(SimulationStrategy, ADelayIsRoundedDownToAGridOfTwoToTheMinusThirtyTwo) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({realDraw(0.3)});
    // 0.3 * 2^32 = 1288490188.8
    EXPECT_EQ(driven.strategy().sampleFromInterval(TimeInterval(0.0, 1.0)), 1288490188.0 / 4294967296.0);
}

TEST(SimulationStrategy, ADelayBehindTheFirstOfTwoRangesFallsIntoTheSecond) {
    DrivenModel driven(onePump(), ActingStrat());
    const TimeInterval interval(std::vector<TimeRange>{{0.0, 1.0}, {3.0, 4.0}});
    driven.script({realDraw(1.5, 0.0, 2.0), realDraw(1.0, 0.0, 2.0), realDraw(2.0, 0.0, 2.0)});
    EXPECT_EQ(driven.strategy().sampleFromInterval(interval), 3.5);
    EXPECT_EQ(driven.strategy().sampleFromInterval(interval), 1.0) << "not above the end of the first range";
    EXPECT_EQ(driven.strategy().sampleFromInterval(interval), 4.0);
}

TEST(SimulationStrategy, ADelayFromThreeRangesWalksThemAll) {
    DrivenModel driven(onePump(), ActingStrat());
    const TimeInterval interval(std::vector<TimeRange>{{1.0, 2.0}, {4.0, 4.5}, {8.0, 10.0}});
    driven.script({realDraw(1.25), realDraw(2.0)});
    EXPECT_EQ(driven.strategy().sampleFromInterval(interval), 4.25);
    EXPECT_EQ(driven.strategy().sampleFromInterval(interval), 8.5);
}

TEST(SimulationStrategy, ADelayBehindAllRangesIsWhatTheLastSubtractionLeaves) {
    DrivenModel driven(onePump(), ActingStrat());
    const TimeInterval interval(std::vector<TimeRange>{{0.0, 1.0}, {3.0, 4.0}});
    driven.script({realDraw(2.5)});
    EXPECT_EQ(driven.strategy().sampleFromInterval(interval), 0.5) << "2.5 - 1 + 3 - 4";
}

TEST(SimulationStrategy, APointIsItsOwnDelayWithoutADraw) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({});
    EXPECT_EQ(driven.strategy().sampleFromInterval(TimeInterval(2.0, 2.0)), 2.0);
    const TimeInterval points(std::vector<TimeRange>{{2.0, 2.0}, {5.0, 5.0}});
    EXPECT_EQ(driven.strategy().sampleFromInterval(points), 2.0) << "the first point only";
    EXPECT_EQ(driven.strategy().sampleFromInterval(TimeInterval::EmptyInterval), 1.0);
}

TEST(SimulationStrategy, AnUnboundedDelayOverflowsToInfinity) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({realDraw(INF / 2)});
    EXPECT_TRUE(std::isinf(driven.strategy().sampleFromInterval(TimeInterval::InfiniteInterval)));
}

// ---- Alternatives

TEST(SimulationStrategy, EveryParticipantDrawsAlsoWithoutAChoice) {
    ModelWriter model;
    model.type("Ear").inEvent("go");
    model.implementation("Ear.i")
        .mode("a")
        .mode("b")
        .mode("c")
        .transition("a", "b", on("go"))
        .transition("a", "c", on("go"));
    model.type("Plant").outEvent("go");
    model.implementation("Plant.i")
        .mode("idle")
        .mode("busy")
        .transition("idle", "busy", on("go"))
        .subcomponent("ear", "Ear.i")
        .connectEvent("go", "ear.go");
    DrivenModel driven(model, ActingStrat());
    EDA* plant = driven.eda("main");
    const QualifiedTransition go(plant, plant->component()->transitions().front().get());
    const ConnectionAsTransitions options = driven.network().enabledTransitions(go);
    ASSERT_EQ(options.size(), 2U);
    driven.script({integerDraw(0, 0, 0), integerDraw(1, 0, 1)});
    const QualifiedTransitions chosen = driven.strategyAs<ActingStrat>().selectTransitions(options);
    EXPECT_EQ(tell(DiscreteSimulationStep(chosen)), "0: main: idle -> busy, main.ear: a -> c");
}

TEST(SimulationStrategy, AnAutomatonWithNothingToChooseFromIsADeadlockThatNamesIt) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({});
    EXPECT_DEADLOCK(driven.strategyAs<ActingStrat>().selectTransitions({{driven.eda("main"), {}}}),
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
    model.implementation("Plant.i")
        .mode("off")
        .mode("on")
        .transition("off", "on")
        .subcomponent("pump", "Pump.i", inModes("on"));
    DrivenModel driven(model, ActingStrat());
    const auto& script = driven.script({integerDraw(1, 0, 1), exponentialDraw(2.0)});
    flipNext(driven);
    driven.step();
    ASSERT_TRUE(driven.network().reactivationPending());
    EXPECT_EQ(driven.step(), "0: main.pump: a -> c");
    EXPECT_EQ(driven.strategyAs<ActingStrat>().steps, 1) << "the strategy itself is not asked";
    EXPECT_EQ(script.remaining(), 1U) << "no sample is drawn yet";
    EXPECT_FALSE(driven.network().reactivationPending());
    waitNext(driven, 0.5);
    EXPECT_EQ(driven.step(), "0.5");
    EXPECT_EQ(race(driven), "main.pump.fail@1.5");
}

// ---- Copies

TEST(SimulationStrategy, ACopyHasItsOwnGeneratorAndNoSamples) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.strategy().setSamplePolicy(SamplePolicy::DropInactive);
    const auto& script = driven.script({});
    const std::unique_ptr<SimulationStrategy> copy(driven.strategy().clone());
    EXPECT_EQ(copy->name(), "ActingStrat");
    EXPECT_NE(copy->getRandomGenerator(), driven.strategy().getRandomGenerator());
    EXPECT_EQ(&script, driven.strategy().getRandomGenerator());
    EXPECT_TRUE(copy->eventSamples().empty());
    EXPECT_EQ(script.reseeds(), (std::vector<unsigned long>{0})) << "the copy seeds itself from the device";
    EXPECT_EQ(copy->samplePolicy(), SamplePolicy::DropInactive);
    EXPECT_EQ(driven.strategy().eventSamples().size(), 2U);
}

TEST(SimulationStrategy, ANewStrategyKeepsSamplesOfSleepers) {
    EXPECT_EQ(ActingStrat().samplePolicy(), SamplePolicy::KeepWhileAsleep);
}

}  // namespace vornrun::test
