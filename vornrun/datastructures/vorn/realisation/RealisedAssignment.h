#pragma once
/// \file
/// Assignments over value slots: effects, flows and trajectory equations. The untyped classes are the interface, the
/// typed ones the implementation; flows and trajectories are assignments over both paths, hence the virtual bases.

#include <memory>
#include <set>
#include <type_traits>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/RealisedVariable.h"
#include "vornrun/datastructures/vorn/syntax/RealisedAssignment.h"
#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"

namespace vornrun {

class RealisedFlow : public virtual RealisedAssignment {
  public:
    /// The modes in which the flow is on; empty means all.
    virtual const ModeList& activeIn() const = 0;
};

/// \tparam T type of the target \tparam U type of the expression
template <class T, class U>
class TypedRealisedAssignment : public virtual RealisedAssignment {
  public:
    /// Adopts target and expression, neither of them null. `dependencies` are the variables in the expression, null
    /// ones left out.
    TypedRealisedAssignment(TypedRealisedVariable<T>* target, TypedVornExpressionTree<U>* expression,
                            const std::vector<RealisedVariable*>& dependencies, ValuationPtr valuation);

    const RealisedVariable* target() const override { return mTarget.get(); }
    const VornExpressionTree* assignment() const override { return mExpression.get(); }
    const std::set<TypedValueRef>& refsInAssignment() const override { return mRefs; }
    void applyAssignment() const override;
    void print(std::ostream& stream) const override;

  protected:
    const TypedVornExpressionTree<U>& expression() const noexcept { return *mExpression; }
    GlobalValuation& valuation() const noexcept { return *mValuation; }

  private:
    std::unique_ptr<TypedRealisedVariable<T>> mTarget;
    std::unique_ptr<TypedVornExpressionTree<U>> mExpression;
    std::set<TypedValueRef> mRefs;
    ValuationPtr mValuation;
};

template <class T, class U>
class TypedRealisedFlow final : public RealisedFlow, public TypedRealisedAssignment<T, U> {
  public:
    TypedRealisedFlow(TypedRealisedVariable<T>* target, TypedVornExpressionTree<U>* expression,
                      const std::vector<RealisedVariable*>& dependencies, ValuationPtr valuation, ModeList modes);
    const ModeList& activeIn() const override { return mModes; }
    void print(std::ostream& stream) const override;

  private:
    ModeList mModes;
};

template <class T, class U>
class TypedRealisedTrajectoryEquation final : public RealisedTrajectoryEquation, public TypedRealisedAssignment<T, U> {
  public:
    /// Adopts variable, rate and expression; assigning writes `rate`, the passage of time writes `variable`. Without a
    /// rate (null) the equation must not be asked to assign.
    TypedRealisedTrajectoryEquation(TypedRealisedVariable<T>* variable, TypedRealisedVariable<T>* rate,
                                    TypedVornExpressionTree<U>* expression,
                                    const std::vector<RealisedVariable*>& dependencies, ValuationPtr valuation);
    const RealisedVariable* variable() const override { return mVariable.get(); }
    void applyTime(Time delay) const override;
    void print(std::ostream& stream) const override;

  private:
    std::unique_ptr<TypedRealisedVariable<T>> mVariable;
};

/// The pairs of target and expression type for which assignments and flows exist.
template <class T, class U>
inline constexpr bool isAssignable = std::is_same_v<T, U> || (NumericTag<T> && NumericTag<U>);
/// The pairs for which trajectory equations exist.
template <class T, class U>
inline constexpr bool isTrajectory = NumericTag<U> &&
                                     (std::is_same_v<T, VornClock> || std::is_same_v<T, VornContinuous>);

// The same pairs as lists, to which a macro is applied.
// clang-format off
#define VORN_FOR_EACH_NUMERIC_RIGHT(M, T) \
    M(T, VornReal) M(T, VornInt) M(T, VornContinuous) M(T, VornClock) M(T, VornInterval)
#define VORN_FOR_EACH_ASSIGNABLE(M) \
    M(VornBool, VornBool) M(VornEnum, VornEnum) M(VornModeVal, VornModeVal) \
    VORN_FOR_EACH_NUMERIC_RIGHT(M, VornReal) VORN_FOR_EACH_NUMERIC_RIGHT(M, VornInt) \
    VORN_FOR_EACH_NUMERIC_RIGHT(M, VornContinuous) VORN_FOR_EACH_NUMERIC_RIGHT(M, VornClock) \
    VORN_FOR_EACH_NUMERIC_RIGHT(M, VornInterval)
#define VORN_FOR_EACH_TRAJECTORY(M) \
    VORN_FOR_EACH_NUMERIC_RIGHT(M, VornContinuous) VORN_FOR_EACH_NUMERIC_RIGHT(M, VornClock)
// clang-format on

#define VORN_DECLARE(T, U)                               \
    extern template class TypedRealisedAssignment<T, U>; \
    extern template class TypedRealisedFlow<T, U>;
VORN_FOR_EACH_ASSIGNABLE(VORN_DECLARE)
#undef VORN_DECLARE
#define VORN_DECLARE(T, U) extern template class TypedRealisedTrajectoryEquation<T, U>;
VORN_FOR_EACH_TRAJECTORY(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
