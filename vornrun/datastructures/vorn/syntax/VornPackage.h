#pragma once
/// \file
/// Packages: component types and their implementations, split into a public and a private part for printing only.

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"

namespace vornrun {

class VornComponentDeclaration;
class VornComponentImplementation;

class VornPackage final : public Vorn {
  public:
    explicit VornPackage(const std::string& name);
    ~VornPackage() override;  // the classes of the contents are incomplete here

    const std::string& name() const noexcept { return mName; }

    // Each adopts its argument, which is not null. Of two of one name the first stays; a WARN on "root.vornxml" names
    // the second.
    void addPublicDeclaration(VornComponentDeclaration* declaration);
    void addPrivateDeclaration(VornComponentDeclaration* declaration);
    void addPublicImplementation(VornComponentImplementation* implementation);
    void addPrivateImplementation(VornComponentImplementation* implementation);

    /// All public ones and then all private ones, in name order within each; borrowed.
    std::vector<VornComponentDeclaration*> declarations() const;
    std::vector<VornComponentImplementation*> implementations() const;

    /// Public, then private; borrowed.
    /// \throws std::invalid_argument "No declaration with name " + name + " in this package."
    VornComponentDeclaration* findDeclaration(const std::string& name) const;
    /// \param name the qualified name
    /// \throws std::invalid_argument "No implementation with name " + name + " in this package."
    VornComponentImplementation* findImplementation(const std::string& name) const;
    /// The sole implementation of a component type.
    /// \throws std::invalid_argument when there are several or none
    VornComponentImplementation* findImplementationByType(const std::string& typeName) const;

    void printVorn(std::ostream& stream) const override;

  private:
    using Declarations = std::map<std::string, std::unique_ptr<VornComponentDeclaration>>;
    using Implementations = std::map<std::string, std::unique_ptr<VornComponentImplementation>>;
    /// How many implementations a component type has, and the first of them.
    struct OfType {
        VornComponentImplementation* first = nullptr;
        std::size_t count = 0;
    };

    void addDeclaration(Declarations& section, VornComponentDeclaration* declaration, const char* sectionName);
    void addImplementation(Implementations& section, VornComponentImplementation* implementation,
                           const char* sectionName);

    std::string mName;
    Declarations mPublicDeclarations;
    Implementations mPublicImplementations;
    Declarations mPrivateDeclarations;
    Implementations mPrivateImplementations;
    // By type name, so that resolving a reference to a bare type does not scan the package.
    std::unordered_map<std::string, OfType> mImplementationsByType;
};

}  // namespace vornrun
