#include "vornrun/algorithms/parser/ExpressionParser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <xercesc/dom/DOMElement.hpp>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/ExpressionTest.h"
#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun::test {
namespace {

using Tag = VornDataTypeTag;
using Tree = std::unique_ptr<VornExpressionTree>;

template <class T>
typename T::AssociatedDataType valueOf(const Tree& tree) {
    return dynamic_cast<const TypedVornExpressionTree<T>&>(*tree).evaluateDirect();
}

struct NodeType {
    int number;
    Tag tag;
    bool isConstant;
};

TEST(NodeTypes, TellTheTypeOfAnIdentifierAndConstantsFromVariables) {
    for (const auto& [number, tag, isConstant] :
         {NodeType{0, Tag::VornBool, false}, NodeType{1, Tag::VornInt, false}, NodeType{2, Tag::VornReal, false},
          NodeType{3, Tag::VornEnum, false}, NodeType{4, Tag::VornEnum, true}, NodeType{5, Tag::VornClock, false},
          NodeType{6, Tag::VornContinuous, false}, NodeType{7, Tag::VornBool, false}, NodeType{8, Tag::VornBool, false},
          NodeType{12, Tag::VornMode, false}, NodeType{13, Tag::VornMode, true}, NodeType{15, Tag::VornMode, true},
          NodeType{16, Tag::VornInterval, false}, NodeType{19, Tag::VornInt, false},
          NodeType{20, Tag::VornReal, false}}) {
        SCOPED_TRACE(number);
        const ExpressionDocument document(variable(number, "x"));
        const Tree tree = document.parse();
        ASSERT_NE(tree, nullptr);
        EXPECT_EQ(tree->type(), tag);
        EXPECT_EQ(dynamic_cast<const VornValue*>(tree.get()) != nullptr, isConstant);
        EXPECT_EQ(dynamic_cast<const VornVariable*>(tree.get()) != nullptr, !isConstant);
        EXPECT_EQ(document.parser().getNodeTypeForExpressionNode(document.root()), number);
        EXPECT_EQ(document.parser().getDataTypeForExpressionLeaves(document.root()), tag);
    }
}

TEST(NodeTypes, WithoutADataTypeAreRefused) {
    for (const int number : {9, 10, 11}) {
        const std::string what =
            "Error while parsing:  (Unexpected value:\n\tExpected: A nodetype encoding a datatype .\n\tFound: Another "
            "nodetype: " +
            std::to_string(number) + ")";
        const ExpressionDocument document(variable(number, "x"));
        EXPECT_EQ(faultOf([&] { document.parse(); }), what);
        EXPECT_EQ(faultOf([&] { document.parser().parseVornValue(document.root()); }), what);
        EXPECT_EQ(faultOf([&] { document.parser().getDataTypeForExpressionLeaves(document.root()); }), what);
        EXPECT_EQ(document.parser().getNodeTypeForExpressionNode(document.root()), number) << "it is a node type";
    }
}

TEST(NodeTypes, OutsideTheEncodingAreRefusedInOtherWords) {
    for (const int number : {17, 18, 21, -1, 2147483647}) {
        const ExpressionDocument document(variable(number, "x"));
        const std::string what =
            "Error while parsing:  (Unexpected value:\n\tExpected: A nodetype integer: {0,..16, 19, 20} .\n\tFound: " +
            std::to_string(number) + ")";
        EXPECT_EQ(faultOf([&] { document.parse(); }), what);
        EXPECT_EQ(faultOf([&] { document.parser().parseIdentifierNode(document.root()); }), what);
    }
}

TEST(Identifiers, OfAVariableAreReferences) {
    const ExpressionDocument document(variable(1, "sub.x"));
    const std::unique_ptr<VornVariable> result(document.parser().parseIdentifierNode(document.root()));
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->subComponent(), "sub");
    EXPECT_EQ(result->name(), "x");
    EXPECT_EQ(result->type(), Tag::VornInt);
}

