#include "vornrun/datastructures/vorn/realisation/CheckedAssignment.h"

#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

template <class Kind>
void CheckedTarget<Kind>::applyAssignment() const {
    // A fault in the expression is due before one of the target.
    const std::unique_ptr<const VornValue> evaluated(assignment()->evaluationResult());
    target()->requireSlot();
    mChecked->applyAssignment();
}

void CheckedTrajectoryEquation::applyTime(Time delay) const {
    variable()->requireSlot();
    checked().applyTime(delay);
}

template class CheckedTarget<RealisedAssignment>;
template class CheckedTarget<RealisedFlow>;
template class CheckedTarget<RealisedTrajectoryEquation>;

}  // namespace vornrun
