#pragma once
/// \file
/// One run at a time: from the initial state through steps of the strategy until the property is decided.

#include <memory>
#include <string>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/RunLimits.h"
#include "vornrun/algorithms/simulators/RunOutcome.h"
#include "vornrun/algorithms/simulators/steps/RunObserver.h"
#include "vornrun/algorithms/simulators/steps/SimulationExceptions.h"
#include "vornrun/algorithms/simulators/steps/SimulationTrace.h"
#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"
#include "vornrun/algorithms/vornconstructor/ModelOptions.h"
#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

class VornComponentImplementation;

/// Owns a private realisation of the model, its network, a strategy and the current property. One thread at a time uses
/// it. The limits of its runs are public fields.
class Simulator final : public RunContext, public RunLimits {
  public:
    /// Realises the model and clones the strategy; neither argument is owned, and neither is null. The component
    /// outlives the simulator. \throws model_exception, eda_model_exception, flow_topology_exception, std::out_of_range
    /// for a model that cannot be realised
    /// \param options how model and property are built; by default as the tool needs them
    Simulator(const VornComponentImplementation* component, const SimulationStrategy* strategy,
              ModelOptions options = {});
    ~Simulator() override;  // the class of the realisation is incomplete for whoever includes this header

    /// Makes the simulator's own copy of the formula, bound to its values. The argument is not owned and not null.
    void setProperty(const CSLFormula* property);
    /// The bound copy; not owned by the caller, null before setProperty().
    const CSLFormula* property() const noexcept { return mProperty.get(); }

    /// Sees the starts and steps of all runs, and the endings of performRun(), nested runs included. Not owned; null
    /// for none.
    void setObserver(RunObserver* observer) noexcept { mObserver = observer; }

    /// One complete run from the initial state. The formula is bound to the values of this simulator; not null, not
    /// owned. What an earlier run leaves behind has an effect: the order of the race, the flags of data flows, the
    /// retries of ProgressiveStrat, and the position of the random generator.
    /// \return how the run ended, also in a deadlock or at the step bound, whatever the limits allow
    /// \throws whatever the strategy or the formula throws, except deadlock_exception of the strategy
    RunOutcome run(const CSLFormula* formula);
    /// As run(), but independent of all earlier runs: the trace depends on the model, the formula, the strategy's
    /// settings, the limits and the stream alone, also not on the log level. All draws come from the stream, which is
    /// not owned.
    /// A clone of an MTRandomGenerator shares the engine of real draws with others and is no stream of its own.
    RunOutcome runPristine(const CSLFormula* formula, RandomGenerator& stream);
    /// As run(), and tells the observer of the ending.
    /// \return whether the formula is true; false for a run that ended undecided
    /// \throws abort_exception at the step bound or in a deadlock, where these are not allowed; reports it in the log
    bool performRun(const CSLFormula* formula);

    /// The nested estimate: the share of true results in exactly 10000 calls of performRun(). The last run's trace
    /// stays.
    double evaluate(const CSLFormula* formula) override;
    /// Network, strategy and trace back to their start, as far as performRun() resets them.
    void reset();
    /// Save and restore the state of the network. Trace and strategy are not saved.
    void pushState() override;
    void popState() override;
    /// The sum of all delays of the current run, in model time.
    Time currentTime() const override { return mTrace.time(); }

    SimulationStrategy* strategy() const noexcept { return mStrategy.get(); }
    EDANetwork* network() const noexcept { return mNetwork.get(); }
    const GlobalValuation& valuation() const noexcept { return *mValuation; }
    /// The steps of the current or last run.
    const SimulationTrace& trace() const noexcept { return mTrace; }

  private:
    class PristineScope;

    RunOutcome runFromStart(const CSLFormula* formula);
    /// Takes a step of the strategy. \return false in a deadlock, whose reason is then the text of the outcome
    bool executeStep(RunOutcome& outcome);
    void meetDeadlock(const std::string& reason);
    void hitStepBound();
    void logState() const;
    void reportFailure(const std::string& heading) const;
    bool nested() const noexcept { return mNesting > 0; }

    static const Log sLogger;  // "root.sim"
    ModelOptions mOptions;
    RunObserver* mObserver = nullptr;
    unsigned int mNesting = 0;  // nested estimates that are going on
    bool mPristine = false;     // within runPristine()
    // Members die from the last to the first: strategy, network, realisation, property, trace, valuation.
    ValuationPtr mValuation;
    SimulationTrace mTrace;
    std::unique_ptr<CSLFormula> mProperty;
    std::unique_ptr<VornComponentRealisation> mRealisation;
    std::unique_ptr<EDANetwork> mNetwork;
    std::unique_ptr<SimulationStrategy> mStrategy;
};

}  // namespace vornrun
