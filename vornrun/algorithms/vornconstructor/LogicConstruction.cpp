#include "vornrun/algorithms/vornconstructor/BinaryExpressionConstruction.h"

namespace vornrun {

VORN_INSTANTIATE_CONSTRUCTION(VornAnd)
VORN_INSTANTIATE_CONSTRUCTION(VornOr)
VORN_INSTANTIATE_CONSTRUCTION(VornImp)
VORN_INSTANTIATE_CONSTRUCTION(VornIff)

}  // namespace vornrun
