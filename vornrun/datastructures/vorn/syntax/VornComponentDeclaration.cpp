#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"

#include <ostream>
#include <stdexcept>

#include "vornrun/datastructures/vorn/syntax/SyntaxUtil.h"

namespace vornrun {

std::ostream& operator<<(std::ostream& stream, VornComponentCategory category) {
    switch (category) {
        case VornComponentCategory::bus:
            return stream << "bus";
        case VornComponentCategory::data:
            return stream << "data";
        case VornComponentCategory::device:
            return stream << "device";
        case VornComponentCategory::memory:
            return stream << "memory";
        case VornComponentCategory::process:
            return stream << "process";
        case VornComponentCategory::processor:
            return stream << "processor";
        case VornComponentCategory::system:
            return stream << "system";
        case VornComponentCategory::thread:
            return stream << "thread";
        case VornComponentCategory::threadGroup:
            return stream << "threadGroup";
    }
    return stream;
}

const std::unordered_map<std::string, VornComponentCategory> VornComponentCategoryNames = {
    {"bus", VornComponentCategory::bus},
    {"data", VornComponentCategory::data},
    {"device", VornComponentCategory::device},
    {"memory", VornComponentCategory::memory},
    {"process", VornComponentCategory::process},
    {"processor", VornComponentCategory::processor},
    {"system", VornComponentCategory::system},
    {"thread", VornComponentCategory::thread},
    {"thread group", VornComponentCategory::threadGroup},  // two words, unlike its printed name
};

VornComponentCategory componentCategory(const std::string& name) { return VornComponentCategoryNames.at(name); }

VornComponentDeclaration::VornComponentDeclaration(const std::string& name, VornComponentCategory category,
                                                   const std::vector<VornPort*>& features)
    : mName(name),
      mCategory(category),
      mFeatures(syntax::FirstOfName::mapOf(adoptAll(features), "port", "component type '" + name + "'")) {}

VornPort* VornComponentDeclaration::featureByName(const std::string& name) const {
    const auto feature = mFeatures.find(name);
    if (feature == mFeatures.end()) throw std::invalid_argument("Unknown feature name " + name);
    return feature->second.get();
}

void VornComponentDeclaration::printVorn(std::ostream& stream) const {
    stream << mCategory << " " << mName << "\n";
    if (!mFeatures.empty()) {
        stream << "\tfeatures\n";
        for (const auto& [name, port] : mFeatures) {
            stream << "\t\t";
            port->printVorn(stream);
            stream << "\n";
        }
    }
    stream << "end " << mName << ";\n";
}

}  // namespace vornrun
