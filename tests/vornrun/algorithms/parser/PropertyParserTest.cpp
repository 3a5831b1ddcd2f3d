#include "vornrun/algorithms/parser/PropertyParser.h"

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/PropertyTest.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/datastructures/property/CSLBinaryStateFormula.h"
#include "vornrun/datastructures/property/CSLNextPathFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

namespace vornrun::test {
namespace {

using Texts = std::vector<std::string>;

const Var p1 = var("a", Type::Bool);
const Var q1 = var("s.b", Type::Bool);

TEST(Properties, AreReadInFileOrder) {
    PropertyWriter properties;
    properties.p(Bound::AtMost, 0.5, until(truth(), p1, 0, 10));
    properties.p(Bound::AtLeast, 0.25, next(q1, 1, 2));
    EXPECT_EQ(parsedAndPrinted(properties), (Texts{"P[<=0.5]trueU[0,10]a", "P[>=0.25]X[1,2]s.b"}));
}

TEST(Properties, WithAnEmptyRootAreNone) { EXPECT_TRUE(parsePropertyText("<formulae/>").empty()); }

TEST(Properties, OfOtherKindsArePassedOverWithADebugLine) {
    PropertyWriter properties;
    properties.splice(Xml("ltlFormula"));
    properties.splice(Xml("formula"));
    properties.p(next(p1, 0, 1));
    const CapturedLog log(LogLevel::Debug);
    EXPECT_EQ(parsedAndPrinted(properties).size(), 1U);
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Debug, "root.vornxml", "Ignoring formula: ltlFormula"},
                                                     {LogLevel::Debug, "root.vornxml", "Ignoring formula: formula"}}));
}

TEST(Properties, OfTheRightKindWithoutAProbabilityOnTopArePassedOverWithADebugLine) {
    PropertyWriter properties;
    properties.formula(atom(p1) && atom(q1));
    properties.formula(wrapped(p(Bound::Above, 0, next(p1, 0, 1))));
    const CapturedLog log(LogLevel::Debug);
    EXPECT_TRUE(parsedAndPrinted(properties).empty());
    EXPECT_EQ(log.records(),
              (std::vector<LogRecord>{{LogLevel::Debug, "root.vornxml", "Ignoring Unsupported CSL formula: and"},
                                      {LogLevel::Debug, "root.vornxml", "Ignoring Unsupported CSL formula: formula"}}));
}

TEST(Properties, AreMatchedOnTheirLocalNames) {
    PropertyWriter properties;
    properties.p(Bound::Below, 0.5, until(!atom(p1) || falsity(), iff(atom(p1), atom(q1)), 0, 10));
    properties.prefix("csl");
    EXPECT_EQ(parsedAndPrinted(properties), Texts{"P[<0.5]((! a) || false)U[0,10](a <-> s.b)"});
}

TEST(Properties, AreMatchedOnTheLocalNameOfAReferencesTarget) {
    EXPECT_EQ(printed(parsePropertyText(
                  "<formulae><any objref='1'/><cslFormula objid='1'><p><comparisonOperator><lessThan/>"
                  "</comparisonOperator><threshold><value>1</value></threshold><x><lowerBound><value>0</value>"
                  "</lowerBound><upperBound><value>1</value></upperBound><true/></x></p></cslFormula></formulae>")),
              (Texts{"P[<1]X[0,1]true", "P[<1]X[0,1]true"}));
}

struct StateCase {
    const char* name;
    StateFormula formula;
    const char* text;
};

class StateFormulas : public testing::TestWithParam<StateCase> {};

TEST_P(StateFormulas, AreAcceptedInsideAProbability) {
    PropertyWriter properties;
    properties.p(Bound::Below, 1, next(GetParam().formula, 0, 1));
    const CapturedLog log;
    EXPECT_EQ(parsedAndPrinted(properties), Texts{std::string("P[<1]X[0,1]") + GetParam().text});
    EXPECT_TRUE(log.records().empty());
}

INSTANTIATE_TEST_SUITE_P(
    PropertyParser, StateFormulas,
    testing::Values(StateCase{"True", truth(), "true"}, StateCase{"False", falsity(), "false"},
                    StateCase{"Proposition", p1, "a"}, StateCase{"And", atom(p1) && atom(q1), "(a && s.b)"},
                    StateCase{"Or", atom(p1) || atom(q1), "(a || s.b)"},
                    StateCase{"Imp", imp(atom(p1), atom(q1)), "(a -> s.b)"},
                    StateCase{"Iff", iff(atom(p1), atom(q1)), "(a <-> s.b)"},
                    StateCase{"EqIsIff", eq(atom(p1), atom(q1)), "(a <-> s.b)"}, StateCase{"Not", !atom(p1), "(! a)"},
                    StateCase{"Wrapped", wrapped(wrapped(atom(p1))), "a"},
                    StateCase{"NestedProbability", p(Bound::Above, 0.5, next(p1, 2, 3)), "P[>0.5]X[2,3]a"}),
    CaseName());

