#include "vornrun/algorithms/simulators/steps/SimulationTrace.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

#include "tests/support/DrivenModel.h"
#include "vornrun/algorithms/simulators/steps/infix_ostream_iterator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"

namespace vornrun::test {

namespace {

/// Takes note of its end, and pretends to have a delay without being a time step.
class MortalStep final : public SimulationStep {
  public:
    explicit MortalStep(int* deaths) : mDeaths(deaths) {}
    ~MortalStep() override { ++*mDeaths; }
    void apply(EDANetwork*) const override {}
    Time time() const override { return 7.0; }
    std::ostream& print(std::ostream& stream) const override { return stream << "mortal"; }

  private:
    int* mDeaths;
};

std::string printed(const SimulationTrace& trace) {
    std::ostringstream text;
    text << trace;
    return text.str();
}

std::string joined(const std::vector<int>& numbers) {
    std::ostringstream text;
    std::copy(numbers.begin(), numbers.end(), infix_ostream_iterator<int>(text, ", "));
    return text.str();
}

}  // namespace

TEST(SimulationTrace, StartsEmptyAtTimeZero) {
    const SimulationTrace trace;
    EXPECT_EQ(trace.time(), 0.0);
    EXPECT_TRUE(trace.steps().empty());
    EXPECT_EQ(printed(trace), "");
}

TEST(SimulationTrace, ADiscreteAndACombinedStepTakeTheCombinedOnesTime) {
    ModelWriter model;
    model.implementation("Lamp.i").mode("off").mode("on").transition("off", "on");
    DrivenModel driven(model, AsapStrat());
    EDA* lamp = driven.eda("main");
    const QualifiedTransition transition(lamp, lamp->component()->transitions().front().get());
    std::ostringstream declaration;
    declaration << *transition.second->transition();

    SimulationTrace trace;
    trace.addStep(new DiscreteSimulationStep({transition}));
    EXPECT_EQ(trace.time(), 0.0);
    trace.addStep(new CombinedSimulationStep({transition}, 2.5));
    EXPECT_EQ(trace.time(), 2.5);
    EXPECT_EQ(printed(trace), "main : " + declaration.str() + "\nDelay: 2.5\nmain : " + declaration.str());
}

TEST(SimulationTrace, ATimeStepOfZeroAddsNothing) {
    SimulationTrace trace;
    trace.addStep(new TimeSimulationStep(1.5));
    trace.addStep(new TimeSimulationStep(0.0));
    EXPECT_EQ(trace.time(), 1.5);
    EXPECT_EQ(trace.steps().size(), 2U);
    EXPECT_EQ(printed(trace), "Delay: 1.5\nDelay: 0");
}

TEST(SimulationTrace, OnlyTimeStepsAddTheirDelay) {
    int deaths = 0;
    SimulationTrace trace;
    trace.addStep(new MortalStep(&deaths));
    EXPECT_EQ(trace.time(), 0.0);
}

TEST(SimulationTrace, AClearedTraceHasNeitherStepsNorTime) {
    int deaths = 0;
    SimulationTrace trace;
    trace.addStep(new TimeSimulationStep(2.5));
    trace.addStep(new MortalStep(&deaths));
    trace.clear();
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(trace.time(), 0.0);
    EXPECT_TRUE(trace.steps().empty());
    EXPECT_EQ(printed(trace), "");
}

TEST(SimulationTrace, TheEndOfATraceIsTheEndOfItsSteps) {
    int deaths = 0;
    {
        SimulationTrace trace;
        trace.addStep(new MortalStep(&deaths));
        trace.addStep(new MortalStep(&deaths));
    }
    EXPECT_EQ(deaths, 2);
}

TEST(InfixOstreamIterator, WritesTheDelimiterBetweenElementsOnly) {
    EXPECT_EQ(joined({}), "");
    EXPECT_EQ(joined({1}), "1");
    EXPECT_EQ(joined({1, 2, 3}), "1, 2, 3");
}

}  // namespace vornrun::test
