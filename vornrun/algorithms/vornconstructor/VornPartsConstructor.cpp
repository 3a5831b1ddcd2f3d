#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "vornrun/Ownership.h"

namespace vornrun {

constinit thread_local std::uint32_t VornPartsConstructor::portIdCounter = FIRST_PORT_ID;

VornEventPort* VornPartsConstructor::createEventPort(const std::string& name, PortDirection direction,
                                                     bool nonblocking) {
    return new VornEventPort(portIdCounter++, name, direction, nonblocking);
}

VornErrorPort* VornPartsConstructor::createErrorPort(const std::string& name, PortDirection direction,
                                                     bool nonblocking) {
    return new VornErrorPort(portIdCounter++, name, direction, nonblocking, DistributionType::none, 0.0);
}

VornErrorPort* VornPartsConstructor::createErrorPort(const std::string& name, PortDirection direction, bool nonblocking,
                                                     DistributionType distribution, double rate) {
    // Written as "not greater" so that not-a-number is refused too.
    if (!(rate > 0.0)) throw std::invalid_argument("Poisson numbers have to be positive");
    return new VornErrorPort(portIdCounter++, name, direction, nonblocking, distribution, rate);
}

template <class T>
TypedVornDataPort<T>* VornPartsConstructor::createDataPort(const std::string& name, PortDirection direction,
                                                           TypedVornValue<T>* defaultValue, const PortTag& portTag) {
    return new TypedVornDataPort<T>(portIdCounter++, name, direction, defaultValue, portTag);
}

VornDataPort* VornPartsConstructor::createDataPort(const std::string& name, PortDirection direction,
                                                   VornDataTypeTag tag, VornValue* defaultValue,
                                                   const PortTag& portTag) {
    std::unique_ptr<VornValue> owned(defaultValue);
    return withTagClass(tag, [&]<class T>() -> VornDataPort* {
        return createDataPort<T>(name, direction, castOwned<TypedVornValue<T>>(std::move(owned)).release(), portTag);
    });
}

#define VORN_DEFINE(T)                                                                                        \
    template TypedVornDataPort<T>* VornPartsConstructor::createDataPort<T>(const std::string&, PortDirection, \
                                                                           TypedVornValue<T>*, const PortTag&);
VORN_FOR_EACH_TYPE(VORN_DEFINE)
#undef VORN_DEFINE

}  // namespace vornrun
