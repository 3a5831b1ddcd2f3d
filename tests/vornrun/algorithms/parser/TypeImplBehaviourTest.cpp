// Modes with invariants and trajectories, transitions with guards and effects.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/ParsedImplementation.h"
#include "vornrun/algorithms/parser/TypeImplParser.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct ModeTypeCase {
    const char* name;
    const char* number;
    VornModeType type;
};

class ModeTypes : public testing::TestWithParam<ModeTypeCase> {};

TEST_P(ModeTypes, HaveTheNumbersOfTheFile) {
    ModelWriter model;
    model.implementation("T.i").mode("m");
    Xml document = model.document();
    document.first("Mode").first("type").text(GetParam().number);
    const auto specification = parseModel(document);
    EXPECT_EQ(implementation(*specification).findMode("m")->type(), GetParam().type);
    EXPECT_EQ(implementation(*specification).hasActivationMode(), GetParam().type == VornModeType::activation);
}

INSTANTIATE_TEST_SUITE_P(TypeImplParser, ModeTypes,
                         testing::Values(ModeTypeCase{"Initial", "0", VornModeType::initial},
                                         ModeTypeCase{"Activation", "1", VornModeType::activation},
                                         ModeTypeCase{"Error", "2", VornModeType::error},
                                         ModeTypeCase{"ThreeIsPlain", "3", VornModeType::plain},
                                         ModeTypeCase{"FourIsErrorLikeTwo", "4", VornModeType::error},
                                         ModeTypeCase{"LargestNumberIsError", "4294967295", VornModeType::error}),
                         CaseName());

TEST(TypeImplParser, IgnoresTrajectoriesOfAModeWithoutInvariant) {
    ModelWriter model;
    model.implementation("T.i").mode("a", rate(y, 2.0)).mode("b", Xml("trajectories", {Xml("nonsense")}));
    const auto specification = parseModel(model);
    for (const char* mode : {"a", "b"}) {
        EXPECT_EQ(implementation(*specification).findMode(mode)->invariant(), nullptr);
        EXPECT_THAT(implementation(*specification).findMode(mode)->trajectories(), IsEmpty());
    }
}

struct RateCase {
    const char* name;
    Expr rate;
    VornDataTypeTag type;
    const char* text;
};

class Rates : public testing::TestWithParam<RateCase> {};

