#pragma once
/// \file
/// One trace at a time: from the initial state through strategy steps until the property is decided or the run fails.

#include <memory>
#include <string>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/steps/SimulationExceptions.h"
#include "vornrun/algorithms/simulators/steps/SimulationTrace.h"
#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"
#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

class VornComponentImplementation;

/// Owns a private realisation of the model, its network, a strategy and the current property. One worker uses it.
class Simulator final : public RunContext {
  public:
    /// Realises the model and clones the strategy; neither argument is owned.
    /// \throws model_exception, eda_model_exception, std::out_of_range for a model that cannot be realised
    Simulator(const VornComponentImplementation* component, const SimulationStrategy* strategy);
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;
    ~Simulator() override;  // the class of the realisation is incomplete for whoever includes this header

    /// Makes the simulator's own copy of the formula, bound to its values; the argument stays the caller's.
    void setProperty(const CSLFormula* property);
    /// The bound copy, borrowed; null before setProperty().
    const CSLFormula* property() const noexcept { return mProperty.get(); }

    /// One complete run. Writes "." for a verdict, "b" at the step bound and "d" for a deadlock to standard output.
    /// A bound of N allows N evaluations of the formula and N - 1 steps, and the N-th evaluation hits the bound.
    /// \return whether the formula came out true; an undecided or deadlocked run counts as false
    /// \throws abort_exception at the step bound or in a deadlock, where these are not allowed
    bool performRun(const CSLFormula* formula);
    /// The nested estimate: the share of true results in exactly 10000 runs. Leaves the last run's trace behind.
    double evaluate(const CSLFormula* formula) override;
    /// Network, strategy and trace back to their start.
    void reset();
    /// Save and restore the network's configuration; trace and strategy are not saved.
    void pushState() override;
    void popState() override;
    /// The sum of all delays of the current run.
    Time currentTime() const override { return mTrace.time(); }

    SimulationStrategy* strategy() const noexcept { return mStrategy.get(); }
    EDANetwork* network() const noexcept { return mNetwork.get(); }
    const SimulationTrace& trace() const noexcept { return mTrace; }

    unsigned int stepBound = 10000;
    bool allowDeadlock = true;
    bool ignoreBoundError = false;

  private:
    /// Takes a step of the strategy. \return false in a deadlock that is allowed
    bool executeStep();
    void hitStepBound();
    void logState() const;
    void reportFailure(const std::string& heading) const;

    static const Log sLogger;  // "root.sim"
    const VornComponentImplementation* mComponent;
    // Members die from the last to the first: strategy, network, realisation, property, trace, valuation.
    ValuationPtr mValuation;
    SimulationTrace mTrace;
    std::unique_ptr<CSLFormula> mProperty;
    std::unique_ptr<VornComponentRealisation> mRealisation;
    std::unique_ptr<EDANetwork> mNetwork;
    std::unique_ptr<SimulationStrategy> mStrategy;
};

}  // namespace vornrun