TEST(Identifiers, OfAModeAreAConstantUnder13And15AndAVariableUnder12) {
    for (const int number : {13, 15}) {
        const Tree constant = parseExpression(variable(number, "failed"));
        const RealisedMode* const mode = valueOf<VornModeVal>(constant);
        ASSERT_NE(mode, nullptr);
        EXPECT_EQ(mode->id(), RealisedMode::DUMMY_ID);
        EXPECT_EQ(mode->name(), "failed");
        EXPECT_TRUE(dynamic_cast<const TypedVornValue<VornModeVal>&>(*constant).owned());
    }
    const Tree variableTree = parseExpression(variable(12, "sub.mode"));
    EXPECT_NE(dynamic_cast<const TypedVornVariable<VornModeVal>*>(variableTree.get()), nullptr);
    EXPECT_EQ(printed(variableTree), "sub.mode");
}

TEST(Identifiers, OfAConstantKindAreAVariableAllTheSameOnTheLeftOfAnAssignment) {
    const ExpressionDocument document(variable(13, "m"));
    const std::unique_ptr<VornVariable> result(document.parser().parseIdentifierNode(document.root()));
    EXPECT_EQ(result->type(), Tag::VornMode);
    EXPECT_EQ(result->name(), "m");
}

struct ErrorName {
    const char* name;
    const char* written;
    const char* read;
};

TEST(ErrorStates, AreTheModeOfTheirComponent) {
    for (const auto& [name, written, read] :
         {ErrorName{"Plain", "sub.error", "sub.mode"}, ErrorName{"Deep", "a.b.error", "a.b.mode"},
          ErrorName{"WhatFollowsIsDropped", "sub.error.x", "sub.mode"},
          ErrorName{"ALongerWord", "sub.errors", "sub.mode"}, ErrorName{"TheFirstCounts", "a.error.error", "a.mode"},
          ErrorName{"NothingBefore", ".error", ".mode"}}) {
        const Tree tree = parseExpression(variable(14, written));
        EXPECT_EQ(tree->type(), Tag::VornMode) << name;
        EXPECT_EQ(dynamic_cast<const VornVariable&>(*tree).text(), read) << name;
    }
    const Tree tree = parseExpression(variable(14, "sub.error"));
    EXPECT_EQ(dynamic_cast<const VornVariable&>(*tree).subComponent(), "sub");
    EXPECT_EQ(dynamic_cast<const VornVariable&>(*tree).name(), "mode");
}

TEST(ErrorStates, AreRefusedUnderAnotherName) {
    for (const char* const name : {"sub.x", "error", "sub.Error", ""})
        EXPECT_EQ(faultOf([&] { parseExpression(variable(14, name)); }),
                  "Error while parsing: Error field did not contain expected .error specified (Xml encoded invalid "
                  "vorn.)");
}

TEST(Constants, HaveTheValueAndTheTypeThatTheFileSays) {
    EXPECT_TRUE(valueOf<VornBool>(parseExpression(boolean("True"))));
    EXPECT_FALSE(valueOf<VornBool>(parseExpression(boolean("False", 7))));
    EXPECT_EQ(valueOf<VornInt>(parseExpression(number(1, "-2147483648"))), -2147483648L);
    EXPECT_EQ(valueOf<VornInt>(parseExpression(number(19, "7"))), 7);
    EXPECT_EQ(valueOf<VornReal>(parseExpression(number(2, "1.5"))), 1.5);
    EXPECT_EQ(valueOf<VornReal>(parseExpression(number(20, "3"))), 3.0);
    EXPECT_EQ(valueOf<VornClock>(parseExpression(number(5, "0.25"))), 0.25);
    EXPECT_EQ(valueOf<VornContinuous>(parseExpression(number(6, "-1e3"))), -1000.0);
    EXPECT_TRUE(std::isinf(valueOf<VornReal>(parseExpression(number(2, "inf")))));
    EXPECT_EQ(valueOf<VornEnum>(parseExpression(variable(4, "red"))), "red");
}

