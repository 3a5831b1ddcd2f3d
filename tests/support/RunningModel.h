#pragma once
/// \file
/// A model that a test has written, parsed by the real parser and realised, with its network. The tests of automata,
/// topologies and the network use it.

#include <memory>
#include <sstream>
#include <string>

#include "tests/support/ModelWriter.h"
#include "tests/support/Printed.h"
#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {

/// Things are found by their full names: "main" is the root, "main.pump" its subcomponent, "main.pump.x" a variable or
/// port of that. A name that finds nothing throws std::logic_error, so that no test passes by missing its target.
class RunningModel {
  public:
    explicit RunningModel(const ModelWriter& model);
    explicit RunningModel(const std::string& modelText);

    /// The root implementation.
    const VornComponentImplementation* root() const noexcept { return mRoot; }
    VornComponentRealisation& realisation() noexcept { return *mRealisation; }
    GlobalValuation& valuation() noexcept { return *mValuation; }
    const ValuationPtr& valuationPtr() const noexcept { return mValuation; }
    EDANetwork& network() noexcept { return *mNetwork; }

    EDA& eda(const std::string& component);
    const RealisedMode* mode(const std::string& component, const std::string& name);
    const RealisedEventPort* port(const std::string& fullName);
    /// The transition at position `index` among those of that source and target, in order of ids.
    TransitionPtr transition(const std::string& component, const std::string& source, const std::string& target,
                             unsigned int index = 0);
    QualifiedTransition qualified(const std::string& component, const std::string& source, const std::string& target,
                                  unsigned int index = 0);
    /// Takes that transition alone as a discrete step of the network.
    void take(const std::string& component, const std::string& source, const std::string& target,
              unsigned int index = 0);

    template <class T>
    typename T::AssociatedDataType value(const std::string& fullName) {
        return mValuation->getValueDirect<T>(slot(fullName, false));
    }
    template <class T>
    void setValue(const std::string& fullName, const typename T::AssociatedDataType& value) {
        mValuation->setValue<T>(slot(fullName, false), value);
    }
    /// The value of the rate slot.
    template <class T>
    typename T::AssociatedDataType rate(const std::string& fullName) {
        return mValuation->getValueDirect<T>(slot(fullName, true));
    }
    template <class T>
    void setRate(const std::string& fullName, const typename T::AssociatedDataType& rate) {
        mValuation->setValue<T>(slot(fullName, true), rate);
    }
    /// The name of the mode that the automaton is in.
    std::string modeOf(const std::string& component) { return eda(component).currentMode()->name(); }

  private:
    void build(const std::string& modelText);
    const VornComponentRealisation& component(const std::string& fullName) const;
    ValueRef slot(const std::string& fullName, bool ofRate) const;

    std::unique_ptr<VornSpecification> mSpecification;
    const VornComponentImplementation* mRoot = nullptr;
    std::unique_ptr<VornComponentRealisation> mRealisation;
    ValuationPtr mValuation;
    std::unique_ptr<EDANetwork> mNetwork;
};

}  // namespace vornrun::test
