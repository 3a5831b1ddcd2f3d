// Calls each operation of the strategies, with the parameters and results that their users rely on.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "tests/vornrun/algorithms/simulators/strategies/RaceTesting.h"
#include "vornrun/algorithms/simulators/random/MTRandomGenerator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/algorithms/simulators/strategies/EventsFirstStrat.h"
#include "vornrun/algorithms/simulators/strategies/InputStrat.h"
#include "vornrun/algorithms/simulators/strategies/LocalStrat.h"
#include "vornrun/algorithms/simulators/strategies/MaxTimeProgressStrat.h"
#include "vornrun/algorithms/simulators/strategies/ProgressiveStrat.h"
#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"

namespace vornrun::test {

namespace {

/// A pump that fails by itself and ticks in between.
ModelWriter model() {
    const Var x = var("x", Type::Clock);
    ModelWriter result;
    result.type("Pump").errorPort("fail", 0.5);
    result.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(x <= 2.0))
        .mode("down", ModeKind::Error)
        .transition("up", "up", when(x >= 1.0), set(x, 0.0))
        .transition("up", "down", on("fail"));
    return result;
}

}  // namespace

TEST(StrategyOperations, OfTheRaceForwardFromTheStrategy) {
    DrivenModel driven(onePump(), AsapStrat());
    SimulationStrategy& strategy = driven.strategy();
    driven.script({exponentialDraw(3.0), exponentialDraw(2.0), realDraw(0.5), integerDraw(0)});
    strategy.generateSamples();
    strategy.updateSamples(Time{1.0});
    const std::pair<Time, QualifiedEvent> first = strategy.getFirstSample();
    EXPECT_EQ(first.first, 1.0);
    EXPECT_EQ(strategy.eventSamples().size(), 2U);
    const Time delay = strategy.sampleFromInterval(TimeInterval(0.0, 1.0));
    EXPECT_EQ(delay, 0.5);
    const std::unique_ptr<SimulationStep> step(strategy.useFirstSample());
    EXPECT_EQ(step->time(), 1.0);
    EXPECT_EQ(strategy.samplePolicy(), SamplePolicy::KeepWhileAsleep);
    strategy.reset();
    EXPECT_EQ(strategy.getFirstSample().first, TimeInterval::INF_TIME);
}

TEST(StrategyOperations, OfAGenerator) {
    AsapStrat strategy;
    auto* generator = new MTRandomGenerator(1);
    strategy.setRandomGenerator(generator);
    const AsapStrat& asked = strategy;
    RandomGenerator* const own = asked.getRandomGenerator();
    EXPECT_EQ(own, generator);
}

template <class Strategy>
class EachStrategy : public testing::Test {};

using Automatic = testing::Types<AsapStrat, EventsFirstStrat, LocalStrat, MaxTimeProgressStrat, ProgressiveStrat>;
TYPED_TEST_SUITE(EachStrategy, Automatic);

TYPED_TEST(EachStrategy, TakesAStepAndChoosesThroughPublicOperations) {
    DrivenModel driven(model(), TypeParam());
    auto& strategy = driven.strategyAs<TypeParam>();
    const std::unique_ptr<SimulationStrategy> copy(strategy.clone());
    EXPECT_EQ(copy->name(), strategy.name());
    strategy.generateSamples();
    const std::unique_ptr<SimulationStep> own(strategy.simulateStep());
    EXPECT_NE(own, nullptr);
    driven.simulator().reset();
    const std::unique_ptr<SimulationStep> step(strategy.executeStep());
    EXPECT_NE(step, nullptr);
    EDA* const eda = driven.eda("main");
    const TransitionPtr only = eda->component()->transitions().front().get();
    const QualifiedTransitions chosen = strategy.selectTransitions(ConnectionAsTransitions{{eda, {only}}});
    EXPECT_EQ(chosen, (QualifiedTransitions{{eda, only}}));
}

TEST(StrategyOperations, OfTheInteractiveStrategyArePublicToo) {
    DrivenModel driven(model(), InputStrat());
    auto& strategy = driven.strategyAs<InputStrat>();
    EXPECT_THROW(strategy.simulateStep(), abort_exception);
    EDA* const eda = driven.eda("main");
    const TransitionPtr only = eda->component()->transitions().front().get();
    EXPECT_EQ(strategy.selectTransitions({{eda, {only}}}).size(), 1U);
    std::istringstream in("one line\nanother");
    std::stringstream line("former");
    const bool read = getLine(in, line);
    EXPECT_TRUE(read);
    EXPECT_EQ(line.str(), "one line");
}

// ---- The table

TEST(StrategyTable, HasTheNameOfEachStrategyThatItMakes) {
    int number = 0;
    for (const StrategyEntry& entry : strategyTable()) {
        EXPECT_EQ(entry.number, number++);
        EXPECT_EQ(entry.make()->name(), entry.name);
        EXPECT_EQ(makeStrategy(entry.number)->name(), entry.name);
        EXPECT_EQ(makeStrategy(entry.word)->name(), entry.name);
        EXPECT_EQ(findStrategy(entry.word), &entry);
    }
    EXPECT_EQ(number, 6);
}

TEST(StrategyTable, MakesTheFirstStrategyForAnUnknownNumberAndNoneForAnUnknownWord) {
    EXPECT_EQ(makeStrategy(6)->name(), "AsapStrat");
    EXPECT_EQ(makeStrategy(-1)->name(), "AsapStrat");
    EXPECT_EQ(makeStrategy("Asap"), nullptr);
    EXPECT_EQ(makeStrategy(""), nullptr);
}

}  // namespace vornrun::test
