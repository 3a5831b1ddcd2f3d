#include "vornrun/datastructures/eda/EDA.h"

#include <algorithm>
#include <cassert>
#include <ostream>
#include <sstream>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {

const Log EDA::sLogger("root.eda.comp");

namespace {

bool startsHere(const RealisedMode& mode) {
    return mode.type() == VornModeType::initial || mode.type() == VornModeType::activation;
}

bool evolves(VornDataTypeTag type) {
    return type == VornDataTypeTag::VornClock || type == VornDataTypeTag::VornContinuous;
}

/// Stores the default of the data type, which is also the rate at which nothing changes.
void storeTypeDefault(GlobalValuation& valuation, const TypedValueRef& slot) {
    withTagClass(slot.first, [&]<class T>() { valuation.setValue<T>(slot.second, T::DefaultValue); });
}

/// Stores a declared default, or the default of the data type when none is declared.
void storeDefault(GlobalValuation& valuation, const TypedValueRef& slot, const VornValue* declared) {
    if (declared != nullptr)
        valuation.setValue(slot.first, slot.second, declared);
    else
        storeTypeDefault(valuation, slot);
}

/// The number of a list: the position of the first equal list. Equal lists have the same number.
template <class ListOf>
std::size_t classOf(std::size_t index, const ListOf& listOf) {
    for (std::size_t earlier = 0; earlier < index; ++earlier)
        if (listOf(earlier) == listOf(index)) return earlier;
    return index;
}

}  // namespace

EDA::EDA(const VornComponentRealisation* component, ValuationPtr valuation)
    : mComponent(component),
      mInitialMode(nullptr),
      mValuation(std::move(valuation)),
      mCurrentMode(nullptr),
      mModeReference(0),
      mActive(true),
      mReactivating(false),
      mIndex(0),
      mChanges(nullptr) {
    assert(component != nullptr && mValuation != nullptr);
    const auto& modes = component->modes();
    const auto initial = std::find_if(modes.begin(), modes.end(), [](const auto& mode) { return startsHere(*mode); });
    if (initial == modes.end())
        throw eda_model_exception("Error during EDA construction: The model for " + component->identifier() +
                                  " does not contain an initial/activation mode");
    mInitialMode = initial->get();
    VORNRUN_LOG(sLogger, Debug, "Set initial mode to: " << mInitialMode->name());

    // Of several the last one counts. One of another type cannot hold a mode and is ignored.
    for (const auto& data : component->data())
        if (data->identifier() == "mode" && data->type() == VornDataTypeTag::VornMode)
            mModeReference = component->valueRef(data.get());
    for (const auto& [part, slot] : component->valueTrajectories()) mRateSlots.emplace_back(part->type(), slot);
    planModes();
    setInitial();
}

void EDA::planModes() {
    const auto& modes = mComponent->modes();
    mPlans.resize(modes.size());
    for (std::size_t i = 0; i < modes.size(); ++i) {
        for (const RealisedDataSubcomponent* data : mComponent->activeData(modes[i].get()))
            if (data->data()->isClock()) mPlans[i].clocks.emplace_back(data, mComponent->valueRef(data));
        mPlans[i].connectionClass =
            classOf(i, [&](std::size_t k) -> decltype(auto) { return mComponent->activeConnections(modes[k].get()); });
        mPlans[i].flowClass =
            classOf(i, [&](std::size_t k) -> decltype(auto) { return mComponent->activeFlows(modes[k].get()); });
    }
}

std::vector<EDA*> EDA::allSubcomponentEDAs() const {
    std::vector<EDA*> result;
    for (EDA* child : mSubcomponentEDAs) {
        result.push_back(child);
        const std::vector<EDA*> below = child->allSubcomponentEDAs();
        result.insert(result.end(), below.begin(), below.end());
    }
    return result;
}

EDA::TopologyEffect EDA::setSubcomponentEDAs(const std::vector<EDA*>& children) {
    mSubcomponentEDAs = children;
    return updateSubcomponentTopology();
}