TEST(Constants, AreTypedByTheirNodeTypeRatherThanByTheirKind) {
    // "NumberTreeNode" and "BooleanTreeNode" read alike.
    EXPECT_TRUE(valueOf<VornBool>(parseExpression(element("NumberTreeNode", 0).add(Xml("value", "True")))));
    EXPECT_EQ(valueOf<VornInt>(parseExpression(element("BooleanTreeNode", 1).add(Xml("number", "4")))), 4);
    EXPECT_EQ(valueOf<VornEnum>(parseExpression(element("NumberTreeNode", 3).add(Xml("name", "red")))), "red");
}

TEST(Constants, OfAGivenTypeNeedNoNodeType) {
    const ExpressionDocument document(Xml("default_value").add(Xml("number", "2.5")));
    const std::unique_ptr<VornValue> value(
        document.parser().parseVornValueOfGivenType(document.root(), Tag::VornClock));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->type(), Tag::VornClock);
}

TEST(Constants, OfAnIntervalCannotBeWritten) {
    const CapturedLog log;
    EXPECT_EQ(parseExpression(number(16, "5")), nullptr);
    const ExpressionDocument document(Xml("default_value").add(Xml("number", "5")));
    EXPECT_EQ(document.parser().parseVornValueOfGivenType(document.root(), Tag::VornInterval), nullptr);
    const LogRecord record{LogLevel::Error, "root.vornxml", "Unable to parse Vorn value of type VornInterval"};
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{record, record}));
}

TEST(Trajectories, StandForTrueWhateverTheyHold) {
    const Tree tree = parseExpression(Xml("e").attribute("type", "TrajectoryEquationTreeNode").add(Xml("junk")));
    EXPECT_TRUE(valueOf<VornBool>(tree));
    EXPECT_EQ(tree->type(), Tag::VornBool);
}

struct Operation {
    int number;
    int left;
    int right;
    const char* text;
    Tag result;
};

TEST(BinaryOperators, AreEncodedByNumber) {
    for (const auto& [operation, left, right, text, result] :
         {Operation{0, 1, 2, "<", Tag::VornBool}, Operation{1, 1, 1, "<=", Tag::VornBool},
          Operation{2, 5, 2, ">", Tag::VornBool}, Operation{3, 6, 1, ">=", Tag::VornBool},
          Operation{4, 3, 3, "=", Tag::VornBool}, Operation{5, 12, 12, "!=", Tag::VornBool},
          Operation{6, 1, 2, "+", Tag::VornReal}, Operation{7, 5, 5, "-", Tag::VornClock},
          Operation{8, 16, 16, "*", Tag::VornInterval}, Operation{9, 1, 1, "/", Tag::VornInt},
          Operation{10, 0, 0, "and", Tag::VornBool}, Operation{12, 0, 7, "or", Tag::VornBool},
          Operation{17, 0, 0, "iff", Tag::VornBool}, Operation{18, 8, 0, "imp", Tag::VornBool},
          Operation{19, 16, 1, "mod", Tag::VornInt}}) {
        const CapturedLog log;
        const Tree tree = parseExpression(binary(operation, variable(left, "a"), variable(right, "b")));
        ASSERT_NE(tree, nullptr) << operation;
        EXPECT_EQ(printed(tree), std::string("a ") + text + " b");
        EXPECT_EQ(tree->type(), result) << operation;
        EXPECT_TRUE(log.records().empty()) << operation;
    }
}

TEST(BinaryOperators, OfNumbersThatNameNoneAreNullWithoutAWord) {
    const CapturedLog log(LogLevel::Trace);
    for (const int operation : {11, 13, 14, 15, 16})
        EXPECT_EQ(parseExpression(binary(operation, variable(0, "a"), variable(0, "b"))), nullptr) << operation;
    EXPECT_TRUE(log.records().empty());
}

