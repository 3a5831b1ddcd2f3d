#pragma once
/// \file
/// Subcomponents: instances of other implementations inside a component.

#include <string>
#include <tuple>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"

namespace vornrun {

class VornComponentImplementation;

/// A binding of a subcomponent to a platform part. It is kept and printed, but means nothing to the simulation.
class VornBinding final : public Vorn {
  public:
    enum class Type : unsigned int { accesses = 0, storedIn = 1, runningOn = 2 };
    VornBinding(Type type, std::string target) : mType(type), mTarget(std::move(target)) {}
    Type type() const noexcept { return mType; }
    const std::string& target() const noexcept { return mTarget; }
    void printVorn(std::ostream& stream) const override;

  private:
    Type mType;
    std::string mTarget;
};

class VornSubComponent final : public Vorn {
  public:
    /// \param inModes names of the containing component's modes in which the subcomponent exists; empty means all
    VornSubComponent(unsigned int id, const std::string& name, const std::string& implementationRef,
                     std::vector<VornBinding> bindings, std::vector<std::string> inModes);
    unsigned int id() const noexcept { return mId; }
    const std::string& name() const noexcept { return mName; }
    /// The reference as the file has it: package and "::" (optional), type, "." and implementation name (optional).
    const std::string& implementationRef() const noexcept { return mImplementationRef; }
    const std::vector<VornBinding>& bindings() const noexcept { return mBindings; }
    const std::vector<std::string>& inModes() const noexcept { return mInModes; }
    /// Not owned; null until the specification resolves it.
    VornComponentImplementation* implementation() const noexcept { return mImplementation; }
    void setImplementation(VornComponentImplementation* implementation) { mImplementation = implementation; }
    /// The package, type and implementation name of the reference; the optional parts may be empty.
    std::tuple<std::string, std::string, std::string> compSpecifier() const;
    void printVorn(std::ostream& stream) const override;

  private:
    unsigned int mId;
    std::string mName;
    std::string mImplementationRef;
    std::vector<VornBinding> mBindings;
    std::vector<std::string> mInModes;
    VornComponentImplementation* mImplementation;
};

}  // namespace vornrun
