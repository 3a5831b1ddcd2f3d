#include "vornrun/algorithms/vornconstructor/VariableSubstitutionExpressionVisitor.h"

#include <list>
#include <memory>
#include <utility>
#include <vector>

#include "vornrun/Ownership.h"
#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/datastructures/vorn/syntax/expressions/CheckedDivision.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {

namespace {

/// The rewritten children of a node, owned until its copy adopts them.
class NewChildren {
  public:
    /// Rewrites one more child; a missing one stays missing.
    void add(const VornExpressionTree* child, ExpressionTreeVisitor* visitor) {
        mChildren.emplace_back(child == nullptr ? nullptr : child->accept(visitor));
    }
    /// The children in order, for a copy of their node that adopts them.
    std::list<VornExpressionTree*> release() {
        const std::vector<VornExpressionTree*> children = releaseAll(std::move(mChildren));
        return {children.begin(), children.end()};
    }

  private:
    std::vector<std::unique_ptr<VornExpressionTree>> mChildren;
};

}  // namespace

const Log VariableSubstitutionExpressionVisitor::sLogger("root.constructors.subst");

VariableSubstitutionExpressionVisitor::VariableSubstitutionExpressionVisitor(const VariablesToValueReferences* owner)
    : mOwner(owner) {}

VornExpressionTree* VariableSubstitutionExpressionVisitor::visit(const VornVariable* variable) {
    RealisedVariable* realised = mOwner->substituteVariable(variable);
    mReferences.push_back(realised);
    return realised;
}

VornExpressionTree* VariableSubstitutionExpressionVisitor::visit(const VornValue* value) {
    return mOwner->substituteValue(value);
}

VornExpressionTree* VariableSubstitutionExpressionVisitor::visit(const BinaryOperator* node) {
    NewChildren children;
    children.add(node->getLeftTree(), this);
    children.add(node->getRightTree(), this);
    const std::list<VornExpressionTree*> operands = children.release();
    VornExpressionTree* const checked = mOwner->options().checkedArithmetic ? checkedDivision(node, operands) : nullptr;
    return checked != nullptr ? checked : node->clone(operands);
}

VornExpressionTree* VariableSubstitutionExpressionVisitor::visit(const UnaryOperator* node) {
    NewChildren children;
    children.add(node->getSubTree(), this);
    return node->clone(children.release());
}

VornExpressionTree* VariableSubstitutionExpressionVisitor::visit(const CaseOperator* node) {
    NewChildren children;
    for (const auto& [condition, value] : node->getCases()) {
        children.add(condition, this);
        children.add(value, this);
    }
    children.add(node->getDefaultTree(), this);
    return node->clone(children.release());
}

VornExpressionTree* VariableSubstitutionExpressionVisitor::visit(const RealisedVariable* variable) {
    VORNRUN_LOG(sLogger, Warn,
                "This is strange, we want to replace variables with value references, why is there already a value "
                "reference here?");
    return variable->clone();
}

}  // namespace vornrun
