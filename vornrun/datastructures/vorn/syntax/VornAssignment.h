#pragma once
/// \file
/// Assignments: effects of transitions, and flows.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {

class VornAssignment : public Vorn {
  public:
    /// Adopts both. The expression is null when its parsing failed; that fault is logged already.
    VornAssignment(VornVariable* variable, VornExpressionTree* expression);
    const VornVariable* variable() const noexcept { return mVariable.get(); }
    const VornExpressionTree* expression() const noexcept { return mExpression.get(); }
    void printVorn(std::ostream& stream) const override;

  private:
    std::unique_ptr<VornVariable> mVariable;
    std::unique_ptr<VornExpressionTree> mExpression;
};

/// An assignment that holds whenever data propagates, in the given modes.
class VornFlow final : public VornAssignment {
  public:
    /// \param inModes names of modes; empty means all
    VornFlow(VornVariable* variable, VornExpressionTree* expression, std::vector<std::string> inModes);
    const std::vector<std::string>& inModes() const noexcept { return mInModes; }

  private:
    std::vector<std::string> mInModes;
};

}  // namespace vornrun