void EDA::setInitial() {
    setMode(mInitialMode);
    setDefaults();
    setReactivating(false);
    VORNRUN_LOG(sLogger, Trace, "EDA Reset complete. New state: " << *this);
}

void EDA::setDefaults() {
    for (const auto& data : mComponent->data()) {
        const TypedValueRef slot(data->type(), mComponent->valueRef(data.get()));
        // setMode() has written the slot of the mode.
        if (slot.first == VornDataTypeTag::VornMode && slot.second == mModeReference) continue;
        storeDefault(*mValuation, slot, data->data()->defaultValue());
    }
    for (const auto& port : mComponent->dataPorts()) {
        // Flows drive the in ports, which keep their values here.
        if (port->direction() != PortDirection::out || port->realises()->defaultValue() == nullptr) continue;
        storeDefault(*mValuation, {port->type(), mComponent->valueRef(port.get())}, port->realises()->defaultValue());
    }
}

EDA::TopologyEffect EDA::setMode(const RealisedMode* mode) {
    assert(mode != nullptr);
    if (mode == mCurrentMode) return NoEffect;
    const RealisedMode* previous = mCurrentMode;
    mCurrentMode = mode;
    noteChange();
    if (mModeReference != 0) mValuation->setValue<VornModeVal>(mModeReference, mode);
    for (const TypedValueRef& slot : mRateSlots) {
        if (slot.first == VornDataTypeTag::VornClock)
            mValuation->setValue<VornClock>(slot.second, 1.0);
        else
            storeTypeDefault(*mValuation, slot);
    }
    for (const auto& equation : mode->trajectories()) {
        VORNRUN_LOG(sLogger, Trace, "Applying trajectory equation " << static_cast<const Realisation&>(*equation));
        equation->applyAssignment();
    }
    if (previous == nullptr) return DataEffect | EventEffect;

    const ModePlan& before = mPlans[previous->index()];
    const ModePlan& after = mPlans[mode->index()];
    TopologyEffect effect = NoEffect;
    if (before.connectionClass != after.connectionClass) effect |= EventEffect;
    if (before.flowClass != after.flowClass) effect |= DataEffect;
    return effect;
}

void EDA::applyEffects(TransitionPtr transition) {
    for (const auto& effect : transition->effects()) {
        VORNRUN_LOG(sLogger, Debug, "Applying effect " << static_cast<const Realisation&>(*effect));
        effect->applyAssignment();
    }
}

EDA::TopologyEffect EDA::takeEventTransition(TransitionPtr transition) { return takeTransition(transition, false); }

EDA::TopologyEffect EDA::takeReactivationTransition(TransitionPtr transition) {
    return takeTransition(transition, true);
}

/// Effects come before the change of mode, so that they see the rates and the mode of the source.
EDA::TopologyEffect EDA::takeTransition(TransitionPtr transition, bool endsReactivation) {
    TopologyEffect effect = NoEffect;
    if (!transition->effects().empty()) {
        applyEffects(transition);
        effect = DataEffect;
    }
    effect |= setMode(transition->target());
    if (endsReactivation) setReactivating(false);
    return effect;
}

EDA::TopologyEffect EDA::activate() {
    if (mActive) return NoEffect;
    setActive(true);
    const auto& reactivations = mComponent->reactivationTransitionsOfMode(mCurrentMode);
    if (!reactivations.empty()) {
        VORNRUN_LOG(sLogger, Trace, "EDA activation: Reactivating");
        setReactivating(true);
        if (reactivations.size() == 1) {
            // An ordinary step. The activation itself covers what the step makes stale.
            takeEventTransition(reactivations.front());
            setReactivating(false);
        }
    } else if (mInitialMode->type() == VornModeType::activation) {
        VORNRUN_LOG(sLogger, Trace, "EDA activation: Resetting");
        setInitial();
    } else {
        VORNRUN_LOG(sLogger, Trace, "EDA activation: Noop");
    }
    const TopologyEffect effect = updateSubcomponentTopology() | ActivationEffect;
    VORNRUN_LOG(sLogger, Debug, identifier() << " is now active");
    return effect;
}

