#include "vornrun/datastructures/eda/EDANetwork.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesContainer.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {

const Log EDANetwork::sLogger("root.eda.network");

EDANetwork::EDANetwork(VornComponentRealisation* root, ValuationPtr valuation)
    : mValuation(std::move(valuation)), mRootEDA(nullptr), mReactivationPending(false) {
    assert(root != nullptr && mValuation != nullptr);
    mRootEDA = buildEDAs(root);
    mRootEDA->updateSubcomponentTopology();
    storeEventNames();
    mDataDependencies = std::make_unique<DD>(this);
    mEventConnections = std::make_unique<EC>(this);
    groupSourceTransitions();
    logTopologyChange();
    computeActiveEDAs();
    mEventConnections->updateTopology();
    mDataDependencies->updateTopology();
    // From here on the topologies follow the changes of single automata.
    for (EDA* eda : mEdaPointers) eda->noteChangesIn(&mChanges);
    mDataDependencies->propagateValuesAlongDependencies();
    mInitialState.reset(getState());
    VORNRUN_LOG(sLogger, Debug, "Successfully initialized EDA network consisting of " << mEdas.size() << " EDAs");
}

EDANetwork::~EDANetwork() = default;

EDA* EDANetwork::buildEDAs(const VornComponentRealisation* component) {
    VORNRUN_LOG(sLogger, Debug, "Constructing EDA for component realization " << component->identifier());
    mEdas.push_back(std::make_unique<EDA>(component, mValuation));
    EDA* eda = mEdas.back().get();
    eda->setIndex(static_cast<unsigned int>(mEdaPointers.size()));
    mEdaPointers.push_back(eda);
    std::vector<EDA*> children;
    children.reserve(component->subcomponents().size());
    for (const auto& subcomponent : component->subcomponents()) children.push_back(buildEDAs(subcomponent.get()));
    eda->setSubcomponentEDAs(children);
    return eda;
}

void EDANetwork::storeEventNames() {
    for (const EDA* eda : mEdaPointers)
        for (const auto& port : eda->component()->eventPorts()) mEventNames.insert(port->identifier());
    if (!sLogger.isOn(LogLevel::Debug)) return;
    std::ostringstream text;
    text << "The following event names are used within the network: ";
    const char* separator = "";
    for (const std::string& name : mEventNames) {
        text << separator << name;
        separator = ", ";
    }
    sLogger.write(LogLevel::Debug, text.str());
}

void EDANetwork::groupSourceTransitions() {
    mSourcesInMode.resize(mEdaPointers.size());
    for (const EDA* eda : mEdaPointers) mSourcesInMode[eda->index()].resize(eda->component()->modes().size());
    for (const auto& [eda, transition] : mEventConnections->getSourceTransitions())
        mSourcesInMode[eda->index()][transition->source()->index()].push_back(transition);
}

EDA* EDANetwork::edaOfComponent(const VornComponentRealisation* component) const {
    const auto found = std::find_if(mEdaPointers.begin(), mEdaPointers.end(),
                                    [component](const EDA* eda) { return eda->component() == component; });
    return found == mEdaPointers.end() ? nullptr : *found;
}

std::vector<EDA*> EDANetwork::edasOfComponents(const std::vector<const VornComponentRealisation*>& components) const {
    std::vector<EDA*> result;
    std::transform(components.begin(), components.end(), std::back_inserter(result),
                   [this](const VornComponentRealisation* component) { return edaOfComponent(component); });
    return result;
}

// ---- Steps

void EDANetwork::takeEventTransition(const QualifiedTransitions& transitions) {
    EDA::TopologyEffect effect = EDA::NoEffect;
    for (const auto& [eda, transition] : transitions) effect |= eda->takeEventTransition(transition);
    // Skips an automaton that a parent earlier in the list has put to sleep in this step.
    for (const auto& [eda, transition] : transitions)
        if (eda->active()) effect |= eda->updateSubcomponentTopology();
    computeDynamicAttributes(effect);
    propagateValuesThroughDataPorts();
}

