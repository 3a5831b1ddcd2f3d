#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"

#include <algorithm>
#include <cassert>
#include <ostream>
#include <stdexcept>

#include "vornrun/Ownership.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

namespace {

bool idOrder(TransitionPtr a, TransitionPtr b) { return a->id() < b->id(); }

void insertSorted(std::vector<TransitionPtr>& list, TransitionPtr transition) {
    list.insert(std::upper_bound(list.begin(), list.end(), transition, idOrder), transition);
}

void insertSorted(std::vector<std::unique_ptr<RealisedTransition>>& list,
                  std::unique_ptr<RealisedTransition> transition) {
    const auto position = std::upper_bound(list.begin(), list.end(), transition,
                                           [](const auto& a, const auto& b) { return a->id() < b->id(); });
    list.insert(position, std::move(transition));
}

ValueRef slotOf(const VornComponentRealisation::ValueSlots& slots, const RealisedPart* part) {
    const auto slot = slots.find(part);
    if (slot == slots.end()) throw std::out_of_range(part->fullIdentifier() + " has no value");
    return slot->second;
}

template <class Names>
auto findName(const Names& names, const std::string& name) -> typename Names::mapped_type {
    const auto found = names.find(name);
    return found == names.end() ? nullptr : found->second;
}

template <class Elements>
void printSection(std::ostream& stream, const char* heading, const Elements& elements) {
    if (elements.empty()) return;
    stream << heading;
    for (const auto& element : elements) {
        stream << "\t\t";
        element->print(stream);
        stream << "\n";
    }
}

}  // namespace

void PortTransitions::add(TransitionPtr transition, std::size_t modes) {
    assert(transition->source()->index() < modes);
    mOfMode.resize(modes);
    insertSorted(mOfMode[transition->source()->index()], transition);
}

VornComponentRealisation::VornComponentRealisation(unsigned int id, const std::string& name,
                                                   const VornComponentImplementation* implementation, ModeList inModes,
                                                   const VornComponentRealisation* parent)
    : RealisedIdentifier(id, parent, name),
      mImplementation(implementation),
      mParentComponent(parent),
      mInModes(std::move(inModes)) {}

VornComponentRealisation::~VornComponentRealisation() = default;

void VornComponentRealisation::attachEventPort(RealisedEventPort* port) {
    assert(port != nullptr);
    mEventPorts.emplace_back(port);
    mEventPortNames.emplace(port->identifier(), port);
}

void VornComponentRealisation::attachDataPort(RealisedDataPort* port) {
    assert(port != nullptr);
    mDataPorts.emplace_back(port);
    mDataPortNames.emplace(port->identifier(), port);
}

void VornComponentRealisation::attachModes(const std::vector<RealisedMode*>& modes) { attachModes(adoptAll(modes)); }

void VornComponentRealisation::attachModes(Owned<RealisedMode> modes) {
    mModes = std::move(modes);
    mBuckets.assign(mModes.size(), Bucket());
    mPortTransitions.clear();
    for (unsigned int i = 0; i < mModes.size(); ++i) mModes[i]->setIndex(i);
}

VornComponentRealisation::Bucket& VornComponentRealisation::bucket(const RealisedMode* mode) {
    return const_cast<Bucket&>(std::as_const(*this).bucket(mode));
}

const VornComponentRealisation::Bucket& VornComponentRealisation::bucket(const RealisedMode* mode) const {
    if (mode == nullptr || mode->index() >= mModes.size() || mModes[mode->index()].get() != mode)
        throw std::out_of_range("map::at");
    return mBuckets[mode->index()];
}

template <class Element>
void VornComponentRealisation::enterBuckets(const ModeList& modes, std::vector<const Element*> Bucket::*member,
                                            const Element* element) {
    forEachModeOf(modes, mModes, [&](const RealisedMode* mode) { (bucket(mode).*member).push_back(element); });
}

void VornComponentRealisation::attachData(RealisedDataSubcomponent* data) {
    assert(data != nullptr);
    mData.emplace_back(data);
    mDataNames.emplace(data->identifier(), data);
    enterBuckets<RealisedDataSubcomponent>(data->modes(), &Bucket::data, data);
}

void VornComponentRealisation::attachSubcomponent(VornComponentRealisation* subcomponent) {
    assert(subcomponent != nullptr);
    mSubcomponents.emplace_back(subcomponent);
    mSubcomponentNames.emplace(subcomponent->identifier(), subcomponent);
    enterBuckets<VornComponentRealisation>(subcomponent->inModes(), &Bucket::subcomponents, subcomponent);
}

void VornComponentRealisation::attachConnection(RealisedConnection* connection) {
    assert(connection != nullptr);
    mConnections.emplace_back(connection);
    enterBuckets<RealisedConnection>(connection->modes(), &Bucket::connections, connection);
}

void VornComponentRealisation::attachFlow(RealisedFlow* flow) {
    assert(flow != nullptr);
    mFlows.emplace_back(flow);
    enterBuckets<RealisedFlow>(flow->activeIn(), &Bucket::flows, flow);
}

