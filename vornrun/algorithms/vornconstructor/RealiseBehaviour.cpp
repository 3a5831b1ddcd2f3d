// The second half of VornModelConstructor: the steps that need the values of a component and the instances below it.

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <unordered_set>

#include "vornrun/algorithms/vornconstructor/RealisationWork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

namespace {

using PartSet = std::unordered_set<const RealisedIdentifier*>;

std::string quoted(const Vorn& vorn) {
    std::ostringstream text;
    text << '"' << vorn << '"';
    return text.str();
}

PartSet partsWrittenBy(const std::vector<const RealisedFlow*>& flows) {
    PartSet parts;
    for (const RealisedFlow* flow : flows) parts.insert(flow->target()->part());
    return parts;
}

bool writes(const RealisedTransition::Effects& effects, const RealisedPart* part) {
    return std::any_of(effects.begin(), effects.end(),
                       [part](const auto& effect) { return effect->target()->part() == part; });
}

/// The equation with which the variable keeps its value. T is VornClock or VornContinuous.
template <class T>
std::unique_ptr<RealisedTrajectoryEquation> keptValue(const RealisedDataSubcomponent& data,
                                                      const ValuationPtr& valuation) {
    const VornComponentRealisation& component = *data.component();
    return std::make_unique<TypedRealisedTrajectoryEquation<T, T>>(
        new TypedRealisedVariable<T>(valuation, component.valueRef(&data), &data),
        new TypedRealisedVariable<T>(valuation, component.valueRefTrajectory(&data), &data), new TypedVornValue<T>(0.0),
        std::vector<RealisedVariable*>(), valuation);
}

/// Appends the equations of variables that have none of their own in a mode. A clock that does not exist in the mode
/// keeps its value; any other clock continues at the rate in its rate slot. A continuous variable keeps its value in
/// both cases.
void addKeptValues(const RealisedMode* mode, const VornComponentRealisation& realisation, const ValuationPtr& valuation,
                   std::vector<std::unique_ptr<RealisedTrajectoryEquation>>& equations) {
    PartSet written;
    for (const auto& equation : equations) written.insert(equation->variable()->part());
    for (const auto& data : realisation.data())
        if (data->type() == VornDataTypeTag::VornClock && !existsIn(data->modes(), mode) &&
            written.count(data.get()) == 0)
            equations.push_back(keptValue<VornClock>(*data, valuation));
    for (const auto& data : realisation.data())
        if (data->type() == VornDataTypeTag::VornContinuous && written.count(data.get()) == 0)
            equations.push_back(keptValue<VornContinuous>(*data, valuation));
}

}  // namespace

void VornModelConstructor::realise_modes2(VornComponentRealisation* realisation,
                                          const ModesByDeclaration& modesByDeclaration) {
    const VariablesToValueReferences substitute = substitution(*realisation);
    for (const auto& [declaration, mode] : modesByDeclaration) {
        if (declaration->invariant() != nullptr) mode->setInvariant(substitute(declaration->invariant()));
        std::vector<std::unique_ptr<RealisedTrajectoryEquation>> equations;
        for (const auto& equation : declaration->trajectories()) {
            std::unique_ptr<RealisedTrajectoryEquation> realised(substitute(equation.get()));
            // An equation whose types do not fit is left out, so that the variable counts as one without an equation.
            if (realised != nullptr) equations.push_back(std::move(realised));
        }
        addKeptValues(mode, *realisation, mValuation, equations);
        mode->setTrajectories(std::move(equations));
    }
}

void VornModelConstructor::realise_connections(const VornComponentImplementation* implementation,
                                               VornComponentRealisation* realisation, const ModesByName& modesByName) {
    for (const auto& connection : implementation->connections()) {
        ModeList modes = modesOf(connection->inModes(), modesByName, *realisation, "connection", *connection);
        if (!connection->isEvent()) {
            realiseDataConnection(*realisation, *connection, std::move(modes));
            continue;
        }
        const auto eventPort = [&](const VornReference& end) {
            const auto* port = dynamic_cast<const RealisedEventPort*>(findIdentifier(realisation, &end));
            if (port == nullptr)
                failIn(*realisation,
                       "connection " + quoted(*connection) + ": \"" + end.text() + "\" names no event port");
            return port;
        };
        const RealisedEventPort* source = eventPort(connection->source());
        const RealisedEventPort* target = eventPort(connection->target());
        realisation->attachConnection(new RealisedConnection(source, target, connection.get(), std::move(modes)));
    }
}

