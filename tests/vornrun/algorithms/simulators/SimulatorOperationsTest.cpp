// Calls each operation of simulators, steps, traces and generators, with the parameters and results that their users
// rely on.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <utility>

#include "tests/support/DrivenModel.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/simulators/ChernoffGenerator.h"
#include "vornrun/algorithms/simulators/MTRandomGenerator.h"
#include "vornrun/algorithms/simulators/PropertySimulator.h"
#include "vornrun/algorithms/simulators/RandomGenerator.h"
#include "vornrun/algorithms/simulators/SimulationExceptions.h"
#include "vornrun/algorithms/simulators/SimulationStep.h"
#include "vornrun/algorithms/simulators/SimulationTrace.h"
#include "vornrun/algorithms/simulators/StaticGenerator.h"
#include "vornrun/algorithms/simulators/infix_ostream_iterator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

ModelWriter ticker() {
    ModelWriter model;
    model.implementation("Ticker.i")
        .data(x)
        .mode("run", invariant(x <= 1.0))
        .transition("run", "run", when(x >= 1.0), set(x, 0.0));
    return model;
}

/// A qualitative generator that is done at once.
class InstantGenerator final : public QualitativeGenerator {
  public:
    void reset() override {}
    void addResult(bool) override {}
    bool done() override { return true; }
    bool getResult() const override { return true; }
};

}  // namespace

TEST(SimulatorOperations, OfASimulator) {
    DrivenModel driven(ticker(), AsapStrat());
    Simulator& simulator = driven.simulator();
    simulator.stepBound = 10000;
    simulator.allowDeadlock = true;
    simulator.ignoreBoundError = false;
    CSLFormula* const property = new CSLUntilPathFormula(new CSLTrue, new CSLTrue, 0.0, 10.0);
    const std::unique_ptr<CSLFormula> owned(property);
    simulator.setProperty(property);
    const bool result = simulator.performRun(simulator.property());
    EXPECT_TRUE(result);
    simulator.pushState();
    simulator.popState();
    simulator.reset();
    const Time now = static_cast<const Simulator&>(simulator).currentTime();
    EXPECT_EQ(now, 0.0);
    const RunOutcome outcome = simulator.run(property);
    EXPECT_EQ(outcome.verdict, PropertyTrue);
    MTRandomGenerator stream(1);
    EXPECT_EQ(simulator.runPristine(property, stream).verdict, PropertyTrue);
    RunContext& context = simulator;
    EXPECT_EQ(context.currentTime(), 0.0);
}

TEST(SimulatorOperations, OfAPropertySimulator) {
    const std::unique_ptr<VornSpecification> specification = parseModel(ticker());
    const VornComponentImplementation* component = *specification->findRootCandidates().begin();
    PropertySimulator simulator(component, new AsapStrat, 1U);
    simulator.stepBound = 10000;
    simulator.allowDeadlock = true;
    simulator.ignoreBoundError = false;
    simulator.seed = 1;
    const std::unique_ptr<CSLFormula> owned(new CSLUntilPathFormula(new CSLTrue, new CSLTrue, 0.0, 10.0));
    CSLFormula* const formula = owned.get();
    StaticGenerator quantitative(1);
    const std::pair<double, double> ratio = simulator.checkProbability(formula, &quantitative);
    EXPECT_EQ(ratio, std::pair(1.0, 1.0));
    InstantGenerator qualitative;
    const bool holds = simulator.checkProperty(formula, &qualitative);
    EXPECT_TRUE(holds);
    SimulationGenerator* const generator = &quantitative;
    simulator.executeSimulation(formula, generator);
    simulator.doWork(0U, formula, generator);
    const bool done = simulator.checkDone(generator);
    EXPECT_TRUE(done);
}

TEST(SimulatorOperations, OfStepsAndTraces) {
    DrivenModel driven(ticker(), AsapStrat());
    const QualifiedTransitions transitions{
        {driven.eda("main"), driven.eda("main")->component()->transitions().front().get()}};
    SimulationTrace trace;
    trace.addStep(new DiscreteSimulationStep(transitions));
    trace.addStep(new TimeSimulationStep(0.5));
    trace.addStep(new CombinedSimulationStep(transitions, 2.0));
    EXPECT_EQ(trace.time(), 2.5);
    std::ostringstream text;
    for (const auto& step : trace.steps()) {
        step->apply(&driven.network());
        step->print(text);
        text << step->time() << *step;
    }
    text << trace;
    EXPECT_NE(text.str().find("Delay: 2"), std::string::npos);
    trace.clear();
    EXPECT_EQ(trace.time(), 0.0);
    EXPECT_THROW(throw deadlock_exception("text"), std::logic_error);
    EXPECT_THROW(throw abort_exception("text"), std::logic_error);
    std::ostringstream list;
    infix_ostream_iterator<int> numbers(list, ", ");
    for (int i = 0; i < 3; ++i) *numbers++ = i;
    EXPECT_EQ(list.str(), "0, 1, 2");
}

TEST(SimulatorOperations, OfRandomGenerators) {
    MTRandomGenerator seeded(7UL);
    MTRandomGenerator unseeded;
    unseeded.initMT();
    RandomGenerator& random = seeded;
    const double real = random.uniform(1.0, 2.0);
    EXPECT_GE(real, 1.0);
    const double sample = random.exponential(0.5);
    EXPECT_GE(sample, 0.0);
    const unsigned long integer = random.uniform(3UL, 5UL);
    EXPECT_GE(integer, 3UL);
    const std::unique_ptr<RandomGenerator> copy(static_cast<const RandomGenerator&>(random).clone());
    copy->reseed(0UL);
}

TEST(SimulatorOperations, OfTraceCounts) {
    ChernoffGenerator chernoff(0.05, 0.95);
    StaticGenerator fixed(3U);
    for (QuantitativeGenerator* generator :
         {static_cast<QuantitativeGenerator*>(&chernoff), static_cast<QuantitativeGenerator*>(&fixed)}) {
        generator->addResult(true);
        const bool done = generator->done();
        EXPECT_FALSE(done);
        const std::pair<double, double> ratio = generator->getRatio();
        EXPECT_EQ(ratio.second, 1.0);
        const double confidence = generator->getConfidence();
        EXPECT_GE(confidence, 0.0);
        generator->reset();
    }
}

}  // namespace vornrun::test
