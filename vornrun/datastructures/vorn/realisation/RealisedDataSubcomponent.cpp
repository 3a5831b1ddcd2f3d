#include "vornrun/datastructures/vorn/realisation/RealisedDataSubcomponent.h"

#include <ostream>

namespace vornrun {

RealisedDataSubcomponent::RealisedDataSubcomponent(unsigned int id, const VornDataSubcomponent* declaration,
                                                   const VornComponentRealisation* component, ModeList modes)
    : RealisedPart(id, component, declaration->name()), mData(declaration), mModes(std::move(modes)) {}

void RealisedDataSubcomponent::print(std::ostream& stream) const {
    stream << "[" << id() << "] (" << mData->name() << ")";
}

}  // namespace vornrun
