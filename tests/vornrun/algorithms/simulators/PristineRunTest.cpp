// A pristine run depends on the model, the formula, the strategy, the limits and the stream alone.
#include <gtest/gtest.h>

#include <exception>
#include <ios>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/support/CapturedLog.h"
#include "tests/support/ParseModel.h"
#include "tests/vornrun/datastructures/eda/RandomModel.h"
#include "vornrun/algorithms/simulators/Simulator.h"
#include "vornrun/algorithms/simulators/random/MTRandomGenerator.h"
#include "vornrun/algorithms/simulators/strategies/ProgressiveStrat.h"
#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLNextPathFormula.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock), n = var("n", Type::Int), m = var("m", Type::Int);

/// Never true, and false when the time is beyond its interval.
CSLUntilPathFormula openUntil(double time) { return CSLUntilPathFormula(new CSLTrue, new CSLFalse, 0.0, time); }

/// Notes each step with all its bits: number, time, delay, transitions, and the values after it.
class StepWriter final : public RunObserver {
  public:
    explicit StepWriter(Simulator& simulator) : mSimulator(simulator) {
        mText << std::hexfloat;
        mSimulator.setObserver(this);
    }
    StepWriter(const StepWriter&) = delete;
    StepWriter& operator=(const StepWriter&) = delete;
    ~StepWriter() override { mSimulator.setObserver(nullptr); }

    void stepTaken(const TakenStep& taken) override {
        if (taken.nested) return;
        mText << taken.number << " at " << taken.time << " after " << taken.delay << ":";
        if (const auto* discrete = dynamic_cast<const DiscreteSimulationStep*>(&taken.step)) {
            for (const auto& [eda, transition] : discrete->transitions()) {
                const auto& all = eda->component()->transitions();
                const auto& reactivations = eda->component()->reactivationTransitions();
                mText << " " << eda->identifier() << "#" << position(all, transition) << "#"
                      << position(reactivations, transition);
            }
        }
        mText << "\n";
        for (const EDA* eda : mSimulator.network()->edas()) mText << "  " << eda->valuationStr() << "\n";
    }
    std::string text() const { return mText.str(); }

  private:
    template <class Transitions>
    static std::size_t position(const Transitions& transitions, TransitionPtr wanted) {
        std::size_t index = 0;
        while (index < transitions.size() && transitions[index].get() != wanted) ++index;
        return index;
    }

    Simulator& mSimulator;
    std::ostringstream mText;
};

/// The model, and simulators over it under one strategy.
class Subject {
  public:
    Subject(const ModelWriter& model, std::unique_ptr<SimulationStrategy> strategy)
        : mSpecification(parseModel(model)),
          mRoot(*mSpecification->findRootCandidates().begin()),
          mStrategy(std::move(strategy)) {}

    std::unique_ptr<Simulator> simulator() const {
        auto result = std::make_unique<Simulator>(mRoot, mStrategy.get());
        result->stepBound = 20;
        result->ignoreBoundError = true;
        return result;
    }

  private:
    std::unique_ptr<VornSpecification> mSpecification;
    const VornComponentImplementation* mRoot;
    std::unique_ptr<SimulationStrategy> mStrategy;
};

/// The pristine run of that number, told in full.
std::string trace(Simulator& simulator, const CSLFormula& formula, unsigned long number) {
    const StepWriter steps(simulator);
    MTRandomGenerator stream(1000 + number);
    std::ostringstream text;
    text << std::hexfloat;
    try {
        const RunOutcome outcome = simulator.runPristine(&formula, stream);
        text << outcome.verdict << " " << static_cast<int>(outcome.ending) << " " << outcome.steps << " "
             << outcome.time << " " << outcome.text;
    } catch (const std::exception& fault) {
        text << fault.what();
    }
    return steps.text() + text.str();
}

