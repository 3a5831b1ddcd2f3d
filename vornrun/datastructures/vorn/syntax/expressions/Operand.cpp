#include "vornrun/datastructures/vorn/syntax/expressions/Operand.h"

#include <ostream>
#include <sstream>

namespace vornrun {

void throwMissingOperand(const OperandPlace& place, std::string_view type) {
    std::ostringstream text;
    text << place.position;
    if (place.number != 0) text << " " << place.number;
    text << " of '" << place.operation << "'";
    if (!type.empty()) text << " (" << type << ")";
    text << " is missing: a name in it did not resolve, or its type was changed";
    throw missing_operand(text.str());
}

template <class T>
typename T::AssociatedDataType MissingOperand<T>::evaluateDirect() const {
    throwMissingOperand(mPlace, T::op);
}

template <class T>
void MissingOperand<T>::printExpression(std::ostream& stream) const {
    stream << "(null)";
}

template <class T>
Operand<T>::Operand(TypedVornExpressionTree<T>* tree, const OperandPlace& place) : mTree(tree), mMissing(!tree) {
    if (mMissing) mTree = std::make_unique<MissingOperand<T>>(place);
}

#define VORN_INSTANTIATE(T)           \
    template class MissingOperand<T>; \
    template class Operand<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
