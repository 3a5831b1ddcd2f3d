#pragma once
/// \file
/// State formulas with two operands: and, or, implication, equivalence.

#include <memory>

#include "vornrun/datastructures/property/CSLStateFormula.h"
#include "vornrun/datastructures/property/ThreeValued.h"

namespace vornrun {

class CSLAbstractBinaryStateFormula : public CSLStateFormula {
  public:
    /// Adopts both.
    CSLAbstractBinaryStateFormula(CSLStateFormula* left, CSLStateFormula* right) : mLeft(left), mRight(right) {}

    const CSLStateFormula* left() const noexcept { return mLeft.get(); }
    const CSLStateFormula* right() const noexcept { return mRight.get(); }

    CSLAbstractBinaryStateFormula* clone() const override = 0;
    /// A new formula of the same class over other operands, which it adopts. The caller owns it.
    virtual CSLAbstractBinaryStateFormula* clone(CSLStateFormula* left, CSLStateFormula* right) const = 0;
    CSLFormula* accept(PropertyVisitor& visitor) const final;

  protected:
    const std::unique_ptr<CSLStateFormula> mLeft;
    const std::unique_ptr<CSLStateFormula> mRight;
};

/// \tparam Op CSLAnd, CSLOr, CSLImp or CSLIff
template <class Op>
class CSLBinaryStateFormula final : public CSLAbstractBinaryStateFormula {
  public:
    using CSLAbstractBinaryStateFormula::CSLAbstractBinaryStateFormula;
    /// Evaluates left and then right, always both, and combines the verdicts.
    PropertyResult evaluate(RunContext* run, bool shallow) const override;
    CSLBinaryStateFormula* clone() const override;
    CSLBinaryStateFormula* clone(CSLStateFormula* left, CSLStateFormula* right) const override;
    std::ostream& printFormula(std::ostream& stream) const override;
};

extern template class CSLBinaryStateFormula<CSLAnd>;
extern template class CSLBinaryStateFormula<CSLOr>;
extern template class CSLBinaryStateFormula<CSLImp>;
extern template class CSLBinaryStateFormula<CSLIff>;

}  // namespace vornrun
