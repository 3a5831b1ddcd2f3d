#pragma once
/// \file
/// Connections between ports.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornReference.h"

namespace vornrun {

class VornConnection final : public Vorn {
  public:
    /// Adopts the references.
    /// \param inModes names of modes in which the connection exists; empty means all
    VornConnection(VornReference* source, VornReference* target, bool isEvent, std::vector<std::string> inModes,
                   bool passive);
    const VornReference& source() const noexcept { return *mSource; }
    const VornReference& target() const noexcept { return *mTarget; }
    /// True for an event connection, false for a data connection.
    bool isEvent() const noexcept { return mIsEvent; }
    const std::vector<std::string>& inModes() const noexcept { return mInModes; }
    bool passive() const noexcept { return mPassive; }
    void printVorn(std::ostream& stream) const override;

  private:
    std::unique_ptr<VornReference> mSource;
    std::unique_ptr<VornReference> mTarget;
    bool mIsEvent;
    std::vector<std::string> mInModes;
    bool mPassive;
};

}  // namespace vornrun
