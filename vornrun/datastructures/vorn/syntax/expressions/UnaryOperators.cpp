#include <ostream>

#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/IntegerArithmetic.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ReplacementChildren.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ResultTypes.h"

namespace vornrun {

template <class Op, class Result, class Sub>
TypedUnaryOperator<Op, Result, Sub>::TypedUnaryOperator(TypedVornExpressionTree<Sub>* subTree)
    : mSubTree(subTree, {"Operand", Op::text}) {
    static_assert(std::is_same_v<Result, typename UnaryResultType<Op, Sub>::type>);
}

template <class Op, class Result, class Sub>
typename Result::AssociatedDataType TypedUnaryOperator<Op, Result, Sub>::evaluateDirect() const {
    const auto value = mSubTree.evaluate();
    if constexpr (std::is_same_v<Op, VornNot>) {
        return !value;
    } else if constexpr (IntegerTag<Sub>) {
        return wrappingNegation(value);
    } else {
        return -value;  // flips the sign bit: 0.0 becomes -0.0
    }
}

template <class Op, class Result, class Sub>
TypedUnaryOperator<Op, Result, Sub>* TypedUnaryOperator<Op, Result, Sub>::clone() const {
    return new TypedUnaryOperator(mSubTree.clone());
}

template <class Op, class Result, class Sub>
TypedUnaryOperator<Op, Result, Sub>* TypedUnaryOperator<Op, Result, Sub>::clone(
    const std::list<VornExpressionTree*>& children) const {
    ReplacementChildren replacements(children);
    return new TypedUnaryOperator(replacements.takeTyped<Sub>(0).release());
}

template <class Op, class Result, class Sub>
VornExpressionTree* TypedUnaryOperator<Op, Result, Sub>::accept(ExpressionTreeVisitor* visitor) const {
    return visitor->visit(static_cast<const UnaryOperator*>(this));
}

template <class Op, class Result, class Sub>
void TypedUnaryOperator<Op, Result, Sub>::printExpression(std::ostream& stream) const {
    stream << Op::text << " ";
    mSubTree.print(stream);
}

VORN_UNARY_INSTANCE(VornNot, VornBool)
VORN_UNARY_INSTANCE(VornInvert, VornInterval)
VORN_UNARY_INSTANCE(VornInvert, VornInt)
VORN_UNARY_INSTANCE(VornInvert, VornReal)
VORN_UNARY_INSTANCE(VornInvert, VornClock)
VORN_UNARY_INSTANCE(VornInvert, VornContinuous)

}  // namespace vornrun
