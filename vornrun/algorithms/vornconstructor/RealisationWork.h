#pragma once
/// \file
/// What the steps of realising one component hand to each other. For the sources of VornModelConstructor only.

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

struct VornModelConstructor::Work {
    /// Orders modes as the parser met them rather than by memory address.
    struct ModeOrder {
        bool operator()(const VornMode* a, const VornMode* b) const noexcept { return a->id() < b->id(); }
    };

    Work(const VornComponentImplementation& work, VornComponentRealisation& in);

    /// The modes of the mode list of an element, which prints itself or is its name.
    /// \throws model_exception naming the component, the element and the mode that is none
    template <class Element>
    ModeList modesOf(const std::vector<std::string>& names, const char* kind, const Element& element) const {
        try {
            return realisedModelist(names, modesByName);
        } catch (const model_exception& fault) {
            std::ostringstream text;
            text << "the mode list of " << kind << " \"" << element << "\": " << fault.what();
            fail(text.str());
        }
    }
    /// \throws model_exception always: the component's full identifier and the text
    [[noreturn]] void fail(const std::string& text) const;

    const VornComponentImplementation& implementation;
    VornComponentRealisation& realisation;
    std::map<const VornMode*, RealisedMode*, ModeOrder> modesByDeclaration;
    std::map<std::string, RealisedMode*> modesByName;
    VornComponentRealisation::ValueSlots slotsOfValues;
    VornComponentRealisation::ValueSlots slotsOfRates;
};

}  // namespace vornrun
