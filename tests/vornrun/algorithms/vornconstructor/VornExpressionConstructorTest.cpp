#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/spirit/home/support/detail/hold_any.hpp>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/TypeRuleTables.h"

namespace vornrun::test {
namespace {

using boost::spirit::hold_any;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* LOGGER = "root.exprconstr";

/// A constant of the type's default value, so that no division is by a number other than zero; it is never evaluated.
Tree anyValue(unsigned int type) {
    return Tree(withTagClass(static_cast<VornDataTypeTag>(type),
                             []<class T>() -> VornExpressionTree* { return constant<T>(T::DefaultValue); }));
}

std::string nameOf(unsigned int type) {
    return withTagClass(static_cast<VornDataTypeTag>(type), []<class T>() { return std::string(T::op); });
}

/// Builds `left Op right` of all 64 pairs of types and compares each with the matrix. Returns the number of nodes.
template <class Op>
int buildAllPairs(const TypeMatrix& results) {
    int nodes = 0;
    for (unsigned int i = 0; i < VORN_DATA_TYPE_COUNT; ++i) {
        for (unsigned int j = 0; j < VORN_DATA_TYPE_COUNT; ++j) {
            const std::string text = nameOf(i) + " " + std::string(Op::text) + " " + nameOf(j);
            SCOPED_TRACE(text);
            CapturedLog log;
            Tree left = anyValue(i);
            Tree right = anyValue(j);
            const Tree node(VornExpressionConstructor::expressionTree<Op>(left.get(), right.get()));
            if (results[i][j] == '-') {
                EXPECT_EQ(node, nullptr);
                EXPECT_THAT(log.records(),
                            ElementsAre(LogRecord{LogLevel::Error, LOGGER, "Unsupported operator types: " + text}));
                continue;
            }
            ++nodes;
            EXPECT_THAT(log.records(), IsEmpty());
            if (node == nullptr) {
                ADD_FAILURE() << "no node";
                continue;
            }
            EXPECT_EQ(TYPE_LETTERS[static_cast<std::size_t>(node->type())], results[i][j]);
            LastVisited visitor;
            node->accept(&visitor);
            EXPECT_EQ(visitor.binary->getLeftTree(), left.release());
            EXPECT_EQ(visitor.binary->getRightTree(), right.release());
        }
    }
    return nodes;
}

TEST(VornExpressionConstructor, BuildsExactlyThe264LegalNodesOutOf960) {
    const int nodes =
        std::apply([]<class... Op>(const OperatorRule<Op>&... rule) { return (buildAllPairs<Op>(rule.results) + ...); },
                   BINARY_RULES);
    EXPECT_EQ(nodes, 264);
}

template <class Op>
void buildAllOperands(std::string_view results) {
    for (unsigned int i = 0; i < VORN_DATA_TYPE_COUNT; ++i) {
        SCOPED_TRACE(nameOf(i));
        CapturedLog log;
        Tree operand = anyValue(i);
        const Tree node(VornExpressionConstructor::expressionTree<Op>(operand.get()));
        if (results[i] == '-') {
            EXPECT_EQ(node, nullptr);
            EXPECT_THAT(log.records(), ElementsAre(LogRecord{
                                           LogLevel::Error, LOGGER,
                                           "Unsupported operator types: " + nameOf(i) + " " + std::string(Op::text)}));
            continue;
        }
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(TYPE_LETTERS[static_cast<std::size_t>(node->type())], results[i]);
        LastVisited visitor;
        node->accept(&visitor);
        EXPECT_EQ(visitor.unary->getSubTree(), operand.release());
    }
}

TEST(VornExpressionConstructor, BuildsNotOverBoolsOnly) { buildAllOperands<VornNot>(NOT_RESULTS); }

TEST(VornExpressionConstructor, BuildsInvertOverNumbersOnly) { buildAllOperands<VornInvert>(INVERT_RESULTS); }

TEST(VornExpressionConstructor, RealAndIntNamesTheTypesInTheirOrder) {
    CapturedLog log;
    const TypedVornValue<VornReal> real(1.5);
    const TypedVornValue<VornInt> integer(1);
    const Tree left(real.clone());
    const Tree right(integer.clone());
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornAnd>(left.get(), right.get()), nullptr);
    EXPECT_THAT(log.texts(LOGGER), ElementsAre("Unsupported operator types: real and int"));
}

TEST(VornExpressionConstructor, RealModIntIsIllegal) {
    CapturedLog log;
    const Tree left(constant<VornReal>(1.5));
    const Tree right(constant<VornInt>(1));
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornMod>(left.get(), right.get()), nullptr);
    EXPECT_THAT(log.texts(LOGGER), ElementsAre("Unsupported operator types: real mod int"));
}

