#include "vornrun/datastructures/vorn/realisation/RealisedVariable.h"

#include <ostream>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

RealisedVariable::RealisedVariable(ValuationPtr valuation, ValueRef reference, const RealisedIdentifier* part)
    : mReference(reference), mValuation(std::move(valuation)), mPart(part) {}

VornExpressionTree* RealisedVariable::accept(ExpressionTreeVisitor* visitor) const { return visitor->visit(this); }

template <class T>
typename T::AssociatedDataType TypedRealisedVariable<T>::evaluateDirect() const {
    return valuation().template getValueDirect<T>(reference());
}

template <class T>
void TypedRealisedVariable<T>::printExpression(std::ostream& stream) const {
    stream << part()->identifier() << "{=" << valuation().template getValue<T>(reference()) << ":" << T::op << "}";
}

#define VORN_INSTANTIATE(T) template class TypedRealisedVariable<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
