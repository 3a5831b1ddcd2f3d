#pragma once
/// \file
/// The copy of a formula that is bound to one worker's values.

#include <memory>

#include "vornrun/Log.h"
#include "vornrun/algorithms/vornconstructor/VariableSubstitutionExpressionVisitor.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"

namespace vornrun {

/// Copies a formula and rewrites the expressions of its propositions. The given formula does not change, since all
/// workers read it at the same time. An expression that cannot be bound is logged at error level and missing in the
/// copy. Every visit returns a new formula, owned by the caller.
class VariableSubstitutionPropertyVisitor final : public PropertyVisitor {
  public:
    /// \param references resolves the names; not owned, not null
    explicit VariableSubstitutionPropertyVisitor(const VariablesToValueReferences* references);

    CSLFormula* visit(const CSLAbstractBinaryStateFormula* formula) override;
    CSLFormula* visit(const CSLAbstractUnaryStateFormula* formula) override;
    CSLFormula* visit(const CSLPropositionStateFormula* formula) override;
    CSLFormula* visit(const CSLProbabilityStateFormula* formula) override;
    CSLFormula* visit(const CSLTrue* formula) override;
    CSLFormula* visit(const CSLFalse* formula) override;
    CSLFormula* visit(const CSLUntilPathFormula* formula) override;
    CSLFormula* visit(const CSLNextPathFormula* formula) override;

  private:
    /// The rewritten part; null of null.
    template <class F>
    std::unique_ptr<F> rewrite(const F* part);

    static const Log sLogger;
    VariableSubstitutionExpressionVisitor mExpressionVisitor;
};

}  // namespace vornrun
