#include "vornrun/algorithms/simulators/Simulator.h"

#include <cstddef>
#include <iostream>
#include <string>
#include <utility>

#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/property/VariableSubstitutionPropertyVisitor.h"

namespace vornrun {

namespace {

constexpr unsigned int NESTED_RUNS = 10000;

}  // namespace

const Log Simulator::sLogger("root.sim");

Simulator::Simulator(const VornComponentImplementation* component, const SimulationStrategy* strategy)
    : mComponent(component), mStrategy(strategy->clone()) {
    VornModelConstructor constructor;
    VORNRUN_LOG(sLogger, Info, "Will now construct model realization...");
    auto [realisation, valuation] = constructor.realise(mComponent);
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
    mProperty.reset();
    const VariablesToValueReferences references(mRealisation.get(), mValuation);
    VariableSubstitutionPropertyVisitor visitor(&references);
    mProperty.reset(property->accept(visitor));
}

bool Simulator::performRun(const CSLFormula* formula) {
    VORNRUN_LOG(sLogger, Debug, "Simulator starting new run");
    reset();
    PropertyResult verdict = PropertyUnknown;
    unsigned int step = 0;
    while (step < stepBound) {
        VORNRUN_LOG(sLogger, Debug, "Simulator step " << step);
        if (sLogger.isOn(LogLevel::Trace)) logState();
        // The first lap takes no step, so that the formula is tested in the initial state.
        if (step != 0 && !executeStep()) return false;
        ++step;
        // The first pass answers without nested estimates; only what it leaves open is worth one.
        verdict = formula->evaluate(this, true);
        if (verdict == PropertyUnknown) verdict = formula->evaluate(this, false);
        if (verdict != PropertyUnknown) break;
    }
    if (step == stepBound) hitStepBound();
    if (verdict != PropertyUnknown) std::cout << '.';
    return verdict == PropertyTrue;
}

bool Simulator::executeStep() {
    try {
        SimulationStep* step = mStrategy->executeStep();
        mTrace.addStep(step);
        VORNRUN_LOG(sLogger, Debug, "Simulator step executed " << *step);
        return true;
    } catch (const deadlock_exception& deadlock) {
        std::cout << 'd';
        const std::string heading = std::string("Simulator deadlocked: ") + deadlock.what();
        if (!allowDeadlock) {
            reportFailure(heading);
            throw abort_exception("A deadlock occurred");
        }
        VORNRUN_LOG(sLogger, Debug, heading);
        return false;
    }
}

// Also a verdict that arrives only at the last permitted evaluation hits the bound.
void Simulator::hitStepBound() {
    std::cout << 'b';
    if (!ignoreBoundError) {
        reportFailure("Simulator exceeded step bound");
        throw abort_exception("The step bound has been exceeded");
    }
    VORNRUN_LOG(sLogger, Debug, "Simulator exceeded step bound");
}

double Simulator::evaluate(const CSLFormula* formula) {
    unsigned int trueRuns = 0;
    for (unsigned int run = 0; run < NESTED_RUNS; ++run)
        if (performRun(formula)) ++trueRuns;
    VORNRUN_LOG(sLogger, Error, "Statistical uncertainty ignored for nested formula");
    return trueRuns / 10000.0;
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

// The report refreshes the flags of all data flows as well, so a run logged at TRACE may differ from another.
void Simulator::logState() const {
    VORNRUN_LOG(sLogger, Trace, "Current global state: " << *mNetwork);
    const std::string transitions = mNetwork->reportAllCurrentTransitions();
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
