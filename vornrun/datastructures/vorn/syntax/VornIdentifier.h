#pragma once
/// \file
/// What a VornReference can name: ports and data subcomponents.

#include <string>

namespace vornrun {

class VornIdentifier {
  public:
    explicit VornIdentifier(std::string name) : mName(std::move(name)) {}
    VornIdentifier(const VornIdentifier&) = delete;
    VornIdentifier& operator=(const VornIdentifier&) = delete;
    virtual ~VornIdentifier() = default;

    const std::string& name() const noexcept { return mName; }

  private:
    std::string mName;
};

}  // namespace vornrun