TEST(VornExpressionConstructor, NotOnAnIntLogsATextEndingInIntNot) {
    CapturedLog log;
    const Tree operand(constant<VornInt>(1));
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornNot>(operand.get()), nullptr);
    EXPECT_THAT(log.texts(LOGGER), ElementsAre("Unsupported operator types: int not"));
}

TEST(VornExpressionConstructor, ReturnsNullForAnIllegalPairEvenWhenErrorsAreNotLogged) {
    CapturedLog log(LogLevel::Fatal);
    const Tree left(constant<VornBool>(true));
    const Tree right(constant<VornInt>(1));
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornPlus>(left.get(), right.get()), nullptr);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(VornExpressionConstructor, LeavesTheOperandsOfAnIllegalPairToTheCaller) {
    CapturedLog log;
    std::vector<std::string> events;
    const Tree left(new Probe<VornBool>("left", true, events));
    const Tree right(new Probe<VornInt>("right", 1, events));
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornPlus>(left.get(), right.get()), nullptr);
    EXPECT_THAT(events, IsEmpty());
}

TEST(VornExpressionConstructor, FoldsNothingAndConvertsNothing) {
    const Tree sum = binary("+", constant<VornInt>(1), constant<VornReal>(2));
    EXPECT_EQ(printed(*sum), "1 + 2");
    LastVisited visitor;
    sum->accept(&visitor);
    EXPECT_EQ(visitor.kind, "binary");
    EXPECT_EQ(visitor.binary->getLeftTree()->type(), VornDataTypeTag::VornInt);
    EXPECT_EQ(visitor.binary->getRightTree()->type(), VornDataTypeTag::VornReal);
}

TEST(VornExpressionConstructor, TakesOperatorsAndVariablesAsOperands) {
    const Tree inner(VornExpressionConstructor::expressionTree<VornMinus>(
        VornExpressionConstructor::expressionVariable(VornDataTypeTag::VornClock, "timer"),
        VornExpressionConstructor::expressionVariable(VornDataTypeTag::VornClock, "sub.timer")));
    EXPECT_EQ(inner->type(), VornDataTypeTag::VornClock);
    EXPECT_EQ(printed(*inner), "timer - sub.timer");
}

TEST(VornExpressionConstructor, TakesALeftOperandOfKnownType) {
    TypedVornExpressionTree<VornInt>* const left = constant<VornInt>(7);
    const Tree node(VornExpressionConstructor::expressionTree<VornDivide, VornInt>(left, constant<VornInt>(2)));
    EXPECT_EQ(valueOf<VornInt>(node), 3);
}

struct NoSuchType final : VornExpressionTree {
    NoSuchType* clone() const override { return new NoSuchType; }
    NoSuchType* clone(const std::list<VornExpressionTree*>&) const override { return clone(); }
    VornValue* evaluationResult() const override { return nullptr; }
    VornExpressionTree* accept(ExpressionTreeVisitor*) const override { return nullptr; }
    VornDataTypeTag type() const override { return static_cast<VornDataTypeTag>(8); }
    void printExpression(std::ostream&) const override {}
};

