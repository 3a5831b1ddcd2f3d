#pragma once
/// \file
/// Variables of the syntax tree: names only. Realisation replaces them by nodes that read a value store.

#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornReference.h"

namespace vornrun {

/// A named variable of any type.
class VornVariable : public virtual VornExpressionTree, public VornReference {
  public:
    explicit VornVariable(const std::string& name) : VornReference(name) {}
    VornVariable* clone() const override = 0;
    VornVariable* clone(const std::list<VornExpressionTree*>& children) const override = 0;
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;
    void printExpression(std::ostream& stream) const override;
};

template <class T>
class TypedVornVariable final : public virtual VornVariable, public virtual TypedVornExpressionTree<T> {
  public:
    explicit TypedVornVariable(const std::string& name) : VornVariable(name) {}
    TypedVornVariable* clone() const override { return new TypedVornVariable(*this); }
    TypedVornVariable* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    /// \throws IdentifierEvaluation always: a name has no value
    typename T::AssociatedDataType evaluateDirect() const override { throw IdentifierEvaluation(); }
};

#define VORN_DECLARE(T) extern template class TypedVornVariable<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
