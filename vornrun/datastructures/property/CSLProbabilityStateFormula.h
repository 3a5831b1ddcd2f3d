#pragma once
/// \file
/// A bound on the probability of a path formula. The runs of its estimate start from the initial state of the model.

#include <memory>

#include "vornrun/datastructures/property/CSLPathFormula.h"
#include "vornrun/datastructures/property/CSLStateFormula.h"

namespace vornrun {

class CSLProbabilityStateFormula final : public CSLStateFormula {
  public:
    enum class Operator : unsigned int { less = 0, lessEqual = 1, greater = 2, greaterEqual = 3 };

    /// Adopts the path formula.
    CSLProbabilityStateFormula(CSLPathFormula* path, double bound, Operator op);

    const CSLPathFormula* path() const noexcept { return mPath.get(); }
    double bound() const noexcept { return mBound; }
    Operator op() const noexcept { return mOperator; }

    /// Unknown when shallow, else the verdict on a nested estimate. The estimate costs many runs, and the last of them
    /// stays behind as the trace of the context.
    PropertyResult evaluate(RunContext* run, bool shallow) const override;
    /// Compares an estimate with the bound: strict operators are stricter by 5e-7, the others laxer. An operator beyond
    /// the four is never true.
    PropertyResult verdictOn(double estimate) const noexcept;
    CSLProbabilityStateFormula* clone() const override;
    /// A new formula with the same bound and operator over another path formula, which it adopts. The caller owns it.
    CSLProbabilityStateFormula* clone(CSLPathFormula* path) const;
    std::ostream& printFormula(std::ostream& stream) const override;
    CSLFormula* accept(PropertyVisitor& visitor) const override;

  private:
    const std::unique_ptr<CSLPathFormula> mPath;
    const double mBound;
    const Operator mOperator;
};

/// Writes "<", "<=", ">" or ">="; "??" for any other value.
std::ostream& operator<<(std::ostream& stream, CSLProbabilityStateFormula::Operator op);

}  // namespace vornrun
