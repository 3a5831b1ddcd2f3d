#include "vornrun/algorithms/simulators/Simulator.h"

#include <cassert>
#include <cstddef>
#include <string>
#include <utility>

#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/property/VariableSubstitutionPropertyVisitor.h"

namespace vornrun {

namespace {

constexpr unsigned int NESTED_RUNS = 10000;

/// Counts a nested estimate for the life of the object.
class CountedNesting {
  public:
    explicit CountedNesting(unsigned int& nesting) : mNesting(nesting) { ++mNesting; }
    CountedNesting(const CountedNesting&) = delete;
    CountedNesting& operator=(const CountedNesting&) = delete;
    ~CountedNesting() { --mNesting; }

  private:
    unsigned int& mNesting;
};

}  // namespace

const Log Simulator::sLogger("root.sim");

/// For its lifetime the strategy draws from a stream, and reports do not touch the state of the network.
class Simulator::PristineScope {
  public:
    PristineScope(Simulator& simulator, RandomGenerator& stream) : mSimulator(simulator) {
        mSimulator.mStrategy->drawFrom(&stream);
        mSimulator.mPristine = true;
    }
    PristineScope(const PristineScope&) = delete;
    PristineScope& operator=(const PristineScope&) = delete;
    ~PristineScope() {
        mSimulator.mPristine = false;
        mSimulator.mStrategy->drawFrom(nullptr);
    }

