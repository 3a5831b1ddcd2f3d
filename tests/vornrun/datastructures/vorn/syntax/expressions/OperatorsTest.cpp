// Logic, printing, ownership, cloning and rewriting of binary and unary operators.

#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

#include <gtest/gtest.h>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorInstances.h"

namespace vornrun::test {
namespace {

using Events = std::vector<std::string>;
using IntSum = TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>;
using RealSum = TypedBinaryOperator<VornPlus, VornReal, VornReal, VornInt>;
using Conjunction = TypedBinaryOperator<VornAnd, VornBool, VornBool, VornBool>;
using Implication = TypedBinaryOperator<VornImp, VornBool, VornBool, VornBool>;
using Negation = TypedUnaryOperator<VornNot, VornBool, VornBool>;

template <class Node>
std::string missingOperandText(const Node& node) {
    try {
        static_cast<void>(node.evaluateDirect());
    } catch (const missing_operand& error) {
        return error.what();
    }
    return "nothing is missing";
}

struct LogicCase {
    const char* op;
    bool left;
    bool right;
    bool expected;
    Events evaluated;
};

TEST(Logic, EvaluatesWhatItNeedsAndNoMore) {
    const Events left = {"left evaluated"};
    const Events both = {"left evaluated", "right evaluated"};
    const std::vector<LogicCase> table = {
        {"and", false, false, false, left}, {"and", false, true, false, left}, {"and", true, false, false, both},
        {"and", true, true, true, both},    {"or", false, false, false, both}, {"or", false, true, true, both},
        {"or", true, false, true, left},    {"or", true, true, true, left},    {"iff", false, false, true, both},
        {"iff", false, true, false, both},  {"iff", true, false, false, both}, {"iff", true, true, true, both},
        {"imp", false, false, true, {}},    {"imp", false, true, true, {}},    {"imp", true, false, true, {}},
        {"imp", true, true, true, {}}};
    for (const LogicCase& row : table) {
        SCOPED_TRACE(std::string(row.op) + (row.left ? " true" : " false") + (row.right ? " true" : " false"));
        Events events;
        const Tree tree = binary(row.op, new Probe<VornBool>("left", row.left, events),
                                 new Probe<VornBool>("right", row.right, events));
        EXPECT_EQ(valueOf<VornBool>(tree), row.expected);
        EXPECT_EQ(events, row.evaluated);
    }
}

TEST(Implication, LooksAtThePresenceOfItsOperandsOnly) {
    EXPECT_TRUE(Implication(constant<VornBool>(true), constant<VornBool>(false)).evaluateDirect());
    EXPECT_TRUE(Implication(nullptr, constant<VornBool>(false)).evaluateDirect());
    EXPECT_TRUE(Implication(nullptr, nullptr).evaluateDirect());
    EXPECT_FALSE(Implication(constant<VornBool>(true), nullptr).evaluateDirect());
}

TEST(OperatorPrinting, PutsBlanksAroundTheTextAndNoParentheses) {
    for (const char* const op : {"+", "-", "*", "/", "mod", "=", "!=", "<", "<=", ">", ">="}) {
        EXPECT_EQ(printed(*binary(op, constant<VornInt>(1), constant<VornInt>(2))), std::string("1 ") + op + " 2");
    }
    for (const char* const op : {"and", "or", "imp", "iff"}) {
        EXPECT_EQ(printed(*binary(op, constant<VornBool>(true), constant<VornBool>(false))),
                  std::string("1 ") + op + " 0");
    }
    const Tree nested = binary("*", binary("+", constant<VornInt>(1), constant<VornInt>(2)).release(),
                               new TypedVornVariable<VornReal>("sub.x"));
    EXPECT_EQ(printed(*nested), "1 + 2 * sub.x");
}

TEST(OperatorPrinting, PutsOneBlankBehindUnaryOperators) {
    EXPECT_EQ(printed(Negation(constant<VornBool>(true))), "not 1");
    const Tree inverted(VornExpressionConstructor::expressionTree<VornInvert>(constant<VornReal>(1.5)));
    EXPECT_EQ(printed(*inverted), "- 1.5");
}

TEST(OperatorPrinting, IsAlsoWhatTheSyntaxPrintingGives) {
    const Tree sum = binary("+", constant<VornInt>(1), constant<VornInt>(2));
    std::ostringstream stream;
    stream << *sum;
    EXPECT_EQ(stream.str(), "1 + 2");
}

TEST(OperatorOwnership, DeletesTheLeftOperandBeforeTheRightOne) {
    Events events;
    { const IntSum sum(new Probe<VornInt>("left", 1, events), new Probe<VornInt>("right", 2, events)); }
    EXPECT_EQ(events, (Events{"left deleted", "right deleted"}));
}

TEST(OperatorOwnership, DeletesTheOperandOfAUnaryOperator) {
    Events events;
    { const Negation negation(new Probe<VornBool>("operand", true, events)); }
    EXPECT_EQ(events, (Events{"operand deleted"}));
}

TEST(OperatorVisiting, ShowsBinaryOperatorsWithTheirOperands) {
    auto* const left = constant<VornInt>(1);
    auto* const right = constant<VornInt>(2);
    const IntSum sum(left, right);
    LastVisited visitor;
    EXPECT_EQ(sum.accept(&visitor), nullptr);
    EXPECT_EQ(visitor.kind, "binary");
    ASSERT_NE(visitor.binary, nullptr);
    EXPECT_EQ(visitor.binary->getLeftTree(), static_cast<VornExpressionTree*>(left));
    EXPECT_EQ(visitor.binary->getRightTree(), static_cast<VornExpressionTree*>(right));
}

TEST(OperatorVisiting, ShowsUnaryOperatorsWithTheirOperand) {
    auto* const operand = constant<VornBool>(true);
    const Negation negation(operand);
    LastVisited visitor;
    EXPECT_EQ(negation.accept(&visitor), nullptr);
    EXPECT_EQ(visitor.kind, "unary");
    ASSERT_NE(visitor.unary, nullptr);
    EXPECT_EQ(visitor.unary->getSubTree(), static_cast<VornExpressionTree*>(operand));
}

TEST(OperatorCloning, CopiesBothOperandsDeeply) {
    Events events;
    const IntSum sum(new Probe<VornInt>("left", 1, events), new Probe<VornInt>("right", 2, events));
    const std::unique_ptr<IntSum> copy(sum.clone());
    EXPECT_EQ(events, (Events{"left cloned", "right cloned"}));
    EXPECT_EQ(printed(*copy), "left' + right'");
    EXPECT_EQ(copy->evaluateDirect(), 3);
    EXPECT_NE(copy->getLeftTree(), sum.getLeftTree());
}

TEST(OperatorCloning, CopiesTheOperandOfAUnaryOperator) {
    Events events;
    const Negation negation(new Probe<VornBool>("operand", true, events));
    const std::unique_ptr<Negation> copy(negation.clone());
    EXPECT_EQ(printed(*copy), "not operand'");
    EXPECT_FALSE(copy->evaluateDirect());
}

TEST(OperatorRewriting, TakesTheFrontAsLeftAndTheBackAsRightAndClonesNothing) {
    Events events;
    const RealSum sum(constant<VornReal>(1), constant<VornInt>(2));
    auto* const left = new Probe<VornReal>("newLeft", 10, events);
    auto* const right = new Probe<VornInt>("newRight", 20, events);
    const std::unique_ptr<RealSum> rewritten(sum.clone({left, right}));
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(rewritten->getLeftTree(), static_cast<VornExpressionTree*>(left));
    EXPECT_EQ(rewritten->getRightTree(), static_cast<VornExpressionTree*>(right));
    EXPECT_EQ(rewritten->evaluateDirect(), 30.0);
    EXPECT_EQ(sum.evaluateDirect(), 3.0);
}

TEST(OperatorRewriting, DeletesAChildOfTheWrongTypeAndFailsAtTheFirstEvaluation) {
    Events events;
    const RealSum sum(constant<VornReal>(1), constant<VornInt>(2));
    const std::unique_ptr<RealSum> rewritten(
        sum.clone({new Probe<VornReal>("real", 1, events), new Probe<VornReal>("notAnInt", 2, events)}));
    EXPECT_EQ(events, (Events{"notAnInt deleted"}));
    EXPECT_NE(rewritten->getLeftTree(), nullptr);
    EXPECT_EQ(rewritten->getRightTree(), nullptr);
    EXPECT_EQ(missingOperandText(*rewritten),
              "Right operand of '+' (int) is missing: a name in it did not resolve, or its type was changed");
}

TEST(OperatorRewriting, KeepsANullChildMissing) {
    const RealSum sum(constant<VornReal>(1), constant<VornInt>(2));
    const std::unique_ptr<RealSum> rewritten(sum.clone({nullptr, constant<VornInt>(2)}));
    EXPECT_EQ(rewritten->getLeftTree(), nullptr);
    EXPECT_EQ(missingOperandText(*rewritten),
              "Left operand of '+' (real) is missing: a name in it did not resolve, or its type was changed");
}

TEST(OperatorRewriting, OfAUnaryOperatorTakesTheFrontOfTheRightTypeOnly) {
    Events events;
    const Negation negation(constant<VornBool>(true));
    const std::unique_ptr<Negation> rewritten(negation.clone({constant<VornBool>(false)}));
    EXPECT_TRUE(rewritten->evaluateDirect());
    const std::unique_ptr<Negation> broken(negation.clone({new Probe<VornInt>("number", 1, events)}));
    EXPECT_EQ(events, (Events{"number deleted"}));
    EXPECT_EQ(missingOperandText(*broken),
              "Operand of 'not' (bool) is missing: a name in it did not resolve, or its type was changed");
}

TEST(OperatorRewriting, CopesWithListsOfTheWrongLength) {
    Events events;
    const IntSum sum(constant<VornInt>(1), constant<VornInt>(2));
    const std::unique_ptr<IntSum> empty(sum.clone(std::list<VornExpressionTree*>()));
    EXPECT_EQ(printed(*empty), "(null) + (null)");
    const std::unique_ptr<IntSum> single(sum.clone({constant<VornInt>(5)}));
    EXPECT_EQ(printed(*single), "5 + (null)");
    const std::unique_ptr<IntSum> triple(
        sum.clone({constant<VornInt>(5), new Probe<VornInt>("middle", 6, events), constant<VornInt>(7)}));
    EXPECT_EQ(printed(*triple), "5 + 7");
    EXPECT_EQ(events, (Events{"middle deleted"}));
    const Negation negation(constant<VornBool>(true));
    EXPECT_EQ(printed(*std::unique_ptr<Negation>(negation.clone(std::list<VornExpressionTree*>()))), "not (null)");
}

TEST(MissingOperand, IsPrintedClonedVisitedAndDestroyedWithoutHarm) {
    const Conjunction conjunction(nullptr, constant<VornBool>(true));
    EXPECT_EQ(printed(conjunction), "(null) and 1");
    const std::unique_ptr<Conjunction> copy(conjunction.clone());
    EXPECT_EQ(printed(*copy), "(null) and 1");
    LastVisited visitor;
    copy->accept(&visitor);
    ASSERT_NE(visitor.binary, nullptr);
    EXPECT_EQ(visitor.binary->getLeftTree(), nullptr);
    EXPECT_NE(visitor.binary->getRightTree(), nullptr);
    EXPECT_THROW(static_cast<void>(copy->evaluateDirect()), missing_operand);
    EXPECT_THROW(copy->evaluationResult(), missing_operand);
}

TEST(MissingOperand, IsNotNoticedWhereItIsNotEvaluated) {
    EXPECT_FALSE(Conjunction(constant<VornBool>(false), nullptr).evaluateDirect());
    EXPECT_THROW(static_cast<void>(Conjunction(constant<VornBool>(true), nullptr).evaluateDirect()), missing_operand);
}

TEST(MissingOperand, IsNamedForEveryType) {
    using EnumEquality = TypedBinaryOperator<VornEq, VornBool, VornEnum, VornEnum>;
    using ModeEquality = TypedBinaryOperator<VornNEq, VornBool, VornModeVal, VornModeVal>;
    EXPECT_EQ(missingOperandText(EnumEquality(nullptr, nullptr)),
              "Left operand of '=' (enum) is missing: a name in it did not resolve, or its type was changed");
    EXPECT_EQ(missingOperandText(ModeEquality(constant<VornModeVal>(nullptr), nullptr)),
              "Right operand of '!=' (mode) is missing: a name in it did not resolve, or its type was changed");
}

}  // namespace
}  // namespace vornrun::test