TEST_P(Rates, MakeEquationsOfTheirTypes) {
    ModelWriter model;
    model.implementation("T.i").mode("a", invariant(true), rate(y, GetParam().rate));
    const auto specification = parseModel(model);
    const auto& trajectories = implementation(*specification).findMode("a")->trajectories();
    ASSERT_EQ(trajectories.size(), 1u);
    EXPECT_EQ(trajectories[0]->type(), GetParam().type);
    ASSERT_NE(trajectories[0]->rhs(), nullptr);
    EXPECT_EQ(text(*trajectories[0]), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(TypeImplParser, Rates,
                         testing::Values(RateCase{"Int", -2, VornDataTypeTag::VornInt, "y' = -2"},
                                         RateCase{"Real", 0.5, VornDataTypeTag::VornReal, "y' = 0.5"},
                                         RateCase{"Continuous", number(1.5, Type::Continuous),
                                                  VornDataTypeTag::VornContinuous, "y' = 1.5"}),
                         CaseName());

class NoRates : public testing::TestWithParam<std::pair<const char*, Expr>> {};

TEST_P(NoRates, GiveNoEquationAndNoMessage) {
    ModelWriter model;
    model.implementation("T.i").mode("a", invariant(true), rate(y, GetParam().second), rate(y, 1));
    const CapturedLog log(LogLevel::Debug);
    const auto specification = parseModel(model);
    EXPECT_EQ(implementation(*specification).findMode("a")->trajectories().size(), 1u);
    EXPECT_THAT(log.textsFrom(LogLevel::Warn), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(TypeImplParser, NoRates,
                         testing::Values(std::pair<const char*, Expr>("Bool", true),
                                         std::pair<const char*, Expr>("Clock", number(1.0, Type::Clock)),
                                         std::pair<const char*, Expr>("ClockVariable", x),
                                         std::pair<const char*, Expr>("Enum", enumLiteral("red")),
                                         std::pair<const char*, Expr>("Mode", modeLiteral("a")),
                                         std::pair<const char*, Expr>("Interval", var("i", Type::Interval))),
                         [](const auto& row) { return std::string(row.param.first); });

TEST(TypeImplParser, LeavesNullsWhereATrajectoryIsNoConstantOrNotContinuous) {
    ModelWriter model;
    model.implementation("T.i").mode("a", invariant(true), rate(y, n), rate(y, Expr(1.0) + 2.0), rate(x, 1.0),
                                     rate(1.0, 1.0), rate(y, illTyped));
    const auto specification = parseModel(model);
    const auto& trajectories = implementation(*specification).findMode("a")->trajectories();
    ASSERT_EQ(trajectories.size(), 5u);
    EXPECT_EQ(trajectories[0]->type(), VornDataTypeTag::VornInt);
    EXPECT_EQ(trajectories[0]->rhs(), nullptr);
    EXPECT_EQ(trajectories[0]->variable()->text(), "y");
    EXPECT_EQ(trajectories[1]->type(), VornDataTypeTag::VornReal);
    EXPECT_EQ(trajectories[1]->rhs(), nullptr);
    EXPECT_EQ(trajectories[2]->variable(), nullptr);
    EXPECT_EQ(trajectories[3]->variable(), nullptr);
    // A right side that failed to parse is passed on.
    EXPECT_EQ(trajectories[4]->variable()->text(), "y");
    EXPECT_EQ(trajectories[4]->rhs(), nullptr);
}

// --- guards, invariants and their clauses

TEST(TypeImplParser, KeepsPlainFormAndClausesAsTheFileHasThem) {
    ModelWriter model;
    const Clauses clauses{clause(b, {lin({{2.0, x}, {n, y}}, Op::LEq, 5.0), lin({}, Op::NEq, n)}), clause(!b),
                          clause({lin({{1, x}}, Op::Gt, 3)}), clause(b, {})};
    model.implementation("T.i").mode("a", invariant(x < 7.0 || b, clauses));
    const auto specification = parseModel(model);
    const VornLinearExpression& invariant = *implementation(*specification).findMode("a")->invariant();
    EXPECT_EQ(text(invariant), "x < 7 or b");
    EXPECT_FALSE(invariant.isSimple());
    ASSERT_EQ(invariant.clauses().size(), 4u);
    EXPECT_EQ(text(*invariant.clauses()[0]), "x * 2 + y * n <= 5 and  != n and b");
    EXPECT_EQ(text(*invariant.clauses()[1]), " and not b");
    EXPECT_EQ(text(*invariant.clauses()[2]), "x * 1 > 3");
    EXPECT_EQ(invariant.clauses()[2]->condition(), nullptr);
    EXPECT_EQ(text(*invariant.clauses()[3]), " and b");
}

TEST(TypeImplParser, GivesEachTermARateTreeOfItsOwn) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition("a", "a", when(x >= 2.0));
    const auto specification = parseModel(model);
    const auto& guard = *implementation(*specification).transitions()[0]->guard();
    const LinExp::Term& term = guard.clauses()[0]->expressions()[0]->terms()[0];
    EXPECT_EQ(text(*term.variable), "x");
    EXPECT_EQ(text(*term.rate), "x");
    EXPECT_NE(term.rate.get(), term.variable.get());
    EXPECT_EQ(term.rate->type(), VornDataTypeTag::VornClock);
    EXPECT_EQ(text(*term.coefficient), "1");
}

TEST(TypeImplParser, TakesAnEmptyListOfClausesAndOfEquations) {
    ModelWriter model;
    model.implementation("T.i")
        .mode("a", invariant(b, Clauses{}))
        .mode("b", invariant(b, Clauses{}), Xml("trajectories"));
    Xml document = model.document();
    document.nth("clauses", 1).add(Xml("Clause", {Xml("equations", {Xml("Odd")})}));
    const auto specification = parseModel(document);
    EXPECT_THAT(implementation(*specification).findMode("a")->invariant()->clauses(), IsEmpty());
    const auto& clauses = implementation(*specification).findMode("b")->invariant()->clauses();
    ASSERT_EQ(clauses.size(), 1u);
    EXPECT_THAT(clauses[0]->expressions(), IsEmpty());
    EXPECT_EQ(clauses[0]->condition(), nullptr);
}

TEST(TypeImplParser, TakesEveryOperatorNumberInAComparison) {
    for (const int op : {0, 5, 11, 19}) {
        ModelWriter model;
        model.implementation("T.i").mode("a").transition(
            "a", "a", when(x > 1.0, {clause({lin({{1.0, x}}, static_cast<Op>(op), 1.0)})}));
        const auto specification = parseModel(model);
        const auto& guard = *implementation(*specification).transitions()[0]->guard();
        EXPECT_EQ(static_cast<int>(guard.clauses()[0]->expressions()[0]->op()), op);
    }
}

TEST(TypeImplParser, PassesOnNullPartsOfAComparison) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition(
        "a", "a", when(x > 1.0, {clause({lin({{illTyped, x}, {1.0, illTyped}}, Op::Gt, illTyped)})}));
    const auto specification = parseModel(model);
    const LinExp& comparison =
        *implementation(*specification).transitions()[0]->guard()->clauses()[0]->expressions()[0];
    EXPECT_EQ(comparison.constant(), nullptr);
    ASSERT_EQ(comparison.terms().size(), 2u);
    EXPECT_EQ(comparison.terms()[0].coefficient, nullptr);
    EXPECT_NE(comparison.terms()[0].rate, nullptr);
    EXPECT_EQ(comparison.terms()[1].variable, nullptr);
    EXPECT_EQ(comparison.terms()[1].rate, nullptr);
    EXPECT_NE(comparison.terms()[1].coefficient, nullptr);
}

// --- transitions

TEST(TypeImplParser, ReadsTriggerGuardAndEffectsOfATransition) {
    ModelWriter model;
    model.implementation("T.i").mode("a").mode("b").transition("a", "b", on("sub.go"), when(b), set(n, n + 1),
                                                               set(var("sub.v", Type::Bool), false));
    const auto specification = parseModel(model);
    const VornTransition& transition = *implementation(*specification).transitions()[0];
    EXPECT_EQ(transition.source(), "a");
    EXPECT_EQ(transition.target(), "b");
    ASSERT_NE(transition.trigger(), nullptr);
    EXPECT_EQ(transition.trigger()->subComponent(), "sub");
    EXPECT_EQ(transition.trigger()->name(), "go");
    EXPECT_EQ(text(*transition.guard()), "b");
    ASSERT_EQ(transition.effects().size(), 2u);
    EXPECT_EQ(text(*transition.effects()[0]), "n :=  n + 1");
    EXPECT_EQ(text(*transition.effects()[1]), "sub.v :=  0");
}

TEST(TypeImplParser, IgnoresClausesBesideALabelWithoutGuard) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition("a", "a");
    Xml document = model.document();
    document.first("label").add(Xml("clauses", {Xml("Clause")}));  // at fault, if it were read
    const auto specification = parseModel(document);
    const VornTransition& transition = *implementation(*specification).transitions()[0];
    EXPECT_EQ(transition.guard(), nullptr);
    EXPECT_EQ(transition.trigger(), nullptr);
    EXPECT_THAT(transition.effects(), IsEmpty());
}

TEST(TypeImplParser, TakesAnEnumConstantOnTheLeftOfAnEffectForAVariable) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition("a", "a", set(enumLiteral("red"), enumLiteral("blue")));
    const auto specification = parseModel(model);
    const VornAssignment& effect = *implementation(*specification).transitions()[0]->effects()[0];
    EXPECT_EQ(effect.variable()->text(), "red");
    EXPECT_EQ(effect.variable()->type(), VornDataTypeTag::VornEnum);
}

