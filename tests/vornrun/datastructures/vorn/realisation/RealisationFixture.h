#pragma once
/// \file
/// A small instance tree made by hand for the tests of its parts.

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Printed.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {

/// The addresses that owning pointers hold.
template <class Element>
std::vector<const Element*> borrowed(const std::vector<std::unique_ptr<Element>>& owned) {
    std::vector<const Element*> result;
    for (const auto& each : owned) result.push_back(each.get());
    return result;
}

/// The component "root" with id 0 and the modes a, b and c of ids 10, 11 and 12, implementing "Root.i".
using namespace direct;

class RealisationFixture : public testing::Test {
  protected:
    RealisationFixture()
        : valuation(std::make_shared<GlobalValuation>()),
          implementation(model.component("Root", ComponentDraft())),
          root(std::make_unique<VornComponentRealisation>(0, "root", &implementation, ModeList(), nullptr)),
          arrow(1, "a", "b", nullptr, nullptr, {}),
          link(new VornReference("p"), new VornReference("q"), true, {}, false) {
        VornComponentRealisation::Owned<RealisedMode> modes;
        modes.push_back(std::make_unique<RealisedMode>(10, "a", VornModeType::initial));
        modes.push_back(std::make_unique<RealisedMode>(11, "b", VornModeType::plain));
        modes.push_back(std::make_unique<RealisedMode>(12, "c", VornModeType::error));
        a = modes[0].get();
        b = modes[1].get();
        c = modes[2].get();
        root->attachModes(std::move(modes));
    }

    /// An event port of `component`, attached to it.
    RealisedEventPort* eventPort(VornComponentRealisation& component, unsigned int id, const std::string& name,
                                 PortDirection direction) {
        portDeclarations.push_back(std::make_unique<VornEventPort>(100 + id, name, direction, false));
        auto* port =
            new RealisedEventPort(id, &component, static_cast<const VornEventPort*>(portDeclarations.back().get()));
        component.attachEventPort(port);
        return port;
    }

    template <class T>
    RealisedDataSubcomponent* data(unsigned int id, const std::string& name, ModeList modes = {}) {
        dataDeclarations.push_back(
            std::make_unique<TypedVornDataSubcomponent<T>>(name, nullptr, std::vector<std::string>(), false));
        auto* part = new RealisedDataSubcomponent(id, dataDeclarations.back().get(), root.get(), std::move(modes));
        root->attachData(part);
        return part;
    }

    /// A variable on a new slot, of a new data subcomponent of that name.
    template <class T>
    TypedRealisedVariable<T>* variable(const std::string& name, const typename T::AssociatedDataType& value) {
        const RealisedDataSubcomponent* part = data<T>(nextPart++, name);
        return new TypedRealisedVariable<T>(valuation, valuation->addValue<T>(part, value), part);
    }

    /// A transition of the root, not attached.
    std::unique_ptr<RealisedTransition> transition(unsigned int id, const RealisedMode* source,
                                                   const RealisedMode* target, const RealisedEventPort* trigger,
                                                   RealisedTransition::Effects effects = {},
                                                   VornLinearExpression* guard = nullptr) {
        return std::make_unique<RealisedTransition>(id, root.get(), &arrow, source, target, trigger, guard,
                                                    std::move(effects));
    }

    std::unique_ptr<VornComponentRealisation> component(unsigned int id, const std::string& name, ModeList inModes = {},
                                                        const VornComponentRealisation* parent = nullptr) {
        return std::make_unique<VornComponentRealisation>(id, name, &implementation, std::move(inModes),
                                                          parent == nullptr ? root.get() : parent);
    }

    SyntaxModel model;
    std::vector<std::unique_ptr<VornPort>> portDeclarations;
    std::vector<std::unique_ptr<VornDataSubcomponent>> dataDeclarations;
    unsigned int nextPart = 1000;
    ValuationPtr valuation;
    const VornComponentImplementation& implementation;
    std::unique_ptr<VornComponentRealisation> root;
    VornTransition arrow;
    VornConnection link;
    RealisedMode* a = nullptr;
    RealisedMode* b = nullptr;
    RealisedMode* c = nullptr;
};

}  // namespace vornrun::test
