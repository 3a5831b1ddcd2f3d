#pragma once
/// \file
/// Faults of one component in work. For the sources of VornModelConstructor only.

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun {

/// \throws model_exception always: the component's full identifier and the text
[[noreturn]] void failIn(const VornComponentRealisation& component, const std::string& text);

/// The modes of the mode list of an element, which prints itself or is its name.
/// \param kind what the element is, for the text of a fault: "connection"
/// \throws model_exception naming the component, the element and the mode that does not exist
template <class Element>
ModeList modesOf(const std::vector<std::string>& names, const VornModelConstructor::ModesByName& modesByName,
                 const VornComponentRealisation& component, const char* kind, const Element& element) {
    try {
        return realisedModelist(names, modesByName);
    } catch (const model_exception& fault) {
        std::ostringstream text;
        text << "the mode list of " << kind << " \"" << element << "\": " << fault.what();
        failIn(component, text.str());
    }
}

}  // namespace vornrun
