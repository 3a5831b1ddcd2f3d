/// \file
/// The network's answers to "what can happen now, and for which delays".

#include <algorithm>
#include <iterator>
#include <ostream>
#include <sstream>

#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun {

namespace {

bool someTakeable(EDA& eda, const std::vector<TransitionPtr>* transitions) {
    return transitions != nullptr &&
           std::any_of(transitions->begin(), transitions->end(),
                       [&eda](TransitionPtr transition) { return eda.canLocallyTakeEventTransition(transition); });
}

/// The automaton's transitions on an event's port out of its current mode; null for none.
const std::vector<TransitionPtr>* ofCurrentMode(const EDA& eda, const PortTransitions* transitions) {
    return transitions == nullptr ? nullptr : &transitions->in(eda.currentMode());
}

}  // namespace

/// Writes entries into a result, and keeps the storage of entries that a shorter result does not need.
class EDANetwork::Collector {
  public:
    Collector(ConnectionAsTransitions& result, ConnectionAsTransitions& spare) : mResult(result), mSpare(spare) {}

    /// Appends the automaton with those of its alternatives that it can take now, unless there are none.
    bool add(EDA* eda, const std::vector<TransitionPtr>* alternatives) {
        if (alternatives == nullptr || alternatives->empty()) return false;
        auto& [automaton, takeable] = open();
        automaton = eda;
        for (const TransitionPtr transition : *alternatives)
            if (eda->canLocallyTakeEventTransition(transition)) takeable.push_back(transition);
        if (takeable.empty()) return false;
        ++mCount;
        return true;
    }

    bool add(EDA* eda, TransitionPtr transition) {
        auto& [automaton, takeable] = open();
        if (!eda->canLocallyTakeEventTransition(transition)) return false;
        automaton = eda;
        takeable.push_back(transition);
        ++mCount;
        return true;
    }

    /// Cuts the result to what was added.
    void finish() {
        while (mResult.size() > mCount) {
            mSpare.push_back(std::move(mResult.back()));
            mResult.pop_back();
        }
    }

  private:
    ConnectionAsTransitions::value_type& open() {
        if (mCount == mResult.size()) {
            if (mSpare.empty()) {
                mResult.emplace_back();
            } else {
                mResult.push_back(std::move(mSpare.back()));
                mSpare.pop_back();
            }
        }
        mResult[mCount].second.clear();
        return mResult[mCount];
    }

    ConnectionAsTransitions& mResult;
    ConnectionAsTransitions& mSpare;
    std::size_t mCount = 0;
};

// ---- What can happen now

bool EDANetwork::hasListener(const RealisedEventPort* port) const {
    // The first entry is the port itself, never passive: this holds for every port that can raise an event.
    const auto& targets = mEventConnections->targets(port);
    return std::any_of(targets.begin(), targets.end(), [](const EC::Target& target) { return !target.passive; });
}

bool EDANetwork::canBeHeard(const RealisedEventPort* port) const { return port->nonblocking() || hasListener(port); }

/// Another automaton than the initiator must be able to react, on a path without passive connections. Only the activity
/// of the connections counts, not that of the automaton.
bool EDANetwork::hasAblePartner(const EDA* initiator, const RealisedEventPort* port) const {
    for (const EC::Target& target : mEventConnections->targets(port)) {
        if (target.eda == initiator || target.passive) continue;
        if (someTakeable(*target.eda, target.ofCurrentMode())) return true;
    }
    return false;
}

bool EDANetwork::isActive(const QualifiedEvent& event) const {
    const auto& [eda, port] = event;
    if (!eda->active()) return false;
    const auto* transitions = ofCurrentMode(*eda, mEventConnections->transitionsOf(event));
    if (transitions == nullptr || transitions->empty()) return false;
    return canBeHeard(port);
}

bool EDANetwork::isActive(const QualifiedTransition& transition) const {
    const auto& [eda, taken] = transition;
    return eda->active() && taken->source() == eda->currentMode() && canBeHeard(taken->trigger());
}

bool EDANetwork::isEnabled(const QualifiedEvent& event) const {
    const auto& [eda, port] = event;
    return eda->active() && someTakeable(*eda, ofCurrentMode(*eda, mEventConnections->transitionsOf(event))) &&
           (port->nonblocking() || hasAblePartner(eda, port));
}

