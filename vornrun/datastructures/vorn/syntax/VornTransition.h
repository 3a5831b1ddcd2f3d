#pragma once
/// \file
/// Transitions between modes, with the event that they synchronise on.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornReference.h"

namespace vornrun {

/// The event port that a transition synchronises on: the component's own or a subcomponent's.
class VornTransitionTrigger final : public VornReference {
  public:
    using VornReference::VornReference;
    /// A new trigger named "reset", owned by the caller.
    static VornTransitionTrigger* ResetTrigger();
};

class VornTransition final : public Vorn {
  public:
    /// Adopts trigger and guard, each of which may be null, and the effects.
    VornTransition(unsigned int id, const std::string& source, const std::string& target,
                   VornTransitionTrigger* trigger, VornLinearExpression* guard,
                   const std::vector<VornAssignment*>& effects);

    unsigned int id() const noexcept { return mId; }
    /// Names of modes.
    const std::string& source() const noexcept { return mSource; }
    const std::string& target() const noexcept { return mTarget; }
    const VornTransitionTrigger* trigger() const noexcept { return mTrigger.get(); }
    const VornLinearExpression* guard() const noexcept { return mGuard.get(); }
    const std::vector<std::unique_ptr<VornAssignment>>& effects() const noexcept { return mEffects; }
    /// True when there is a trigger whose name(), behind any subcomponent part, equals `name`.
    bool hasTrigger(const std::string& name) const;
    void printVorn(std::ostream& stream) const override;

  private:
    unsigned int mId;
    std::string mSource;
    std::string mTarget;
    std::unique_ptr<VornTransitionTrigger> mTrigger;
    std::unique_ptr<VornLinearExpression> mGuard;
    std::vector<std::unique_ptr<VornAssignment>> mEffects;
};

}  // namespace vornrun