EDA::TopologyEffect EDA::deactivate() {
    if (!mActive) return NoEffect;
    setActive(false);
    VORNRUN_LOG(sLogger, Debug, identifier() << " is now inactive");
    for (EDA* child : mSubcomponentEDAs) child->setInactive();
    return ActivationEffect;
}

void EDA::setInactive() {
    if (mActive) {
        setActive(false);
        VORNRUN_LOG(sLogger, Debug, identifier() << " is set inactive");
    }
    for (EDA* child : mSubcomponentEDAs) child->setInactive();
}

EDA::TopologyEffect EDA::updateSubcomponentTopology() {
    if (mSubcomponentEDAs.empty()) return NoEffect;
    const auto& existing = mComponent->activeSubcomponents(mCurrentMode);
    // Both lists have the same order, so that one walk over them tells who exists.
    auto next = existing.begin();
    TopologyEffect effect = NoEffect;
    for (EDA* child : mSubcomponentEDAs) {
        const bool exists = next != existing.end() && *next == child->mComponent;
        while (next != existing.end() && *next == child->mComponent) ++next;
        effect |= exists ? child->activate() : child->deactivate();
    }
    if (holds(effect, ActivationEffect)) effect |= EventEffect;
    return effect;
}

void EDA::increaseTime(Time delay) {
    VORNRUN_LOG(sLogger, Trace, identifier() << " will increase time by " << delay);
    // A clock advances by the delay, whatever its rate slot says, and once more by an equation of its own.
    for (const auto& [clock, slot] : mPlans[mCurrentMode->index()].clocks) {
        VORNRUN_LOG(sLogger, Trace, "Increasing clock " << static_cast<const Realisation&>(*clock));
        mValuation->setValue<VornClock>(slot, mValuation->getValueDirect<VornClock>(slot) + delay);
    }
    for (const auto& equation : mCurrentMode->trajectories()) {
        VORNRUN_LOG(sLogger, Trace, "Applying trajectory equation " << static_cast<const Realisation&>(*equation));
        equation->applyTime(delay);
    }
}

void EDA::takeTimedTransition(Time delay) {
    if (delay == 0.0) return;
    // Where nothing evolves, there is nothing to do but to log.
    const bool evolving = !mPlans[mCurrentMode->index()].clocks.empty() || !mCurrentMode->trajectories().empty();
    if (evolving || sLogger.isOn(LogLevel::Trace)) increaseTime(delay);
}

void EDA::invalidateInvariantCache(Time delay) {
    const auto refresh = [delay](const VornLinearExpression* expression) {
        if (expression == nullptr) return;
        if (delay == 0.0)
            expression->invalidateCache();
        else
            expression->offsetCache(delay);
    };
    for (const auto& mode : mComponent->modes()) refresh(mode->invariant());
    for (const auto& transition : mComponent->transitions()) refresh(transition->guard());
}

bool EDA::canLocallyTakeEventTransition(TransitionPtr transition) {
    return transition->guardHolds() && targetInvariantHolds(transition);
}

bool EDA::targetInvariantHolds(TransitionPtr transition) {
    // Invariants read only what evolves: other effects cannot change them.
    if (!transition->touchesContinuous()) return transition->target()->invariantHolds();
    const ScopedLayer layer(*mValuation);
    applyEffects(transition);
    return transition->target()->invariantHolds();
}

