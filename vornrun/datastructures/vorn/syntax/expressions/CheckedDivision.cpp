#include "vornrun/datastructures/vorn/syntax/expressions/CheckedDivision.h"

#include <limits>
#include <ostream>
#include <sstream>

#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/IntegerArithmetic.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ReplacementChildren.h"

namespace vornrun {

namespace {

/// \tparam Op VornDivide or VornMod
template <class Op, IntegerTag Left, IntegerTag Right>
class CheckedDivision final : public TypedVornExpressionTree<typename BinaryResultType<Op, Left, Right>::type>,
                              private BinaryOperator {
  public:
    /// Adopts both operands; either may be null, and then its evaluation throws missing_operand.
    CheckedDivision(TypedVornExpressionTree<Left>* left, TypedVornExpressionTree<Right>* right)
        : mRight(right, {"Right operand", Op::text}), mLeft(left, {"Left operand", Op::text}) {}
    explicit CheckedDivision(ReplacementChildren children)
        : CheckedDivision(children.takeTyped<Left>(0).release(),
                          children.takeTyped<Right>(children.size() - 1).release()) {}

    VornExpressionTree* getLeftTree() const override { return mLeft.get(); }
    VornExpressionTree* getRightTree() const override { return mRight.get(); }
    /// \throws arithmetic_fault when there is no result
    long evaluateDirect() const override {
        const long dividend = mLeft.evaluate();
        const long divisor = mRight.evaluate();
        if (divisor == 0) fail("division by zero");
        if (divisor == -1 && dividend == std::numeric_limits<long>::min()) fail("overflow");
        const QuotientAndRemainder result = hardwareDivision(dividend, divisor);
        return std::is_same_v<Op, VornDivide> ? result.quotient : result.remainder;
    }
    CheckedDivision* clone() const override {
        std::unique_ptr<TypedVornExpressionTree<Left>> left(mLeft.clone());
        std::unique_ptr<TypedVornExpressionTree<Right>> right(mRight.clone());
        return new CheckedDivision(left.release(), right.release());
    }
    CheckedDivision* clone(const std::list<VornExpressionTree*>& children) const override {
        return new CheckedDivision(ReplacementChildren(children));
    }
    VornExpressionTree* accept(ExpressionTreeVisitor* visitor) const override {
        return visitor->visit(static_cast<const BinaryOperator*>(this));
    }
    void printExpression(std::ostream& stream) const override {
        mLeft.print(stream);
        stream << " " << Op::text << " ";
        mRight.print(stream);
    }

  private:
    [[noreturn]] void fail(const char* reason) const {
        std::ostringstream text;
        text << "No result of '" << static_cast<const VornExpressionTree&>(*this) << "': " << reason;
        throw arithmetic_fault(text.str());
    }

    // In this order, so that the left operand is deleted first.
    Operand<Right> mRight;
    Operand<Left> mLeft;
};

template <class Op, class Left, class Right>
VornExpressionTree* checkedInstance(const VornExpressionTree* tree, const std::list<VornExpressionTree*>& children) {
    using Unchecked = TypedBinaryOperator<Op, typename BinaryResultType<Op, Left, Right>::type, Left, Right>;
    if (dynamic_cast<const Unchecked*>(tree) == nullptr) return nullptr;
    return new CheckedDivision<Op, Left, Right>(ReplacementChildren(children));
}

}  // namespace

VornExpressionTree* checkedDivision(const VornExpressionTree* tree, const std::list<VornExpressionTree*>& children) {
    VornExpressionTree* checked = nullptr;
#define VORN_CHECKED(Op, Left, Right) \
    if (checked == nullptr) checked = checkedInstance<Op, Left, Right>(tree, children);
    VORN_INTEGER_PAIRS(VORN_CHECKED, VornDivide)
    VORN_INTEGER_PAIRS(VORN_CHECKED, VornMod)
#undef VORN_CHECKED
    return checked;
}

}  // namespace vornrun
