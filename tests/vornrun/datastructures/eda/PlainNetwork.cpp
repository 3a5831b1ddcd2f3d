#include "tests/vornrun/datastructures/eda/PlainNetwork.h"

#include <algorithm>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {

namespace {

bool existsIn(const RealisedConnection& connection, const RealisedMode* mode) {
    const ModeList& modes = connection.modes();
    return modes.empty() || std::find(modes.begin(), modes.end(), mode) != modes.end();
}

bool invariantHolds(const RealisedMode* mode) {
    return mode->invariant() == nullptr || mode->invariant()->plain()->evaluateDirect();
}

}  // namespace

PlainNetwork::PlainNetwork(const EDANetwork& network, GlobalValuation& valuation)
    : mEDAs(network.edas()), mValuation(valuation) {
    for (EDA* eda : mEDAs) {
        mOwners[eda->component()] = eda;
        // The first one stays.
        for (const auto& transition : eda->component()->transitions())
            if (transition->trigger()->component() != eda->component()) mDirectUsers.emplace(transition->trigger(), eda);
    }
}

EDA* PlainNetwork::directUser(const RealisedEventPort* port) const {
    const auto found = mDirectUsers.find(port);
    return found == mDirectUsers.end() ? nullptr : found->second;
}

EDA* PlainNetwork::raiser(const RealisedEventPort* port) const {
    return port->direction() == PortDirection::out ? automatonOf(port->component()) : directUser(port);
}

// ---- Who hears whom

void PlainNetwork::walkFromOwner(const RealisedEventPort* port, bool passive, Targets& result) const {
    EDA* owner = automatonOf(port->component());
    result.emplace_back(owner, port, passive);
    if (!owner->active()) return;
    EDA* user = directUser(port);
    if (port->direction() == PortDirection::out && user != nullptr && user->active())
        result.emplace_back(user, port, passive);
    for (EDA* eda : mEDAs)
        for (const auto& connection : eda->component()->connections())
            if (connection->source() == port && eda->active() && existsIn(*connection, eda->currentMode()))
                walkFromOwner(connection->target(), passive || connection->isPassive(), result);
}

PlainNetwork::Targets PlainNetwork::targets(const RealisedEventPort* port) const {
    Targets result;
    if (port->direction() == PortDirection::out) {
        walkFromOwner(port, false, result);
        return result;
    }
    EDA* user = directUser(port);
    result.emplace_back(user, port, false);
    if (user->active() && automatonOf(port->component())->active()) walkFromOwner(port, false, result);
    return result;
}

std::vector<QualifiedEvent> PlainNetwork::triggers() const {
    std::vector<QualifiedEvent> result;
    for (const EDA* eda : mEDAs)
        for (const auto& port : eda->component()->eventPorts())
            if (EDA* raisedBy = raiser(port.get())) result.emplace_back(raisedBy, port.get());
    std::sort(result.begin(), result.end(),
              [](const QualifiedEvent& a, const QualifiedEvent& b) { return a.second->id() < b.second->id(); });
    return result;
}

QualifiedTransitions PlainNetwork::sourceTransitions() const {
    QualifiedTransitions result;
    for (EDA* eda : mEDAs)
        for (const auto& transition : eda->component()->transitions())
            if (raiser(transition->trigger()) == eda) result.emplace_back(eda, transition.get());
    return result;
}

// ---- What one automaton can do

std::vector<TransitionPtr> PlainNetwork::listening(const EDA* eda, const RealisedEventPort* port) const {
    std::vector<TransitionPtr> result;
    for (const auto& transition : eda->component()->transitions())
        if (transition->source() == eda->currentMode() && transition->trigger() == port)
            result.push_back(transition.get());
    std::sort(result.begin(), result.end(), [](TransitionPtr a, TransitionPtr b) { return a->id() < b->id(); });
    return result;
}

bool PlainNetwork::takeable(EDA* eda, TransitionPtr transition) const {
    if (transition->guard() != nullptr && !transition->guard()->plain()->evaluateDirect()) return false;
    const bool reachesInvariant =
        std::any_of(transition->effects().begin(), transition->effects().end(), [](const auto& effect) {
            const VornDataTypeTag type = effect->target()->type();
            return type == VornDataTypeTag::VornClock || type == VornDataTypeTag::VornContinuous;
        });
    if (!reachesInvariant) return invariantHolds(transition->target());
    const ScopedLayer layer(mValuation);
    eda->applyEffects(transition);
    return invariantHolds(transition->target());
}