bool EDANetwork::isEnabled(const QualifiedTransition& transition) const {
    const auto& [eda, taken] = transition;
    return eda->active() && taken->source() == eda->currentMode() && eda->canLocallyTakeEventTransition(taken) &&
           (taken->trigger()->nonblocking() || hasAblePartner(eda, taken->trigger()));
}

std::vector<QualifiedEvent> EDANetwork::activeTriggers() const {
    const auto& triggers = mEventConnections->getTriggers();
    std::vector<QualifiedEvent> result;
    std::copy_if(triggers.begin(), triggers.end(), std::back_inserter(result),
                 [this](const QualifiedEvent& event) { return isActive(event); });
    return result;
}

std::vector<QualifiedEvent> EDANetwork::enabledTriggers() const {
    const auto& triggers = mEventConnections->getTriggers();
    std::vector<QualifiedEvent> result;
    std::copy_if(triggers.begin(), triggers.end(), std::back_inserter(result),
                 [this](const QualifiedEvent& event) { return isEnabled(event); });
    return result;
}

const QualifiedTransitions& EDANetwork::currentActiveTransitions() const {
    // Whether a transition is active depends on modes and activity alone.
    if (mActiveTransitionsAt != mChanges.configuration) {
        mActiveTransitions.clear();
        for (EDA* eda : mEdaPointers) {
            if (!eda->active()) continue;
            for (const TransitionPtr transition : mSourcesInMode[eda->index()][eda->currentMode()->index()])
                if (canBeHeard(transition->trigger())) mActiveTransitions.emplace_back(eda, transition);
        }
        mActiveTransitionsAt = mChanges.configuration;
    }
    return mActiveTransitions;
}

QualifiedTransitions EDANetwork::activeTransitions() const { return currentActiveTransitions(); }

void EDANetwork::collectEnabledTransitions(QualifiedTransitions& result) const {
    result.clear();
    // Every enabled transition is active: only active ones need the more expensive test.
    for (const QualifiedTransition& transition : currentActiveTransitions())
        if (isEnabled(transition)) result.push_back(transition);
}

QualifiedTransitions EDANetwork::enabledTransitions() const {
    QualifiedTransitions result;
    collectEnabledTransitions(result);
    return result;
}

ConnectionAsTransitions EDANetwork::enabledReactivationTransitions() const {
    ConnectionAsTransitions result;
    for (EDA* eda : mActiveEDAs)
        if (eda->reactivating())
            result.emplace_back(eda, eda->component()->reactivationTransitionsOfMode(eda->currentMode()));
    return result;
}

// ---- What fires together

void EDANetwork::collectListeners(const EDA* initiator, const RealisedEventPort* port, Collector& collector) const {
    // A passive listener reacts when it can, but it cannot enable the event. A listener without a transition that it
    // can take is left out and does not block the event.
    for (const EC::Target& target : mEventConnections->targets(port))
        if (target.eda != initiator) collector.add(target.eda, target.ofCurrentMode());
}

void EDANetwork::collectEnabledTransitions(const QualifiedTransition& transition,
                                           ConnectionAsTransitions& result) const {
    const auto& [eda, taken] = transition;
    Collector collector(result, mSpareEntries);
    const bool takeable = collector.add(eda, taken);
    if (takeable) collectListeners(eda, taken->trigger(), collector);
    collector.finish();
    if (takeable)
        VORNRUN_LOG(
            sLogger, Trace,
            "Enabled transitions for trans " << static_cast<const Realisation&>(*taken) << ":" << listEnabled(result));
}

void EDANetwork::collectEnabledTransitions(const QualifiedEvent& event, ConnectionAsTransitions& result) const {
    const auto& [eda, port] = event;
    Collector collector(result, mSpareEntries);
    const bool takeable = collector.add(eda, ofCurrentMode(*eda, mEventConnections->transitionsOf(event)));
    if (takeable) collectListeners(eda, port, collector);
    collector.finish();
    if (takeable)
        VORNRUN_LOG(
            sLogger, Trace,
            "Enabled transitions for trigger " << static_cast<const Realisation&>(*port) << ":" << listEnabled(result));
}

ConnectionAsTransitions EDANetwork::enabledTransitions(const QualifiedTransition& transition) const {
    ConnectionAsTransitions result;
    collectEnabledTransitions(transition, result);
    return result;
}

