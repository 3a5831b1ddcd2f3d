#pragma once
/// \file
/// The automaton of one component instance: its mode, whether it is active, and whether it waits to be reactivated.
/// It takes its own steps; the network synchronises automata.

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"

namespace vornrun {

/// A component that cannot run: it has neither an initial nor an activation mode.
class eda_model_exception : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class EDA;

/// The automata whose mode or activity has changed since each of the two topologies was last refreshed, every automaton
/// once. The automata fill the lists, and the topologies empty them when they refresh themselves.
struct EDAChanges {
    std::vector<EDA*> forConnections;
    std::vector<EDA*> forFlows;
    /// An automaton's `active` or `reactivating` has changed: the network's list of active automata is stale.
    bool activity = true;
    /// Counts the changes of modes and activity. A stored list of what can happen now is stale when the count differs.
    unsigned long configuration = 1;
};

class EDA {
  public:
    /// What a step makes stale, as a set of bits.
    enum TopologyEffect : unsigned int {
        NoEffect = 0,
        DataEffect = 1,       // data flows, or values that they read
        EventEffect = 2,      // the set of active event connections
        ActivationEffect = 4  // an automaton was activated or deactivated
    };
    /// Mode, active, reactivating: the whole state beside the values.
    using State = std::tuple<const RealisedMode*, bool, bool>;

    /// Starts active, in the first mode of type initial or activation, with default values.
    /// \param component not owned, not null
    /// \param valuation the store that holds the component's values; not null
    /// \throws eda_model_exception when there is no such mode
    EDA(const VornComponentRealisation* component, ValuationPtr valuation);
    EDA(const EDA&) = delete;
    EDA& operator=(const EDA&) = delete;

    /// Position in the network's order of automata. Every listing of automata is in this order.
    unsigned int index() const noexcept { return mIndex; }
    void setIndex(unsigned int index) noexcept { mIndex = index; }
    /// From now on the automaton notes changes of mode and activity there. Not owned; null notes nothing.
    void noteChangesIn(EDAChanges* changes) noexcept { mChanges = changes; }
    // The topologies call these when they have taken the automaton off a list of EDAChanges.
    void connectionsAreRefreshed() noexcept { mNotedForConnections = false; }
    void flowsAreRefreshed() noexcept { mNotedForFlows = false; }

    const VornComponentRealisation* component() const noexcept { return mComponent; }
    const std::vector<EDA*>& subcomponentEDAs() const noexcept { return mSubcomponentEDAs; }
    /// All descendants, each child followed at once by its own.
    std::vector<EDA*> allSubcomponentEDAs() const;
    const RealisedMode* initialMode() const noexcept { return mInitialMode; }
    const RealisedMode* currentMode() const noexcept { return mCurrentMode; }
    bool active() const noexcept { return mActive; }
    /// True while one of several reactivation transitions has yet to be chosen and taken.
    bool reactivating() const noexcept { return mReactivating; }
    /// The component's full identifier.
    std::string identifier() const { return mComponent->fullIdentifier(); }

    /// The automata of the direct subcomponents, in their order; not owned. Switches them by the current mode.
    TopologyEffect setSubcomponentEDAs(const std::vector<EDA*>& children);
    /// Back to the initial mode and default values; in ports keep their values.
    void setInitial();
    /// Enters a mode of the component and sets the rates of that mode. Nothing happens when it is the current mode.
    /// \pre the mode is not null
    TopologyEffect setMode(const RealisedMode* mode);
    /// Wakes the automaton. With reactivation transitions it takes one of them or waits for the choice among several.
    /// Without any, it is reset if its initial mode is an activation mode, and otherwise goes on as it was.
    TopologyEffect activate();
    /// Puts the automaton and all its descendants to sleep; modes and data stay.
    TopologyEffect deactivate();
    /// Activates and deactivates the subcomponents by the current mode.
    TopologyEffect updateSubcomponentTopology();

