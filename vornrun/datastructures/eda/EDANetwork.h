#pragma once
/// \file
/// All automata of one realised model and the two topologies over them. A simulation changes the model only through the
/// network. Between two calls valuation and topologies are consistent. One thread at a time uses a network.

#include <iosfwd>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/eda/DD.h"
#include "vornrun/datastructures/eda/EC.h"
#include "vornrun/datastructures/eda/EDA.h"
#include "vornrun/datastructures/eda/GlobalConfigurationSnapshot.h"
#include "vornrun/datastructures/eda/QualifiedTransition.h"

namespace vornrun {

class EDANetwork {
  public:
    /// Builds automata and topologies and propagates data once. The instance tree is not owned; neither argument is
    /// null.
    /// \throws eda_model_exception when a component has no mode to start in
    /// \throws flow_topology_exception when flows form a cycle that something reads, or too long a chain
    EDANetwork(VornComponentRealisation* root, ValuationPtr valuation);
    EDANetwork(const EDANetwork&) = delete;
    EDANetwork& operator=(const EDANetwork&) = delete;
    ~EDANetwork();

    /// All automata, depth first, parents first.
    const std::vector<EDA*>& edas() const noexcept { return mEdaPointers; }
    /// Those that are active, in the same order.
    const std::vector<EDA*>& activeEDAs() const noexcept { return mActiveEDAs; }
    /// True when an active automaton has yet to take one of several reactivation transitions.
    bool reactivationPending() const noexcept { return mReactivationPending; }
    /// The local names of all event ports.
    const std::set<std::string>& eventNames() const noexcept { return mEventNames; }
    /// Null when the component has no automaton here.
    EDA* edaOfComponent(const VornComponentRealisation* component) const;
    std::vector<EDA*> edasOfComponents(const std::vector<const VornComponentRealisation*>& components) const;

    // Steps. Participants act in list order, each seeing what those before it wrote.
    void takeEventTransition(const QualifiedTransitions& transitions);
    /// As takeEventTransition(), but subcomponents are not switched to the new modes.
    void takeReactivationTransition(const QualifiedTransitions& transitions);
    /// Lets time pass for every active automaton; nothing is recomputed and no value propagated.
    void takeTimedTransition(Time delay);

    // What can happen now.
    bool isActive(const QualifiedEvent& event) const;
    bool isActive(const QualifiedTransition& transition) const;
    /// Active, locally takeable, and nonblocking or with a partner in another automaton that is able to react.
    bool isEnabled(const QualifiedEvent& event) const;
    bool isEnabled(const QualifiedTransition& transition) const;
    std::vector<QualifiedEvent> activeTriggers() const;
    std::vector<QualifiedEvent> enabledTriggers() const;
    /// The source transitions that are active or enabled, in the order of EC::getSourceTransitions().
    QualifiedTransitions activeTransitions() const;
    QualifiedTransitions enabledTransitions() const;
    /// The same without a copy, valid until the next step or restored state.
    const QualifiedTransitions& currentActiveTransitions() const;
    /// The same into a list that is emptied first.
    void collectEnabledTransitions(QualifiedTransitions& result) const;
    /// For each waiting automaton all its reactivation transitions; nothing about them is tested.
    ConnectionAsTransitions enabledReactivationTransitions() const;

    /// The transitions that fire together when the given one is taken now. The given one comes first, then for each
    /// port that hears it the alternatives of that automaton, passive listeners included. Empty when it cannot be
    /// taken.
    ConnectionAsTransitions enabledTransitions(const QualifiedTransition& transition) const;
    /// The same for an event, whose own automaton may have alternatives too.
    ConnectionAsTransitions enabledTransitions(const QualifiedEvent& event) const;
    /// The same into a result whose storage is reused.
    void collectEnabledTransitions(const QualifiedTransition& transition, ConnectionAsTransitions& result) const;
    void collectEnabledTransitions(const QualifiedEvent& event, ConnectionAsTransitions& result) const;