TEST(BinaryOperators, OfAnIllegalPairAreNullWithALine) {
    const CapturedLog log;
    EXPECT_EQ(parseExpression(binary(10, variable(2, "a"), variable(1, "b"))), nullptr);
    EXPECT_EQ(
        log.records(),
        (std::vector<LogRecord>{{LogLevel::Error, "root.exprconstr", "Unsupported operator types: real and int"}}));
}

TEST(BinaryOperators, IgnoreTheirOwnDeclaredType) {
    const CapturedLog log;
    // Neither compared with the result nor looked at.
    EXPECT_EQ(printed(parseExpression(binary(6, variable(1, "a"), variable(1, "b"), 9))), "a + b");
    EXPECT_EQ(printed(parseExpression(
                  binary(6, variable(1, "a"), variable(1, "b")).remove("node_type").add(Xml("node_type", "99")))),
              "a + b");
    EXPECT_TRUE(log.records().empty());
}

TEST(UnaryOperators, AreNotAndInvert) {
    const CapturedLog log;
    EXPECT_EQ(parseExpression(unary(15, variable(0, "a")))->type(), Tag::VornBool);
    EXPECT_EQ(parseExpression(unary(16, variable(5, "a")))->type(), Tag::VornClock);
    EXPECT_FALSE(valueOf<VornBool>(parseExpression(unary(15, boolean("True")))));
    EXPECT_EQ(valueOf<VornInt>(parseExpression(unary(16, number(1, "5")))), -5);
    for (const int operation : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 17, 18, 19})
        EXPECT_EQ(parseExpression(unary(operation, variable(0, "a"))), nullptr) << operation;
    EXPECT_TRUE(log.records().empty()) << "any other operator is null without a word";
}

TEST(UnaryOperators, OfAnIllegalOperandAreNullWithALine) {
    const CapturedLog log;
    EXPECT_EQ(parseExpression(unary(15, variable(1, "a"))), nullptr);
    EXPECT_EQ(parseExpression(unary(16, variable(0, "a"))), nullptr);
    EXPECT_EQ(log.textsFrom(LogLevel::Error),
              (std::vector<std::string>{"Unsupported operator types: int not", "Unsupported operator types: bool -"}));
}

TEST(OperatorNumbers, GoFrom0To19) {
    EXPECT_EQ(parser::parsedIntToOperatorType(0), parser::OperatorType::Lt);
    EXPECT_EQ(parser::parsedIntToOperatorType(19), parser::OperatorType::Mod);
    EXPECT_EQ(static_cast<int>(parser::parsedIntToOperatorType(13)), 13);
    for (const int number : {-1, 20, 2147483647})
        EXPECT_EQ(faultOf([&] { parser::parsedIntToOperatorType(number); }),
                  "Error while parsing:  (Unexpected value:\n\tExpected: A value for an operatortype, i.e., anything "
                  "between 1 and 19. .\n\tFound: " +
                      std::to_string(number) + ")");
    EXPECT_NE(faultOf([&] { parseExpression(binary(20, variable(0, "a"), variable(0, "b"))); }), "no fault");
    EXPECT_NE(faultOf([&] { parseExpression(unary(20, variable(0, "a"))); }), "no fault");
}

TEST(OperatorNumbers, AreReadAfterTheOperands) {
    // The fault of the operand is reported first, also when the operator is missing or wrong.
    const std::string fault =
        "Error while parsing: Expression nodes need a node type to determine their data type. (Expected child node "
        "'node_type' missing from 'left')";
    Xml broken = binary(6, variable(1, "a"), variable(1, "b"));
    broken.first("right").remove("name");
    broken.remove("operator");
    EXPECT_EQ(faultOf([&] { parseExpression(broken); }),
              "Error while parsing:  (Expected child node 'name' missing from 'right')");
    Xml nested = binary(6, binary(99, variable(1, "a").remove("node_type"), variable(1, "b")), variable(1, "c"));
    EXPECT_EQ(faultOf([&] { parseExpression(nested.remove("operator")); }), fault);
    // Operands that failed without an exception do not hide it.
    const CapturedLog log;
    EXPECT_EQ(
        faultOf([&] { parseExpression(binary(99, number(16, "1"), number(16, "2"))); }),
        "Error while parsing:  (Unexpected value:\n\tExpected: A value for an operatortype, i.e., anything between "
        "1 and 19. .\n\tFound: 99)");
    EXPECT_EQ(log.records().size(), 2U) << "both operands were parsed";
}

