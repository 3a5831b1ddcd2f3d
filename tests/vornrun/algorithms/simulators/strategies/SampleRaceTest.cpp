#include <gtest/gtest.h>

#include <limits>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/algorithms/simulators/strategies/RaceTesting.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

// ---- The race

TEST(SampleRace, EntersTheStochasticPortsInTheOrderOfTheNetwork) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    EXPECT_EQ(race(driven), "main.a.fail@- main.b.fail@-");
}

TEST(SampleRace, AModelWithoutStochasticPortsHasNoRace) {
    ModelWriter model;
    model.type("Lamp").outEvent("click").errorPort("never");
    model.implementation("Lamp.i");
    DrivenModel driven(model, ActingStrat());
    EXPECT_TRUE(driven.strategy().eventSamples().empty());
    const auto [time, event] = driven.strategy().getFirstSample();
    EXPECT_EQ(time, INF);
    EXPECT_EQ(event, QualifiedEvent(nullptr, nullptr));
}

TEST(SampleRace, SamplesAreRoundedDownToAGridOfTwoToTheMinusFourteen) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(0.70001, 0.5), exponentialDraw(2.0, 0.25)});
    driven.strategy().generateSamples();
    // 0.70001 * 16384 = 11468.96...
    EXPECT_EQ(driven.strategy().eventSamples().front().first, 11468.0 / 16384.0);
    EXPECT_EQ(race(driven), "main.fail@0.699951 main.leak@2");
}

TEST(SampleRace, ADrawBelowTheGridIsASampleOfZeroThatFiresAtOnce) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(6.1e-5), exponentialDraw(2.0), integerDraw(0)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "0: main: up -> down");
}

TEST(SampleRace, ASampleIsKeptFromStepToStep) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(2.0)});
    waitNext(driven, 0.5);
    driven.step();
    EXPECT_EQ(race(driven), "main.leak@1.5 main.fail@2.5");
    driven.step();
    EXPECT_EQ(race(driven), "main.leak@1 main.fail@2");
}

TEST(SampleRace, AStepOfZeroLeavesAllSamplesAsTheyAre) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(2.0)});
    driven.step();
    driven.strategy().updateSamples(-0.0);
    EXPECT_EQ(race(driven), "main.leak@2 main.fail@3");
}

TEST(SampleRace, AnEventThatAnActiveAutomatonNoLongerOffersLosesItsSample) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(1.0), exponentialDraw(3.0), integerDraw(0)});
    useSampleNext(driven);
    EXPECT_EQ(driven.step(), "1: main: up -> down");
    EXPECT_EQ(race(driven), "main.fail@- main.leak@2") << "dropped only when samples are next generated";
    waitNext(driven, 0.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.fail@- main.leak@-");
}

TEST(SampleRace, EqualSamplesStandInTheOrderOfAutomataAndThenOfPorts) {
    ModelWriter model;
    addPump(model);
    model.implementation("Plant.i").subcomponent("b", "Pump.i").subcomponent("a", "Pump.i");
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(2.0), exponentialDraw(1.0), exponentialDraw(2.0), exponentialDraw(1.0)});
    driven.strategy().generateSamples();
    EXPECT_EQ(race(driven), "main.a.leak@1 main.b.leak@1 main.a.fail@2 main.b.fail@2");
}

TEST(SampleRace, TheOrderOfTheRaceOutlivesAResetAndGovernsTheNextDraws) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script(
        {exponentialDraw(2.0, 0.5), exponentialDraw(1.0, 0.25), exponentialDraw(1.0, 0.25), exponentialDraw(1.0, 0.5)});
    driven.strategy().generateSamples();
    driven.simulator().reset();
    EXPECT_EQ(race(driven), "main.leak@- main.fail@-");
    driven.strategy().generateSamples();
    EXPECT_EQ(race(driven), "main.fail@1 main.leak@1") << "the tie falls by the order of ports";
}

TEST(SampleRace, ALargeRaceIsSortedByTimeAndThenByTheOrderOfTheNetwork) {
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

TEST(SampleRace, AnInfiniteSampleNeverFires) {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5);
    model.implementation("Pump.i").transition("main", "main", on("fail"));
    DrivenModel driven(model, ActingStrat());
    driven.script({exponentialDraw(std::numeric_limits<double>::infinity())});
    useSampleNext(driven);
    EXPECT_DEADLOCK(driven.step(), "Deadlock detected for probabilistic event: Exceeds invariants");
}

// ---- Sleeping automata

TEST(SampleRace, TheSampleOfASleepingAutomatonStandsStill) {
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

TEST(SampleRace, DropInactiveDropsTheSampleOfASleepingAutomaton) {
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

TEST(SampleRace, AlwaysFreshDrawsForEveryActiveEventInEachStep) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.strategy().setSamplePolicy(SamplePolicy::AlwaysFresh);
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0), exponentialDraw(4.0)});
    flipNext(driven);
    driven.step();
    waitNext(driven, 1.0);
    driven.step();
    EXPECT_EQ(race(driven), "main.b.fail@3 main.a.fail@-");
}

TEST(SampleRace, ActivityAfterTheStepDecidesWhichSamplesItCountsDown) {
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

TEST(SampleRace, ASleepingAutomatonIsNoFirstSample) {
    DrivenModel driven(switchedPlant(), ActingStrat());
    driven.script({exponentialDraw(3.0), exponentialDraw(9.0)});
    flipNext(driven);
    driven.step();
    EXPECT_EQ(driven.strategy().getFirstSample().first, 9.0);
    EXPECT_EQ(driven.strategy().getFirstSample().second.first, driven.eda("main.b"));
}

// ---- Samples that a step overshoots

TEST(SampleRace, AnOvershotSampleIsReportedDroppedAndDrawnAnew) {
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

TEST(SampleRace, ASampleWithinTheToleranceBelowZeroStays) {
    DrivenModel driven(onePump(), ActingStrat());
    driven.script({exponentialDraw(1.0), exponentialDraw(9.0)});
    waitNext(driven, 1.0000005);
    const CapturedLog log(LogLevel::Warn);
    driven.step();
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(driven.strategy().eventSamples().front().first, 1.0 - 1.0000005);
}

}  // namespace vornrun::test
