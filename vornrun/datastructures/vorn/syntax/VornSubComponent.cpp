#include "vornrun/datastructures/vorn/syntax/VornSubComponent.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

void VornBinding::printVorn(std::ostream& stream) const {
    switch (mType) {
        case Type::accesses:
            stream << "accesses ";
            break;
        case Type::storedIn:
            stream << "stored in ";
            break;
        case Type::runningOn:
            stream << "running on ";
            break;
    }
    stream << mTarget;
}

VornSubComponent::VornSubComponent(unsigned int id, const std::string& name, const std::string& implementationRef,
                                   std::vector<VornBinding> bindings, std::vector<std::string> inModes)
    : mId(id),
      mName(name),
      mImplementationRef(implementationRef),
      mBindings(std::move(bindings)),
      mInModes(std::move(inModes)),
      mImplementation(nullptr) {}

std::tuple<std::string, std::string, std::string> VornSubComponent::compSpecifier() const {
    std::string package;
    std::string type = mImplementationRef;
    // The first colon counts as the "::"; two characters are skipped, and the second one may be anything.
    const std::size_t colon = mImplementationRef.find(':');
    if (colon != std::string::npos) {
        package = mImplementationRef.substr(0, colon);
        type = mImplementationRef.substr(std::min(colon + 2, mImplementationRef.size()));
    }
    std::string implementation;
    const std::size_t dot = type.find('.');
    if (dot != std::string::npos) {
        implementation = type.substr(dot + 1);
        type.resize(dot);
    }
    return {package, type, implementation};
}

void VornSubComponent::printVorn(std::ostream& stream) const {
    stream << mName << " : ";
    if (mImplementation != nullptr) {
        stream << mImplementation->category() << " " << mImplementation->qualifiedName();
    } else {
        stream << "? " << mImplementationRef;
    }
    for (const VornBinding& binding : mBindings) {
        stream << " ";
        binding.printVorn(stream);
    }
    syntax::printInModes(stream, mInModes);
    stream << "; --" << mId;
}

}  // namespace vornrun