TEST(Properties, MakeEqualFormulasOfEqAndIff) {
    const auto operandOf = [](const StateFormula& formula) {
        PropertyWriter properties;
        properties.p(next(formula, 0, 1));
        Formulas formulas = parsePropertyText(properties.text());
        const auto& top = dynamic_cast<const CSLProbabilityStateFormula&>(*formulas.at(0));
        const auto* operand = dynamic_cast<const CSLNextPathFormula&>(*top.path()).operand();
        return dynamic_cast<const CSLBinaryStateFormula<CSLIff>*>(operand) != nullptr;
    };
    EXPECT_TRUE(operandOf(eq(atom(p1), atom(q1))));
    EXPECT_TRUE(operandOf(iff(atom(p1), atom(q1))));
    EXPECT_FALSE(operandOf(imp(atom(p1), atom(q1))));
}

TEST(PathFormulas, HoldTheirBoundsAndOperands) {
    PropertyWriter properties;
    properties.p(Bound::Below, 1.5, wrapped(wrapped(until(p1, q1, 0.5, 1e6))));
    const Formulas formulas = parsePropertyText(properties.text());
    ASSERT_EQ(formulas.size(), 1U);
    const auto& top = dynamic_cast<const CSLProbabilityStateFormula&>(*formulas[0]);
    EXPECT_EQ(top.bound(), 1.5) << "the range of a probability is not checked";
    const auto& path = dynamic_cast<const CSLUntilPathFormula&>(*top.path());
    EXPECT_EQ(path.lower(), 0.5);
    EXPECT_EQ(path.upper(), 1e6);
}

/// A property whose comparison is given.
std::string propertyWith(const std::string& comparison) {
    return "<formulae><cslFormula><p><comparisonOperator>" + comparison +
           "</comparisonOperator><threshold><value>0.5</value></threshold><x><lowerBound><value>0</value></lowerBound>"
           "<upperBound><value>1</value></upperBound><true/></x></p></cslFormula></formulae>";
}

struct Comparison {
    const char* name;
    const char* elements;
    CSLProbabilityStateFormula::Operator op;
};

class Comparisons : public testing::TestWithParam<Comparison> {};

TEST_P(Comparisons, AreLookedForInOrder) {
    const Formulas formulas = parsePropertyText(propertyWith(GetParam().elements));
    ASSERT_EQ(formulas.size(), 1U);
    EXPECT_EQ(dynamic_cast<const CSLProbabilityStateFormula&>(*formulas[0]).op(), GetParam().op);
}

using Operator = CSLProbabilityStateFormula::Operator;
INSTANTIATE_TEST_SUITE_P(
    PropertyParser, Comparisons,
    testing::Values(Comparison{"LessEqual", "<lessEqual/>", Operator::lessEqual},
                    Comparison{"LessThan", "<lessThan/>", Operator::less},
                    Comparison{"GreaterEqual", "<greaterEqual/>", Operator::greaterEqual},
                    Comparison{"GreaterThan", "<greaterThan/>", Operator::greater},
                    Comparison{"LessEqualBeforeLessThan", "<lessThan/><lessEqual/>", Operator::lessEqual},
                    Comparison{"LessThanBeforeGreaterEqual", "<greaterEqual/><lessThan/>", Operator::less},
                    Comparison{"GreaterEqualBeforeGreaterThan", "<greaterThan/><greaterEqual/>",
                               Operator::greaterEqual},
                    Comparison{"AmongOthers", "<equal/><greaterThan/>", Operator::greater}),
    CaseName());

TEST(Properties, FindTheComparisonAndTheThresholdByNameAndThePathByPosition) {
    // The path is always the third child, in whatever order the other two are.
    const std::string threshold = "<threshold><value>0.5</value></threshold>";
    const std::string comparison = "<comparisonOperator><lessThan/></comparisonOperator>";
    const std::string path =
        "<x><lowerBound><value>0</value></lowerBound><upperBound><value>1</value></upperBound><true/></x>";
    const auto property = [](const std::string& contents) {
        return "<formulae><cslFormula><p>" + contents + "</p></cslFormula></formulae>";
    };
    EXPECT_EQ(printed(parsePropertyText(property(threshold + comparison + path))), Texts{"P[<0.5]X[0,1]true"});
    EXPECT_EQ(printed(parsePropertyText(property(threshold + "<junk/>" + path + comparison))),
              Texts{"P[<0.5]X[0,1]true"});
    EXPECT_EQ(faultOf([&] { parsePropertyText(property(comparison + path + threshold)); }),
              "Error while parsing: Path formula missing lower bound (Expected child node 'lowerBound' missing from "
              "'threshold')");
}

TEST(Properties, OneAtATimeAreNullWhenTheyAreNotToBeChecked) {
    const XmlDocument xml("<r><ctlFormula/><cslFormula><true/></cslFormula></r>");
    parser::XmlContext context;
    const VornXmlParser::ExpressionParser expressions(context);
    const VornXmlParser::PropertyParser parser(context, &expressions);
    EXPECT_EQ(parser.parseProperty(xml.root()), nullptr);
}

}  // namespace
}  // namespace vornrun::test
