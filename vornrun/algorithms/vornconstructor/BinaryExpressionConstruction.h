#pragma once
/// \file
/// The dispatch from two run-time types to one operator instance, for the source files that instantiate it, one per
/// class of operators, so that they build in parallel.

#include <cassert>

#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"

namespace vornrun {

template <class Op, class Left>
VornExpressionTree* VornExpressionConstructor::expressionTree(TypedVornExpressionTree<Left>* left,
                                                              VornExpressionTree* right) {
    assert(left != nullptr && right != nullptr && "the caller tests its operands first");
    return withTagClass(right->type(), [left, right]<class Right>() -> VornExpressionTree* {
        return makeOperator<Op, BinaryResultType<Op, Left, Right>>(
            left, dynamic_cast<TypedVornExpressionTree<Right>*>(right));
    });
}

template <class Op>
VornExpressionTree* VornExpressionConstructor::expressionTree(VornExpressionTree* left, VornExpressionTree* right) {
    assert(left != nullptr && right != nullptr && "the caller tests its operands first");
    return withTagClass(left->type(), [left, right]<class Left>() -> VornExpressionTree* {
        return expressionTree<Op, Left>(dynamic_cast<TypedVornExpressionTree<Left>*>(left), right);
    });
}

/// Instantiates both stages of the dispatch for one operator.
#define VORN_SECOND_STAGE(Op, Left)                                                                                  \
    template VornExpressionTree* VornExpressionConstructor::expressionTree<Op, Left>(TypedVornExpressionTree<Left>*, \
                                                                                     VornExpressionTree*);
// clang-format off
#define VORN_INSTANTIATE_CONSTRUCTION(Op)                                                                              \
    template VornExpressionTree* VornExpressionConstructor::expressionTree<Op>(VornExpressionTree*,                    \
                                                                               VornExpressionTree*);                   \
    VORN_SECOND_STAGE(Op, VornBool) VORN_SECOND_STAGE(Op, VornReal) VORN_SECOND_STAGE(Op, VornInt)                     \
    VORN_SECOND_STAGE(Op, VornContinuous) VORN_SECOND_STAGE(Op, VornClock) VORN_SECOND_STAGE(Op, VornEnum)             \
    VORN_SECOND_STAGE(Op, VornInterval) VORN_SECOND_STAGE(Op, VornModeVal)
// clang-format on

}  // namespace vornrun
