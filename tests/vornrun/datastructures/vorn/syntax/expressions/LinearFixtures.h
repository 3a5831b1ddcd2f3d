#pragma once
/// \file
/// Short ways to build trees, comparisons and clauses for the tests of linear expressions.

#include <ostream>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun::test {

inline VornExpressionTree* number(double value) { return new TypedVornValue<VornReal>(value); }
inline TypedVornExpressionTree<VornBool>* truth(bool value) { return new TypedVornValue<VornBool>(value); }

/// A leaf whose value the test changes, and which counts how often it is evaluated.
template <class T>
class Probe final : public TypedVornExpressionTree<T> {
  public:
    struct State {
        typename T::AssociatedDataType value{};
        int evaluations = 0;
        std::string name = "probe";
    };
    explicit Probe(State& state) : mState(state) {}
    typename T::AssociatedDataType evaluateDirect() const override {
        ++mState.evaluations;
        return mState.value;
    }
    Probe* clone() const override { return new Probe(mState); }
    Probe* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    VornExpressionTree* accept(ExpressionTreeVisitor*) const override { return nullptr; }
    void printExpression(std::ostream& stream) const override { stream << mState.name; }

  private:
    State& mState;
};

/// "x op bound" with one variable of coefficient 1.
inline LinExp* comparison(double x, double rate, parser::OperatorType op, double bound) {
    auto* const result = new LinExp(number(bound), op);
    result->addTerm(number(x), number(rate), number(1.0));
    return result;
}

/// A clause of the given comparisons; a null condition means true.
inline Clause* clause(TypedVornExpressionTree<VornBool>* condition, const std::vector<LinExp*>& comparisons) {
    auto* const result = new Clause(condition);
    for (LinExp* const each : comparisons) result->addExpr(each);
    return result;
}

/// lower <= x <= upper for an x that is 0 now and grows at rate 1: holds at the delays [lower, upper].
inline Clause* during(double lower, double upper) {
    return clause(nullptr, {comparison(0.0, 1.0, parser::OperatorType::GEq, lower),
                            comparison(0.0, 1.0, parser::OperatorType::LEq, upper)});
}

}  // namespace vornrun::test