void VornModelConstructor::realiseDataConnection(VornComponentRealisation& realisation,
                                                 const VornConnection& connection, ModeList modes) {
    const auto value = [&](const VornReference& end) -> std::unique_ptr<RealisedVariable> {
        const auto* part = dynamic_cast<const RealisedPart*>(findIdentifier(&realisation, &end));
        if (part == nullptr || part->component()->valueReferences().count(part) == 0)
            failIn(realisation, "connection " + quoted(connection) + ": \"" + end.text() + "\" names no data port");
        return std::unique_ptr<RealisedVariable>(
            makeValueReference(part->type(), mValuation, part->component()->valueRef(part), part));
    };
    auto from = value(connection.source());
    auto to = value(connection.target());
    RealisedVariable* const source = from.get();
    std::unique_ptr<RealisedFlow> flow(makeFlow(to.release(), from.release(), {source}, mValuation, std::move(modes)));
    if (flow == nullptr) failIn(realisation, "connection " + quoted(connection) + ": the types of its ends do not fit");
    realisation.attachFlow(flow.release());
}

void VornModelConstructor::realise_flows(const VornComponentImplementation* implementation,
                                         VornComponentRealisation* realisation, const ModesByName& modesByName) {
    const VariablesToValueReferences substitute = substitution(*realisation);
    for (const auto& flow : implementation->flows()) {
        ModeList modes = modesOf(flow->inModes(), modesByName, *realisation, "flow", *flow);
        std::unique_ptr<RealisedFlow> realised(substitute(flow.get(), modes));
        if (realised == nullptr) failIn(*realisation, "flow " + quoted(*flow) + ": the types of its sides do not fit");
        realisation->attachFlow(realised.release());
    }
}

const RealisedEventPort* VornModelConstructor::triggerOf(VornComponentRealisation& realisation,
                                                         const VornTransition& transition) {
    // Every transition without a trigger has a private port, since a transition acts through a port.
    if (transition.trigger() == nullptr)
        return attachSyntheticPort(realisation, TAU_PORT_ID, "tau", PortDirection::out, true);
    const RealisedIdentifier* named = findIdentifier(&realisation, transition.trigger());
    const auto* port = dynamic_cast<const RealisedEventPort*>(named);
    if (port == nullptr)
        failIn(realisation, "transition " + quoted(transition) + ": its trigger \"" + transition.trigger()->text() +
                                "\" names no event port");
    return port;
}

VornModelConstructor::Effects VornModelConstructor::effectsOf(const VornComponentRealisation& realisation,
                                                              const VornTransition& transition) const {
    const VariablesToValueReferences substitute = substitution(realisation);
    Effects effects;
    for (const auto& effect : transition.effects()) {
        effects.emplace_back(substitute(effect.get()));
        if (effects.back() == nullptr)
            failIn(realisation, "transition " + quoted(transition) + ": the types of the sides of effect " +
                                    quoted(*effect) + " do not fit");
    }
    return effects;
}

std::unique_ptr<RealisedAssignment> VornModelConstructor::assignDefault(const VornComponentRealisation& realisation,
                                                                        const RealisedPart* part,
                                                                        const VornValue* defaultValue) const {
    const ValueRef slot = realisation.valueRef(part);
    return withTagClass(part->type(), [&]<class T>() -> std::unique_ptr<RealisedAssignment> {
        const auto* typed = dynamic_cast<const TypedVornValue<T>*>(defaultValue);
        auto expression = typed != nullptr ? std::make_unique<TypedVornValue<T>>(*typed)
                                           : std::make_unique<TypedVornValue<T>>(T::DefaultValue);
        auto target = std::make_unique<TypedRealisedVariable<T>>(mValuation, slot, part);
        return std::make_unique<TypedRealisedAssignment<T, T>>(target.release(), expression.release(),
                                                               std::vector<RealisedVariable*>(), mValuation);
    });
}

