#pragma once
/// \file
/// State formulas with one operand: negation.

#include <memory>

#include "vornrun/datastructures/property/CSLStateFormula.h"
#include "vornrun/datastructures/property/ThreeValued.h"

namespace vornrun {

class CSLAbstractUnaryStateFormula : public CSLStateFormula {
  public:
    /// Adopts the operand.
    explicit CSLAbstractUnaryStateFormula(CSLStateFormula* operand) : mOperand(operand) {}

    const CSLStateFormula* operand() const noexcept { return mOperand.get(); }

    CSLAbstractUnaryStateFormula* clone() const override = 0;
    /// A new formula of the same class over another operand, which it adopts. The caller owns it.
    virtual CSLAbstractUnaryStateFormula* clone(CSLStateFormula* operand) const = 0;
    CSLFormula* accept(PropertyVisitor& visitor) const final;

  protected:
    const std::unique_ptr<CSLStateFormula> mOperand;
};

/// \tparam Op CSLNot
template <class Op>
class CSLUnaryStateFormula final : public CSLAbstractUnaryStateFormula {
  public:
    using CSLAbstractUnaryStateFormula::CSLAbstractUnaryStateFormula;
    PropertyResult evaluate(RunContext* run, bool shallow) const override;
    CSLUnaryStateFormula* clone() const override;
    CSLUnaryStateFormula* clone(CSLStateFormula* operand) const override;
    std::ostream& printFormula(std::ostream& stream) const override;
};

extern template class CSLUnaryStateFormula<CSLNot>;

}  // namespace vornrun