  private:
    Simulator& mSimulator;
};

Simulator::Simulator(const VornComponentImplementation* component, const SimulationStrategy* strategy,
                     ModelOptions options)
    : mOptions(options), mStrategy(strategy->clone()) {
    assert(component != nullptr);
    VornModelConstructor constructor(mOptions);
    VORNRUN_LOG(sLogger, Info, "Will now construct model realization...");
    auto [realisation, valuation] = constructor.realise(component);
    mRealisation.reset(realisation);
    mValuation = std::move(valuation);
    VORNRUN_LOG(sLogger, Trace, *mRealisation);
    VORNRUN_LOG(sLogger, Info, "Will now construct EDA network from realized model...");
    mNetwork = std::make_unique<EDANetwork>(mRealisation.get(), mValuation);
    VORNRUN_LOG(sLogger, Info, "Construction of EDA network complete.");
    VORNRUN_LOG(sLogger, Info, "Initialized simulator with strategy " << mStrategy->name());
    mStrategy->registerSimulator(this, mNetwork.get());
}

Simulator::~Simulator() = default;

void Simulator::setProperty(const CSLFormula* property) {
    assert(property != nullptr);
    mProperty.reset();
    const VariablesToValueReferences references(mRealisation.get(), mValuation, mOptions);
    VariableSubstitutionPropertyVisitor visitor(&references);
    mProperty.reset(property->accept(visitor));
}

RunOutcome Simulator::run(const CSLFormula* formula) {
    VORNRUN_LOG(sLogger, Debug, "Simulator starting new run");
    reset();
    return runFromStart(formula);
}

RunOutcome Simulator::runPristine(const CSLFormula* formula, RandomGenerator& stream) {
    VORNRUN_LOG(sLogger, Debug, "Simulator starting new run");
    mNetwork->restart();
    mStrategy->restart();
    mTrace.clear();
    const PristineScope pristine(*this, stream);
    return runFromStart(formula);
}

RunOutcome Simulator::runFromStart(const CSLFormula* formula) {
    assert(formula != nullptr);
    if (mObserver != nullptr) mObserver->runStarted(nested());
    RunOutcome outcome;
    unsigned int evaluations = 0;
    while (outcome.verdict == PropertyUnknown && evaluations < stepBound) {
        VORNRUN_LOG(sLogger, Debug, "Simulator step " << evaluations);
        if (sLogger.isOn(LogLevel::Trace)) logState();
        // The first lap takes no step, so that the formula is tested in the initial state.
        if (evaluations != 0 && !executeStep(outcome)) {
            outcome.ending = RunEnding::deadlock;
            break;
        }
        ++evaluations;
        // The first pass answers without nested estimates. Only what it leaves open is worth one.
        outcome.verdict = formula->evaluate(this, true);
        if (outcome.verdict == PropertyUnknown) outcome.verdict = formula->evaluate(this, false);
    }
    // A verdict of the last permitted evaluation hits the step bound too.
    if (outcome.ending != RunEnding::deadlock && evaluations == stepBound) outcome.ending = RunEnding::stepBound;
    outcome.time = currentTime();
    return outcome;
}

bool Simulator::executeStep(RunOutcome& outcome) {
    try {
        SimulationStep* step = mStrategy->executeStep();
        mTrace.addStep(step);
        VORNRUN_LOG(sLogger, Debug, "Simulator step executed " << *step);
    } catch (const deadlock_exception& deadlock) {
        outcome.text = deadlock.what();
        return false;
    }
    ++outcome.steps;
    if (mObserver != nullptr) {
        const SimulationStep& step = *mTrace.steps().back();
        mObserver->stepTaken({outcome.steps, mTrace.time(), step.time(), step, nested()});
    }
    return true;
}

bool Simulator::performRun(const CSLFormula* formula) {
    const RunOutcome outcome = run(formula);
    if (outcome.ending == RunEnding::deadlock) meetDeadlock(outcome.text);
    if (outcome.ending == RunEnding::stepBound) hitStepBound();
    if (outcome.verdict != PropertyUnknown && mObserver != nullptr) mObserver->verdictReached(nested());
    return outcome.verdict == PropertyTrue;
}

void Simulator::meetDeadlock(const std::string& reason) {
    if (mObserver != nullptr) mObserver->deadlockReached(nested());
    const std::string heading = "Simulator deadlocked: " + reason;
    if (!allowDeadlock) {
        reportFailure(heading);
        throw abort_exception("A deadlock occurred");
    }
    VORNRUN_LOG(sLogger, Debug, heading);
}

void Simulator::hitStepBound() {
    if (mObserver != nullptr) mObserver->stepBoundHit(nested());
    if (!ignoreBoundError) {
        reportFailure("Simulator exceeded step bound");
        throw abort_exception("The step bound has been exceeded");
    }
    VORNRUN_LOG(sLogger, Debug, "Simulator exceeded step bound");
}

double Simulator::evaluate(const CSLFormula* formula) {
    const CountedNesting nesting(mNesting);
    unsigned int trueRuns = 0;
    for (unsigned int i = 0; i < NESTED_RUNS; ++i)
        if (performRun(formula)) ++trueRuns;
    VORNRUN_LOG(sLogger, Error, "Statistical uncertainty ignored for nested formula");
    return trueRuns / static_cast<double>(NESTED_RUNS);
}

void Simulator::reset() {
    mNetwork->reset();
    mStrategy->reset();
    mTrace.clear();
}

void Simulator::pushState() {
    VORNRUN_LOG(sLogger, Info, "Pushing simulator state");
    mNetwork->pushState();
}

void Simulator::popState() {
    VORNRUN_LOG(sLogger, Info, "Popping simulator state");
    mNetwork->popState();
}

// reportAllCurrentTransitions() also refreshes the flags of all data flows, so that a run may differ when it is logged
// at TRACE.
void Simulator::logState() const {
    VORNRUN_LOG(sLogger, Trace, "Current global state: " << *mNetwork);
    const std::string transitions =
        mPristine ? mNetwork->reportActiveTriggers() : mNetwork->reportAllCurrentTransitions();
    VORNRUN_LOG(sLogger, Trace, "Currently active transitions and invariants: \n" << transitions);
}

void Simulator::reportFailure(const std::string& heading) const {
    VORNRUN_LOG(sLogger, Error, heading);
    VORNRUN_LOG(sLogger, Warn, "Simulator trace: " << mTrace);
    VORNRUN_LOG(sLogger, Warn, "Current state:\n" << *mNetwork);
    VORNRUN_LOG(sLogger, Warn, "Current enabled transitions are:");
    const QualifiedTransitions active = mNetwork->activeTransitions();
    for (std::size_t i = 0; i < active.size(); ++i) {
        const auto& [eda, transition] = active[i];
        VORNRUN_LOG(sLogger, Warn, i << ": " << eda->identifier() << " : " << *transition->transition());
        VORNRUN_LOG(sLogger, Warn,
                    (transition->trigger()->stochastic() ? "    probabilistic: " : "    active in: ")
                        << mNetwork->transitionRemainsEnabledFor(active[i]));
    }
}

}  // namespace vornrun
