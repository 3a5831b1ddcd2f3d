#include "vornrun/algorithms/vornconstructor/BinaryExpressionConstruction.h"

namespace vornrun {

VORN_INSTANTIATE_CONSTRUCTION(VornPlus)
VORN_INSTANTIATE_CONSTRUCTION(VornMinus)
VORN_INSTANTIATE_CONSTRUCTION(VornMultiply)
VORN_INSTANTIATE_CONSTRUCTION(VornDivide)
VORN_INSTANTIATE_CONSTRUCTION(VornMod)

}  // namespace vornrun
