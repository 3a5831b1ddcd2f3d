#pragma once
/// \file
/// The root classes of expression trees. A concrete node is a template instance that knows its result type and the
/// types of its operands, so that evaluation is one virtual call a node, without conversions or boxing.

#include <exception>
#include <iosfwd>
#include <list>
#include <stdexcept>
#include <string>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"
#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

namespace vornrun {

class ExpressionTreeVisitor;
class VornValue;
template <class T>
class TypedVornValue;

/// Thrown by the evaluation of a variable of the syntax tree, which is only a name.
class IdentifierEvaluation : public std::exception {
  public:
    const char* what() const noexcept override { return "Identifiers cannot be evaluated"; }
};

/// Thrown by the evaluation of an operator when an operand is missing: a name in it did not resolve, or a rewrite
/// changed its type. The text says which operand of which operator.
class missing_operand : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// An expression of any type. Nodes are immutable once built and own their children.
class VornExpressionTree : public Vorn {
  public:
    /// A deep copy; the caller owns it.
    virtual VornExpressionTree* clone() const = 0;
    /// A node of the same class over replacement children, which it adopts; nothing is cloned. The children are in the
    /// order in which visitors walk them. A child of another type than the operand that it replaces is deleted, and the
    /// operand is missing in the result. Leaves ignore the list. The caller owns the result.
    virtual VornExpressionTree* clone(const std::list<VornExpressionTree*>& children) const = 0;
    /// The value of the expression, boxed; the caller owns it.
    virtual VornValue* evaluationResult() const = 0;
    /// Calls the visitor's operation for this kind of node and returns its result: the new tree of a rewriting visitor,
    /// owned by the caller, or null.
    /// \pre the visitor is not null
    virtual VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const = 0;
    virtual VornDataTypeTag type() const = 0;
    virtual void printExpression(std::ostream& stream) const = 0;

    void printVorn(std::ostream& stream) const final { printExpression(stream); }
};

/// An expression whose value has the type of tag class T.
template <class T>
class TypedVornExpressionTree : public virtual VornExpressionTree {
  public:
    TypedVornExpressionTree<T>* clone() const override = 0;
    TypedVornExpressionTree<T>* clone(const std::list<VornExpressionTree*>& children) const override = 0;

    VornValue* evaluationResult() const final;
    VornDataTypeTag type() const final { return T::tag; }
    /// The value in its typed box; the caller owns it. A placeholder mode is duplicated into the box, since the tree
    /// keeps the one that it evaluates to.
    virtual TypedVornValue<T>* evaluationResultTyped() const;
    /// The plain value. The step path: allocates nothing for the types of fixed size.
    virtual typename T::AssociatedDataType evaluateDirect() const = 0;
};

/// The tree's value as a double: read directly from a real, converted from the other numeric types.
/// \pre the tree is not null
/// \throws std::invalid_argument when the value's type does not convert to real
double getDoubleValue(const VornExpressionTree* tree);

template <>
TypedVornValue<VornModeVal>* TypedVornExpressionTree<VornModeVal>::evaluationResultTyped() const;

#define VORN_DECLARE(T) extern template class TypedVornExpressionTree<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
