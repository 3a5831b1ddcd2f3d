// Guards and invariants rewritten for one component.

#include <gtest/gtest.h>

#include "tests/vornrun/algorithms/vornconstructor/SubstitutionFixture.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"

namespace vornrun::test {
namespace {

using LinearSubstitutionTest = SubstitutionFixture;

/// One clause: `condition` and coefficient * variable <= constant.
VornLinearExpression linear(TypedVornExpressionTree<VornBool>* plain, TypedVornExpressionTree<VornBool>* condition,
                            VornExpressionTree* variable, VornExpressionTree* coefficient, VornExpressionTree* bound) {
    auto* comparison = new LinExp(bound, parser::OperatorType::LEq);
    comparison->addTerm(variable, variable == nullptr ? nullptr : variable->clone(), coefficient);
    auto* clause = new Clause(condition);
    clause->addExpr(comparison);
    return VornLinearExpression(plain, {clause});
}

TEST_F(LinearSubstitutionTest, ALinearExpressionReadsValueAndRateOfItsVariables) {
    const VornLinearExpression syntax =
        linear(typedVar<VornBool>("flag"), nullptr, var<VornClock>("c"), var<VornInt>("x"), var<VornReal>("r"));
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    ASSERT_EQ(realised->clauses().size(), 1u);
    EXPECT_EQ(realised->clauses()[0]->condition(), nullptr);
    ASSERT_EQ(realised->clauses()[0]->expressions().size(), 1u);
    const LinExp& comparison = *realised->clauses()[0]->expressions()[0];
    EXPECT_EQ(comparison.op(), parser::OperatorType::LEq);
    EXPECT_EQ(printed(*comparison.constant()), "r{=2.5:real}");
    ASSERT_EQ(comparison.terms().size(), 1u);
    EXPECT_EQ(printed(*comparison.terms()[0].variable), "c{=3:clock}");
    EXPECT_EQ(printed(*comparison.terms()[0].rate), "c{=1:clock}");
    EXPECT_EQ(printed(*comparison.terms()[0].coefficient), "x{=1:int}");
    EXPECT_FALSE(realised->holds());
    // 1 * c <= 2.5 with c = 3, running at rate 1, is over; with c = 1 it lasts for another 1.5.
    EXPECT_TRUE(realised->holdsWhile().empty());
    valuation->setValue<VornClock>(main->valueRef(part(main.get(), "c")), 1.0);
    EXPECT_EQ(realised->holdsWhile().upper, 1.5);
}

TEST_F(LinearSubstitutionTest, TheConditionOfAClauseIsRewritten) {
    const VornLinearExpression syntax = linear(typedVar<VornBool>("flag"), typedVar<VornBool>("s1.flag"),
                                               var<VornClock>("c"), constant<VornReal>(1.0), constant<VornReal>(9.0));
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    EXPECT_TRUE(realised->holdsWhile().empty());
    valuation->setValue<VornBool>(s1()->valueRef(part(s1(), "flag")), true);
    EXPECT_EQ(realised->holdsWhile().upper, 6.0);
}

TEST_F(LinearSubstitutionTest, AConditionThatDoesNotResolveIsLoggedAndMeansTrue) {
    const VornLinearExpression syntax = linear(constant<VornBool>(true), typedVar<VornBool>("nothing"),
                                               var<VornClock>("c"), constant<VornReal>(1.0), constant<VornReal>(9.0));
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    EXPECT_EQ(log.texts(VALREF), std::vector<std::string>{"Unable to find id linked to variable nothing"});
    EXPECT_EQ(realised->clauses()[0]->condition(), nullptr);
    EXPECT_EQ(realised->holdsWhile().upper, 6.0);
}

TEST_F(LinearSubstitutionTest, AClauseOfOnlyAConditionThatDoesNotResolveHoldsForEverBesideAComparison) {
    auto* comparison = new LinExp(constant<VornReal>(9.0), parser::OperatorType::LEq);
    comparison->addTerm(var<VornClock>("c"), var<VornClock>("c"), constant<VornReal>(1.0));
    auto* bounded = new Clause(nullptr);
    bounded->addExpr(comparison);
    const VornLinearExpression syntax(constant<VornBool>(true), {bounded, new Clause(typedVar<VornBool>("nothing"))});
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    EXPECT_EQ(realised->holdsWhile().upper, TimeInterval::INF_TIME);
}

TEST_F(LinearSubstitutionTest, WithoutAComparisonThePlainFormDecidesWhateverTheConditionsAre) {
    const VornLinearExpression syntax(typedVar<VornBool>("flag"), {new Clause(typedVar<VornBool>("nothing"))});
    const std::unique_ptr<VornLinearExpression> realised(subject()(&syntax));
    EXPECT_TRUE(realised->isSimple());
    EXPECT_TRUE(realised->holdsWhile().empty());
}

TEST_F(LinearSubstitutionTest, ABareGuardThatDoesNotResolveFailsWhenEvaluated) {
    const std::unique_ptr<VornLinearExpression> syntax(plainly(var<VornBool>("nothing")));
    const std::unique_ptr<VornLinearExpression> realised(subject()(syntax.get()));
    ASSERT_NE(realised, nullptr);
    EXPECT_THROW(realised->holds(), missing_operand);
    EXPECT_THROW(realised->holdsWhile(), missing_operand);
}

TEST_F(LinearSubstitutionTest, AMissingPartOfAComparisonFailsWhenEvaluated) {
    const auto one = [] { return constant<VornReal>(1.0); };
    const auto cases = [&] {
        std::vector<std::unique_ptr<VornLinearExpression>> all;
        const auto add = [&all](VornLinearExpression* expression) { all.emplace_back(expression); };
        const auto with = [](VornExpressionTree* variable, VornExpressionTree* factor, VornExpressionTree* bound) {
            auto* comparison = new LinExp(bound, parser::OperatorType::LEq);
            comparison->addTerm(variable, variable == nullptr ? nullptr : variable->clone(), factor);
            auto* clause = new Clause(nullptr);
            clause->addExpr(comparison);
            return new VornLinearExpression(constant<VornBool>(true), {clause});
        };
        add(with(nullptr, one(), one()));
        add(with(var<VornClock>("nothing"), one(), one()));
        add(with(var<VornClock>("c"), nullptr, one()));
        add(with(var<VornClock>("c"), one(), nullptr));
        add(with(var<VornClock>("c"), one(), var<VornReal>("nothing")));
        return all;
    }();
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const std::unique_ptr<VornLinearExpression> realised(subject()(cases[i].get()));
        EXPECT_THROW(realised->holdsWhile(), missing_operand) << "case " << i;
    }
}

TEST_F(LinearSubstitutionTest, ATermThatIsNoVariableIsRefusedWithComponentAndText) {
    const VornLinearExpression syntax = linear(constant<VornBool>(true), nullptr, constant<VornReal>(4.5),
                                               constant<VornReal>(1.0), constant<VornReal>(9.0));
    EXPECT_EQ(faultOf([&] { subject()(&syntax); }),
              "Component main: \"4.5\" stands for a variable in a linear comparison, but is none");
}

}  // namespace
}  // namespace vornrun::test
