#include "vornrun/datastructures/vorn/realisation/RealisedPort.h"

#include <ostream>

#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"

namespace vornrun {

RealisedPart::RealisedPart(unsigned int id, const VornComponentRealisation* component, const std::string& identifier)
    : RealisedIdentifier(id, component, identifier), mComponent(component) {}

RealisedPort::RealisedPort(unsigned int id, const VornComponentRealisation* component, const VornPort* port)
    : RealisedPart(id, component, port->name()), mDirection(port->direction()) {}

RealisedEventPort::RealisedEventPort(unsigned int id, const VornComponentRealisation* component,
                                     const VornEventPort* port)
    : RealisedPort(id, component, port),
      mNonblocking(port->nonblocking()),
      mOccurrence(DistributionType::none),
      mRate(0.0),
      mEventPort(port),
      mOwnedDeclaration(port->id() >= ACTIVATION_PORT_ID ? port : nullptr) {
    if (const auto* errorPort = dynamic_cast<const VornErrorPort*>(port)) {
        mNonblocking = true;
        mOccurrence = errorPort->distribution();
        mRate = errorPort->parameter();
    }
}

void RealisedEventPort::print(std::ostream& stream) const {
    stream << "(" << mEventPort->name() << ")[" << id() << "]";
}

RealisedDataPort::RealisedDataPort(unsigned int id, const VornComponentRealisation* component, const VornDataPort* port)
    : RealisedPort(id, component, port), mDataPort(port) {}

void RealisedDataPort::print(std::ostream& stream) const {
    stream << "[" << id() << "] (from feature [" << mDataPort->id() << "]) (" << mDataPort->name() << ")";
}

}  // namespace vornrun
