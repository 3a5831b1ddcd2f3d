#pragma once
/// \file
/// The bodies of TypedBinaryOperator, for the source files that instantiate it, one per operator. Each of them defines
/// what its operator computes, as BinaryMeaning<Op>, and then lists its instances.

#include <ostream>

#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ReplacementChildren.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ResultTypes.h"

namespace vornrun {

/// What an operator makes of its operands: a static `evaluate<Left, Right>(left, right)` over the operands themselves,
/// so that an operator may leave one unevaluated.
template <class Op>
struct BinaryMeaning;

/// For the operators that need both values: evaluates left, then right, and calls `compute` with both.
template <class Left, class Right, class Compute>
auto onBothValues(const Operand<Left>& left, const Operand<Right>& right, Compute compute) {
    const auto leftValue = left.evaluate();
    const auto rightValue = right.evaluate();
    return compute(leftValue, rightValue);
}

/// Like onBothValues(), with an integer converted to double where the other operand is a double.
template <NumericTag Left, NumericTag Right, class Compute>
auto onBothNumbers(const Operand<Left>& left, const Operand<Right>& right, Compute compute) {
    using Number = std::common_type_t<typename Left::AssociatedDataType, typename Right::AssociatedDataType>;
    return onBothValues(left, right, [compute](auto leftValue, auto rightValue) {
        return compute(static_cast<Number>(leftValue), static_cast<Number>(rightValue));
    });
}

template <class Op, class Result, class Left, class Right>
TypedBinaryOperator<Op, Result, Left, Right>::TypedBinaryOperator(TypedVornExpressionTree<Left>* left,
                                                                  TypedVornExpressionTree<Right>* right)
    : mRight(right, {"Right operand", Op::text}), mLeft(left, {"Left operand", Op::text}) {
    static_assert(std::is_same_v<Result, typename BinaryResultType<Op, Left, Right>::type>);
}

template <class Op, class Result, class Left, class Right>
typename Result::AssociatedDataType TypedBinaryOperator<Op, Result, Left, Right>::evaluateDirect() const {
    return BinaryMeaning<Op>::evaluate(mLeft, mRight);
}

template <class Op, class Result, class Left, class Right>
TypedBinaryOperator<Op, Result, Left, Right>* TypedBinaryOperator<Op, Result, Left, Right>::clone() const {
    std::unique_ptr<TypedVornExpressionTree<Left>> left(mLeft.clone());
    std::unique_ptr<TypedVornExpressionTree<Right>> right(mRight.clone());
    return new TypedBinaryOperator(left.release(), right.release());
}

template <class Op, class Result, class Left, class Right>
TypedBinaryOperator<Op, Result, Left, Right>* TypedBinaryOperator<Op, Result, Left, Right>::clone(
    const std::list<VornExpressionTree*>& children) const {
    ReplacementChildren replacements(children);
    auto left = replacements.takeTyped<Left>(0);
    auto right = replacements.takeTyped<Right>(replacements.size() - 1);
    return new TypedBinaryOperator(left.release(), right.release());
}

template <class Op, class Result, class Left, class Right>
VornExpressionTree* TypedBinaryOperator<Op, Result, Left, Right>::accept(ExpressionTreeVisitor* visitor) const {
    return visitor->visit(static_cast<const BinaryOperator*>(this));
}

template <class Op, class Result, class Left, class Right>
void TypedBinaryOperator<Op, Result, Left, Right>::printExpression(std::ostream& stream) const {
    mLeft.print(stream);
    stream << " " << Op::text << " ";
    mRight.print(stream);
}

}  // namespace vornrun
