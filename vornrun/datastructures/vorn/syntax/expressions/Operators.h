#pragma once
/// \file
/// The operator nodes of expression trees. The instances are exactly those of BinaryResultType and UnaryResultType and
/// are compiled in one source file per operator.

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/expressions/Operand.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

// Operator tags: template arguments only, with the text that the operator prints as.
struct VornAnd {
    static constexpr std::string_view text = "and";
};
struct VornOr {
    static constexpr std::string_view text = "or";
};
struct VornImp {
    static constexpr std::string_view text = "imp";
};
struct VornIff {
    static constexpr std::string_view text = "iff";
};
struct VornPlus {
    static constexpr std::string_view text = "+";
};
struct VornMinus {
    static constexpr std::string_view text = "-";
};
struct VornMultiply {
    static constexpr std::string_view text = "*";
};
struct VornDivide {
    static constexpr std::string_view text = "/";
};
struct VornMod {
    static constexpr std::string_view text = "mod";
};
struct VornEq {
    static constexpr std::string_view text = "=";
};
struct VornNEq {
    static constexpr std::string_view text = "!=";
};
struct VornLt {
    static constexpr std::string_view text = "<";
};
struct VornLEq {
    static constexpr std::string_view text = "<=";
};
struct VornGt {
    static constexpr std::string_view text = ">";
};
struct VornGEq {
    static constexpr std::string_view text = ">=";
};
struct VornNot {
    static constexpr std::string_view text = "not";
};
struct VornInvert {
    static constexpr std::string_view text = "-";
};

/// Any operator, for visitors.
class AbstractOperator : public virtual VornExpressionTree {};

class BinaryOperator : public AbstractOperator {
  public:
    /// Borrowed; null when the operand is missing.
    virtual VornExpressionTree* getLeftTree() const = 0;
    virtual VornExpressionTree* getRightTree() const = 0;
};

class UnaryOperator : public AbstractOperator {
  public:
    /// Borrowed; null when the operand is missing.
    virtual VornExpressionTree* getSubTree() const = 0;
};

/// A condition and the tree that it selects, borrowed.
using CasePair = std::pair<TypedVornExpressionTree<VornBool>*, VornExpressionTree*>;

class CaseOperator : public AbstractOperator {
  public:
    /// Borrowed conditions and values, in order; null for a missing one.
    virtual std::vector<CasePair> getCases() const = 0;
    /// Borrowed; null when the default is missing.
    virtual VornExpressionTree* getDefaultTree() const = 0;
};

/// The nodes are made by VornExpressionConstructor, or directly by source files that include OperatorInstances.h.
/// Adopts both operands; either may be null, and then its evaluation throws missing_operand.
template <class Op, class Result, class Left, class Right>
class TypedBinaryOperator final : public TypedVornExpressionTree<Result>, private BinaryOperator {
  public:
    TypedBinaryOperator(TypedVornExpressionTree<Left>* left, TypedVornExpressionTree<Right>* right);

    VornExpressionTree* getLeftTree() const override { return mLeft.get(); }
    VornExpressionTree* getRightTree() const override { return mRight.get(); }
    typename Result::AssociatedDataType evaluateDirect() const override;
    TypedBinaryOperator* clone() const override;
    TypedBinaryOperator* clone(const std::list<VornExpressionTree*>& children) const override;
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;
    void printExpression(std::ostream& stream) const override;

  private:
    // In this order, so that the left operand is deleted first.
    Operand<Right> mRight;
    Operand<Left> mLeft;
};

/// Adopts the operand, which may be null as above.
template <class Op, class Result, class Sub>
class TypedUnaryOperator final : public TypedVornExpressionTree<Result>, private UnaryOperator {
  public:
    explicit TypedUnaryOperator(TypedVornExpressionTree<Sub>* subTree);

    VornExpressionTree* getSubTree() const override { return mSubTree.get(); }
    typename Result::AssociatedDataType evaluateDirect() const override;
    TypedUnaryOperator* clone() const override;
    TypedUnaryOperator* clone(const std::list<VornExpressionTree*>& children) const override;
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;
    void printExpression(std::ostream& stream) const override;

  private:
    Operand<Sub> mSubTree;
};

/// The first case whose condition holds, else the default. Values need not have the type T: the selected one is
/// converted at each evaluation, and a type that does not convert fails there, not before.
template <class T>
class TypedCaseOperator final : public TypedVornExpressionTree<T>, private CaseOperator {
  public:
    /// Adopts all trees; any may be null, and then its evaluation throws missing_operand.
    TypedCaseOperator(const std::vector<CasePair>& cases, VornExpressionTree* defaultTree);

    std::vector<CasePair> getCases() const override;
    VornExpressionTree* getDefaultTree() const override { return mDefault.tree.get(); }
    /// \throws std::invalid_argument when the selected value does not convert to T
    typename T::AssociatedDataType evaluateDirect() const override;
    TypedCaseOperator* clone() const override;
    TypedCaseOperator* clone(const std::list<VornExpressionTree*>& children) const override;
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override;
    void printExpression(std::ostream& stream) const override;

  private:
    /// A tree of any type, with its typed form beside it when it has the type T.
    struct Branch {
        explicit Branch(VornExpressionTree* adopted);
        std::unique_ptr<VornExpressionTree> tree;
        TypedVornExpressionTree<T>* typed;
    };
    // The fields are in reverse order, so that the default is deleted first, then each condition and its value.
    struct Case {
        Branch value;
        Operand<VornBool> condition;
    };
    /// \param number counts the cases from 1; 0 is the default
    typename T::AssociatedDataType evaluateBranch(const Branch& branch, std::size_t number) const;

    std::vector<Case> mCases;
    Branch mDefault;
};

#define VORN_DECLARE(T) extern template class TypedCaseOperator<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
