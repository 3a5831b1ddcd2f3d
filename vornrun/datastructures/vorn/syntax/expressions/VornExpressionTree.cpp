#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

#include <cassert>
#include <memory>

#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

template <class T>
TypedVornValue<T>* TypedVornExpressionTree<T>::evaluationResultTyped() const {
    return new TypedVornValue<T>(evaluateDirect());
}

// The literal in the tree owns its placeholder mode, so the box needs a copy.
template <>
TypedVornValue<VornModeVal>* TypedVornExpressionTree<VornModeVal>::evaluationResultTyped() const {
    return new TypedVornValue<VornModeVal>(TypedVornValue<VornModeVal>::copyOf(evaluateDirect()));
}

template <class T>
VornValue* TypedVornExpressionTree<T>::evaluationResult() const {
    return evaluationResultTyped();
}

double getDoubleValue(const VornExpressionTree* tree) {
    assert(tree != nullptr);
    std::unique_ptr<const VornValue> result(tree->evaluationResult());
    if (result->type() != VornReal::tag) result.reset(result->convertToType(VornReal::tag));
    return dynamic_cast<const TypedVornValue<VornReal>&>(*result).value();
}

#define VORN_INSTANTIATE(T) template class TypedVornExpressionTree<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
