#pragma once
/// \file
/// Fills a package while the parser walks its public and private sections.

#include <memory>
#include <string>

namespace vornrun {

class VornComponentDeclaration;
class VornComponentImplementation;
class VornPackage;

class VornPackageConstructor {
  public:
    /// Makes the package, empty, and starts in its public section.
    explicit VornPackageConstructor(const std::string& name);
    VornPackageConstructor(const VornPackageConstructor&) = delete;
    VornPackageConstructor& operator=(const VornPackageConstructor&) = delete;
    ~VornPackageConstructor();  // the class of the package is incomplete here

    /// Chooses the section that receives what is added from now on.
    void setPrivate(bool isPrivate) noexcept { mPrivate = isPrivate; }

    // Precondition of the following operations: takePackage() has not been called, and pointers are not null.
    /// Adopts the declaration into the current section.
    void addDeclaration(VornComponentDeclaration* declaration);
    /// Adopts the implementation into the current section.
    void addImplementation(VornComponentImplementation* implementation);
    /// A declaration of either section, borrowed.
    /// \throws std::invalid_argument "No declaration with name " + name + " in this package."
    VornComponentDeclaration* getDeclarationFromCurrentPackage(const std::string& name) const;

    /// The package, borrowed; null once it is taken.
    const VornPackage* package() const noexcept { return mPackage.get(); }
    /// The package, owned by the caller from now on.
    /// \post nothing may be added or looked up any more
    VornPackage* takePackage() noexcept;

  private:
    std::unique_ptr<VornPackage> mPackage;
    bool mPrivate;
};

}  // namespace vornrun
