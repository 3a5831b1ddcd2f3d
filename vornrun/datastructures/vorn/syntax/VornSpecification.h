#pragma once
/// \file
/// A whole model as its file has it. Read-only once built, and shared by all worker threads.

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/VornPackage.h"

namespace vornrun {

class VornComponentImplementation;
class VornSubComponent;

/// Orders implementations by the order in which they were parsed, so that listings do not follow memory addresses.
struct ImplementationOrder {
    bool operator()(const VornComponentImplementation* a, const VornComponentImplementation* b) const;
};
using RootCandidates = std::set<const VornComponentImplementation*, ImplementationOrder>;

class VornSpecification final : public Vorn {
  public:
    /// Adopts the packages, also when it throws, and resolves the subcomponents' references. Of two packages of one
    /// name the first stays; a WARN on "root.vornxml" names the second.
    /// \throws std::invalid_argument when a reference names no package, type or implementation
    explicit VornSpecification(const std::vector<VornPackage*>& packages);

    const std::map<std::string, std::unique_ptr<VornPackage>>& packages() const noexcept { return mPackages; }
    /// The implementations that no subcomponent of any implementation instantiates, in whatever mode.
    RootCandidates findRootCandidates() const;
    void printVorn(std::ostream& stream) const override;

    /// Sets the implementation of every subcomponent, as the constructor does.
    /// \throws std::invalid_argument as there
    void resolveSubcomponents();

  private:
    /// What the subcomponent's reference names, seen from the package that encloses it.
    VornComponentImplementation* implementationOf(const VornSubComponent& subcomponent,
                                                  const VornPackage& enclosing) const;

    std::map<std::string, std::unique_ptr<VornPackage>> mPackages;
};

}  // namespace vornrun
