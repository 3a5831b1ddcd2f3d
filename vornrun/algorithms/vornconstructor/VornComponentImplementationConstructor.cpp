#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"

namespace vornrun {

constinit thread_local unsigned int VornComponentImplementationConstructor::mSubcompId = 0;
constinit thread_local unsigned int VornComponentImplementationConstructor::mModeId = 0;
constinit thread_local unsigned int VornComponentImplementationConstructor::mTransitionId = 0;

}  // namespace vornrun
