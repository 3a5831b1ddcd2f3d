#pragma once
/// \file
/// Makes expression nodes of operands whose types are known at run time only. The type rules are BinaryResultType and
/// UnaryResultType; an operator that they refuse is logged here.

#include <string>
#include <string_view>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ResultTypes.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace boost::spirit {
template <typename Char>
class basic_hold_any;
using hold_any = basic_hold_any<char>;
}  // namespace boost::spirit

namespace vornrun {

/// Finds the operator instance for the types of its operands. Nothing is folded, swapped or converted: the node holds
/// the operands as they are. The templates are instantiated for the operators of the language only, in source files of
/// this directory.
class VornExpressionConstructor {
  public:
    VornExpressionConstructor() = default;

    /// The node `left Op right`, for the 15 binary operators.
    /// \pre neither operand is null
    /// \return a new node, owned by the caller, which has adopted both operands. Null when the operator does not take
    ///         operands of these types, which is logged as an error; the operands are then still the caller's.
    template <class Op>
    static VornExpressionTree* expressionTree(VornExpressionTree* left, VornExpressionTree* right);
    /// The same with the type of the left operand known.
    template <class Op, class Left>
    static VornExpressionTree* expressionTree(TypedVornExpressionTree<Left>* left, VornExpressionTree* right);

    /// The same with both types known: allocates the node.
    /// \tparam ResultType BinaryResultType<Op, Left, Right>
    template <class Op, class ResultType, class Left, class Right>
    requires(ResultType::valid) static TypedVornExpressionTree<typename ResultType::type>* makeOperator(
        TypedVornExpressionTree<Left>* left, TypedVornExpressionTree<Right>* right) {
        return new TypedBinaryOperator<Op, typename ResultType::type, Left, Right>(left, right);
    }
    /// For the pairs that the operator does not take: logs them and returns null. The operands stay the caller's.
    template <class Op, class ResultType, class Left, class Right>
    requires(!ResultType::valid) static VornExpressionTree* makeOperator(TypedVornExpressionTree<Left>*,
                                                                         TypedVornExpressionTree<Right>*) {
        reportPair(Left::op, Op::text, Right::op);
        return nullptr;
    }

    /// The node `Op operand`, for VornNot and VornInvert.
    /// \pre the operand is not null
    /// \return a new node, owned by the caller, which has adopted the operand. Null when the operator does not take an
    ///         operand of this type, which is logged as an error; the operand is then still the caller's.
    template <class Op>
    static VornExpressionTree* expressionTree(VornExpressionTree* operand);

    /// A constant of the tag's type; null for a tag beyond the eight. The caller owns it.
    /// \param value holds exactly the representation of the type: bool, double, long, std::string or
    ///        const RealisedMode*; a placeholder mode is adopted. The stock hold_any cannot be made around a pointer to
    ///        const, so that mode literals are made as TypedVornValue<VornModeVal> directly.
    /// \throws boost::spirit::bad_any_cast when it holds anything else
    static VornExpressionTree* expressionTree(VornDataTypeTag tag, const boost::spirit::hold_any& value);

    /// A variable of the tag's type; null for a tag beyond the eight. The caller owns it.
    static VornVariable* expressionVariable(VornDataTypeTag tag, const std::string& name);

  private:
    static void reportPair(std::string_view left, std::string_view operation, std::string_view right);
    static void reportOperand(std::string_view operand, std::string_view operation);

    static const Log sLogger;
};

}  // namespace vornrun
