#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

#include <ostream>

#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"

namespace vornrun {

VornExpressionTree* VornVariable::accept(ExpressionTreeVisitor* visitor) const { return visitor->visit(this); }

void VornVariable::printExpression(std::ostream& stream) const { stream << static_cast<const VornReference&>(*this); }

#define VORN_INSTANTIATE(T) template class TypedVornVariable<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