    /// Applies the effects in order; later ones see the results of earlier ones.
    void applyEffects(TransitionPtr transition);
    TopologyEffect takeEventTransition(TransitionPtr transition);
    TopologyEffect takeReactivationTransition(TransitionPtr transition);
    /// Advances the clocks of the current mode and then applies its trajectories; a delay of 0 does nothing.
    void takeTimedTransition(Time delay);
    /// The same, also for a delay of 0.
    void increaseTime(Time delay);

    /// Whether the guard holds now, and the target's invariant after the effects. The source is not checked.
    bool canLocallyTakeEventTransition(TransitionPtr transition);
    /// Whether the target's invariant holds after the effects.
    bool targetInvariantHolds(TransitionPtr transition);
    /// The delays at which the transition can be taken. A clock or continuous variable that an effect writes counts as
    /// constant over the delay.
    TimeInterval transitionRemainsValidFor(TransitionPtr transition);
    /// The delays that the current mode's invariant allows.
    TimeInterval invariantsRemainValidFor() const { return mCurrentMode->invariantHoldsWhile(); }
    /// Drops (delay 0) or shifts the last results of all invariants and guards. No run needs this, since results are
    /// computed when they are asked for.
    void invalidateInvariantCache(Time delay);

    /// Triggers on subcomponents' ports out of the current mode, duplicates kept.
    std::vector<const RealisedEventPort*> activeSubcomponentTriggers() const;

    State getState() const { return {mCurrentMode, mActive, mReactivating}; }
    /// Writes the state as it is; the values are not touched.
    void setState(const State& state);

    /// The data on one line.
    std::string valuationStr() const;
    friend std::ostream& operator<<(std::ostream& stream, const EDA& eda);

  private:
    /// What is computed once for each mode.
    struct ModePlan {
        std::vector<std::pair<const RealisedDataSubcomponent*, ValueRef>> clocks;  // that advance in this mode
        std::size_t connectionClass = 0;  // equal for modes with equal lists of active connections
        std::size_t flowClass = 0;        // equal for modes with equal lists of active flows
    };

    void planModes();
    void setDefaults();
    void setInactive();
    TopologyEffect takeTransition(TransitionPtr transition, bool endsReactivation);
    void freezeWrittenRates(TransitionPtr transition);
    void setActive(bool active);
    void setReactivating(bool reactivating);
    void noteChange();

    static const Log sLogger;  // "root.eda.comp"

    const VornComponentRealisation* mComponent;
    std::vector<EDA*> mSubcomponentEDAs;
    const RealisedMode* mInitialMode;
    ValuationPtr mValuation;
    const RealisedMode* mCurrentMode;
    ValueRef mModeReference;  // the slot that mirrors the current mode; 0 for none
    bool mActive;
    bool mReactivating;

    unsigned int mIndex;
    EDAChanges* mChanges;
    std::vector<ModePlan> mPlans;           // by RealisedMode::index()
    std::vector<TypedValueRef> mRateSlots;  // of all data and data ports
    // Whether the automaton is on the lists of EDAChanges, so that noting a change costs no search.
    bool mNotedForConnections = false;
    bool mNotedForFlows = false;
};

inline EDA::TopologyEffect operator|(EDA::TopologyEffect a, EDA::TopologyEffect b) {
    return static_cast<EDA::TopologyEffect>(static_cast<unsigned int>(a) | static_cast<unsigned int>(b));
}
inline EDA::TopologyEffect& operator|=(EDA::TopologyEffect& a, EDA::TopologyEffect b) { return a = a | b; }
/// True when the set holds the bit.
inline bool holds(EDA::TopologyEffect set, EDA::TopologyEffect bit) {
    return (static_cast<unsigned int>(set) & static_cast<unsigned int>(bit)) != 0;
}

/// Orders automata by their position in the network. No order follows memory addresses, so that a run is the same on
/// every machine.
struct EDAOrder {
    bool operator()(const EDA* a, const EDA* b) const noexcept { return a->index() < b->index(); }
};

}  // namespace vornrun
