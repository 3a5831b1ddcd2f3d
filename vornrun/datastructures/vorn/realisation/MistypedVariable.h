#pragma once
/// \file
/// Variables that an expression uses under another type than that of their part. The number of the part's slot then
/// counts in the store of the type that is used, where a slot of that number may not exist.

#include <string>

#include "vornrun/datastructures/vorn/realisation/RealisedVariable.h"

namespace vornrun {

/// Checks at each use that its slot exists. Variables of the right type need no check and are TypedRealisedVariable.
template <class T>
class MistypedVariable final : public TypedRealisedVariable<T> {
  public:
    /// \param part not owned
    /// \param component full identifier of the component that the name is relative to, for messages
    /// \param name the variable as the model file writes it, for messages
    MistypedVariable(ValuationPtr valuation, ValueRef reference, const RealisedIdentifier* part, std::string component,
                     std::string name);

    /// \throws model_exception when the slot does not exist
    typename T::AssociatedDataType evaluateDirect() const override;
    void requireSlot() const override;
    MistypedVariable* clone() const override { return new MistypedVariable(*this); }
    MistypedVariable* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    /// As for every variable, with "(null)" for the value of a slot that does not exist.
    void printExpression(std::ostream& stream) const override;

  private:
    bool hasSlot() const;

    std::string mComponent;
    std::string mName;
};

#define VORN_DECLARE(T) extern template class MistypedVariable<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
