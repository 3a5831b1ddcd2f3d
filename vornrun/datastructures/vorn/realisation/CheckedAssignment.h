#pragma once
/// \file
/// Assignments whose target may lack its slot, see MistypedVariable. They check the slot before each write, which
/// ordinary assignments do not need.

#include <memory>
#include <utility>

#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"

namespace vornrun {

/// Adds the check to an assignment of one of the three kinds.
/// \tparam Kind RealisedAssignment, RealisedFlow or RealisedTrajectoryEquation
template <class Kind>
class CheckedTarget : public Kind {
  public:
    explicit CheckedTarget(std::unique_ptr<Kind> checked) : mChecked(std::move(checked)) {}

    const RealisedVariable* target() const override { return mChecked->target(); }
    const VornExpressionTree* assignment() const override { return mChecked->assignment(); }
    const std::set<TypedValueRef>& refsInAssignment() const override { return mChecked->refsInAssignment(); }
    /// \pre target() is not null
    /// \throws model_exception when the slot of the target does not exist
    void applyAssignment() const override;
    void print(std::ostream& stream) const override { mChecked->print(stream); }

  protected:
    const Kind& checked() const noexcept { return *mChecked; }

  private:
    std::unique_ptr<Kind> mChecked;
};

class CheckedAssignment final : public CheckedTarget<RealisedAssignment> {
  public:
    using CheckedTarget::CheckedTarget;
};

class CheckedFlow final : public CheckedTarget<RealisedFlow> {
  public:
    using CheckedTarget::CheckedTarget;
    const ModeList& activeIn() const override { return checked().activeIn(); }
};

class CheckedTrajectoryEquation final : public CheckedTarget<RealisedTrajectoryEquation> {
  public:
    using CheckedTarget::CheckedTarget;
    const RealisedVariable* variable() const override { return checked().variable(); }
    /// \throws model_exception when the slot of the variable does not exist
    void applyTime(Time delay) const override;
};

extern template class CheckedTarget<RealisedAssignment>;
extern template class CheckedTarget<RealisedFlow>;
extern template class CheckedTarget<RealisedTrajectoryEquation>;

}  // namespace vornrun
