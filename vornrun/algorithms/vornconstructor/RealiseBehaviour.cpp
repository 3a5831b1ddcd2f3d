// The second half of VornModelConstructor: the steps that need the values of a component and the instances below it.

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <unordered_set>

#include "vornrun/algorithms/vornconstructor/RealisationWork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

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

bool existsIn(const RealisedDataSubcomponent& data, const RealisedMode* mode) {
    const ModeList& modes = data.modes();
    return modes.empty() || std::find(modes.begin(), modes.end(), mode) != modes.end();
}

/// The equation by which the variable stands still. T is VornClock or VornContinuous.
template <class T>
std::unique_ptr<RealisedTrajectoryEquation> standingStill(const RealisedDataSubcomponent& data,
                                                          const ValuationPtr& valuation) {
    const VornComponentRealisation& component = *data.component();
    return std::make_unique<TypedRealisedTrajectoryEquation<T, T>>(
        new TypedRealisedVariable<T>(valuation, component.valueRef(&data), &data),
        new TypedRealisedVariable<T>(valuation, component.valueRefTrajectory(&data), &data), new TypedVornValue<T>(0.0),
        std::vector<RealisedVariable*>(), valuation);
}

/// Appends what a mode means for variables without an equation of their own. A clock that is no part of the mode
/// stands still, any other runs on at the rate in its rate slot; a continuous variable stands still in either case.
void addStandingStill(const RealisedMode* mode, const VornComponentRealisation& realisation,
                      const ValuationPtr& valuation,
                      std::vector<std::unique_ptr<RealisedTrajectoryEquation>>& equations) {
    PartSet written;
    for (const auto& equation : equations) written.insert(equation->variable()->part());
    for (const auto& data : realisation.data())
        if (data->type() == VornDataTypeTag::VornClock && !existsIn(*data, mode) && written.count(data.get()) == 0)
            equations.push_back(standingStill<VornClock>(*data, valuation));
    for (const auto& data : realisation.data())
        if (data->type() == VornDataTypeTag::VornContinuous && written.count(data.get()) == 0)
            equations.push_back(standingStill<VornContinuous>(*data, valuation));
}

}  // namespace

void VornModelConstructor::realise_modes2(Work& work) {
    const VariablesToValueReferences substitute = substitution(work);
    for (const auto& [declaration, mode] : work.modesByDeclaration) {
        if (declaration->invariant() != nullptr) mode->setInvariant(substitute(declaration->invariant()));
        std::vector<std::unique_ptr<RealisedTrajectoryEquation>> equations;
        for (const auto& equation : declaration->trajectories()) {
            std::unique_ptr<RealisedTrajectoryEquation> realised(substitute(equation.get()));
            // An equation whose types do not fit is none: the variable is then treated as one without an equation.
            if (realised != nullptr) equations.push_back(std::move(realised));
        }
        addStandingStill(mode, work.realisation, mValuation, equations);
        mode->setTrajectories(std::move(equations));
    }
}

void VornModelConstructor::realise_connections(Work& work) {
    for (const auto& connection : work.implementation.connections()) {
        ModeList modes = work.modesOf(connection->inModes(), "connection", *connection);
        if (!connection->isEvent()) {
            realiseDataConnection(work, *connection, std::move(modes));
            continue;
        }
        const auto eventPort = [&](const VornReference& end) {
            const auto* port = dynamic_cast<const RealisedEventPort*>(findIdentifier(&work.realisation, &end));
            if (port == nullptr)
                work.fail("connection " + quoted(*connection) + ": \"" + end.text() + "\" names no event port");
            return port;
        };
        const RealisedEventPort* source = eventPort(connection->source());
        const RealisedEventPort* target = eventPort(connection->target());
        work.realisation.attachConnection(new RealisedConnection(source, target, connection.get(), std::move(modes)));
    }
}

void VornModelConstructor::realiseDataConnection(Work& work, const VornConnection& connection, ModeList modes) {
    const auto value = [&](const VornReference& end) -> std::unique_ptr<RealisedVariable> {
        const auto* part = dynamic_cast<const RealisedPart*>(findIdentifier(&work.realisation, &end));
        if (part == nullptr || part->component()->valueReferences().count(part) == 0)
            work.fail("connection " + quoted(connection) + ": \"" + end.text() + "\" names no data port");
        return std::unique_ptr<RealisedVariable>(
            makeValueReference(part->type(), mValuation, part->component()->valueRef(part), part));
    };
    auto from = value(connection.source());
    auto to = value(connection.target());
    RealisedVariable* const source = from.get();
    std::unique_ptr<RealisedFlow> flow(makeFlow(to.release(), from.release(), {source}, mValuation, std::move(modes)));
    if (flow == nullptr) work.fail("connection " + quoted(connection) + ": the types of its ends do not fit");
    work.realisation.attachFlow(flow.release());
}

void VornModelConstructor::realise_flows(Work& work) {
    const VariablesToValueReferences substitute = substitution(work);
    for (const auto& flow : work.implementation.flows()) {
        ModeList modes = work.modesOf(flow->inModes(), "flow", *flow);
        std::unique_ptr<RealisedFlow> realised(substitute(flow.get(), modes));
        if (realised == nullptr) work.fail("flow " + quoted(*flow) + ": the types of its sides do not fit");
        work.realisation.attachFlow(realised.release());
    }
}