TEST(VornExpressionConstructor, AnOperandOfATypeBeyondTheEightGivesNullWithoutAWord) {
    CapturedLog log;
    NoSuchType odd;
    TypedVornValue<VornInt> integer(1);
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornPlus>(&odd, &integer), nullptr);
    EXPECT_EQ((VornExpressionConstructor::expressionTree<VornPlus>(static_cast<VornExpressionTree*>(&integer), &odd)),
              nullptr);
    EXPECT_EQ(VornExpressionConstructor::expressionTree<VornNot>(&odd), nullptr);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(VornExpressionConstructor, MakesConstantsOfEveryTypeThatAnAnyCanHold) {
    const auto made = [](VornDataTypeTag tag, const hold_any& value) {
        return Tree(VornExpressionConstructor::expressionTree(tag, value));
    };
    EXPECT_TRUE(valueOf<VornBool>(made(VornDataTypeTag::VornBool, hold_any(true))));
    EXPECT_EQ(valueOf<VornReal>(made(VornDataTypeTag::VornReal, hold_any(1.5))), 1.5);
    EXPECT_EQ(valueOf<VornInt>(made(VornDataTypeTag::VornInt, hold_any(5L))), 5);
    EXPECT_EQ(valueOf<VornContinuous>(made(VornDataTypeTag::VornContinuous, hold_any(2.5))), 2.5);
    EXPECT_EQ(valueOf<VornClock>(made(VornDataTypeTag::VornClock, hold_any(0.5))), 0.5);
    EXPECT_EQ(valueOf<VornEnum>(made(VornDataTypeTag::VornEnum, hold_any(std::string("red")))), "red");
    EXPECT_EQ(valueOf<VornInterval>(made(VornDataTypeTag::VornInterval, hold_any(6L))), 6);
}

TEST(VornExpressionConstructor, AConstantNeedsExactlyTheRepresentationOfItsType) {
    using boost::spirit::bad_any_cast;
    const auto make = [](VornDataTypeTag tag, const hold_any& value) {
        const Tree made(VornExpressionConstructor::expressionTree(tag, value));
    };
    EXPECT_THROW(make(VornDataTypeTag::VornInt, hold_any(5)), bad_any_cast) << "int is not long";
    EXPECT_THROW(make(VornDataTypeTag::VornReal, hold_any(5L)), bad_any_cast);
    EXPECT_THROW(make(VornDataTypeTag::VornReal, hold_any(1.5F)), bad_any_cast);
    EXPECT_THROW(make(VornDataTypeTag::VornBool, hold_any(1L)), bad_any_cast);
    EXPECT_THROW(make(VornDataTypeTag::VornEnum, hold_any(true)), bad_any_cast);
    EXPECT_THROW(make(VornDataTypeTag::VornMode, hold_any(0L)), bad_any_cast);
    EXPECT_THROW(make(VornDataTypeTag::VornInt, hold_any()), bad_any_cast) << "an empty one holds nothing";
}

TEST(VornExpressionConstructor, ATagBeyondTheEightGivesNoConstantAndNoVariable) {
    const auto tag = static_cast<VornDataTypeTag>(8);
    EXPECT_EQ(VornExpressionConstructor::expressionTree(tag, hold_any(true)), nullptr);
    EXPECT_EQ(VornExpressionConstructor::expressionVariable(tag, "x"), nullptr);
}

TEST(VornExpressionConstructor, MakesVariablesOfEveryType) {
    for (unsigned int i = 0; i < VORN_DATA_TYPE_COUNT; ++i) {
        const auto tag = static_cast<VornDataTypeTag>(i);
        const std::unique_ptr<VornVariable> variable(VornExpressionConstructor::expressionVariable(tag, "sub.x"));
        ASSERT_NE(variable, nullptr);
        EXPECT_EQ(variable->type(), tag);
        EXPECT_EQ(variable->subComponent(), "sub");
        EXPECT_EQ(variable->name(), "x");
    }
}

}  // namespace
}  // namespace vornrun::test
