#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "vornrun/StackGuard.h"
#include "vornrun/algorithms/vornconstructor/RealisationWork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

namespace {

/// A new slot for the value of the part. The value is `defaultValue`, or the default of the type if that is null.
ValueRef valueSlot(GlobalValuation& valuation, const RealisedPart* part, const VornValue* defaultValue) {
    return defaultValue != nullptr ? valuation.addValue(part, defaultValue) : valuation.addValue(part);
}

}  // namespace

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

void failIn(const VornComponentRealisation& component, const std::string& text) {
    throw model_exception("Component " + component.fullIdentifier() + ": " + text);
}

/// Notes that an implementation is in work, for as long as it is.
class VornModelConstructor::OpenImplementation {
  public:
    OpenImplementation(VornModelConstructor& constructor, const VornComponentImplementation* implementation)
        : mOpen(constructor.mOpen), mImplementation(implementation) {
        mOpen.insert(implementation);
    }
    OpenImplementation(const OpenImplementation&) = delete;
    OpenImplementation& operator=(const OpenImplementation&) = delete;
    ~OpenImplementation() { mOpen.erase(mImplementation); }

  private:
    std::unordered_set<const VornComponentImplementation*>& mOpen;
    const VornComponentImplementation* mImplementation;
};

std::pair<VornComponentRealisation*, ValuationPtr> VornModelConstructor::realise(
    const VornComponentImplementation* root) {
    assert(root != nullptr);
    mValuation = std::make_shared<GlobalValuation>();
    VornComponentRealisation* const main = realise_recursive(root, "main", {}, nullptr);
    return {main, mValuation};
}

const RealisedIdentifier* VornModelConstructor::findIdentifier(const VornComponentRealisation* realisation,
                                                               const VornReference* reference) const {
    return realisation->findIdentifier(reference);
}

void VornModelConstructor::checkNesting(const VornComponentImplementation* implementation,
                                        const VornComponentRealisation& realisation) const {
    if (mOpen.count(implementation) != 0)
        failIn(realisation, "its implementation " + implementation->qualifiedName() + " contains itself");
    if (stackNearlyExhausted()) failIn(realisation, "components are nested too deeply");
}

VornComponentRealisation* VornModelConstructor::realise_recursive(const VornComponentImplementation* implementation,
                                                                  SubComponentName name, const ModeList& inModes,
                                                                  VornComponentRealisation* parent) {
    assert(implementation != nullptr && mValuation != nullptr);
    VORNRUN_LOG(sLogger, Debug, "Realising " << implementation->qualifiedName() << " assigning id " << mComponentIds);
    auto realisation =
        std::make_unique<VornComponentRealisation>(mComponentIds++, name, implementation, inModes, parent);
    checkNesting(implementation, *realisation);
    const OpenImplementation open(*this, implementation);
    ModesByDeclaration modesByDeclaration;
    ModesByName modesByName;
    ValueSlots slotsOfValues;
    ValueSlots slotsOfRates;
    realise_modes(implementation, realisation.get(), modesByDeclaration, modesByName);
    realise_ports(implementation, realisation.get(), slotsOfValues, slotsOfRates);
    realise_data(implementation, realisation.get(), modesByName, slotsOfValues, slotsOfRates);
    realisation->attachValueReferences(std::move(slotsOfValues));
    realisation->attachValueTrajectories(std::move(slotsOfRates));
    realise_modes2(realisation.get(), modesByDeclaration);
    realise_subcomponents(implementation, realisation.get(), modesByName);
    realise_connections(implementation, realisation.get(), modesByName);
    realise_flows(implementation, realisation.get(), modesByName);
    realise_transitions(implementation, realisation.get(), modesByName);
    realise_reactivations(implementation, realisation.get(), modesByName);
    return realisation.release();
}