TEST(FailedOperands, ClimbWithALineAtEachLevel) {
    const CapturedLog log;
    EXPECT_EQ(parseExpression(binary(10, unary(15, binary(10, number(16, "1"), variable(0, "a"))), variable(0, "b"))),
              nullptr);
    EXPECT_EQ(log.texts("root.vornxml"),
              (std::vector<std::string>{"Unable to parse Vorn value of type VornInterval",
                                        "Parsing binary left subtree incomplete!", "Parsing unary subtree incomplete!",
                                        "Parsing binary left subtree incomplete!"}));
}

TEST(FailedOperands, OnTheRightAreNamedWhenTheLeftIsSound) {
    const CapturedLog log;
    EXPECT_EQ(parseExpression(binary(6, variable(1, "a"), number(16, "1"))), nullptr);
    EXPECT_EQ(parseExpression(binary(6, number(16, "1"), number(16, "1"))), nullptr);
    const std::string unable = "Unable to parse Vorn value of type VornInterval";
    EXPECT_EQ(log.textsFrom(LogLevel::Error),
              (std::vector<std::string>{unable, "Parsing binary right subtree incomplete!", unable, unable,
                                        "Parsing binary left subtree incomplete!"}));
}

TEST(DeclaredTypesOfOperands, AreComparedWithWhatIsComputed) {
    const CapturedLog log;
    // a < b is a bool, declared as an int; true is a bool, declared as a real.
    const Xml left = binary(0, variable(1, "a"), variable(1, "b"), 1);
    Xml right = element("TrajectoryEquationTreeNode", 2);
    EXPECT_NE(parseExpression(binary(10, left, right)), nullptr) << "it is only a warning";
    EXPECT_NE(parseExpression(unary(15, left)), nullptr);
    const auto warning = [](const char* expected) {
        return LogRecord{
            LogLevel::Warn, "root.vornxml",
            std::string("Calculated expression tree type VornBool does not match expect value ") + expected};
    };
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{warning("VornInt"), warning("VornReal"), warning("VornInt")}));
}

TEST(Cases, SelectTheFirstThatHolds) {
    const Tree tree = parseExpression(
        caseOf(1, {tuple(boolean("False"), number(1, "1")), tuple(boolean("True"), number(1, "2"))}, number(1, "3")));
    EXPECT_EQ(valueOf<VornInt>(tree), 2);
    EXPECT_EQ(dynamic_cast<const CaseOperator&>(*tree).getCases().size(), 2U);
}

TEST(Cases, WithoutPairsAreTheirDefault) {
    EXPECT_EQ(valueOf<VornInt>(parseExpression(caseOf(1, {}, number(1, "3")))), 3);
}

TEST(Cases, SkipWhatIsNoTuple) {
    const Tree tree = parseExpression(
        caseOf(1, {Xml("other"), tuple(boolean("True"), number(1, "2")), Xml("other")}, number(1, "3")));
    EXPECT_EQ(valueOf<VornInt>(tree), 2);
}