ConnectionAsTransitions EDANetwork::enabledTransitions(const QualifiedEvent& event) const {
    ConnectionAsTransitions result;
    collectEnabledTransitions(event, result);
    return result;
}

std::string EDANetwork::listEnabled(const ConnectionAsTransitions& enabled) const {
    std::ostringstream text;
    for (const auto& [eda, transitions] : enabled) {
        text << "\n EDA: " << eda->identifier();
        for (const TransitionPtr transition : transitions)
            text << "\n  " << static_cast<const Realisation&>(*transition);
    }
    return text.str();
}

// ---- Whether a planned step is possible

bool EDANetwork::canTakeEventTransition(const QualifiedTransitions& transitions) {
    VORNRUN_LOG(sLogger, Debug, "Checking if event transition can be taken...");
    for (const auto& [eda, transition] : transitions) {
        if (transition->guardHolds()) continue;
        VORNRUN_LOG(
            sLogger, Debug,
            "Cannot take given event transition. Guard disabled for " << static_cast<const Realisation&>(*transition));
        return false;
    }
    pushState();
    for (const auto& [eda, transition] : transitions) eda->takeEventTransition(transition);
    const bool result = allInvariantsHold();
    popState();
    return result;
}

bool EDANetwork::canTakeTimedTransition(Time delay) {
    VORNRUN_LOG(sLogger, Debug, "Checking if time transition with delay " << delay << " can be taken...");
    pushState();
    takeTimedTransition(delay);
    const bool result = allInvariantsHold();
    if (!result && sLogger.isOn(LogLevel::Warn)) {
        VORNRUN_LOG(sLogger, Warn, "Unable to take timed transition " << delay << ":\n" << *this);
        for (const auto& [eda, transition] : activeTransitions()) {
            VORNRUN_LOG(sLogger, Warn, "  " << static_cast<const Realisation&>(*transition));
            VORNRUN_LOG(sLogger, Warn, "  " << eda->transitionRemainsValidFor(transition));
        }
        for (const EDA* eda : mEdaPointers)
            if (!eda->currentMode()->invariantHolds())
                VORNRUN_LOG(sLogger, Warn, "  Invariant failed:  " << *eda->currentMode()->invariant());
    }
    popState();
    return result;
}

bool EDANetwork::allInvariantsHold() const {
    return std::all_of(mEdaPointers.begin(), mEdaPointers.end(),
                       [](const EDA* eda) { return eda->currentMode()->invariantHolds(); });
}

// ---- For which delays

TimeInterval EDANetwork::invariantsRemainValidFor() const {
    TimeInterval result(0.0, TimeInterval::INF_TIME);
    for (const EDA* eda : mActiveEDAs) {
        // Without an invariant an automaton allows every delay.
        if (eda->currentMode()->invariant() == nullptr) continue;
        result = result.intersect(eda->invariantsRemainValidFor());
    }
    return result;
}

/// Partners are not required to be valid together: one suffices.
TimeInterval EDANetwork::partnersRemainValidFor(const EDA* initiator, const RealisedEventPort* port) const {
    TimeInterval result = TimeInterval::EmptyInterval;
    for (const EC::Target& target : mEventConnections->targets(port)) {
        if (target.eda == initiator || target.passive) continue;
        const std::vector<TransitionPtr>* transitions = target.ofCurrentMode();
        if (transitions == nullptr) continue;
        for (const TransitionPtr transition : *transitions)
            result = result.unite(target.eda->transitionRemainsValidFor(transition));
    }
    return result;
}

TimeInterval EDANetwork::transitionRemainsEnabledFor(QualifiedTransition transition) const {
    const auto& [eda, taken] = transition;
    TimeInterval local = eda->transitionRemainsValidFor(taken);
    if (taken->trigger()->nonblocking() || local.empty()) return local;
    return local.intersect(partnersRemainValidFor(eda, taken->trigger()));
}

TimeInterval EDANetwork::triggerRemainsEnabledFor(QualifiedEvent event) const {
    const auto& [eda, port] = event;
    TimeInterval local = TimeInterval::EmptyInterval;
    if (const auto* transitions = ofCurrentMode(*eda, mEventConnections->transitionsOf(event)))
        for (const TransitionPtr transition : *transitions)
            local = local.unite(eda->transitionRemainsValidFor(transition));
    if (port->nonblocking() || local.empty()) return local;
    return local.intersect(partnersRemainValidFor(eda, port));
}

}  // namespace vornrun