TimeInterval EDA::transitionRemainsValidFor(TransitionPtr transition) {
    TimeInterval guard = transition->guardHoldsWhile();
    const RealisedMode* target = transition->target();
    if (target->invariant() == nullptr || guard.empty()) return guard;
    if (!transition->touchesContinuous()) return guard.intersect(target->invariantHoldsWhile());
    const ScopedLayer layer(*mValuation);
    applyEffects(transition);
    freezeWrittenRates(transition);
    return guard.intersect(target->invariantHoldsWhile());
}

/// What an effect has set counts as constant over the delay, clocks too: unlike on entering a mode, where a clock's
/// rate becomes 1.
void EDA::freezeWrittenRates(TransitionPtr transition) {
    for (const auto& effect : transition->effects()) {
        if (!evolves(effect->target()->type())) continue;
        const auto* part = dynamic_cast<const RealisedPart*>(effect->target()->part());
        storeTypeDefault(*mValuation, {part->type(), part->component()->valueRefTrajectory(part)});
    }
}

std::vector<const RealisedEventPort*> EDA::activeSubcomponentTriggers() const {
    std::vector<const RealisedEventPort*> result;
    for (const TransitionPtr transition : mComponent->transitionsOfMode(mCurrentMode))
        if (transition->hasDirectCommunicationTrigger()) result.push_back(transition->trigger());
    return result;
}

void EDA::setState(const State& state) {
    const auto& [mode, active, reactivating] = state;
    assert(mode != nullptr);
    if (mode != mCurrentMode) {
        mCurrentMode = mode;
        noteChange();
    }
    setActive(active);
    setReactivating(reactivating);
}

void EDA::setActive(bool active) {
    if (active == mActive) return;
    mActive = active;
    noteChange();
    if (mChanges != nullptr) mChanges->activity = true;
}

void EDA::setReactivating(bool reactivating) {
    if (reactivating == mReactivating) return;
    mReactivating = reactivating;
    if (mChanges != nullptr) mChanges->activity = true;
}

void EDA::noteChange() {
    if (mChanges == nullptr) return;
    ++mChanges->configuration;
    if (!mNotedForConnections) mChanges->forConnections.push_back(this);
    if (!mNotedForFlows) mChanges->forFlows.push_back(this);
    mNotedForConnections = mNotedForFlows = true;
}

std::string EDA::valuationStr() const {
    std::ostringstream text;
    const char* separator = "";
    for (const auto& data : mComponent->data()) {
        const TypedValueRef slot(data->type(), mComponent->valueRef(data.get()));
        if (slot.first == VornDataTypeTag::VornMode && slot.second == mModeReference) continue;
        text << separator << data->identifier() << " = " << *mValuation->getValue(slot.first, slot.second);
        separator = ", ";
    }
    for (const auto& port : mComponent->dataPorts()) {
        text << separator << port->identifier() << (port->direction() == PortDirection::out ? " -> " : " <- ")
             << *mValuation->getValue(port->type(), mComponent->valueRef(port.get()));
        separator = ", ";
    }
    return text.str();
}

std::ostream& operator<<(std::ostream& stream, const EDA& eda) {
    const RealisedMode& mode = *eda.mCurrentMode;
    stream << eda.identifier() << "\n";
    stream << "  active:           " << (eda.mActive ? "Yes" : "No") << "\n";
    stream << "  mode:             " << mode.name() << "\n";
    stream << "  invariant:        " << mode.invariantHoldsWhile() << ": ";
    if (mode.invariant() != nullptr)
        stream << *mode.invariant() << "\n";
    else
        stream << "true\n";
    stream << "  trajectories:\n";
    for (const auto& equation : mode.trajectories())
        stream << std::string(20, ' ') << static_cast<const Realisation&>(*equation) << "\n";
    stream << "\n";
    stream << "  trajectory data: ";
    for (const auto& [part, slot] : eda.mComponent->valueTrajectories())
        if (evolves(part->type()))
            stream << part->identifier() << "' = " << *eda.mValuation->getValue(part->type(), slot) << ", ";
    stream << "\n";
    return stream << "  val:             " << eda.valuationStr();
}

}  // namespace vornrun
