#include "vornrun/api/FaultCollector.h"

#include <exception>
#include <new>
#include <utility>

#include "vornrun/algorithms/parser/VornXmlException.h"

namespace vornrun::api {

namespace {

/// The exception's own words, without the frame that says where in the program it arose.
std::string textOf(const VornXmlException& fault) {
    const std::string description = fault.errorDescription();
    const std::string kind = fault.errorTypeMsg();
    if (description.empty() || kind.empty()) return description + kind;
    return description + " (" + kind + ")";
}

}  // namespace

void FaultCollector::add(Severity severity, const std::string& text, const std::optional<SourcePlace>& place) {
    Fault fault{severity, text, mFile, 0, 0};
    if (place) {
        fault.line = place->line;
        fault.column = place->column;
    }
    mFaults.push_back(std::move(fault));
}

void FaultCollector::record(LogLevel level, const char*, const std::string& text) {
    add(level >= LogLevel::Error ? Severity::error : Severity::warning, text);
}

void FaultCollector::giveUp() {
    try {
        throw;
    } catch (const VornXmlException& fault) {
        giveUp(textOf(fault), fault.place());
    } catch (const std::bad_alloc&) {
        throw;  // nothing is wrong with the model
    } catch (const std::exception& fault) {
        giveUp(fault.what());
    }
}

void FaultCollector::giveUp(const std::string& text, const std::optional<SourcePlace>& place) {
    add(Severity::error, text, place);
    throw FaultException(std::move(mFaults));
}

}  // namespace vornrun::api
