#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"

#include <ostream>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/expressions/IntegerArithmetic.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

namespace {

/// The conversion of the language between numbers.
template <class To, class From>
To convertValue(From value) {
    if constexpr (std::is_same_v<To, long> && std::is_same_v<From, double>)
        return truncatedToInteger(value);
    else
        return static_cast<To>(value);
}

}  // namespace

template <class T, class U>
TypedRealisedAssignment<T, U>::TypedRealisedAssignment(TypedRealisedVariable<T>* target,
                                                       TypedVornExpressionTree<U>* expression,
                                                       const std::vector<RealisedVariable*>& dependencies,
                                                       ValuationPtr valuation)
    : mTarget(target), mExpression(expression), mValuation(std::move(valuation)) {
    for (const RealisedVariable* variable : dependencies)
        if (variable != nullptr) mRefs.emplace(variable->type(), variable->reference());
}

template <class T, class U>
void TypedRealisedAssignment<T, U>::applyAssignment() const {
    using Value = typename T::AssociatedDataType;
    if constexpr (std::is_same_v<Value, typename U::AssociatedDataType>)
        mValuation->setValue<T>(mTarget->reference(), mExpression->evaluateDirect());
    else
        mValuation->setValue<T>(mTarget->reference(), convertValue<Value>(mExpression->evaluateDirect()));
}

template <class T, class U>
void TypedRealisedAssignment<T, U>::print(std::ostream& stream) const {
    stream << *mTarget << " := " << *mExpression;
}

template <class T, class U>
TypedRealisedFlow<T, U>::TypedRealisedFlow(TypedRealisedVariable<T>* target, TypedVornExpressionTree<U>* expression,
                                           const std::vector<RealisedVariable*>& dependencies, ValuationPtr valuation,
                                           ModeList modes)
    : TypedRealisedAssignment<T, U>(target, expression, dependencies, std::move(valuation)), mModes(std::move(modes)) {}

template <class T, class U>
void TypedRealisedFlow<T, U>::print(std::ostream& stream) const {
    TypedRealisedAssignment<T, U>::print(stream);
    stream << mModes;
}

template <class T, class U>
TypedRealisedTrajectoryEquation<T, U>::TypedRealisedTrajectoryEquation(
    TypedRealisedVariable<T>* variable, TypedRealisedVariable<T>* rate, TypedVornExpressionTree<U>* expression,
    const std::vector<RealisedVariable*>& dependencies, ValuationPtr valuation)
    : TypedRealisedAssignment<T, U>(rate, expression, dependencies, std::move(valuation)), mVariable(variable) {}

template <class T, class U>
void TypedRealisedTrajectoryEquation<T, U>::applyTime(Time delay) const {
    const auto rate = static_cast<double>(this->expression().evaluateDirect());
    GlobalValuation& values = this->valuation();
    const ValueRef slot = mVariable->reference();
    values.template setValue<T>(slot, values.template getValueDirect<T>(slot) + rate * delay);
}

template <class T, class U>
void TypedRealisedTrajectoryEquation<T, U>::print(std::ostream& stream) const {
    stream << *mVariable << "' = " << this->expression();
}

#define VORN_INSTANTIATE(T, U)                    \
    template class TypedRealisedAssignment<T, U>; \
    template class TypedRealisedFlow<T, U>;
VORN_FOR_EACH_ASSIGNABLE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

#define VORN_INSTANTIATE(T, U) template class TypedRealisedTrajectoryEquation<T, U>;
VORN_FOR_EACH_TRAJECTORY(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
