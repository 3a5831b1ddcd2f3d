#pragma once
/// \file
/// Integer division and remainder that throw where the processor has no result, for processes that must survive a
/// faulty model.

#include <stdexcept>

#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun {

/// Raised by the evaluation of a checked division. The text has the expression as it prints, and "division by zero" or
/// "overflow".
class arithmetic_fault : public std::domain_error {
  public:
    using std::domain_error::domain_error;
};

/// A copy of the node `tree` that checks its operands, over replacement children, which it adopts as clone(children)
/// does. The caller owns it.
/// \return null, with the children untouched, when the node is no integer division or remainder
VornExpressionTree* checkedDivision(const VornExpressionTree* tree, const std::list<VornExpressionTree*>& children);

}  // namespace vornrun
