#pragma once
/// \file
/// Atomic propositions: boolean expressions over the model's variables.

#include <memory>

#include "vornrun/datastructures/property/CSLStateFormula.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

class CSLPropositionStateFormula final : public CSLStateFormula {
  public:
    /// Adopts the expression. Null, as it comes of a name that does not resolve, raises missing_operand at evaluation.
    explicit CSLPropositionStateFormula(TypedVornExpressionTree<VornBool>* expression) : mExpression(expression) {}

    const TypedVornExpressionTree<VornBool>* expression() const noexcept { return mExpression.get(); }

    /// True or false, never unknown.
    PropertyResult evaluate(RunContext* run, bool shallow) const override;
    CSLPropositionStateFormula* clone() const override;
    /// A new proposition over another expression, which it adopts. The caller owns it.
    CSLPropositionStateFormula* clone(TypedVornExpressionTree<VornBool>* expression) const;
    std::ostream& printFormula(std::ostream& stream) const override;
    CSLFormula* accept(PropertyVisitor& visitor) const override;

  private:
    const std::unique_ptr<TypedVornExpressionTree<VornBool>> mExpression;
};

}  // namespace vornrun
