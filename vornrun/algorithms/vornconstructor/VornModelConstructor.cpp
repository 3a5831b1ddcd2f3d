#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"

#include <algorithm>
#include <stdexcept>

#include "vornrun/StackGuard.h"
#include "vornrun/algorithms/vornconstructor/RealisationWork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {

const Log VornModelConstructor::sLogger("root.constructors.model");

ModeList realisedModelist(const std::vector<std::string>& names, const std::map<std::string, RealisedMode*>& modes) {
    ModeList result;
    for (const std::string& name : names) {
        const auto mode = modes.find(name);
        if (mode == modes.end()) throw model_exception("there is no mode \"" + name + "\"");
        result.push_back(mode->second);
    }
    return result;
}

VornModelConstructor::Work::Work(const VornComponentImplementation& work, VornComponentRealisation& in)
    : implementation(work), realisation(in) {}

void VornModelConstructor::Work::fail(const std::string& text) const {
    throw model_exception("Component " + realisation.fullIdentifier() + ": " + text);
}

std::pair<VornComponentRealisation*, ValuationPtr> VornModelConstructor::realise(
    const VornComponentImplementation* root) {
    mValuation = std::make_shared<GlobalValuation>();
    mOpen.clear();
    std::unique_ptr<VornComponentRealisation> main = realise_recursive(root, "main", {}, nullptr);
    return {main.release(), mValuation};
}

const RealisedIdentifier* VornModelConstructor::findIdentifier(const VornComponentRealisation* realisation,
                                                               const VornReference* reference) const {
    return realisation->findIdentifier(reference);
}

void VornModelConstructor::checkNesting(const VornComponentImplementation* implementation,
                                        const VornComponentRealisation& realisation) const {
    if (mOpen.count(implementation) != 0)
        throw model_exception("Component " + realisation.fullIdentifier() + ": its implementation " +
                              implementation->qualifiedName() + " contains itself");
    if (stackNearlyExhausted())
        throw model_exception("Component " + realisation.fullIdentifier() + ": components are nested too deeply");
}

std::unique_ptr<VornComponentRealisation> VornModelConstructor::realise_recursive(
    const VornComponentImplementation* implementation, const SubComponentName& name, const ModeList& inModes,
    VornComponentRealisation* parent) {
    VORNRUN_LOG(sLogger, Debug, "Realising " << implementation->qualifiedName() << " assigning id " << mComponentIds);
    auto realisation =
        std::make_unique<VornComponentRealisation>(mComponentIds++, name, implementation, inModes, parent);
    checkNesting(implementation, *realisation);
    mOpen.insert(implementation);
    Work work(*implementation, *realisation);
    realise_modes(work);
    realise_ports(work);
    realise_data(work);
    realisation->attachValueReferences(std::move(work.slotsOfValues));
    realisation->attachValueTrajectories(std::move(work.slotsOfRates));
    realise_modes2(work);
    realise_subcomponents(work);
    realise_connections(work);
    realise_flows(work);
    realise_transitions(work);
    realise_reactivations(work);
    mOpen.erase(implementation);
    return realisation;
}

void VornModelConstructor::realise_modes(Work& work) {
    VornComponentRealisation::Owned<RealisedMode> modes;
    for (const auto& [name, declaration] : work.implementation.modes()) {
        auto mode = std::make_unique<RealisedMode>(declaration->id(), declaration->name(), declaration->type());
        work.modesByDeclaration.emplace(declaration.get(), mode.get());
        work.modesByName.emplace(name, mode.get());
        modes.push_back(std::move(mode));
    }
    if (modes.empty()) {
        VORNRUN_LOG(sLogger, Warn, "Will make dummy mode for " << work.implementation.qualifiedName());
        modes.push_back(std::make_unique<RealisedMode>(0, "dummy", VornModeType::initial));
    }
    work.realisation.attachModes(std::move(modes));
}

RealisedEventPort* VornModelConstructor::attachSyntheticPort(Work& work, unsigned int declarationId,
                                                             const std::string& name, PortDirection direction,
                                                             bool nonblocking) {
    auto declaration = std::make_unique<VornEventPort>(declarationId, name, direction, nonblocking);
    auto port = std::make_unique<RealisedEventPort>(mPartIds++, &work.realisation, declaration.get());
    static_cast<void>(declaration.release());  // the port has adopted it
    work.realisation.attachEventPort(port.get());
    return port.release();
}

void VornModelConstructor::realise_ports(Work& work) {
    for (const auto& [name, port] : work.implementation.declaration()->features()) {
        if (port->event()) {
            const auto* eventPort = static_cast<const VornEventPort*>(port.get());
            work.realisation.attachEventPort(new RealisedEventPort(mPartIds++, &work.realisation, eventPort));
            continue;
        }
        const auto* dataPort = static_cast<const VornDataPort*>(port.get());
        auto* part = new RealisedDataPort(mPartIds++, &work.realisation, dataPort);
        work.realisation.attachDataPort(part);
        work.slotsOfValues[part] = dataPort->defaultValue() != nullptr
                                       ? mValuation->addValue(part, dataPort->defaultValue())
                                       : mValuation->addValue(part);
        work.slotsOfRates[part] = mValuation->addValue(part);
    }
    const auto& transitions = work.implementation.transitions();
    const bool listensOnReset = std::any_of(transitions.begin(), transitions.end(), [](const auto& transition) {
        return transition->trigger() != nullptr && transition->trigger()->text() == "reset";
    });
    if (listensOnReset) attachSyntheticPort(work, RESET_PORT_ID, "reset", PortDirection::in, false);
}

void VornModelConstructor::realise_data(Work& work) {
    for (const auto& [name, data] : work.implementation.dataSubcomponents()) {
        ModeList modes = work.modesOf(data->inModes(), "data subcomponent", name);
        auto* part = new RealisedDataSubcomponent(mPartIds++, data.get(), &work.realisation, std::move(modes));
        work.realisation.attachData(part);
        work.slotsOfValues[part] = data->defaultValue() != nullptr ? mValuation->addValue(part, data->defaultValue())
                                                                   : mValuation->addValue(part);
        // A clock runs at rate 1 unless told otherwise.
        work.slotsOfRates[part] = data->type() == VornDataTypeTag::VornClock
                                      ? mValuation->addValue<VornClock>(part, 1.0)
                                      : mValuation->addValue(part);
    }
}

VariablesToValueReferences VornModelConstructor::substitution(const Work& work) {
    return VariablesToValueReferences(&work.realisation, mValuation);
}

void VornModelConstructor::realise_subcomponents(Work& work) {
    for (const auto& [name, subcomponent] : work.implementation.subcomponents()) {
        const ModeList modes = work.modesOf(subcomponent->inModes(), "subcomponent", name);
        if (subcomponent->implementation() == nullptr) work.fail("subcomponent \"" + name + "\" has no implementation");
        auto child = realise_recursive(subcomponent->implementation(), name, modes, &work.realisation);
        work.realisation.attachSubcomponent(child.release());
    }
}

}  // namespace vornrun