std::vector<TransitionPtr> PlainNetwork::reacting(EDA* eda, const RealisedEventPort* port) const {
    std::vector<TransitionPtr> result;
    for (const TransitionPtr transition : listening(eda, port))
        if (takeable(eda, transition)) result.push_back(transition);
    return result;
}

// ---- What can happen

bool PlainNetwork::isActive(const RealisedEventPort* port) const {
    const Targets reached = targets(port);
    return port->nonblocking() ||
           std::any_of(reached.begin(), reached.end(), [](const Target& target) { return !std::get<2>(target); });
}

bool PlainNetwork::hasPartner(const EDA* initiator, const RealisedEventPort* port) const {
    for (const auto& [eda, heardOn, passive] : targets(port))
        if (eda != initiator && !passive && !reacting(eda, heardOn).empty()) return true;
    return false;
}

std::vector<QualifiedEvent> PlainNetwork::activeTriggers() const {
    std::vector<QualifiedEvent> result;
    for (const auto& [eda, port] : triggers())
        if (eda->active() && !listening(eda, port).empty() && isActive(port)) result.emplace_back(eda, port);
    return result;
}

std::vector<QualifiedEvent> PlainNetwork::enabledTriggers() const {
    std::vector<QualifiedEvent> result;
    for (const auto& [eda, port] : triggers())
        if (eda->active() && !reacting(eda, port).empty() && (port->nonblocking() || hasPartner(eda, port)))
            result.emplace_back(eda, port);
    return result;
}

QualifiedTransitions PlainNetwork::activeTransitions() const {
    QualifiedTransitions result;
    for (const auto& [eda, transition] : sourceTransitions())
        if (eda->active() && transition->source() == eda->currentMode() && isActive(transition->trigger()))
            result.emplace_back(eda, transition);
    return result;
}

QualifiedTransitions PlainNetwork::enabledTransitions() const {
    QualifiedTransitions result;
    for (const auto& [eda, transition] : sourceTransitions())
        if (eda->active() && transition->source() == eda->currentMode() && takeable(eda, transition) &&
            (transition->trigger()->nonblocking() || hasPartner(eda, transition->trigger())))
            result.emplace_back(eda, transition);
    return result;
}

void PlainNetwork::appendListeners(const EDA* initiator, const RealisedEventPort* port,
                                   ConnectionAsTransitions& result) const {
    for (const auto& [eda, heardOn, passive] : targets(port)) {
        if (eda == initiator) continue;
        const std::vector<TransitionPtr> alternatives = reacting(eda, heardOn);
        if (!alternatives.empty()) result.emplace_back(eda, alternatives);
    }
}

ConnectionAsTransitions PlainNetwork::firingWith(const QualifiedTransition& transition) const {
    const auto& [eda, taken] = transition;
    ConnectionAsTransitions result;
    if (!takeable(eda, taken)) return result;
    result.push_back({eda, {taken}});
    appendListeners(eda, taken->trigger(), result);
    return result;
}

ConnectionAsTransitions PlainNetwork::firingWith(const QualifiedEvent& event) const {
    const auto& [eda, port] = event;
    ConnectionAsTransitions result;
    const std::vector<TransitionPtr> own = reacting(eda, port);
    if (own.empty()) return result;
    result.emplace_back(eda, own);
    appendListeners(eda, port, result);
    return result;
}

bool PlainNetwork::someActiveInvariantFails() const {
    return std::any_of(mEDAs.begin(), mEDAs.end(),
                       [](const EDA* eda) { return eda->active() && !invariantHolds(eda->currentMode()); });
}

bool PlainNetwork::someListenerSleeps(const RealisedEventPort* port) const {
    const Targets reached = targets(port);
    return std::any_of(reached.begin(), reached.end(),
                       [](const Target& target) { return !std::get<0>(target)->active(); });
}

}  // namespace vornrun::test