/// Pristine runs of other numbers, which nobody looks at.
void runOthers(Simulator& simulator, const CSLFormula& formula, int count) {
    for (int i = 0; i < count; ++i) {
        MTRandomGenerator stream(2000 + static_cast<unsigned long>(i));
        try {
            simulator.runPristine(&formula, stream);
        } catch (const std::exception&) {  // what the run leaves behind is the point
        }
    }
}

/// Runs as the tool does, which leave their traces in the simulator.
void runAsTheTool(Simulator& simulator, const CSLFormula& formula, int count) {
    for (int i = 0; i < count; ++i) {
        try {
            simulator.performRun(&formula);
        } catch (const std::exception&) {  // what the run leaves behind is the point
        }
    }
}

void expectPristine(const Subject& subject, const CSLFormula& formula, int others) {
    constexpr unsigned long K = 7;
    const std::unique_ptr<Simulator> fresh = subject.simulator();
    const std::string alone = trace(*fresh, formula, K);
    EXPECT_NE(alone, "");

    runAsTheTool(*fresh, formula, 5);
    EXPECT_EQ(trace(*fresh, formula, K), alone) << "after runs as the tool does";

    const std::unique_ptr<Simulator> used = subject.simulator();
    runOthers(*used, formula, others);
    EXPECT_EQ(trace(*used, formula, K), alone) << "after other pristine runs, on another simulator";

    std::string onThread;
    std::thread([&] {
        const std::unique_ptr<Simulator> other = subject.simulator();
        runAsTheTool(*other, formula, 1);
        onThread = trace(*other, formula, K);
    }).join();
    EXPECT_EQ(onThread, alone) << "on another thread";
}

/// A pristine run draws nothing from the generator that the strategy owns.
void expectOwnGeneratorAlone(Simulator& simulator, const CSLFormula& formula) {
    RandomGenerator& own = *simulator.strategy()->getRandomGenerator();
    own.reseed(5);
    const unsigned long next = own.uniform(0UL, 1000000000UL);
    own.reseed(5);
    MTRandomGenerator stream(1);
    simulator.runPristine(&formula, stream);
    EXPECT_EQ(own.uniform(0UL, 1000000000UL), next);
}

/// Three pumps that fail, leak and are repaired; two exist only while the plant is on. Flows of the root are on in some
/// modes only.
ModelWriter plant() {
    ModelWriter model;
    model.type("Pump").errorPort("fail", 0.5).errorPort("leak", 0.25).errorPort("repair", 1.0).outData(m, 0);
    model.implementation("Pump.i")
        .data(x)
        .mode("up", invariant(x <= 4.0))
        .mode("down", ModeKind::Error)
        .transition("up", "up", on("leak"), set(m, m + 1))
        .transition("up", "up", when(x >= 2.0), set(x, 0.0))
        .transition("up", "down", on("fail"))
        .transition("down", "up", on("repair"), set(x, 0.0));
    model.implementation("Plant.i")
        .data(x)
        .data(n)
        .mode("on", invariant(x <= 3.0))
        .mode("off", invariant(x <= 1.0))
        .transition("on", "off", when(x >= 1.5), set(x, 0.0))
        .transition("off", "on", when(x >= 0.5), set(x, 0.0))
        .subcomponent("a", "Pump.i", inModes("on"))
        .subcomponent("b", "Pump.i", inModes("on"))
        .subcomponent("c", "Pump.i")
        .flow(n, var("a.m", Type::Int) + var("c.m", Type::Int), inModes("on"));
    return model;
}

class PristineRun : public testing::TestWithParam<std::string_view> {
  protected:
    static std::unique_ptr<SimulationStrategy> strategy() { return makeStrategy(GetParam()); }
};

}  // namespace

TEST_P(PristineRun, IsTheSameAfterAThousandOthersAndAnywhere) {
    const CapturedLog log(LogLevel::Fatal);
    expectPristine(Subject(plant(), strategy()), openUntil(50.0), 1000);
}

