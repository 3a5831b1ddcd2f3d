#pragma once
/// \file
/// What the steps of realising one component hand to each other. For the sources of VornModelConstructor only.

#include <map>
#include <string>
#include <vector>

#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

struct VornModelConstructor::Work {
    /// Orders modes as the parser met them rather than by memory address.
    struct ModeOrder {
        bool operator()(const VornMode* a, const VornMode* b) const noexcept { return a->id() < b->id(); }
    };

    Work(const VornComponentImplementation& work, VornComponentRealisation& in);

    /// The modes of a mode list. \throws model_exception naming the component, `what` and the mode that is none
    ModeList modesOf(const std::vector<std::string>& names, const std::string& what) const;
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
