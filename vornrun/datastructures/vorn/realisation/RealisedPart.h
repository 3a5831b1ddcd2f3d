#pragma once
/// \file
/// The parts of a component instance that can have a value slot.

#include "vornrun/datastructures/vorn/realisation/Realisation.h"
#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

namespace vornrun {

class VornComponentRealisation;

class RealisedPart : public RealisedIdentifier {
  public:
    /// \param component the owner, which is also the parent
    RealisedPart(unsigned int id, const VornComponentRealisation* component, const std::string& identifier);

    const VornComponentRealisation* component() const noexcept { return mComponent; }
    virtual VornDataTypeTag type() const = 0;

  private:
    const VornComponentRealisation* mComponent;
};

/// Orders parts by the order in which they were made, so that nothing follows memory addresses and a run is the same
/// on every machine. Ids of parts are unique in a model.
struct PartOrder {
    bool operator()(const RealisedPart* a, const RealisedPart* b) const noexcept { return a->id() < b->id(); }
};

}  // namespace vornrun
