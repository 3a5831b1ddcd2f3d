#pragma once
/// \file
/// The interface of assignments over value slots, and of the trajectory equations of a mode. The classes behind it are
/// in the layer of the realisation.

#include <set>

#include "vornrun/datastructures/vorn/syntax/Realisation.h"
#include "vornrun/datastructures/vorn/syntax/ValueRef.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeRanges.h"

namespace vornrun {

class RealisedVariable;
class VornExpressionTree;

class RealisedAssignment : public Realisation {
  public:
    /// The variable that is assigned, borrowed. Of a trajectory equation this is the rate, not the variable itself, and
    /// null when it was made without a rate.
    virtual const RealisedVariable* target() const = 0;
    /// The assigned expression, borrowed.
    virtual const VornExpressionTree* assignment() const = 0;
    /// The values that the expression reads.
    virtual const std::set<TypedValueRef>& refsInAssignment() const = 0;
    /// Evaluates the expression and stores its value, converted to the target's type: a fraction is cut off towards
    /// zero on the way to an integer, and what no integer can hold becomes the lowest one.
    /// \pre target() is not null
    virtual void applyAssignment() const = 0;
};

class RealisedTrajectoryEquation : public virtual RealisedAssignment {
  public:
    /// The variable that evolves, borrowed.
    virtual const RealisedVariable* variable() const = 0;
    /// Adds rate times `delay` to the variable: one Euler step in place, so that a later equation sees the new value.
    virtual void applyTime(Time delay) const = 0;
};

}  // namespace vornrun
