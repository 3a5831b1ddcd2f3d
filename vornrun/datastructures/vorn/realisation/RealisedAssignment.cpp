#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"

#include <limits>
#include <ostream>

#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

namespace {

/// The conversion of the language between numbers. C++ leaves a double that no integer can hold undefined; the lowest
/// integer is what the hardware gives.
template <class To, class From>
To convertValue(const From& value) {
    if constexpr (std::is_same_v<To, long> && std::is_same_v<From, double>) {
        constexpr double limit = 9223372036854775808.0;    // 2^63
        if (!(value >= -limit && value < limit)) return std::numeric_limits<long>::min();
    }
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
    mValuation->setValue<T>(mTarget->reference(),
                            convertValue<typename T::AssociatedDataType>(mExpression->evaluateDirect()));
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
    const double value = mVariable->evaluateDirect();
    this->valuation().template setValue<T>(mVariable->reference(), value + rate * delay);
}

template <class T, class U>
void TypedRealisedTrajectoryEquation<T, U>::print(std::ostream& stream) const {
    stream << *mVariable << "' = " << this->expression();
}

#define VORN_INSTANTIATE(T, U)                   \
    template class TypedRealisedAssignment<T, U>; \
    template class TypedRealisedFlow<T, U>;
#define VORN_INSTANTIATE_NUMERIC(T) \
    VORN_INSTANTIATE(T, VornReal)   \
    VORN_INSTANTIATE(T, VornInt) VORN_INSTANTIATE(T, VornContinuous) VORN_INSTANTIATE(T, VornClock) VORN_INSTANTIATE(T, VornInterval)
VORN_INSTANTIATE(VornBool, VornBool)
VORN_INSTANTIATE(VornEnum, VornEnum)
VORN_INSTANTIATE(VornModeVal, VornModeVal)
VORN_INSTANTIATE_NUMERIC(VornReal)
VORN_INSTANTIATE_NUMERIC(VornInt)
VORN_INSTANTIATE_NUMERIC(VornContinuous)
VORN_INSTANTIATE_NUMERIC(VornClock)
VORN_INSTANTIATE_NUMERIC(VornInterval)
#undef VORN_INSTANTIATE_NUMERIC
#undef VORN_INSTANTIATE

#define VORN_INSTANTIATE(T)                                        \
    template class TypedRealisedTrajectoryEquation<T, VornReal>;       \
    template class TypedRealisedTrajectoryEquation<T, VornInt>;        \
    template class TypedRealisedTrajectoryEquation<T, VornContinuous>; \
    template class TypedRealisedTrajectoryEquation<T, VornClock>;      \
    template class TypedRealisedTrajectoryEquation<T, VornInterval>;
VORN_INSTANTIATE(VornClock)
VORN_INSTANTIATE(VornContinuous)
#undef VORN_INSTANTIATE

}  // namespace vornrun
