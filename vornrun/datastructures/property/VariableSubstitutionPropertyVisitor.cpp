#include "vornrun/datastructures/property/VariableSubstitutionPropertyVisitor.h"

#include "vornrun/Ownership.h"
#include "vornrun/datastructures/property/CSLBinaryStateFormula.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLNextPathFormula.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"
#include "vornrun/datastructures/property/CSLPropositionStateFormula.h"
#include "vornrun/datastructures/property/CSLUnaryStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

namespace vornrun {

const Log VariableSubstitutionPropertyVisitor::sLogger("root.constructors.subst");

VariableSubstitutionPropertyVisitor::VariableSubstitutionPropertyVisitor(const VariablesToValueReferences* references)
    : mExpressionVisitor(references) {}

template <class F>
std::unique_ptr<F> VariableSubstitutionPropertyVisitor::rewrite(const F* part) {
    if (part == nullptr) return nullptr;
    return castOwned<F>(std::unique_ptr<CSLFormula>(part->accept(*this)));
}

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLAbstractBinaryStateFormula* formula) {
    auto left = rewrite(formula->left());
    auto right = rewrite(formula->right());
    return formula->clone(left.release(), right.release());
}

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLAbstractUnaryStateFormula* formula) {
    return formula->clone(rewrite(formula->operand()).release());
}

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLPropositionStateFormula* formula) {
    std::unique_ptr<TypedVornExpressionTree<VornBool>> bound;
    if (formula->expression() != nullptr) {
        bound = castOwned<TypedVornExpressionTree<VornBool>>(
            std::unique_ptr<VornExpressionTree>(formula->expression()->accept(&mExpressionVisitor)));
    }
    if (bound == nullptr) VORNRUN_LOG(sLogger, Error, "Unable to bind atomic proposition " << *formula);
    return formula->clone(bound.release());
}

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLProbabilityStateFormula* formula) {
    return formula->clone(rewrite(formula->path()).release());
}

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLTrue* formula) { return formula->clone(); }

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLFalse* formula) { return formula->clone(); }

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLUntilPathFormula* formula) {
    auto left = rewrite(formula->left());
    auto right = rewrite(formula->right());
    return formula->clone(left.release(), right.release());
}

CSLFormula* VariableSubstitutionPropertyVisitor::visit(const CSLNextPathFormula* formula) {
    return formula->clone(rewrite(formula->operand()).release());
}

}  // namespace vornrun
