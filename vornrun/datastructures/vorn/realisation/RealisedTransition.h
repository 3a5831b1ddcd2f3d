#pragma once
/// \file
/// Transitions of a component instance.

#include <memory>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"
#include "vornrun/datastructures/vorn/realisation/RealisedPort.h"
#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/VornTransition.h"

namespace vornrun {

class RealisedTransition final : public Realisation {
  public:
    using Effects = std::vector<std::unique_ptr<RealisedAssignment>>;

    /// Adopts the guard, which may be null, and the effects, in the order in which they apply. The other pointers are
    /// not owned and not null.
    /// \throws model_exception when an effect is null
    RealisedTransition(unsigned int id, const VornComponentRealisation* component, const VornTransition* declaration,
                       const RealisedMode* source, const RealisedMode* target, const RealisedEventPort* trigger,
                       VornLinearExpression* guard, Effects effects);
    RealisedTransition(unsigned int id, const VornComponentRealisation* component, const VornTransition* declaration,
                       const RealisedMode* source, const RealisedMode* target, const RealisedEventPort* trigger,
                       VornLinearExpression* guard, const std::vector<RealisedAssignment*>& effects);

    /// The sort key among the transitions of a component.
    unsigned int id() const noexcept { return mId; }
    const RealisedMode* source() const noexcept { return mSource; }
    const RealisedMode* target() const noexcept { return mTarget; }
    /// Never null: a transition written without a trigger has a private port "tau".
    const RealisedEventPort* trigger() const noexcept { return mTrigger; }
    /// Null when there is none.
    const VornLinearExpression* guard() const noexcept { return mGuard.get(); }
    const Effects& effects() const noexcept { return mEffects; }
    const VornComponentRealisation* component() const noexcept { return mComponent; }
    const VornTransition* transition() const noexcept { return mTransition; }
    /// True when an effect assigns a clock or a continuous variable.
    bool touchesContinuous() const noexcept { return mTouchesContinuous; }

    bool isTriggeredBy(const RealisedEventPort* port) const noexcept { return port == mTrigger; }
    /// True when the trigger is a port of a subcomponent rather than of the component itself.
    bool hasDirectCommunicationTrigger() const noexcept { return mDirectCommunication; }
    /// True without a guard, else the guard evaluated now.
    bool guardHolds() const { return mGuard == nullptr || mGuard->holds(); }
    /// The delays at which the guard holds; [0, INF_TIME] without one.
    TimeInterval guardHoldsWhile() const;
    void print(std::ostream& stream) const override;

  private:
    unsigned int mId;
    const RealisedMode* mSource;
    const RealisedMode* mTarget;
    const RealisedEventPort* mTrigger;
    std::unique_ptr<VornLinearExpression> mGuard;
    Effects mEffects;
    const VornComponentRealisation* mComponent;
    const VornTransition* mTransition;
    bool mTouchesContinuous;
    bool mDirectCommunication;
};

/// A transition as the network passes it around; not owned.
using TransitionPtr = const RealisedTransition*;

}  // namespace vornrun
