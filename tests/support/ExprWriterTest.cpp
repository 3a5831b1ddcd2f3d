#include "tests/support/ExprWriter.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vornrun::test {
namespace {

const Var x = var("x", Type::Clock);

TEST(ExprWriter, WritesAComparisonWithItsTypes) {
    EXPECT_EQ((x <= 5.5).xml("guard").toString(),
              "<guard type=\"BinaryOperatorTreeNode\">\n"
              "  <node_type>0</node_type>\n"
              "  <left type=\"IdentifierTreeNode\">\n"
              "    <node_type>5</node_type>\n"
              "    <name>x</name>\n"
              "  </left>\n"
              "  <right type=\"NumberTreeNode\">\n"
              "    <node_type>2</node_type>\n"
              "    <number>5.5</number>\n"
              "  </right>\n"
              "  <operator>1</operator>\n"
              "</guard>\n");
}

TEST(ExprWriter, WritesUnaryAndCaseExpressions) {
    EXPECT_EQ(caseOf({{true, 1}}, -Expr(2)).xml("e").toString(),
              "<e type=\"CaseExpressionTreeNode\">\n"
              "  <node_type>1</node_type>\n"
              "  <cases>\n"
              "    <tuple>\n"
              "      <condition type=\"BooleanTreeNode\">\n"
              "        <node_type>0</node_type>\n"
              "        <value>True</value>\n"
              "      </condition>\n"
              "      <result type=\"NumberTreeNode\">\n"
              "        <node_type>1</node_type>\n"
              "        <number>1</number>\n"
              "      </result>\n"
              "    </tuple>\n"
              "  </cases>\n"
              "  <default_expression type=\"UnaryOperatorTreeNode\">\n"
              "    <node_type>1</node_type>\n"
              "    <subexpression type=\"NumberTreeNode\">\n"
              "      <node_type>1</node_type>\n"
              "      <number>2</number>\n"
              "    </subexpression>\n"
              "    <operator>16</operator>\n"
              "  </default_expression>\n"
              "</e>\n");
}

struct LeafCase {
    const char* name;
    Expr expression;
    const char* type;
    const char* nodeType;
    const char* child;
    const char* text;
};

class Leaves : public testing::TestWithParam<LeafCase> {};

TEST_P(Leaves, AreWrittenByTheirTypes) {
    const LeafCase& leaf = GetParam();
    const std::string open = std::string("<e type=\"") + leaf.type + "\">\n  <node_type>" + leaf.nodeType;
    const std::string child = std::string("  <") + leaf.child + ">" + leaf.text + "</" + leaf.child + ">\n";
    EXPECT_EQ(leaf.expression.xml("e").toString(), open + "</node_type>\n" + child + "</e>\n");
    EXPECT_EQ(leaf.expression.valueXml("v").toString(), "<v>\n" + child + "</v>\n");
}

INSTANTIATE_TEST_SUITE_P(
    ExprWriter, Leaves,
    testing::Values(LeafCase{"Bool", false, "BooleanTreeNode", "0", "value", "False"},
                    LeafCase{"Int", -7, "NumberTreeNode", "1", "number", "-7"},
                    LeafCase{"Real", 0.25, "NumberTreeNode", "2", "number", "0.25"},
                    LeafCase{"ClockNumber", number(2.0, Type::Clock), "NumberTreeNode", "5", "number", "2"},
                    LeafCase{"EnumLiteral", enumLiteral("red"), "IdentifierTreeNode", "4", "name", "red"},
                    LeafCase{"ModeLiteral", modeLiteral("on"), "IdentifierTreeNode", "13", "name", "on"},
                    LeafCase{"BoolVariable", var("b", Type::Bool), "IdentifierTreeNode", "0", "name", "b"},
                    LeafCase{"EnumVariable", var("s.e", Type::Enum), "IdentifierTreeNode", "3", "name", "s.e"},
                    LeafCase{"Continuous", var("c", Type::Continuous), "IdentifierTreeNode", "6", "name", "c"},
                    LeafCase{"Interval", var("i", Type::Interval), "IdentifierTreeNode", "16", "name", "i"},
                    LeafCase{"OwnMode", modeOf(), "IdentifierTreeNode", "12", "name", "mode"},
                    LeafCase{"SubMode", modeOf("pump"), "IdentifierTreeNode", "12", "name", "pump.mode"},
                    LeafCase{"Error", errorOf("pump"), "IdentifierTreeNode", "14", "name", "pump.error"},
                    LeafCase{"OtherNodeType", var("b", Type::Bool).withNodeType(7), "IdentifierTreeNode", "7", "name",
                             "b"}),
    [](const auto& row) { return std::string(row.param.name); });

struct TypeCase {
    const char* name;
    Expr expression;
    Type type;
};

class Types : public testing::TestWithParam<TypeCase> {};

TEST_P(Types, FollowTheRules) {
    EXPECT_EQ(GetParam().expression.type(), GetParam().type);
    EXPECT_EQ(GetParam().expression.node().nodeType, nodeTypeOf(GetParam().type));
}

INSTANTIATE_TEST_SUITE_P(
    ExprWriter, Types,
    testing::Values(TypeCase{"IntPlusReal", Expr(1) + 2.0, Type::Real},
                    TypeCase{"ClockTimesReal", x * 2.0, Type::Clock},
                    TypeCase{"RealMinusContinuous", Expr(2.0) - var("c", Type::Continuous), Type::Continuous},
                    TypeCase{"IntervalModInt", var("i", Type::Interval) % 2, Type::Int},
                    TypeCase{"Implication", imp(true, false), Type::Bool}, TypeCase{"Equality", x == 1, Type::Bool},
                    TypeCase{"Negation", !(x != 1), Type::Bool}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ExprWriter, GivesARawElementTheNameOfItsPlace) {
    EXPECT_EQ(rawExpr(Xml("any").attribute("objref", "1"), Type::Bool).xml("guard").toString(),
              "<guard objref=\"1\"/>\n");
}

TEST(ExprWriter, WritesNumbersThatReadBackTheSame) {
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(std::stod(numberText(1.0 / 3.0)), 1.0 / 3.0);
}

TEST(ExprWriter, RefusesToDeclareAMode) { EXPECT_THROW(dataTypeName(Type::Mode), std::logic_error); }

}  // namespace
}  // namespace vornrun::test
