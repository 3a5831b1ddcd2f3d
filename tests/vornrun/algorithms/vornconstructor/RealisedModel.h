#pragma once
/// \file
/// A realised model that tests take apart by name.

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "tests/support/Printed.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {

/// The model below one implementation; the implementation must outlive it.
class Realised {
  public:
    explicit Realised(const VornComponentImplementation& implementation) {
        VornModelConstructor constructor;
        const auto [realised, values] = constructor.realise(&implementation);
        root.reset(realised);
        valuation = values;
    }

    const VornComponentRealisation& at(const std::string& name) const { return *root->findSubcomponent(name); }
    const RealisedPart* part(const std::string& name) const {
        const VornReference reference(name);
        return dynamic_cast<const RealisedPart*>(root->findIdentifier(&reference));
    }
    template <class T>
    typename T::AssociatedDataType value(const std::string& name) const {
        return valuation->getValueDirect<T>(part(name)->component()->valueRef(part(name)));
    }
    template <class T>
    typename T::AssociatedDataType rateOf(const std::string& name) const {
        return valuation->getValueDirect<T>(part(name)->component()->valueRefTrajectory(part(name)));
    }
    const RealisedMode& mode(const std::string& name) const {
        for (const auto& each : root->modes())
            if (each->name() == name) return *each;
        throw std::invalid_argument("no mode " + name);
    }
    const RealisedTransition& transition(std::size_t position) const { return *root->transitions().at(position); }
    /// What the effects of a transition assign, in order.
    std::string effects(std::size_t position) const {
        std::ostringstream text;
        for (const auto& effect : transition(position).effects()) text << printed(*effect) << ";";
        return text.str();
    }

    std::unique_ptr<VornComponentRealisation> root;
    ValuationPtr valuation;
};

}  // namespace vornrun::test
