#include "vornrun/datastructures/vorn/syntax/VornConnection.h"

#include <ostream>
#include <utility>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun {

namespace {

void printPort(std::ostream& stream, const VornReference* port) {
    if (port == nullptr) {
        stream << "(null)";
    } else {
        stream << *port;
    }
}

}  // namespace

VornConnection::VornConnection(VornReference* source, VornReference* target, bool isEvent,
                               std::vector<std::string> inModes, bool passive)
    : mSource(source), mTarget(target), mIsEvent(isEvent), mInModes(std::move(inModes)), mPassive(passive) {}

void VornConnection::printVorn(std::ostream& stream) const {
    stream << (mIsEvent ? "event " : "data ") << "port ";
    printPort(stream, mSource.get());
    stream << " -> ";
    printPort(stream, mTarget.get());
    syntax::printInModes(stream, mInModes);
    stream << ";";
}

}  // namespace vornrun
