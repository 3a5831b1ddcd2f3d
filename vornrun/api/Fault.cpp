#include "vornrun/api/Fault.h"

#include <cassert>
#include <ostream>
#include <sstream>
#include <utility>

namespace vornrun {

namespace {

std::string printed(const std::vector<Fault>& faults) {
    assert(!faults.empty());
    std::ostringstream text;
    text << faults.back();
    return text.str();
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Fault& fault) {
    if (!fault.file.empty()) {
        stream << fault.file << ":";
        if (fault.line != 0) stream << fault.line << ":";
        if (fault.line != 0 && fault.column != 0) stream << fault.column << ":";
        stream << " ";
    }
    return stream << (fault.severity == Severity::error ? "error: " : "warning: ") << fault.text;
}

FaultException::FaultException(std::vector<Fault> faults)
    : std::runtime_error(printed(faults)), mFaults(std::move(faults)) {}

}  // namespace vornrun
