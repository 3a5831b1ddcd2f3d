#pragma once
/// \file
/// What the tests of expressions share: constants from numbers, nodes that record what happens to them, and operators
/// by their text.

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/Printed.h"
#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun::test {

using Tree = std::unique_ptr<VornExpressionTree>;

/// A new constant, owned by the caller.
template <class T>
TypedVornValue<T>* constant(const typename T::AssociatedDataType& value) {
    return new TypedVornValue<T>(value);
}

/// The value of a tree whose type is known.
template <class T>
typename T::AssociatedDataType valueOf(const VornExpressionTree& tree) {
    return dynamic_cast<const TypedVornExpressionTree<T>&>(tree).evaluateDirect();
}
template <class T>
typename T::AssociatedDataType valueOf(const Tree& tree) {
    return valueOf<T>(*tree);
}

/// Calls `f.template operator()<Op>()` for the binary operator of a text.
template <class F>
void withBinaryOperator(std::string_view text, F&& f) {
    const auto tryOne = [&]<class Op>() {
        if (Op::text == text) f.template operator()<Op>();
    };
    const auto tryAll = [&]<class... Ops>(std::tuple<Ops...>*) { (tryOne.template operator()<Ops>(), ...); };
    tryAll(static_cast<std::tuple<VornAnd, VornOr, VornImp, VornIff, VornPlus, VornMinus, VornMultiply, VornDivide,
                                  VornMod, VornEq, VornNEq, VornLt, VornLEq, VornGt, VornGEq>*>(nullptr));
}

/// `left text right`, over adopted operands of legal types.
inline Tree binary(std::string_view text, VornExpressionTree* left, VornExpressionTree* right) {
    Tree result;
    withBinaryOperator(text,
                       [&]<class Op>() { result.reset(VornExpressionConstructor::expressionTree<Op>(left, right)); });
    return result;
}

/// A node that writes "name evaluated", "name deleted" and so on into a list which outlives it.
template <class T>
class Probe final : public TypedVornExpressionTree<T> {
  public:
    Probe(std::string name, const typename T::AssociatedDataType& value, std::vector<std::string>& events)
        : mName(std::move(name)), mValue(value), mEvents(events) {}
    ~Probe() override { mEvents.push_back(mName + " deleted"); }

    Probe* clone() const override {
        mEvents.push_back(mName + " cloned");
        return new Probe(mName + "'", mValue, mEvents);
    }
    Probe* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    typename T::AssociatedDataType evaluateDirect() const override {
        mEvents.push_back(mName + " evaluated");
        return mValue;
    }
    VornExpressionTree* accept(ExpressionTreeVisitor*) const override { return nullptr; }
    void printExpression(std::ostream& stream) const override { stream << mName; }

  private:
    std::string mName;
    typename T::AssociatedDataType mValue;
    std::vector<std::string>& mEvents;
};

/// Keeps the last node visited and the name of its kind.
class LastVisited final : public ExpressionTreeVisitor {
  public:
    VornExpressionTree* visit(const VornVariable* variable) override { return keep("variable", variable); }
    VornExpressionTree* visit(const VornValue* value) override { return keep("value", value); }
    VornExpressionTree* visit(const BinaryOperator* node) override {
        binary = node;
        return keep("binary", node);
    }
    VornExpressionTree* visit(const UnaryOperator* node) override {
        unary = node;
        return keep("unary", node);
    }
    VornExpressionTree* visit(const CaseOperator* node) override {
        cases = node;
        return keep("case", node);
    }
    VornExpressionTree* visit(const RealisedVariable*) override {
        kind = "realised variable";
        return nullptr;
    }

    std::string kind;
    const VornExpressionTree* lastNode = nullptr;
    const BinaryOperator* binary = nullptr;
    const UnaryOperator* unary = nullptr;
    const CaseOperator* cases = nullptr;

  private:
    template <class Node>
    VornExpressionTree* keep(const char* name, const Node* visited) {
        kind = name;
        lastNode = visited;
        return nullptr;
    }
};

}  // namespace vornrun::test
