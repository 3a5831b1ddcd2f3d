#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/vornrun/algorithms/simulators/strategies/RaceTesting.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

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
