#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"

#include <cassert>

#include "vornrun/datastructures/vorn/syntax/VornPackage.h"

namespace vornrun {

VornPackageConstructor::VornPackageConstructor(const std::string& name)
    : mPackage(std::make_unique<VornPackage>(name)), mPrivate(false) {}

VornPackageConstructor::~VornPackageConstructor() = default;

void VornPackageConstructor::addDeclaration(VornComponentDeclaration* declaration) {
    assert(mPackage != nullptr && "the package is taken");
    if (mPrivate) {
        mPackage->addPrivateDeclaration(declaration);
    } else {
        mPackage->addPublicDeclaration(declaration);
    }
}

void VornPackageConstructor::addImplementation(VornComponentImplementation* implementation) {
    assert(mPackage != nullptr && "the package is taken");
    if (mPrivate) {
        mPackage->addPrivateImplementation(implementation);
    } else {
        mPackage->addPublicImplementation(implementation);
    }
}

VornComponentDeclaration* VornPackageConstructor::getDeclarationFromCurrentPackage(const std::string& name) const {
    assert(mPackage != nullptr && "the package is taken");
    return mPackage->findDeclaration(name);
}

VornPackage* VornPackageConstructor::takePackage() noexcept { return mPackage.release(); }

}  // namespace vornrun
