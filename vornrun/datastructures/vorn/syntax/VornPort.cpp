#include "vornrun/datastructures/vorn/syntax/VornPort.h"

#include <ostream>
#include <stdexcept>

namespace vornrun {

std::ostream& operator<<(std::ostream& stream, PortDirection direction) {
    return stream << (direction == PortDirection::in ? "in" : "out");
}

PortDirection portDirection(const std::string& text) {
    if (text == "in") return PortDirection::in;
    if (text == "out") return PortDirection::out;
    throw std::invalid_argument("Cannot convert " + text + " to a port direction");
}

std::ostream& operator<<(std::ostream& stream, PortTag tag) {
    switch (tag) {
        case PortTag::none:
            return stream;
        case PortTag::alarm:
            return stream << " alarm";
        case PortTag::observable:
            return stream << " observable";
    }
    return stream;
}

DistributionType distrTypeToVornDistributionType(unsigned int number) {
    switch (number) {
        case 0:
            return DistributionType::none;
        case 1:
            return DistributionType::poisson;
        default:
            throw std::invalid_argument("Unknown distribution type " + std::to_string(number));
    }
}

VornPort::VornPort(unsigned int id, const std::string& name, PortDirection direction)
    : VornIdentifier(name), mId(id), mDirection(direction) {}

void VornPort::printHead(std::ostream& stream) const { stream << name() << " : " << mDirection << " "; }

void VornPort::printTail(std::ostream& stream) const { stream << "; --" << mId; }

VornEventPort::VornEventPort(unsigned int id, const std::string& name, PortDirection direction, bool nonblocking)
    : VornPort(id, name, direction), mNonblocking(nonblocking) {}

void VornEventPort::printVorn(std::ostream& stream) const {
    printHead(stream);
    stream << "event port";
    if (mNonblocking) stream << " nonblocking";
    printTail(stream);
}

VornErrorPort::VornErrorPort(unsigned int id, const std::string& name, PortDirection direction, bool nonblocking,
                             DistributionType distribution, double parameter)
    : VornEventPort(id, name, direction, nonblocking), mDistribution(distribution), mParameter(parameter) {}

void VornErrorPort::printVorn(std::ostream& stream) const {
    printHead(stream);
    stream << "error event port";
    if (nonblocking()) stream << " nonblocking";
    if (mDistribution != DistributionType::none) stream << " occurrence poisson " << mParameter;
    printTail(stream);
}

VornDataPort::VornDataPort(unsigned int id, const std::string& name, PortDirection direction, PortTag tag)
    : VornPort(id, name, direction), mTag(tag) {}

template <class T>
TypedVornDataPort<T>::TypedVornDataPort(unsigned int id, const std::string& name, PortDirection direction,
                                        TypedVornValue<T>* defaultValue, PortTag tag)
    : VornDataPort(id, name, direction, tag), mDefault(defaultValue) {}

template <class T>
void TypedVornDataPort<T>::printVorn(std::ostream& stream) const {
    printHead(stream);
    stream << "data port " << T::op;
    if (mDefault != nullptr) {
        stream << " default ";
        mDefault->printVorn(stream);
    }
    stream << tag();
    printTail(stream);
}

#define VORN_DEFINE(T) template class TypedVornDataPort<T>;
VORN_FOR_EACH_TYPE(VORN_DEFINE)
#undef VORN_DEFINE

}  // namespace vornrun
