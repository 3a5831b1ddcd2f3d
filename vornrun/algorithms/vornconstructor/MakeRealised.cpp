#include "vornrun/Ownership.h"
#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/datastructures/vorn/realisation/CheckedAssignment.h"
#include "vornrun/datastructures/vorn/realisation/MistypedVariable.h"

namespace vornrun {

namespace {

using Dependencies = std::vector<RealisedVariable*>;

template <class T>
bool mayLackSlot(const TypedRealisedVariable<T>* variable) {
    return dynamic_cast<const MistypedVariable<T>*>(variable) != nullptr;
}

}  // namespace

RealisedVariable* makeValueReference(VornDataTypeTag tag, ValuationPtr valuation, ValueRef slot,
                                     const RealisedIdentifier* part) {
    return withTagClass(tag, [&]<class T>() -> RealisedVariable* {
        return new TypedRealisedVariable<T>(std::move(valuation), slot, part);
    });
}

template <class T>
RealisedAssignment* makeAssignment(TypedRealisedVariable<T>* target, VornExpressionTree* expression,
                                   Dependencies dependencies, ValuationPtr valuation) {
    std::unique_ptr<TypedRealisedVariable<T>> left(target);
    std::unique_ptr<VornExpressionTree> right(expression);
    if (left == nullptr || right == nullptr) return nullptr;
    return withTagClass(right->type(), [&]<class U>() -> RealisedAssignment* {
        if constexpr (isAssignable<T, U>) {
            if (auto typed = castOwned<TypedVornExpressionTree<U>>(std::move(right))) {
                const bool check = mayLackSlot(left.get());
                auto made = std::make_unique<TypedRealisedAssignment<T, U>>(left.release(), typed.release(),
                                                                            dependencies, valuation);
                return check ? new CheckedAssignment(std::move(made))
                             : static_cast<RealisedAssignment*>(made.release());
            }
        }
        return nullptr;
    });
}

template <class T>
RealisedFlow* makeFlow(TypedRealisedVariable<T>* target, VornExpressionTree* expression, Dependencies dependencies,
                       ValuationPtr valuation, ModeList modes) {
    std::unique_ptr<TypedRealisedVariable<T>> left(target);
    std::unique_ptr<VornExpressionTree> right(expression);
    if (left == nullptr || right == nullptr) return nullptr;
    return withTagClass(right->type(), [&]<class U>() -> RealisedFlow* {
        if constexpr (isAssignable<T, U>) {
            if (auto typed = castOwned<TypedVornExpressionTree<U>>(std::move(right))) {
                const bool check = mayLackSlot(left.get());
                auto made = std::make_unique<TypedRealisedFlow<T, U>>(left.release(), typed.release(), dependencies,
                                                                      valuation, modes);
                return check ? new CheckedFlow(std::move(made)) : static_cast<RealisedFlow*>(made.release());
            }
        }
        return nullptr;
    });
}

template <class T>
RealisedTrajectoryEquation* makeTrajectory(TypedRealisedVariable<T>* variable, RealisedVariable* rate,
                                           VornExpressionTree* expression, Dependencies dependencies,
                                           ValuationPtr valuation) {
    std::unique_ptr<TypedRealisedVariable<T>> evolving(variable);
    std::unique_ptr<RealisedVariable> anyRate(rate);
    std::unique_ptr<VornExpressionTree> right(expression);
    if (evolving == nullptr || right == nullptr) return nullptr;
    return withTagClass(right->type(), [&]<class U>() -> RealisedTrajectoryEquation* {
        if constexpr (isTrajectory<T, U>) {
            auto typedRate = castOwned<TypedRealisedVariable<T>>(std::move(anyRate));
            if (auto typed = castOwned<TypedVornExpressionTree<U>>(std::move(right))) {
                const bool check = mayLackSlot(evolving.get()) || mayLackSlot(typedRate.get());
                auto made = std::make_unique<TypedRealisedTrajectoryEquation<T, U>>(
                    evolving.release(), typedRate.release(), typed.release(), dependencies, valuation);
                return check ? new CheckedTrajectoryEquation(std::move(made))
                             : static_cast<RealisedTrajectoryEquation*>(made.release());
            }
        }
        return nullptr;
    });
}

RealisedAssignment* makeAssignment(RealisedVariable* target, VornExpressionTree* expression, Dependencies dependencies,
                                   ValuationPtr valuation) {
    std::unique_ptr<RealisedVariable> left(target);
    std::unique_ptr<VornExpressionTree> right(expression);
    if (left == nullptr) return nullptr;
    return withTagClass(left->type(), [&]<class T>() {
        return makeAssignment<T>(castOwned<TypedRealisedVariable<T>>(std::move(left)).release(), right.release(),
                                 dependencies, valuation);
    });
}

RealisedFlow* makeFlow(RealisedVariable* target, VornExpressionTree* expression, Dependencies dependencies,
                       ValuationPtr valuation, ModeList modes) {
    std::unique_ptr<RealisedVariable> left(target);
    std::unique_ptr<VornExpressionTree> right(expression);
    if (left == nullptr) return nullptr;
    return withTagClass(left->type(), [&]<class T>() {
        return makeFlow<T>(castOwned<TypedRealisedVariable<T>>(std::move(left)).release(), right.release(),
                           dependencies, valuation, modes);
    });
}

RealisedTrajectoryEquation* makeTrajectory(RealisedVariable* variable, RealisedVariable* rate,
                                           VornExpressionTree* expression, Dependencies dependencies,
                                           ValuationPtr valuation) {
    std::unique_ptr<RealisedVariable> evolving(variable);
    std::unique_ptr<RealisedVariable> anyRate(rate);
    std::unique_ptr<VornExpressionTree> right(expression);
    if (evolving == nullptr) return nullptr;
    return withTagClass(evolving->type(), [&]<class T>() {
        return makeTrajectory<T>(castOwned<TypedRealisedVariable<T>>(std::move(evolving)).release(), anyRate.release(),
                                 right.release(), dependencies, valuation);
    });
}

#define VORN_INSTANTIATE(T)                                                                                        \
    template RealisedAssignment* makeAssignment<T>(TypedRealisedVariable<T>*, VornExpressionTree*, Dependencies,   \
                                                   ValuationPtr);                                                  \
    template RealisedFlow* makeFlow<T>(TypedRealisedVariable<T>*, VornExpressionTree*, Dependencies, ValuationPtr, \
                                       ModeList);                                                                  \
    template RealisedTrajectoryEquation* makeTrajectory<T>(TypedRealisedVariable<T>*, RealisedVariable*,           \
                                                           VornExpressionTree*, Dependencies, ValuationPtr);
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