void EDANetwork::takeReactivationTransition(const QualifiedTransitions& transitions) {
    EDA::TopologyEffect effect = EDA::NoEffect;
    for (const auto& [eda, transition] : transitions) effect |= eda->takeReactivationTransition(transition);
    computeDynamicAttributes(effect);
    propagateValuesThroughDataPorts();
}

void EDANetwork::takeTimedTransition(Time delay) {
    for (EDA* eda : mActiveEDAs) eda->takeTimedTransition(delay);
}

// ---- Topologies

void EDANetwork::logTopologyChange() const {
    VORNRUN_LOG(sLogger, Debug,
                "Topology has changed. Will recompute active components, event connections & data dependencies.");
}

void EDANetwork::computeActiveEDAs() {
    VORNRUN_LOG(sLogger, Debug, "Compute active");
    if (!mChanges.activity) return;
    mChanges.activity = false;
    mActiveEDAs.clear();
    mReactivationPending = false;
    for (EDA* eda : mEdaPointers) {
        if (!eda->active()) continue;
        mActiveEDAs.push_back(eda);
        mReactivationPending = mReactivationPending || eda->reactivating();
    }
}

void EDANetwork::computeDynamicAttributes(EDA::TopologyEffect effect) {
    logTopologyChange();
    computeActiveEDAs();
    if (holds(effect, EDA::EventEffect)) computeEventConnections();
    if (holds(effect, EDA::DataEffect)) computeDataDependencies();
}

void EDANetwork::computeEventConnections() { mEventConnections->updateTopology(mChanges.forConnections); }

void EDANetwork::computeDataDependencies() { mDataDependencies->updateTopology(mChanges.forFlows); }

void EDANetwork::propagateValuesThroughDataPorts() { mDataDependencies->propagateValuesAlongDependencies(); }

// ---- Snapshots

GlobalConfigurationSnapshot* EDANetwork::getState() const {
    GlobalConfigurationSnapshot::EDAStates states;
    for (EDA* eda : mEdaPointers) states.emplace_hint(states.end(), eda, eda->getState());
    return new GlobalConfigurationSnapshot(states, mValuation->copyValues());
}

void EDANetwork::restore(const GlobalConfigurationSnapshot& snapshot) {
    for (const auto& [eda, state] : snapshot.edaStates()) eda->setState(state);
    mValuation->revertTo(snapshot.values());
    logTopologyChange();
    computeActiveEDAs();
    // The restored values are consistent already: nothing is propagated, and the flags of the flows stay.
    computeEventConnections();
}

void EDANetwork::setState(const GlobalConfigurationSnapshot* snapshot) {
    assert(snapshot != nullptr);
    restore(*snapshot);
}

void EDANetwork::pushState() { mStateStack.emplace_back(getState()); }

void EDANetwork::popState() {
    if (mStateStack.empty()) throw std::logic_error("EDANetwork: no pushed state to restore");
    const std::unique_ptr<GlobalConfigurationSnapshot> snapshot = std::move(mStateStack.back());
    mStateStack.pop_back();
    restore(*snapshot);
}

void EDANetwork::applyState() { mStateStack.clear(); }

void EDANetwork::reset() { restore(*mInitialState); }

void EDANetwork::restart() {
    mStateStack.clear();
    reset();
    mDataDependencies->updateTopology();
}

// ---- Reports

std::string EDANetwork::reportAllCurrentTransitions() {
    logTopologyChange();
    computeActiveEDAs();
    computeEventConnections();
    computeDataDependencies();
    return reportActiveTriggers();
}

std::string EDANetwork::reportActiveTriggers() const {
    std::ostringstream text;
    text << "Active triggers:\n";
    for (const auto& [eda, port] : activeTriggers())
        text << " " << eda->identifier() << " " << static_cast<const Realisation&>(*port) << "\n";
    return text.str();
}

void EDANetwork::dumpTopologies() const {
    mEventConnections->saveTopology();
    mDataDependencies->saveTopology();
}

std::ostream& operator<<(std::ostream& stream, const EDANetwork& network) {
    stream << "EDANetwork(\n";
    for (const EDA* eda : network.mEdaPointers) stream << *eda << "\n";
    return stream << ")";
}

}  // namespace vornrun
