#include "vornrun/algorithms/vornconstructor/BinaryExpressionConstruction.h"

namespace vornrun {

VORN_INSTANTIATE_CONSTRUCTION(VornLt)
VORN_INSTANTIATE_CONSTRUCTION(VornLEq)
VORN_INSTANTIATE_CONSTRUCTION(VornGt)
VORN_INSTANTIATE_CONSTRUCTION(VornGEq)

}  // namespace vornrun
