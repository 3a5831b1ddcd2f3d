#pragma once
/// \file
/// "Next" within an interval of time.

#include <memory>

#include "vornrun/datastructures/property/CSLPathFormula.h"
#include "vornrun/datastructures/property/CSLStateFormula.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

/// Holds as soon as the operand holds in any state that the run visits within the interval, the initial state included:
/// it has no notion of one step.
class CSLNextPathFormula final : public CSLPathFormula {
  public:
    /// Adopts the operand.
    /// \param lower, upper inclusive bounds on the time of the run
    CSLNextPathFormula(CSLStateFormula* operand, double lower, double upper);

    const CSLStateFormula* operand() const noexcept { return mOperand.get(); }
    double lower() const noexcept { return mLower; }
    double upper() const noexcept { return mUpper; }

    PropertyResult evaluate(RunContext* run, bool shallow) const override;
    /// The verdict in a state visited at time `now`.
    PropertyResult evaluateAt(Time now, RunContext* run, bool shallow) const;
    CSLNextPathFormula* clone() const override;
    /// A new formula with the same interval over another operand, which it adopts. The caller owns it.
    CSLNextPathFormula* clone(CSLStateFormula* operand) const;
    std::ostream& printFormula(std::ostream& stream) const override;
    CSLFormula* accept(PropertyVisitor& visitor) const override;

  private:
    const std::unique_ptr<CSLStateFormula> mOperand;
    const double mLower;
    const double mUpper;
};

}  // namespace vornrun
