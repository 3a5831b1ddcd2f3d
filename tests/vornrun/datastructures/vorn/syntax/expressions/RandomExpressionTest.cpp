// Laws over random trees: copies and rewrites print and evaluate like their originals, and the typed, the boxed and a
// plain reference evaluation agree.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"

namespace vornrun::test {
namespace {

/// A tree with the value that it has to have, computed while it was built. Numbers are small integers and halves, so
/// that every result is exact and no tolerance decides.
template <class T>
struct Expected {
    std::unique_ptr<TypedVornExpressionTree<T>> tree;
    typename T::AssociatedDataType value;
};

class Generator {
  public:
    explicit Generator(unsigned long seed) : mEngine(seed) {}

    Expected<VornInt> integer(int depth) {
        if (depth == 0) return leaf<VornInt>(pick(20) - 10);
        switch (pick(4)) {
            case 0:
                return arithmetic<VornInt>("+", integer(depth - 1), integer(depth - 1), std::plus<>());
            case 1:
                return arithmetic<VornInt>("-", integer(depth - 1), integer(depth - 1), std::minus<>());
            case 2:
                return inverted(integer(depth - 1));
            default:
                return selected(truth(depth - 1), integer(depth - 1), integer(depth - 1));
        }
    }

    Expected<VornReal> real(int depth) {
        if (depth == 0) return leaf<VornReal>(static_cast<double>(pick(40) - 20) / 2);
        switch (pick(4)) {
            case 0:
                return arithmetic<VornReal>("+", real(depth - 1), integer(depth - 1), std::plus<>());
            case 1:
                return arithmetic<VornReal>("-", integer(depth - 1), real(depth - 1), std::minus<>());
            case 2:
                return inverted(real(depth - 1));
            default:
                return selected(truth(depth - 1), real(depth - 1), real(depth - 1));
        }
    }

    Expected<VornBool> truth(int depth) {
        if (depth == 0) return leaf<VornBool>(pick(2) == 1);
        switch (pick(7)) {
            case 0:
                return arithmetic<VornBool>("and", truth(depth - 1), truth(depth - 1), std::logical_and<>());
            case 1:
                return arithmetic<VornBool>("or", truth(depth - 1), truth(depth - 1), std::logical_or<>());
            case 2:
                return arithmetic<VornBool>("iff", truth(depth - 1), truth(depth - 1), std::equal_to<>());
            case 3:
                return negated(truth(depth - 1));
            case 4:
                return arithmetic<VornBool>("<", real(depth - 1), integer(depth - 1), std::less<>());
            case 5:
                return arithmetic<VornBool>(">=", real(depth - 1), real(depth - 1), std::greater_equal<>());
            default:
                return arithmetic<VornBool>("!=", integer(depth - 1), integer(depth - 1), std::not_equal_to<>());
        }
    }

  private:
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(mEngine); }

    template <class T>
    static Expected<T> leaf(typename T::AssociatedDataType value) {
        return {std::unique_ptr<TypedVornExpressionTree<T>>(constant<T>(value)), value};
    }
    template <class T>
    static std::unique_ptr<TypedVornExpressionTree<T>> typed(VornExpressionTree* tree) {
        return std::unique_ptr<TypedVornExpressionTree<T>>(dynamic_cast<TypedVornExpressionTree<T>*>(tree));
    }
    template <class Result, class Left, class Right, class Function>
    static Expected<Result> arithmetic(const char* op, Expected<Left> left, Expected<Right> right, Function function) {
        using Number = std::common_type_t<typename Left::AssociatedDataType, typename Right::AssociatedDataType>;
        const auto value = function(static_cast<Number>(left.value), static_cast<Number>(right.value));
        return {typed<Result>(binary(op, left.tree.release(), right.tree.release()).release()), value};
    }
    template <class T>
    static Expected<T> inverted(Expected<T> operand) {
        return {typed<T>(VornExpressionConstructor::expressionTree<VornInvert>(operand.tree.release())),
                -operand.value};
    }
    static Expected<VornBool> negated(Expected<VornBool> operand) {
        return {typed<VornBool>(VornExpressionConstructor::expressionTree<VornNot>(operand.tree.release())),
                !operand.value};
    }
    template <class T>
    static Expected<T> selected(Expected<VornBool> condition, Expected<T> value, Expected<T> otherwise) {
        const auto result = condition.value ? value.value : otherwise.value;
        const std::vector<CasePair> cases = {{condition.tree.release(), value.tree.release()}};
        return {std::make_unique<TypedCaseOperator<T>>(cases, otherwise.tree.release()), result};
    }

    std::mt19937_64 mEngine;
};

/// Rebuilds a whole tree bottom-up through clone(list), as a rewriting visitor does.
class Rebuilding final : public ExpressionTreeVisitor {
  public:
    static Tree of(const VornExpressionTree& tree) {
        Rebuilding visitor;
        return Tree(tree.accept(&visitor));
    }
    VornExpressionTree* visit(const VornVariable* variable) override { return variable->clone(); }
    VornExpressionTree* visit(const VornValue* value) override { return value->clone(); }
    VornExpressionTree* visit(const BinaryOperator* node) override {
        return node->clone({node->getLeftTree()->accept(this), node->getRightTree()->accept(this)});
    }
    VornExpressionTree* visit(const UnaryOperator* node) override {
        return node->clone({node->getSubTree()->accept(this)});
    }
    VornExpressionTree* visit(const CaseOperator* node) override {
        std::list<VornExpressionTree*> children;
        for (const auto& [condition, value] : node->getCases()) {
            children.push_back(condition->accept(this));
            children.push_back(value->accept(this));
        }
        children.push_back(node->getDefaultTree()->accept(this));
        return node->clone(children);
    }
    VornExpressionTree* visit(const RealisedVariable*) override { return nullptr; }
};

template <class T>
void checkLaws(const Expected<T>& expected) {
    const VornExpressionTree& tree = *expected.tree;
    EXPECT_EQ(valueOf<T>(tree), expected.value) << tree;
    const std::unique_ptr<VornValue> boxed(tree.evaluationResult());
    EXPECT_EQ(valueOf<T>(*boxed), expected.value) << tree;
    const Tree copy(tree.clone());
    EXPECT_EQ(printed(*copy), printed(tree));
    EXPECT_EQ(valueOf<T>(copy), expected.value);
    const Tree rebuilt = Rebuilding::of(tree);
    EXPECT_EQ(printed(*rebuilt), printed(tree));
    EXPECT_EQ(valueOf<T>(rebuilt), expected.value);
}

TEST(RandomExpressions, EvaluateAsExpectedAndSurviveCopyingAndRewriting) {
    const char* const fromOutside = std::getenv("VORNRUN_TEST_SEED");
    const unsigned long seed = fromOutside != nullptr ? std::strtoul(fromOutside, nullptr, 10) : 20240607;
    SCOPED_TRACE("VORNRUN_TEST_SEED=" + std::to_string(seed));
    Generator generator(seed);
    for (int round = 0; round < 200; ++round) {
        const int depth = round % 6;
        checkLaws(generator.integer(depth));
        checkLaws(generator.real(depth));
        checkLaws(generator.truth(depth));
    }
}

}  // namespace
}  // namespace vornrun::test
