#include "vornrun/datastructures/vorn/syntax/VornPackage.h"

#include <cassert>
#include <ostream>
#include <stdexcept>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

namespace {

template <class Things>
auto findInEither(const Things& first, const Things& second, const std::string& name) {
    const auto hit = first.find(name);
    if (hit != first.end()) return hit->second.get();
    const auto otherHit = second.find(name);
    return otherHit != second.end() ? otherHit->second.get() : nullptr;
}

template <class T>
std::vector<T*> allOf(const std::map<std::string, std::unique_ptr<T>>& first,
                      const std::map<std::string, std::unique_ptr<T>>& second) {
    std::vector<T*> all;
    all.reserve(first.size() + second.size());
    for (const auto* const things : {&first, &second}) {
        for (const auto& [name, thing] : *things) all.push_back(thing.get());
    }
    return all;
}

template <class Things>
void printAll(std::ostream& stream, const Things& things) {
    for (const auto& [name, thing] : things) thing->printVorn(stream);
}

}  // namespace

VornPackage::VornPackage(const std::string& name) : mName(name) {}

VornPackage::~VornPackage() = default;

void VornPackage::addPublicDeclaration(VornComponentDeclaration* declaration) {
    addDeclaration(mPublicDeclarations, declaration, "public");
}

void VornPackage::addPrivateDeclaration(VornComponentDeclaration* declaration) {
    addDeclaration(mPrivateDeclarations, declaration, "private");
}

void VornPackage::addPublicImplementation(VornComponentImplementation* implementation) {
    addImplementation(mPublicImplementations, implementation, "public");
}

void VornPackage::addPrivateImplementation(VornComponentImplementation* implementation) {
    addImplementation(mPrivateImplementations, implementation, "private");
}

void VornPackage::addDeclaration(Declarations& section, VornComponentDeclaration* declaration,
                                 const char* sectionName) {
    assert(declaration != nullptr);
    std::unique_ptr<VornComponentDeclaration> owned(declaration);
    const std::string& name = declaration->name();
    syntax::FirstOfName::add(section, std::string(name), std::move(owned), "component type",
                             std::string("the ") + sectionName + " part of package '" + mName + "'");
}

void VornPackage::addImplementation(Implementations& section, VornComponentImplementation* implementation,
                                    const char* sectionName) {
    assert(implementation != nullptr);
    std::unique_ptr<VornComponentImplementation> owned(implementation);
    VornComponentImplementation* const added =
        syntax::FirstOfName::add(section, implementation->qualifiedName(), std::move(owned), "component implementation",
                                 std::string("the ") + sectionName + " part of package '" + mName + "'");
    if (added == nullptr) return;
    OfType& ofType = mImplementationsByType[added->declaration()->name()];
    if (ofType.count++ == 0) ofType.first = added;
}

std::vector<VornComponentDeclaration*> VornPackage::declarations() const {
    return allOf(mPublicDeclarations, mPrivateDeclarations);
}

std::vector<VornComponentImplementation*> VornPackage::implementations() const {
    return allOf(mPublicImplementations, mPrivateImplementations);
}

VornComponentDeclaration* VornPackage::findDeclaration(const std::string& name) const {
    VornComponentDeclaration* const hit = findInEither(mPublicDeclarations, mPrivateDeclarations, name);
    if (hit == nullptr) throw std::invalid_argument("No declaration with name " + name + " in this package.");
    return hit;
}

VornComponentImplementation* VornPackage::findImplementation(const std::string& name) const {
    VornComponentImplementation* const hit = findInEither(mPublicImplementations, mPrivateImplementations, name);
    if (hit == nullptr) throw std::invalid_argument("No implementation with name " + name + " in this package.");
    return hit;
}

VornComponentImplementation* VornPackage::findImplementationByType(const std::string& typeName) const {
    const auto hit = mImplementationsByType.find(typeName);
    if (hit == mImplementationsByType.end()) {
        throw std::invalid_argument("No single implementation of type " + typeName + " in this package.");
    }
    if (hit->second.count > 1) {
        throw std::invalid_argument("Declaration " + typeName + " has multiple implementations.");
    }
    return hit->second.first;
}

void VornPackage::printVorn(std::ostream& stream) const {
    stream << "-------- PACKAGE " << mName << " --------\n";
    stream << "package " << mName << "\n";
    stream << "public\n";
    printAll(stream, mPublicDeclarations);
    printAll(stream, mPublicImplementations);
    if (!mPrivateDeclarations.empty() || !mPrivateImplementations.empty()) {
        stream << "private\n";
        printAll(stream, mPrivateDeclarations);
        printAll(stream, mPrivateImplementations);
    }
    stream << "end " << mName << ";\n";
    stream << "-------- END PACKAGE --------\n";
}

}  // namespace vornrun