TEST(Cases, HaveTheDeclaredTypeWhateverTheirBranchesAre) {
    const CapturedLog log;
    const Tree tree = parseExpression(caseOf(2, {tuple(boolean("True"), number(1, "2"))}, number(1, "3")));
    EXPECT_EQ(tree->type(), Tag::VornReal);
    EXPECT_EQ(valueOf<VornReal>(tree), 2.0);
    EXPECT_TRUE(log.records().empty());
    for (const NodeType& type : {NodeType{0, Tag::VornBool, false}, NodeType{3, Tag::VornEnum, false},
                                 NodeType{12, Tag::VornMode, false}, NodeType{16, Tag::VornInterval, false},
                                 NodeType{5, Tag::VornClock, false}, NodeType{6, Tag::VornContinuous, false}})
        EXPECT_EQ(parseExpression(caseOf(type.number, {}, variable(type.number, "x")))->type(), type.tag);
}

TEST(Cases, WarnOfBranchesThatAreNotWhatTheyDeclare) {
    const CapturedLog log;
    const Xml lie = binary(6, variable(1, "a"), variable(1, "b"), 2);
    const Xml condition = binary(0, variable(1, "a"), variable(1, "b"), 1);
    EXPECT_NE(parseExpression(caseOf(1, {tuple(condition, lie)}, lie)), nullptr);
    const std::string ofInt = "Calculated expression tree type VornInt does not match expect value VornReal";
    EXPECT_EQ(log.textsFrom(LogLevel::Warn),
              (std::vector<std::string>{"Calculated expression tree type VornBool does not match expect value VornInt",
                                        ofInt, ofInt}));
}

struct FailedCase {
    const char* name;
    Xml element;
    std::vector<std::string> lines;
};

TEST(Cases, WithAFailedPartAreNullWithALine) {
    const std::string unable = "Unable to parse Vorn value of type VornInterval";
    const Xml interval = number(16, "1");
    const Xml one = number(1, "1");
    const Xml yes = boolean("True");
    for (const FailedCase& failed :
         {FailedCase{
              "Condition", caseOf(1, {tuple(interval, one)}, one), {unable, "Parsing case condition incomplete!"}},
          FailedCase{"Value", caseOf(1, {tuple(yes, interval)}, one), {unable, "Parsing case condition incomplete!"}},
          FailedCase{"BothAreParsedFirst",
                     caseOf(1, {tuple(interval, interval)}, one),
                     {unable, unable, "Parsing case condition incomplete!"}},
          FailedCase{"ConditionNotBoolean", caseOf(1, {tuple(one, one)}, one), {"Case condition not boolean!"}},
          FailedCase{"TheFirstFailureEndsIt",
                     caseOf(1, {tuple(one, one), tuple(interval, one)}, interval),
                     {"Case condition not boolean!"}},
          FailedCase{"ASecondTuple",
                     caseOf(1, {tuple(yes, one), tuple(yes, interval)}, one),
                     {unable, "Parsing case condition incomplete!"}},
          FailedCase{
              "Default", caseOf(1, {tuple(yes, one)}, interval), {unable, "Parsing case subtree incomplete!"}}}) {
        const CapturedLog log;
        EXPECT_EQ(parseExpression(failed.element), nullptr) << failed.name;
        EXPECT_EQ(log.textsFrom(LogLevel::Info), failed.lines) << failed.name;
    }
}

TEST(SharedSubexpressions, AreParsedOnceForEachPlace) {
    const XmlDocument xml(
        toDocument(Xml("r")
                       .add(variable(1, "x").attribute("objid", "1"))
                       .add(binary(6, Xml("l").attribute("objref", "1"), Xml("r").attribute("objref", "1"))
                                .attribute("id", "sum"))));
    parser::XmlContext context{{"1", xml.root()->getFirstElementChild()}};
    const VornXmlParser::ExpressionParser parser(context);
    const Tree tree(parser.parseSubexpression(xml.byId("sum")));
    EXPECT_EQ(printed(tree), "x + x");
    const auto& sum = dynamic_cast<const BinaryOperator&>(*tree);
    EXPECT_NE(sum.getLeftTree(), sum.getRightTree());
}

}  // namespace
}  // namespace vornrun::test