void VornModelConstructor::realise_modes(const VornComponentImplementation* implementation,
                                         VornComponentRealisation* realisation, ModesByDeclaration& modesByDeclaration,
                                         ModesByName& modesByName) {
    VornComponentRealisation::Owned<RealisedMode> modes;
    for (const auto& [name, declaration] : implementation->modes()) {
        auto mode = std::make_unique<RealisedMode>(declaration->id(), declaration->name(), declaration->type());
        modesByDeclaration.emplace(declaration.get(), mode.get());
        modesByName.emplace(name, mode.get());
        modes.push_back(std::move(mode));
    }
    if (modes.empty()) {
        VORNRUN_LOG(sLogger, Warn, "Will make dummy mode for " << implementation->qualifiedName());
        modes.push_back(std::make_unique<RealisedMode>(0, "dummy", VornModeType::initial));
    }
    realisation->attachModes(std::move(modes));
}

RealisedEventPort* VornModelConstructor::attachSyntheticPort(VornComponentRealisation& realisation,
                                                             unsigned int declarationId, const std::string& name,
                                                             PortDirection direction, bool nonblocking) {
    auto declaration = std::make_unique<VornEventPort>(declarationId, name, direction, nonblocking);
    auto port = std::make_unique<RealisedEventPort>(mPartIds++, &realisation, declaration.get());
    static_cast<void>(declaration.release());  // the port has adopted it
    realisation.attachEventPort(port.get());
    return port.release();
}

void VornModelConstructor::realise_ports(const VornComponentImplementation* implementation,
                                         VornComponentRealisation* realisation, ValueSlots& slotsOfValues,
                                         ValueSlots& slotsOfRates) {
    for (const auto& [name, port] : implementation->declaration()->features()) {
        if (port->event()) {
            const auto* eventPort = static_cast<const VornEventPort*>(port.get());
            realisation->attachEventPort(new RealisedEventPort(mPartIds++, realisation, eventPort));
            continue;
        }
        const auto* dataPort = static_cast<const VornDataPort*>(port.get());
        auto* part = new RealisedDataPort(mPartIds++, realisation, dataPort);
        realisation->attachDataPort(part);
        slotsOfValues[part] = valueSlot(*mValuation, part, dataPort->defaultValue());
        slotsOfRates[part] = mValuation->addValue(part);
    }
    const auto& transitions = implementation->transitions();
    const bool listensOnReset = std::any_of(transitions.begin(), transitions.end(), [](const auto& transition) {
        return transition->trigger() != nullptr && transition->trigger()->text() == "reset";
    });
    if (listensOnReset) attachSyntheticPort(*realisation, RESET_PORT_ID, "reset", PortDirection::in, false);
}

void VornModelConstructor::realise_data(const VornComponentImplementation* implementation,
                                        VornComponentRealisation* realisation, const ModesByName& modesByName,
                                        ValueSlots& slotsOfValues, ValueSlots& slotsOfRates) {
    for (const auto& [name, data] : implementation->dataSubcomponents()) {
        ModeList modes = modesOf(data->inModes(), modesByName, *realisation, "data subcomponent", name);
        auto* part = new RealisedDataSubcomponent(mPartIds++, data.get(), realisation, std::move(modes));
        realisation->attachData(part);
        slotsOfValues[part] = valueSlot(*mValuation, part, data->defaultValue());
        // A clock runs at rate 1 unless an equation says otherwise.
        slotsOfRates[part] = data->type() == VornDataTypeTag::VornClock ? mValuation->addValue<VornClock>(part, 1.0)
                                                                        : mValuation->addValue(part);
    }
}

VariablesToValueReferences VornModelConstructor::substitution(const VornComponentRealisation& realisation) const {
    return VariablesToValueReferences(&realisation, mValuation, mOptions);
}

void VornModelConstructor::realise_subcomponents(const VornComponentImplementation* implementation,
                                                 VornComponentRealisation* realisation,
                                                 const ModesByName& modesByName) {
    for (const auto& [name, subcomponent] : implementation->subcomponents()) {
        const ModeList modes = modesOf(subcomponent->inModes(), modesByName, *realisation, "subcomponent", name);
        if (subcomponent->implementation() == nullptr)
            failIn(*realisation, "subcomponent \"" + name + "\" has no implementation");
        realisation->attachSubcomponent(realise_recursive(subcomponent->implementation(), name, modes, realisation));
    }
}

}  // namespace vornrun
