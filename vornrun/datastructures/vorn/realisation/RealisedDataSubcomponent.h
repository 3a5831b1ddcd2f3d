#pragma once
/// \file
/// A variable of a component instance.

#include "vornrun/datastructures/vorn/realisation/RealisedPart.h"
#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/VornDataSubcomponent.h"

namespace vornrun {

class RealisedDataSubcomponent final : public RealisedPart, public Realisation {
  public:
    /// \param declaration not owned
    /// \param modes the modes in which the variable exists; empty means all
    RealisedDataSubcomponent(unsigned int id, const VornDataSubcomponent* declaration,
                             const VornComponentRealisation* component, ModeList modes);

    VornDataTypeTag type() const override { return mData->type(); }
    const VornDataSubcomponent* data() const noexcept { return mData; }
    const ModeList& modes() const noexcept { return mModes; }
    void print(std::ostream& stream) const override;

  private:
    const VornDataSubcomponent* mData;
    ModeList mModes;
};

}  // namespace vornrun