TEST(TypeImplParser, PassesOnANullRightSideOfEffectsAndFlows) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition("a", "a", set(n, illTyped)).flow(n, illTyped);
    const CapturedLog log(LogLevel::Error);
    const auto specification = parseModel(model);
    EXPECT_EQ(implementation(*specification).transitions()[0]->effects()[0]->expression(), nullptr);
    EXPECT_EQ(implementation(*specification).flows()[0]->expression(), nullptr);
    EXPECT_THAT(log.texts("root.exprconstr"),
                ElementsAre("Unsupported operator types: bool + int", "Unsupported operator types: bool + int"));
}

TEST(TypeImplParser, ReadsSharedElementsAnewForEachPlace) {
    ModelWriter model;
    model.implementation("T.i").mode("a").transition("a", "a", when(x > 1.0)).transition("a", "a", when(x > 1.0));
    Xml document = model.document();
    // One reference is to a later element, the other one to an earlier one.
    document.nth("guard", 0) = Xml("guard").attribute("objref", "guard");
    document.nth("guard", 1).attribute("objid", "guard");
    document.nth("clauses", 0).attribute("objid", "clauses");
    document.nth("clauses", 1) = Xml("clauses").attribute("objref", "clauses");
    const auto specification = parseModel(document);
    const auto& transitions = implementation(*specification).transitions();
    const VornLinearExpression& first = *transitions[0]->guard();
    const VornLinearExpression& second = *transitions[1]->guard();
    EXPECT_EQ(text(first), "x > 1");
    EXPECT_EQ(text(second), "x > 1");
    EXPECT_NE(first.plain(), second.plain());
    EXPECT_EQ(text(*first.clauses()[0]), "x * 1 > 1");
    EXPECT_EQ(text(*second.clauses()[0]), "x * 1 > 1");
    EXPECT_NE(first.clauses()[0], second.clauses()[0]);
}

}  // namespace
}  // namespace vornrun::test