void VornComponentRealisation::attachTransition(RealisedTransition* transition) {
    assert(transition != nullptr);
    std::unique_ptr<RealisedTransition> adopted(transition);
    insertSorted(bucket(transition->source()).transitions, transition);
    mPortTransitions[transition->trigger()].add(transition, mModes.size());
    insertSorted(mTransitions, std::move(adopted));
}

void VornComponentRealisation::attachReactivationTransition(RealisedTransition* transition) {
    assert(transition != nullptr);
    std::unique_ptr<RealisedTransition> adopted(transition);
    insertSorted(bucket(transition->source()).reactivationTransitions, transition);
    insertSorted(mReactivationTransitions, std::move(adopted));
}

std::string VornComponentRealisation::implementationName() const { return mImplementation->qualifiedName(); }

const std::vector<const RealisedDataSubcomponent*>& VornComponentRealisation::activeData(
    const RealisedMode* mode) const {
    return bucket(mode).data;
}

const std::vector<const VornComponentRealisation*>& VornComponentRealisation::activeSubcomponents(
    const RealisedMode* mode) const {
    return bucket(mode).subcomponents;
}

const std::vector<const RealisedConnection*>& VornComponentRealisation::activeConnections(
    const RealisedMode* mode) const {
    return bucket(mode).connections;
}

const std::vector<const RealisedFlow*>& VornComponentRealisation::activeFlows(const RealisedMode* mode) const {
    return bucket(mode).flows;
}

const std::vector<TransitionPtr>& VornComponentRealisation::transitionsOfMode(const RealisedMode* mode) const {
    return bucket(mode).transitions;
}

const std::vector<TransitionPtr>& VornComponentRealisation::reactivationTransitionsOfMode(
    const RealisedMode* mode) const {
    return bucket(mode).reactivationTransitions;
}

ValueRef VornComponentRealisation::valueRef(const RealisedPart* part) const { return slotOf(mValueReferences, part); }

ValueRef VornComponentRealisation::valueRefTrajectory(const RealisedPart* part) const {
    return slotOf(mValueTrajectories, part);
}

const VornComponentRealisation* VornComponentRealisation::findSubcomponent(const std::string& name) const {
    return findName(mSubcomponentNames, name);
}

const RealisedIdentifier* VornComponentRealisation::findIdentifier(const VornReference* reference) const {
    assert(reference != nullptr);
    if (reference->isSub()) {
        const VornComponentRealisation* subcomponent = findSubcomponent(reference->subComponent());
        if (subcomponent == nullptr) return nullptr;
        const VornReference rest = reference->getSubReference();
        return subcomponent->findIdentifier(&rest);
    }
    for (const auto* names : {&mDataNames, &mDataPortNames, &mEventPortNames})
        if (const RealisedPart* part = findName(*names, reference->name())) return part;
    return nullptr;
}

std::vector<TransitionPtr> VornComponentRealisation::filterTransitions(
    const std::vector<TransitionPtr>& transitions, const std::function<bool(TransitionPtr)>& predicate) const {
    std::vector<TransitionPtr> result;
    std::copy_if(transitions.begin(), transitions.end(), std::back_inserter(result), predicate);
    return result;
}

std::vector<TransitionPtr> VornComponentRealisation::activeTransitionsOfPort(const RealisedMode* mode,
                                                                             const RealisedEventPort* port) const {
    return filterTransitions(transitionsOfMode(mode),
                             [port](TransitionPtr transition) { return transition->isTriggeredBy(port); });
}

const PortTransitions* VornComponentRealisation::transitionsOfPort(const RealisedEventPort* port) const {
    const auto found = mPortTransitions.find(port);
    return found == mPortTransitions.end() ? nullptr : &found->second;
}

std::vector<const RealisedEventPort*> VornComponentRealisation::activeTriggers(const RealisedMode* mode) const {
    std::vector<const RealisedEventPort*> result;
    for (const TransitionPtr transition : transitionsOfMode(mode)) {
        const RealisedEventPort* trigger = transition->trigger();
        const PortDirection driven =
            transition->hasDirectCommunicationTrigger() ? PortDirection::in : PortDirection::out;
        if (trigger->direction() == driven) result.push_back(trigger);
    }
    return result;
}

void VornComponentRealisation::print(std::ostream& stream) const {
    stream << "Component: " << id() << " implementing " << implementationName() << std::endl;
    printSection(stream, "\tData ports:\n", mDataPorts);
    printSection(stream, "\tEvent ports:\n", mEventPorts);
    printSection(stream, "\tData:\n", mData);
    printSection(stream, "\tEvent connections:\n", mConnections);
    printSection(stream, "\tFlows:\n", mFlows);
    printSection(stream, "\tModes:\n", mModes);
    printSection(stream, "\tTransitions:\n", mTransitions);
    printSection(stream, "\tReactivation Transitions:\n", mReactivationTransitions);
    if (mSubcomponents.empty()) return;
    stream << "\n";
    for (const auto& subcomponent : mSubcomponents) subcomponent->print(stream);
}

}  // namespace vornrun
