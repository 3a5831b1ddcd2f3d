// Every structural fault of an expression, with its whole text.

#include <gtest/gtest.h>

#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/ExpressionTest.h"

namespace vornrun::test {
namespace {

const char* const NODE_TYPE_MISSING =
    "Error while parsing: Expression nodes need a node type to determine their data type. (Expected child node "
    "'node_type' missing from '";

struct Fault {
    const char* name;
    Xml element;
    std::string what;
};

class ExpressionFaults : public testing::TestWithParam<Fault> {};

TEST_P(ExpressionFaults, AreReportedInFull) {
    EXPECT_EQ(faultOf([] { parseExpression(GetParam().element); }), GetParam().what);
}

Xml sum() { return binary(6, variable(1, "a"), variable(1, "b"), 1); }
Xml inverse() { return unary(16, variable(1, "a"), 1); }
Xml choice() { return caseOf(1, {tuple(boolean("True"), number(1, "1"))}, number(1, "2")); }
Xml withText(Xml xml, const std::string& name, const std::string& text) {
    xml.first(name).text(text);
    return xml;
}
Xml without(Xml xml, const std::string& name) { return xml.remove(name); }
Xml without(Xml xml, const std::string& parent, const std::string& name) {
    xml.first(parent).remove(name);
    return xml;
}

INSTANTIATE_TEST_SUITE_P(
    ExpressionParser, ExpressionFaults,
    testing::Values(
        Fault{"UnknownKind", element("TernaryOperatorTreeNode", 1),
              "Error while parsing: Unexpected node in epxression tree (Unexpected value:\n\tExpected: An expression "
              "type .\n\tFound: TernaryOperatorTreeNode)"},
        Fault{"NoKind", Xml("e"),
              "Error while parsing: Unexpected node in epxression tree (Unexpected value:\n\tExpected: An expression "
              "type .\n\tFound: )"},
        Fault{"NumberWithoutNodeType", without(number(1, "1"), "node_type"), std::string(NODE_TYPE_MISSING) + "e')"},
        Fault{"VariableWithoutNodeType", without(variable(1, "x"), "node_type"),
              std::string(NODE_TYPE_MISSING) + "e')"},
        Fault{"LeftWithoutNodeType", without(sum(), "left", "node_type"), std::string(NODE_TYPE_MISSING) + "left')"},
        Fault{"RightWithoutNodeType", without(sum(), "right", "node_type"), std::string(NODE_TYPE_MISSING) + "right')"},
        Fault{"OperandWithoutNodeType", without(inverse(), "subexpression", "node_type"),
              std::string(NODE_TYPE_MISSING) + "subexpression')"},
        Fault{"CaseWithoutNodeType", without(choice(), "node_type"), std::string(NODE_TYPE_MISSING) + "e')"},
        Fault{"ConditionWithoutNodeType", without(choice(), "anything", "node_type"),
              std::string(NODE_TYPE_MISSING) + "anything')"},
        Fault{"ValueWithoutNodeType", without(choice(), "whatever", "node_type"),
              std::string(NODE_TYPE_MISSING) + "whatever')"},
        Fault{"DefaultWithoutNodeType", without(choice(), "default_expression", "node_type"),
              std::string(NODE_TYPE_MISSING) + "default_expression')"},
        Fault{"NodeTypeNotANumber", withText(variable(1, "x"), "node_type", "int"),
              "Error while parsing: Node types are encoded as integers. (Unexpected value:\n\tExpected: Any integer "
              "number. .\n\tFound: int)"},
        Fault{"VariableWithoutName", without(variable(1, "x"), "name"),
              "Error while parsing:  (Expected child node 'name' missing from 'e')"},
        Fault{"EnumWithoutName", without(variable(4, "x"), "name"),
              "Error while parsing: Enum type VornEnum needs a name as value. (Expected child node 'name' missing from "
              "'e')"},
        Fault{"ModeWithoutName", without(variable(13, "x"), "name"),
              "Error while parsing: Enum type VornMode needs a name as value. (Expected child node 'name' missing from "
              "'e')"},
        Fault{"BoolWithoutValue", without(boolean("True"), "value"),
              "Error while parsing: Default value for VornBool needs a Boolean value. (Expected child node 'value' "
              "missing from 'e')"},
        Fault{"BoolInSmallLetters", boolean("true"),
              "Error while parsing: Could not parse value type as Boolean. (Unexpected value:\n\tExpected: Either True "
              "or False .\n\tFound: true)"},
        Fault{"IntWithoutNumber", without(number(1, "1"), "number"),
              "Error while parsing: Data type VornInt needs a number as value. (Expected child node 'number' missing "
              "from 'e')"},
        Fault{"IntTooLarge", number(1, "3000000000"),
              "Error while parsing: Could not parse value type as int. (Unexpected value:\n\tExpected: Any integer "
              "number. .\n\tFound: 3000000000)"},
        Fault{"RealWithoutNumber", without(number(2, "1"), "number"),
              "Error while parsing: Data type VornReal needs a number as value. (Expected child node 'number' missing "
              "from 'e')"},
        Fault{"RealNotANumber", number(2, "much"),
              "Error while parsing: Could not parse value type as real number. (Unexpected value:\n\tExpected: Any "
              "number. .\n\tFound: much)"},
        Fault{"ClockWithoutNumber", without(number(5, "1"), "number"),
              "Error while parsing: Data type VornClock needs a number as value. (Expected child node 'number' missing "
              "from 'e')"},
        Fault{"ContinuousWithoutNumber", without(number(6, "1"), "number"),
              "Error while parsing: Data type VornContinuous needs a number as value. (Expected child node 'number' "
              "missing from 'e')"},
        Fault{"UnaryWithoutOperand", without(inverse(), "subexpression"),
              "Error while parsing: Unary subexpression require a subexpression. (Expected child node 'subexpression' "
              "missing from 'e')"},
        Fault{"UnaryWithoutOperator", without(inverse(), "operator"),
              "Error while parsing: Operator type has to be specified. (Expected child node 'operator' missing from "
              "'e')"},
        Fault{"UnaryOperatorNotANumber", withText(inverse(), "operator", "-"),
              "Error while parsing: Operator types are encoded as integers (Unexpected value:\n\tExpected: Any integer "
              "number. .\n\tFound: -)"},
        Fault{"BinaryWithoutLeft", without(sum(), "left"),
              "Error while parsing: Binary subexpression require a left hand side. (Expected child node 'left' missing "
              "from 'e')"},
        Fault{"BinaryWithoutRight", without(sum(), "right"),
              "Error while parsing: Binary subexpressions require a right hand side. (Expected child node 'right' "
              "missing from 'e')"},
        Fault{"BinaryWithoutOperator", without(sum(), "operator"),
              "Error while parsing: Operator type has to be specified. (Expected child node 'operator' missing from "
              "'e')"},
        Fault{"BinaryOperatorNotANumber", withText(sum(), "operator", "+"),
              "Error while parsing: Operator types are encoded as integers (Unexpected value:\n\tExpected: Any integer "
              "number. .\n\tFound: +)"},
        Fault{"CaseWithoutCases", without(choice(), "cases"),
              "Error while parsing: Case expressions require case tuples (Expected child node 'cases' missing from "
              "'e')"},
        Fault{"CaseWithoutDefault", without(choice(), "default_expression"),
              "Error while parsing: Case expressions require default expression (Expected child node "
              "'default_expression' missing from 'e')"},
        Fault{"EmptyTuple", caseOf(1, {Xml("tuple")}, number(1, "1")),
              "Error while parsing:  (Expected child node '(index 0 out of 0)' missing from 'tuple')"},
        Fault{"TupleOfOne", without(choice(), "whatever"),
              "Error while parsing:  (Expected child node '(index 1 out of 1)' missing from 'tuple')"}),
    CaseName());

}  // namespace
}  // namespace vornrun::test