void VornModelConstructor::addResetsOfEndingFlows(const VornComponentRealisation& realisation,
                                                  const RealisedMode* source, const RealisedMode* target,
                                                  Effects& effects) const {
    if (source == target) return;
    const PartSet before = partsWrittenBy(realisation.activeFlows(source));
    if (before.empty()) return;
    const PartSet after = partsWrittenBy(realisation.activeFlows(target));
    for (const auto& port : realisation.dataPorts()) {
        const RealisedDataPort* part = port.get();
        if (part->direction() == PortDirection::in || before.count(part) == 0) continue;
        if (after.count(part) == 0 && !writes(effects, part))
            effects.push_back(assignDefault(realisation, part, part->realises()->defaultValue()));
    }
}

void VornModelConstructor::addStartsOfArisingData(const VornComponentRealisation& realisation,
                                                  const RealisedMode* source, const RealisedMode* target,
                                                  Effects& effects) const {
    for (const RealisedDataSubcomponent* data : realisation.activeData(target))
        if (!existsIn(data->modes(), source) && !writes(effects, data))
            effects.push_back(assignDefault(realisation, data, data->data()->defaultValue()));
}

const RealisedMode* VornModelConstructor::modeOf(const VornComponentRealisation& realisation,
                                                 const VornTransition& transition, const ModesByName& modesByName,
                                                 const std::string& name) {
    const auto mode = modesByName.find(name);
    if (mode != modesByName.end()) return mode->second;
    VORNRUN_LOG(sLogger, Error,
                "Component " << realisation.fullIdentifier() << ": transition " << quoted(transition)
                             << " refers to mode \"" << name << "\", which does not exist");
    throw std::out_of_range("map::at");
}

void VornModelConstructor::realise_transitions(const VornComponentImplementation* implementation,
                                               VornComponentRealisation* realisation, const ModesByName& modesByName) {
    const VariablesToValueReferences substitute = substitution(*realisation);
    for (const auto& transition : implementation->transitions()) {
        const RealisedEventPort* trigger = triggerOf(*realisation, *transition);
        std::unique_ptr<VornLinearExpression> guard;
        if (transition->guard() != nullptr) guard.reset(substitute(transition->guard()));
        Effects effects = effectsOf(*realisation, *transition);
        const RealisedMode* source = modeOf(*realisation, *transition, modesByName, transition->source());
        const RealisedMode* target = modeOf(*realisation, *transition, modesByName, transition->target());
        addResetsOfEndingFlows(*realisation, source, target, effects);
        addStartsOfArisingData(*realisation, source, target, effects);
        realisation->attachTransition(new RealisedTransition(mTransitionIds++, realisation, transition.get(), source,
                                                             target, trigger, guard.release(), std::move(effects)));
    }
}

void VornModelConstructor::realise_reactivations(const VornComponentImplementation* implementation,
                                                 VornComponentRealisation* realisation,
                                                 const ModesByName& modesByName) {
    const auto& transitions = implementation->reactivationTransitions();
    if (transitions.empty()) return;
    const RealisedEventPort* activation =
        attachSyntheticPort(*realisation, ACTIVATION_PORT_ID, "@activation", PortDirection::in, false);
    for (const auto& transition : transitions) {
        Effects effects = effectsOf(*realisation, *transition);
        const RealisedMode* source = modeOf(*realisation, *transition, modesByName, transition->source());
        const RealisedMode* target = modeOf(*realisation, *transition, modesByName, transition->target());
        realisation->attachReactivationTransition(new RealisedTransition(
            mTransitionIds++, realisation, transition.get(), source, target, activation, nullptr, std::move(effects)));
    }
}

}  // namespace vornrun
