#pragma once
/// \file
/// The questions to a network answered from nothing: by walking the component tree at every call, straight by the
/// definitions and without remembering anything between calls but what never changes. Slow, and independent of the
/// topologies.

#include <tuple>
#include <unordered_map>
#include <vector>

#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun::test {

class PlainNetwork {
  public:
    using Target = std::tuple<EDA*, const RealisedEventPort*, bool>;
    using Targets = std::vector<Target>;

    /// Neither is owned. Of the network only the list of automata is used, of those only their own state.
    PlainNetwork(const EDANetwork& network, GlobalValuation& valuation);

    /// The ports that can raise an event, in the order in which they were made, each with the automaton that does.
    std::vector<QualifiedEvent> triggers() const;
    QualifiedTransitions sourceTransitions() const;
    Targets targets(const RealisedEventPort* port) const;

    std::vector<QualifiedEvent> activeTriggers() const;
    std::vector<QualifiedEvent> enabledTriggers() const;
    QualifiedTransitions activeTransitions() const;
    QualifiedTransitions enabledTransitions() const;
    /// What fires together with a transition or on an event.
    ConnectionAsTransitions firingWith(const QualifiedTransition& transition) const;
    ConnectionAsTransitions firingWith(const QualifiedEvent& event) const;
    /// Whether an invariant of an active automaton fails.
    bool someActiveInvariantFails() const;
    /// Whether an automaton that could be the partner of an event of this port is asleep.
    bool someListenerSleeps(const RealisedEventPort* port) const;

  private:
    EDA* automatonOf(const VornComponentRealisation* component) const { return mOwners.at(component); }
    /// The first automaton that uses a subcomponent's port directly; null for none.
    EDA* directUser(const RealisedEventPort* port) const;
    /// The automaton that raises an event on the port; null when none does.
    EDA* raiser(const RealisedEventPort* port) const;
    bool takeable(EDA* eda, TransitionPtr transition) const;
    std::vector<TransitionPtr> listening(const EDA* eda, const RealisedEventPort* port) const;
    std::vector<TransitionPtr> reacting(EDA* eda, const RealisedEventPort* port) const;
    bool isActive(const RealisedEventPort* port) const;
    bool hasPartner(const EDA* initiator, const RealisedEventPort* port) const;
    void walkFromOwner(const RealisedEventPort* port, bool passive, Targets& result) const;
    void appendListeners(const EDA* initiator, const RealisedEventPort* port, ConnectionAsTransitions& result) const;

    const std::vector<EDA*>& mEDAs;
    GlobalValuation& mValuation;
    std::unordered_map<const VornComponentRealisation*, EDA*> mOwners;
    std::unordered_map<const RealisedEventPort*, EDA*> mDirectUsers;
};

}  // namespace vornrun::test
