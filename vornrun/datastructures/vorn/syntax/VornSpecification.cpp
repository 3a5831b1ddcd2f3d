#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

#include <ostream>
#include <stdexcept>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

// Addresses differ between runs; the order of parsing does not.
bool ImplementationOrder::operator()(const VornComponentImplementation* a, const VornComponentImplementation* b) const {
    return a->serial() < b->serial();
}

VornSpecification::VornSpecification(const std::vector<VornPackage*>& packages)
    : mPackages(syntax::FirstOfName::mapOf(adoptAll(packages), "package", "the specification")) {
    resolveSubcomponents();
}

void VornSpecification::resolveSubcomponents() {
    for (const auto& [packageName, package] : mPackages) {
        for (VornComponentImplementation* const implementation : package->implementations()) {
            for (const auto& [name, subcomponent] : implementation->subcomponents()) {
                subcomponent->setImplementation(implementationOf(*subcomponent, *package));
            }
        }
    }
}

VornComponentImplementation* VornSpecification::implementationOf(const VornSubComponent& subcomponent,
                                                                 const VornPackage& enclosing) const {
    const auto [packageName, type, implementation] = subcomponent.compSpecifier();
    const VornPackage* package = &enclosing;
    if (!packageName.empty()) {
        const auto hit = mPackages.find(packageName);
        if (hit == mPackages.end()) {
            throw std::invalid_argument("No package with name " + packageName + " in this specification.");
        }
        package = hit->second.get();
    }
    return implementation.empty() ? package->findImplementationByType(type)
                                  : package->findImplementation(type + "." + implementation);
}

RootCandidates VornSpecification::findRootCandidates() const {
    std::vector<const VornComponentImplementation*> all;
    for (const auto& [name, package] : mPackages) {
        const auto implementations = package->implementations();
        all.insert(all.end(), implementations.begin(), implementations.end());
    }
    RootCandidates candidates(all.begin(), all.end());
    for (const VornComponentImplementation* const implementation : all) {
        for (const auto& [name, subcomponent] : implementation->subcomponents()) {
            candidates.erase(subcomponent->implementation());
        }
    }
    return candidates;
}

void VornSpecification::printVorn(std::ostream& stream) const {
    for (const auto& [name, package] : mPackages) package->printVorn(stream);
}

}  // namespace vornrun
