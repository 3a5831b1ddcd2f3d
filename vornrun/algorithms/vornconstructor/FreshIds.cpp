#include "vornrun/algorithms/vornconstructor/FreshIds.h"

#include <utility>

#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun {

using ComponentIds = VornComponentImplementationConstructor;

FreshIds::FreshIds() noexcept
    : mPort(std::exchange(VornPartsConstructor::portIdCounter, VornPartsConstructor::FIRST_PORT_ID)),
      mSubcomponent(std::exchange(ComponentIds::mSubcompId, 0)),
      mMode(std::exchange(ComponentIds::mModeId, 0)),
      mTransition(std::exchange(ComponentIds::mTransitionId, 0)),
      mImplementation(std::exchange(VornComponentImplementation::nextSerial, 0)) {}

FreshIds::~FreshIds() {
    VornPartsConstructor::portIdCounter = mPort;
    ComponentIds::mSubcompId = mSubcomponent;
    ComponentIds::mModeId = mMode;
    ComponentIds::mTransitionId = mTransition;
    VornComponentImplementation::nextSerial = mImplementation;
}

}  // namespace vornrun