    /// Whether all guards hold and all invariants would hold afterwards; the state is restored.
    bool canTakeEventTransition(const QualifiedTransitions& transitions);
    /// Whether all invariants would hold after the delay; the state is restored. A refusal is reported at warn level.
    bool canTakeTimedTransition(Time delay);
    /// The invariants of all automata, sleeping ones too.
    bool allInvariantsHold() const;
    /// The delays that the invariants of the active automata allow.
    TimeInterval invariantsRemainValidFor() const;
    /// The delays at which the transition can be taken, a partner included when its trigger blocks.
    TimeInterval transitionRemainsEnabledFor(QualifiedTransition transition) const;
    TimeInterval triggerRemainsEnabledFor(QualifiedEvent event) const;

    // Snapshots.
    /// The present state; the caller owns it.
    GlobalConfigurationSnapshot* getState() const;
    /// Restores a state of this network, which stays the caller's. Flow flags stay as they are, and nothing is
    /// propagated.
    void setState(const GlobalConfigurationSnapshot* snapshot);
    void pushState();
    /// Restores and drops the last pushed state. \throws std::logic_error when there is none
    void popState();
    /// Keeps the present state and drops all pushed states.
    void applyState();
    /// Back to the state right after construction. Flow flags stay as they are, and so do pushed states.
    void reset();
    /// As reset(), and also drops all pushed states and refreshes the flow flags: afterwards nothing that a run can
    /// observe differs from the network right after construction.
    void restart();

    // Topologies.
    void computeActiveEDAs();
    void computeDynamicAttributes(EDA::TopologyEffect effect);
    void computeEventConnections();
    void computeDataDependencies();
    void propagateValuesThroughDataPorts();
    const EC& eventConnections() const noexcept { return *mEventConnections; }
    const DD& dataDependencies() const noexcept { return *mDataDependencies; }

    /// Refreshes everything, flow flags included, and lists the active triggers.
    std::string reportAllCurrentTransitions();
    /// The same list without the refresh: a run does not notice it.
    std::string reportActiveTriggers() const;
    /// Writes both topologies into the working directory.
    void dumpTopologies() const;
    friend std::ostream& operator<<(std::ostream& stream, const EDANetwork& network);

  private:
    class Collector;

    EDA* buildEDAs(const VornComponentRealisation* component);
    void storeEventNames();
    void groupSourceTransitions();
    void logTopologyChange() const;
    void restore(const GlobalConfigurationSnapshot& snapshot);
    bool hasListener(const RealisedEventPort* port) const;
    bool canBeHeard(const RealisedEventPort* port) const;
    bool hasAblePartner(const EDA* initiator, const RealisedEventPort* port) const;
    void collectListeners(const EDA* initiator, const RealisedEventPort* port, Collector& collector) const;
    std::string listEnabled(const ConnectionAsTransitions& enabled) const;
    TimeInterval partnersRemainValidFor(const EDA* initiator, const RealisedEventPort* port) const;

    static const Log sLogger;  // "root.eda.network"
    ValuationPtr mValuation;
    EDAChanges mChanges;
    std::vector<std::unique_ptr<EDA>> mEdas;
    std::vector<EDA*> mEdaPointers;
    EDA* mRootEDA;
    std::set<std::string> mEventNames;
    std::vector<EDA*> mActiveEDAs;
    std::unique_ptr<DD> mDataDependencies;
    std::unique_ptr<EC> mEventConnections;
    bool mReactivationPending;
    std::vector<std::unique_ptr<GlobalConfigurationSnapshot>> mStateStack;
    std::unique_ptr<GlobalConfigurationSnapshot> mInitialState;
    // The source transitions by EDA::index() and, within that, by RealisedMode::index() of the mode that they leave.
    std::vector<std::vector<std::vector<TransitionPtr>>> mSourcesInMode;
    // currentActiveTransitions() fills the list; it is stale when EDAChanges::configuration differs from the number.
    mutable QualifiedTransitions mActiveTransitions;
    mutable unsigned long mActiveTransitionsAt = 0;
    // Entries of results that have shrunk, kept for their storage.
    mutable ConnectionAsTransitions mSpareEntries;
};

}  // namespace vornrun
