#pragma once
/// \file
/// A saved state of a whole network.

#include <map>
#include <memory>

#include "vornrun/datastructures/eda/EDA.h"

namespace vornrun {

class DynamicValuesContainerPermanent;

class GlobalConfigurationSnapshot {
  public:
    using EDAStates = std::map<EDA*, EDA::State, EDAOrder>;

    /// Adopts the values.
    GlobalConfigurationSnapshot(const EDAStates& edaStates, DynamicValuesContainerPermanent* values);
    GlobalConfigurationSnapshot(const GlobalConfigurationSnapshot&) = delete;
    GlobalConfigurationSnapshot& operator=(const GlobalConfigurationSnapshot&) = delete;
    virtual ~GlobalConfigurationSnapshot();  // the class of the values is incomplete here

    const EDAStates& edaStates() const noexcept { return mEdaStates; }
    const DynamicValuesContainerPermanent* values() const noexcept { return mValues.get(); }

  private:
    EDAStates mEdaStates;
    std::unique_ptr<DynamicValuesContainerPermanent> mValues;
};

}  // namespace vornrun
