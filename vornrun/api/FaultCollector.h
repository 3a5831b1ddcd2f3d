#pragma once
/// \file
/// Turns what the layers below log and throw into faults. Part of the library's inside, not of its door.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/parser/SourcePlace.h"
#include "vornrun/api/Fault.h"

namespace vornrun::api {

/// Collects the warnings and errors of its thread for its lifetime.
class FaultCollector final : public LogListener {
  public:
    /// \param file that the faults are about; may be empty
    explicit FaultCollector(std::string file = {}) : mFile(std::move(file)) {}

    void record(LogLevel level, const char* logger, const std::string& text) override;
    std::vector<Fault> takeFaults() { return std::move(mFaults); }

    /// Adds the exception that is being handled, and throws all that was collected.
    /// \pre runs inside a catch clause
    [[noreturn]] void giveUp();
    /// Adds the text as an error and throws all that was collected.
    [[noreturn]] void giveUp(const std::string& text, const std::optional<SourcePlace>& place = std::nullopt);

  private:
    void add(Severity severity, const std::string& text, const std::optional<SourcePlace>& place = std::nullopt);

    std::string mFile;
    std::vector<Fault> mFaults;
};

/// Does the work; what it throws becomes a FaultException together with all that was logged before.
template <class Work>
auto collectingFaults(FaultCollector& faults, Work&& work) {
    try {
        return work();
    } catch (const FaultException&) {
        throw;
    } catch (...) {
        faults.giveUp();
    }
}

}  // namespace vornrun::api
