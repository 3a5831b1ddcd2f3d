#include "vornrun/algorithms/vornconstructor/BinaryExpressionConstruction.h"

namespace vornrun {

VORN_INSTANTIATE_CONSTRUCTION(VornEq)
VORN_INSTANTIATE_CONSTRUCTION(VornNEq)

}  // namespace vornrun