const RealisedEventPort* VornModelConstructor::triggerOf(Work& work, const VornTransition& transition) {
    // Every transition without a trigger has a private port, since a transition acts through a port.
    if (transition.trigger() == nullptr) return attachSyntheticPort(work, TAU_PORT_ID, "tau", PortDirection::out, true);
    const RealisedIdentifier* named = findIdentifier(&work.realisation, transition.trigger());
    const auto* port = dynamic_cast<const RealisedEventPort*>(named);
    if (port == nullptr)
        work.fail("transition " + quoted(transition) + ": its trigger \"" + transition.trigger()->text() +
                  "\" names no event port");
    return port;
}

VornModelConstructor::Effects VornModelConstructor::effectsOf(Work& work, const VornTransition& transition) {
    const VariablesToValueReferences substitute = substitution(work);
    Effects effects;
    for (const auto& effect : transition.effects()) {
        effects.emplace_back(substitute(effect.get()));
        if (effects.back() == nullptr)
            work.fail("transition " + quoted(transition) + ": the types of the sides of effect " + quoted(*effect) +
                      " do not fit");
    }
    return effects;
}

std::unique_ptr<RealisedAssignment> VornModelConstructor::assignDefault(const Work& work, const RealisedPart* part,
                                                                        const VornValue* defaultValue) const {
    const ValueRef slot = work.realisation.valueRef(part);
    return withTagClass(part->type(), [&]<class T>() -> std::unique_ptr<RealisedAssignment> {
        const auto* typed = dynamic_cast<const TypedVornValue<T>*>(defaultValue);
        auto expression = typed != nullptr ? std::make_unique<TypedVornValue<T>>(*typed)
                                           : std::make_unique<TypedVornValue<T>>(T::DefaultValue);
        auto target = std::make_unique<TypedRealisedVariable<T>>(mValuation, slot, part);
        return std::make_unique<TypedRealisedAssignment<T, T>>(target.release(), expression.release(),
                                                               std::vector<RealisedVariable*>(), mValuation);
    });
}

void VornModelConstructor::addResetsOfEndingFlows(const Work& work, const RealisedMode* source,
                                                  const RealisedMode* target, Effects& effects) const {
    if (source == target) return;
    const PartSet before = partsWrittenBy(work.realisation.activeFlows(source));
    if (before.empty()) return;
    const PartSet after = partsWrittenBy(work.realisation.activeFlows(target));
    for (const auto& port : work.realisation.dataPorts()) {
        const RealisedDataPort* part = port.get();
        if (part->direction() == PortDirection::in || before.count(part) == 0) continue;
        if (after.count(part) == 0 && !writes(effects, part))
            effects.push_back(assignDefault(work, part, part->realises()->defaultValue()));
    }
}

void VornModelConstructor::addStartsOfArisingData(const Work& work, const RealisedMode* source,
                                                  const RealisedMode* target, Effects& effects) const {
    for (const RealisedDataSubcomponent* data : work.realisation.activeData(target))
        if (!existsIn(*data, source) && !writes(effects, data))
            effects.push_back(assignDefault(work, data, data->data()->defaultValue()));
}

const RealisedMode* VornModelConstructor::modeOf(const Work& work, const VornTransition& transition,
                                                 const std::string& name) {
    const auto mode = work.modesByName.find(name);
    if (mode != work.modesByName.end()) return mode->second;
    VORNRUN_LOG(sLogger, Error,
                "Component " << work.realisation.fullIdentifier() << ": transition " << quoted(transition)
                             << " refers to mode \"" << name << "\", which does not exist");
    throw std::out_of_range("map::at");
}

void VornModelConstructor::realise_transitions(Work& work) {
    const VariablesToValueReferences substitute = substitution(work);
    for (const auto& transition : work.implementation.transitions()) {
        const RealisedEventPort* trigger = triggerOf(work, *transition);
        std::unique_ptr<VornLinearExpression> guard;
        if (transition->guard() != nullptr) guard.reset(substitute(transition->guard()));
        Effects effects = effectsOf(work, *transition);
        const RealisedMode* source = modeOf(work, *transition, transition->source());
        const RealisedMode* target = modeOf(work, *transition, transition->target());
        addResetsOfEndingFlows(work, source, target, effects);
        addStartsOfArisingData(work, source, target, effects);
        work.realisation.attachTransition(new RealisedTransition(mTransitionIds++, &work.realisation, transition.get(),
                                                                 source, target, trigger, guard.release(),
                                                                 std::move(effects)));
    }
}

void VornModelConstructor::realise_reactivations(Work& work) {
    const auto& transitions = work.implementation.reactivationTransitions();
    if (transitions.empty()) return;
    const RealisedEventPort* activation =
        attachSyntheticPort(work, ACTIVATION_PORT_ID, "@activation", PortDirection::in, false);
    for (const auto& transition : transitions) {
        Effects effects = effectsOf(work, *transition);
        const RealisedMode* source = modeOf(work, *transition, transition->source());
        const RealisedMode* target = modeOf(work, *transition, transition->target());
        work.realisation.attachReactivationTransition(new RealisedTransition(mTransitionIds++, &work.realisation,
                                                                             transition.get(), source, target,
                                                                             activation, nullptr, std::move(effects)));
    }
}

}  // namespace vornrun
