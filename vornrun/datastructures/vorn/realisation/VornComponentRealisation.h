#pragma once
/// \file
/// One component instance with everything that belongs to it. Built once per simulator and immutable from then on.
/// There is a bucket per mode for what depends on the mode, so that nothing is filtered by mode at run time.

#include <concepts>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"
#include "vornrun/datastructures/vorn/realisation/RealisedConnection.h"
#include "vornrun/datastructures/vorn/realisation/RealisedDataSubcomponent.h"
#include "vornrun/datastructures/vorn/realisation/RealisedPort.h"
#include "vornrun/datastructures/vorn/realisation/RealisedTransition.h"
#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"

namespace vornrun {

class VornComponentImplementation;
class VornReference;

/// The transitions of a component that listen on one port, by source mode.
class PortTransitions {
  public:
    /// Those of a source mode, in ascending order of ids.
    const std::vector<TransitionPtr>& in(const RealisedMode* mode) const noexcept { return mOfMode[mode->index()]; }
    /// \param modes the number of modes of the component
    void add(TransitionPtr transition, std::size_t modes);

  private:
    std::vector<std::vector<TransitionPtr>> mOfMode;
};

class VornComponentRealisation final : public RealisedIdentifier, public Realisation {
  public:
    using ValueSlots = std::map<const RealisedPart*, ValueRef, PartOrder>;
    using PlainSlots = std::map<const RealisedPart*, ValueRef>;
    template <class Element>
    using Owned = std::vector<std::unique_ptr<Element>>;

    /// \param inModes the modes of the parent in which this instance exists; empty means all
    /// \param parent null for the root
    VornComponentRealisation(unsigned int id, const std::string& name,
                             const VornComponentImplementation* implementation, ModeList inModes,
                             const VornComponentRealisation* parent);
    ~VornComponentRealisation() override;

    // Building. Everything attached is adopted, and nothing is null. attachModes() comes before the attachments by
    // mode: it makes the buckets that these fill.
    void attachEventPort(RealisedEventPort* port);
    void attachDataPort(RealisedDataPort* port);
    /// Replaces the modes and empties all buckets.
    void attachModes(Owned<RealisedMode> modes);
    void attachModes(const std::vector<RealisedMode*>& modes);
    // Each enters the buckets of its modes. \throws std::out_of_range "map::at" for a mode that is not attached
    void attachData(RealisedDataSubcomponent* data);
    void attachSubcomponent(VornComponentRealisation* subcomponent);
    void attachConnection(RealisedConnection* connection);
    void attachFlow(RealisedFlow* flow);
    // Each enters the bucket of its source mode; lists are kept in ascending order of ids.
    void attachTransition(RealisedTransition* transition);
    void attachReactivationTransition(RealisedTransition* transition);
    // Each replaces the slots of the component.
    void attachValueReferences(ValueSlots slots) { mValueReferences = std::move(slots); }
    template <std::same_as<PlainSlots> Slots>
    void attachValueReferences(const Slots& slots) {
        mValueReferences = ValueSlots(slots.begin(), slots.end());
    }
    void attachValueTrajectories(ValueSlots slots) { mValueTrajectories = std::move(slots); }
    template <std::same_as<PlainSlots> Slots>
    void attachValueTrajectories(const Slots& slots) {
        mValueTrajectories = ValueSlots(slots.begin(), slots.end());
    }

    // Reading. Everything returned is borrowed.
    const VornComponentImplementation* implementation() const noexcept { return mImplementation; }
    /// The implementation's qualified name.
    std::string implementationName() const;
    const VornComponentRealisation* parentComponent() const noexcept { return mParentComponent; }
    const ModeList& inModes() const noexcept { return mInModes; }
    const Owned<RealisedEventPort>& eventPorts() const noexcept { return mEventPorts; }
    const Owned<RealisedDataPort>& dataPorts() const noexcept { return mDataPorts; }
    const Owned<RealisedDataSubcomponent>& data() const noexcept { return mData; }
    const Owned<VornComponentRealisation>& subcomponents() const noexcept { return mSubcomponents; }
    const Owned<RealisedConnection>& connections() const noexcept { return mConnections; }
    const Owned<RealisedFlow>& flows() const noexcept { return mFlows; }
    const Owned<RealisedMode>& modes() const noexcept { return mModes; }
    const Owned<RealisedTransition>& transitions() const noexcept { return mTransitions; }
    const Owned<RealisedTransition>& reactivationTransitions() const noexcept { return mReactivationTransitions; }

