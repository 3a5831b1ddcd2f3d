#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

#include <algorithm>
#include <cassert>
#include <ostream>
#include <stdexcept>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun {

namespace {

std::string placeOf(const std::string& name, const VornComponentDeclaration* declaration) {
    return "component implementation '" + declaration->name() + "." + name + "'";
}

template <class T>
const T& pointee(const std::unique_ptr<T>& element) {
    return *element;
}
template <class T>
const T& pointee(const std::pair<const std::string, std::unique_ptr<T>>& element) {
    return *element.second;
}

/// One line for each element of a vector or map of owned parts.
template <class Parts>
void printLines(std::ostream& stream, const Parts& parts) {
    for (const auto& part : parts) {
        stream << "\t\t";
        pointee(part).printVorn(stream);
        stream << "\n";
    }
}

template <class Parts>
void printSection(std::ostream& stream, const char* title, const Parts& parts) {
    if (parts.empty()) return;
    stream << title;
    printLines(stream, parts);
}

}  // namespace

constinit thread_local unsigned int VornComponentImplementation::nextSerial = 0;

VornComponentImplementation::VornComponentImplementation(
    const std::string& name, const VornComponentDeclaration* declaration,
    const std::vector<VornSubComponent*>& subcomponents, const std::vector<VornDataSubcomponent*>& dataSubcomponents,
    const std::vector<VornFlow*>& flows, const std::vector<VornConnection*>& connections,
    const std::vector<VornMode*>& modes, const std::vector<VornTransition*>& transitions,
    const std::vector<VornTransition*>& reactivationTransitions)
    : mSerial(nextSerial++),
      mName(name),
      mDeclaration(declaration),
      mSubcomponents(syntax::FirstOfName::mapOf(adoptAll(subcomponents), "subcomponent", placeOf(name, declaration))),
      mDataSubcomponents(
          syntax::FirstOfName::mapOf(adoptAll(dataSubcomponents), "data subcomponent", placeOf(name, declaration))),
      mFlows(adoptAll(flows)),
      mConnections(adoptAll(connections)),
      mModes(syntax::FirstOfName::mapOf(adoptAll(modes), "mode", placeOf(name, declaration))),
      mTransitions(adoptAll(transitions)),
      mReactivationTransitions(adoptAll(reactivationTransitions)),
      mHasActivationMode(std::any_of(mModes.begin(), mModes.end(), [](const auto& mode) {
          return mode.second->type() == VornModeType::activation;
      })) {
    // A declared "mode" replaces the variable that holds the current mode. There is no warning, since the model asks
    // for the name itself.
    if (!mDataSubcomponents.contains("mode")) {
        mDataSubcomponents.emplace("mode", std::make_unique<TypedVornDataSubcomponent<VornModeVal>>(
                                               "mode", nullptr, std::vector<std::string>{}, false));
    }
}

std::string VornComponentImplementation::qualifiedName() const { return mDeclaration->name() + "." + mName; }

const VornMode* VornComponentImplementation::findMode(const std::string& name) const {
    const auto mode = mModes.find(name);
    if (mode == mModes.end()) {
        throw std::invalid_argument("No mode with name " + name + " in implementation " + qualifiedName() + ".");
    }
    return mode->second.get();
}

std::vector<VornMode*> VornComponentImplementation::modePointers() const {
    std::vector<VornMode*> modes;
    modes.reserve(mModes.size());
    for (const auto& [name, mode] : mModes) modes.push_back(mode.get());
    return modes;
}

VornIdentifier* VornComponentImplementation::findIdentifier(const VornReference* reference) const {
    assert(reference != nullptr);
    const VornComponentImplementation* component = this;
    VornReference remaining = *reference;
    while (remaining.isSub()) {
        const auto subcomponent = component->mSubcomponents.find(remaining.subComponent());
        if (subcomponent == component->mSubcomponents.end()) return nullptr;
        component = subcomponent->second->implementation();
        if (component == nullptr) return nullptr;
        remaining = remaining.getSubReference();
    }
    const auto data = component->mDataSubcomponents.find(remaining.name());
    if (data != component->mDataSubcomponents.end()) return data->second.get();
    return component->mDeclaration->featureByName(remaining.name());
}

void VornComponentImplementation::printVorn(std::ostream& stream) const {
    stream << category() << " implementation " << qualifiedName() << "\n";
    if (!mDataSubcomponents.empty() || !mSubcomponents.empty()) {
        stream << "\tsubcomponents\n";
        printLines(stream, mDataSubcomponents);
        printLines(stream, mSubcomponents);
    }
    printSection(stream, "\tconnections\n", mConnections);
    printSection(stream, "\tflows\n", mFlows);
    printSection(stream, "\tmodes\n", mModes);
    printSection(stream, "\ttransitions\n", mTransitions);
    printSection(stream, "--@activation\n", mReactivationTransitions);
    stream << "end " << qualifiedName() << ";\n";
}

}  // namespace vornrun
