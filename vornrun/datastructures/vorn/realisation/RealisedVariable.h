#pragma once
/// \file
/// Variables of realised expressions: leaves that read a slot of the value store.

#include "vornrun/datastructures/vorn/realisation/Realisation.h"
#include "vornrun/datastructures/vorn/syntax/ValueRef.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

class RealisedVariable : public virtual VornExpressionTree {
  public:
    /// \param part the part whose value the variable reads; not owned
    RealisedVariable(ValuationPtr valuation, ValueRef reference, const RealisedIdentifier* part);
    RealisedVariable* clone() const override = 0;
    RealisedVariable* clone(const std::list<VornExpressionTree*>& children) const override = 0;
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;

    ValueRef reference() const noexcept { return mReference; }
    const RealisedIdentifier* part() const noexcept { return mPart; }
    /// For those who access the slot by its reference. Only a MistypedVariable can lack its slot.
    /// \throws model_exception when the slot does not exist
    virtual void requireSlot() const {}

  protected:
    GlobalValuation& valuation() const noexcept { return *mValuation; }

  private:
    ValueRef mReference;
    ValuationPtr mValuation;
    const RealisedIdentifier* mPart;
};

template <class T>
class TypedRealisedVariable : public RealisedVariable, public TypedVornExpressionTree<T> {
  public:
    using RealisedVariable::RealisedVariable;
    /// The value of the slot, on top of the store's stack of layers.
    typename T::AssociatedDataType evaluateDirect() const override;
    TypedRealisedVariable* clone() const override { return new TypedRealisedVariable(*this); }
    TypedRealisedVariable* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    /// Local name, "{=", value, ":", type word, "}".
    void printExpression(std::ostream& stream) const override;
};

#define VORN_DECLARE(T) extern template class TypedRealisedVariable<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
