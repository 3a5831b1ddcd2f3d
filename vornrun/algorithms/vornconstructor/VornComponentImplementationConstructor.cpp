#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"

namespace vornrun {

unsigned int VornComponentImplementationConstructor::mSubcompId = 0;
unsigned int VornComponentImplementationConstructor::mModeId = 0;
unsigned int VornComponentImplementationConstructor::mTransitionId = 0;

}  // namespace vornrun
