#pragma once
/// \file
/// The owning pointer by which an operator holds an operand. In place of a missing operand it holds a node whose
/// evaluation throws, so that the step path tests no pointer.

#include <cstddef>
#include <memory>
#include <string_view>

#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

/// Which operand of which operator, for the text of an exception. The texts are literals, so that a place costs
/// nothing to make.
struct OperandPlace {
    std::string_view position;   ///< "Left operand", "Condition", ...
    std::string_view operation;  ///< the operator as it prints
    std::size_t number = 0;      ///< counts the cases from 1; 0 where there is one such operand only
};

/// \throws missing_operand always, naming the place and the type; an empty type is left out
[[noreturn]] void throwMissingOperand(const OperandPlace& place, std::string_view type);

/// Takes the place of an operand that is missing. Operand::get() never returns it but null.
template <class T>
class MissingOperand final : public TypedVornExpressionTree<T> {
  public:
    explicit MissingOperand(const OperandPlace& place) : mPlace(place) {}
    /// \throws missing_operand always
    typename T::AssociatedDataType evaluateDirect() const override;
    MissingOperand* clone() const override { return new MissingOperand(*this); }
    MissingOperand* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    VornExpressionTree* accept(ExpressionTreeVisitor*) const override { return nullptr; }
    void printExpression(std::ostream& stream) const override;

  private:
    OperandPlace mPlace;
};

/// Owns one operand of type T. Never null inside; get() is null when the operand is missing.
template <class T>
class Operand {
  public:
    /// Adopts the tree; null makes the operand missing.
    Operand(TypedVornExpressionTree<T>* tree, const OperandPlace& place);

    TypedVornExpressionTree<T>* get() const noexcept { return mMissing ? nullptr : mTree.get(); }
    /// \throws missing_operand when the operand is missing
    typename T::AssociatedDataType evaluate() const { return mTree->evaluateDirect(); }
    /// A deep copy of the tree, owned by the caller; null when missing.
    TypedVornExpressionTree<T>* clone() const { return mMissing ? nullptr : mTree->clone(); }
    /// Prints the tree, "(null)" when missing.
    void print(std::ostream& stream) const { mTree->printExpression(stream); }

  private:
    std::unique_ptr<TypedVornExpressionTree<T>> mTree;
    bool mMissing;
};

#define VORN_DECLARE(T)                      \
    extern template class MissingOperand<T>; \
    extern template class Operand<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
