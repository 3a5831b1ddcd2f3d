#pragma once
/// \file
/// The rewriting walk over expression trees, children first.

#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"

namespace vornrun {

class VariablesToValueReferences;

/// Lives for one rewriting. Every visit returns a new tree, owned by the caller, or null where something was missing.
class VariableSubstitutionExpressionVisitor final : public ExpressionTreeVisitor {
  public:
    /// \param owner knows what each name means; not owned
    explicit VariableSubstitutionExpressionVisitor(const VariablesToValueReferences* owner);

    VornExpressionTree* visit(const VornVariable* variable) override;
    VornExpressionTree* visit(const VornValue* value) override;
    VornExpressionTree* visit(const BinaryOperator* node) override;
    VornExpressionTree* visit(const UnaryOperator* node) override;
    VornExpressionTree* visit(const CaseOperator* node) override;
    VornExpressionTree* visit(const RealisedVariable* variable) override;

    /// Every variable made so far in order of appearance, null for one that did not resolve. They belong to the
    /// rewritten trees.
    std::vector<RealisedVariable*> getReferences() const { return mReferences; }

  private:
    static const Log sLogger;  // "root.constructors.subst"
    const VariablesToValueReferences* mOwner;
    std::vector<RealisedVariable*> mReferences;
};

}  // namespace vornrun