    // The bucket of one mode of this component. \throws std::out_of_range "map::at" for any other mode
    const std::vector<const RealisedDataSubcomponent*>& activeData(const RealisedMode* mode) const;
    const std::vector<const VornComponentRealisation*>& activeSubcomponents(const RealisedMode* mode) const;
    const std::vector<const RealisedConnection*>& activeConnections(const RealisedMode* mode) const;
    const std::vector<const RealisedFlow*>& activeFlows(const RealisedMode* mode) const;
    const std::vector<TransitionPtr>& transitionsOfMode(const RealisedMode* mode) const;
    const std::vector<TransitionPtr>& reactivationTransitionsOfMode(const RealisedMode* mode) const;

    /// The value slots of data subcomponents and data ports.
    const ValueSlots& valueReferences() const noexcept { return mValueReferences; }
    /// Their rate slots, of the element's own type: the rate per unit of model time at which a clock or continuous
    /// variable evolves.
    const ValueSlots& valueTrajectories() const noexcept { return mValueTrajectories; }
    /// \throws std::out_of_range when the part has no slot
    ValueRef valueRef(const RealisedPart* part) const;
    ValueRef valueRefTrajectory(const RealisedPart* part) const;

    /// Null when there is none of that local name.
    const VornComponentRealisation* findSubcomponent(const std::string& name) const;
    /// What the reference names; null when absent. A data subcomponent is found before a data port of the same name,
    /// and that before an event port. \pre the reference is not null
    const RealisedIdentifier* findIdentifier(const VornReference* reference) const;

    /// The transitions for which the predicate holds, order kept.
    std::vector<TransitionPtr> filterTransitions(const std::vector<TransitionPtr>& transitions,
                                                 const std::function<bool(TransitionPtr)>& predicate) const;
    /// The transitions out of a mode that listen on a port.
    std::vector<TransitionPtr> activeTransitionsOfPort(const RealisedMode* mode, const RealisedEventPort* port) const;
    /// The same without a copy and for all modes, for the step path; null when no transition listens on the port.
    const PortTransitions* transitionsOfPort(const RealisedEventPort* port) const;
    /// The triggers out of a mode that this component can drive itself: own out ports, and in ports of subcomponents.
    /// One entry per transition, duplicates kept.
    std::vector<const RealisedEventPort*> activeTriggers(const RealisedMode* mode) const;

    void print(std::ostream& stream) const override;

  private:
    struct Bucket {
        std::vector<const RealisedDataSubcomponent*> data;
        std::vector<const VornComponentRealisation*> subcomponents;
        std::vector<const RealisedConnection*> connections;
        std::vector<const RealisedFlow*> flows;
        std::vector<TransitionPtr> transitions;
        std::vector<TransitionPtr> reactivationTransitions;
    };

    Bucket& bucket(const RealisedMode* mode);
    const Bucket& bucket(const RealisedMode* mode) const;
    /// Appends to the list `member` of the bucket of each mode that `modes` means.
    template <class Element>
    void enterBuckets(const ModeList& modes, std::vector<const Element*> Bucket::*member, const Element* element);

    const VornComponentImplementation* mImplementation;
    const VornComponentRealisation* mParentComponent;
    ModeList mInModes;
    // Destroyed from the last to the first: nothing outlives the modes or ports that it refers to.
    Owned<RealisedMode> mModes;
    Owned<RealisedEventPort> mEventPorts;
    Owned<RealisedDataPort> mDataPorts;
    Owned<RealisedDataSubcomponent> mData;
    Owned<VornComponentRealisation> mSubcomponents;
    Owned<RealisedConnection> mConnections;
    Owned<RealisedFlow> mFlows;
    Owned<RealisedTransition> mTransitions;
    Owned<RealisedTransition> mReactivationTransitions;
    std::vector<Bucket> mBuckets;  // by RealisedMode::index()
    ValueSlots mValueReferences;
    ValueSlots mValueTrajectories;
    std::unordered_map<const RealisedEventPort*, PortTransitions> mPortTransitions;
    // Local names, the first of each kind; the texts are those of the parts themselves.
    std::unordered_map<std::string_view, const VornComponentRealisation*> mSubcomponentNames;
    std::unordered_map<std::string_view, const RealisedPart*> mDataNames;
    std::unordered_map<std::string_view, const RealisedPart*> mDataPortNames;
    std::unordered_map<std::string_view, const RealisedPart*> mEventPortNames;
};

}  // namespace vornrun
