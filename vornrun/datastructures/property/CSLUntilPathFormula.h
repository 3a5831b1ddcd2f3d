#pragma once
/// \file
/// Until within an interval of time.

#include <memory>

#include "vornrun/datastructures/property/CSLPathFormula.h"
#include "vornrun/datastructures/property/CSLStateFormula.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

class CSLUntilPathFormula final : public CSLPathFormula {
  public:
    /// Adopts both operands.
    /// \param lower, upper inclusive bounds on the time of the run
    CSLUntilPathFormula(CSLStateFormula* left, CSLStateFormula* right, double lower, double upper);

    const CSLStateFormula* left() const noexcept { return mLeft.get(); }
    const CSLStateFormula* right() const noexcept { return mRight.get(); }
    double lower() const noexcept { return mLower; }
    double upper() const noexcept { return mUpper; }

    PropertyResult evaluate(RunContext* run, bool shallow) const override;
    /// The verdict in a state visited at time `now`. The left operand guards the time before the interval only: there
    /// anything but true, an unknown included, is final. Within the interval only the right operand counts. A run that
    /// jumps over the interval is false at the first state behind it.
    PropertyResult evaluateAt(Time now, RunContext* run, bool shallow) const;
    CSLUntilPathFormula* clone() const override;
    /// A new formula with the same interval over other operands, which it adopts. The caller owns it.
    CSLUntilPathFormula* clone(CSLStateFormula* left, CSLStateFormula* right) const;
    std::ostream& printFormula(std::ostream& stream) const override;
    CSLFormula* accept(PropertyVisitor& visitor) const override;

  private:
    const std::unique_ptr<CSLStateFormula> mLeft;
    const std::unique_ptr<CSLStateFormula> mRight;
    const double mLower;
    const double mUpper;
};

}  // namespace vornrun
