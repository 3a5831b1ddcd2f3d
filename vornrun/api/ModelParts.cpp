#include "vornrun/api/ModelParts.h"

#include <type_traits>
#include <utility>

#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::api {

namespace {

ValueType typeOf(VornDataTypeTag tag) {
    switch (tag) {
        case VornDataTypeTag::VornBool:
            return ValueType::boolean;
        case VornDataTypeTag::VornReal:
            return ValueType::real;
        case VornDataTypeTag::VornInt:
            return ValueType::integer;
        case VornDataTypeTag::VornContinuous:
            return ValueType::continuous;
        case VornDataTypeTag::VornClock:
            return ValueType::clock;
        case VornDataTypeTag::VornEnum:
            return ValueType::enumeration;
        case VornDataTypeTag::VornInterval:
            return ValueType::interval;
        case VornDataTypeTag::VornMode:
            break;
    }
    return ValueType::mode;
}

ValueInfo::Kind kindOf(const RealisedPart& part) {
    if (part.type() == VornDataTypeTag::VornMode) return ValueInfo::Kind::mode;
    const auto* port = dynamic_cast<const RealisedDataPort*>(&part);
    if (port == nullptr) return ValueInfo::Kind::data;
    return port->direction() == PortDirection::in ? ValueInfo::Kind::inPort : ValueInfo::Kind::outPort;
}

/// The name relative to the root, as a property writes it.
std::string nameInProperties(const RealisedIdentifier& part) {
    const RealisedIdentifier* parent = part.parent();
    if (parent == nullptr || parent->parent() == nullptr) return part.identifier();
    return nameInProperties(*parent) + "." + part.identifier();
}

}  // namespace

void forEachValue(const EDANetwork& network,
                  const std::function<void(std::size_t, const RealisedPart&, ValueRef)>& visit) {
    for (const EDA* eda : network.edas()) {
        const VornComponentRealisation& component = *eda->component();
        for (const auto& data : component.data()) visit(eda->index(), *data, component.valueRef(data.get()));
        for (const auto& port : component.dataPorts()) visit(eda->index(), *port, component.valueRef(port.get()));
    }
}

std::vector<ComponentInfo> componentsOf(const EDANetwork& network) {
    std::vector<ComponentInfo> components;
    components.reserve(network.edas().size());
    for (const EDA* eda : network.edas()) {
        const VornComponentRealisation& component = *eda->component();
        ComponentInfo info;
        info.name = component.fullIdentifier();
        info.implementation = component.implementationName();
        if (component.parentComponent() != nullptr)
            info.parent = network.edaOfComponent(component.parentComponent())->index();
        for (const auto& mode : component.modes()) info.modes.push_back(mode->name());
        components.push_back(std::move(info));
    }
    return components;
}

std::vector<ValueInfo> valuesOf(const EDANetwork& network) {
    std::vector<ValueInfo> values;
    forEachValue(network, [&values](std::size_t component, const RealisedPart& part, ValueRef) {
        values.push_back({nameInProperties(part), typeOf(part.type()), kindOf(part), component});
    });
    return values;
}

Value valueOf(const GlobalValuation& valuation, TypedValueRef slot) {
    return withTagClass(slot.first, [&]<class T>() -> Value {
        const auto& value = valuation.getValueDirect<T>(slot.second);
        if constexpr (std::is_same_v<T, VornModeVal>) {
            return value == nullptr ? std::string() : value->name();
        } else {
            return value;
        }
    });
}

}  // namespace vornrun::api