TEST_P(PristineRun, OfARandomModelIsTheSameAfterOthersAndAnywhere) {
    const CapturedLog log(LogLevel::Fatal);
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        Choices choices(seed);
        expectPristine(Subject(randomModel(choices), strategy()), openUntil(20.0), 5);
    }
}

TEST_P(PristineRun, DependsOnTheStream) {
    const Subject subject(plant(), strategy());
    const std::unique_ptr<Simulator> simulator = subject.simulator();
    const CSLUntilPathFormula formula = openUntil(50.0);
    const CapturedLog log(LogLevel::Fatal);
    EXPECT_NE(trace(*simulator, formula, 1), trace(*simulator, formula, 2));
}

TEST_P(PristineRun, LeavesTheStrategysOwnGeneratorAlone) {
    const Subject subject(plant(), strategy());
    const std::unique_ptr<Simulator> simulator = subject.simulator();
    const CSLUntilPathFormula formula = openUntil(50.0);
    const CapturedLog log(LogLevel::Fatal);
    expectOwnGeneratorAlone(*simulator, formula);
}

INSTANTIATE_TEST_SUITE_P(Automatic, PristineRun, testing::Values("asap", "event", "local", "maxtime", "progressive"),
                         [](const auto& word) { return std::string(word.param); });

TEST(PristineRuns, TheRetriesOfTheConservativeAttitudeStartAnew) {
    // The draws of a transition reach beyond its guard, where it cannot be taken.
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("run", invariant(x <= 9.0))
        .transition("run", "run", when(x <= 1.0), set(x, 0.0));
    auto conservative = std::make_unique<ProgressiveStrat>();
    conservative->setAttitude(ProgressiveAttitude::Conservative);
    const CapturedLog log(LogLevel::Fatal);
    expectPristine(Subject(model, std::move(conservative)), openUntil(50.0), 20);
}

TEST(PristineRuns, TheLogLevelChangesNothing) {
    // The flow of the part goes on with the part itself, but its flag follows only when a step changes data.
    ModelWriter model;
    model.type("Part").outData(m, 0);
    model.implementation("Part.i").data(n, 5).mode("only").flow(m, n);
    model.implementation("Root.i")
        .data(x)
        .mode("off", invariant(x <= 1.0))
        .mode("on", invariant(x <= 2.0))
        .mode("end", invariant(x <= 3.0))
        .transition("off", "on", when(x >= 1.0))
        .transition("on", "end", when(x >= 2.0))
        .transition("end", "end", when(x >= 3.0))
        .subcomponent("part", "Part.i", inModes("on", "end"));
    const CSLUntilPathFormula formula = openUntil(2.5);
    const CapturedLog silent(LogLevel::Fatal);
    const Subject subject(model, makeStrategy("asap"));
    const std::unique_ptr<Simulator> simulator = subject.simulator();
    const std::string alone = trace(*simulator, formula, 7);
    const CapturedLog log(LogLevel::Trace);
    EXPECT_EQ(trace(*simulator, formula, 7), alone);
}

TEST(PristineRuns, ANestedEstimateDrawsFromTheStreamToo) {
    auto* nested = new CSLProbabilityStateFormula(new CSLNextPathFormula(new CSLFalse, 0.0, 0.5), 0.5,
                                                  CSLProbabilityStateFormula::Operator::lessEqual);
    const CSLUntilPathFormula trueAfterTheEstimate(new CSLTrue, nested, 0.0, 2.5);
    const CapturedLog log(LogLevel::Fatal);
    const Subject subject(plant(), makeStrategy("asap"));
    const std::unique_ptr<Simulator> simulator = subject.simulator();
    simulator->stepBound = 2;
    expectOwnGeneratorAlone(*simulator, trueAfterTheEstimate);
    EXPECT_EQ(simulator->trace().steps().size(), 1U) << "of the last nested run";
}

}  // namespace vornrun::test
