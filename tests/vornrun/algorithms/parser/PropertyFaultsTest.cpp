// Every structural fault of a property file, with its whole text.

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/OnStack.h"
#include "tests/vornrun/algorithms/parser/PropertyTest.h"

namespace vornrun::test {
namespace {

struct Fault {
    const char* name;
    void (*spoil)(Xml& document);
    const char* what;
};

class PropertyFaults : public testing::TestWithParam<Fault> {};

TEST_P(PropertyFaults, AreReportedInFull) {
    PropertyWriter properties;
    properties.p(Bound::Below, 0.5, until(atom(var("a", Type::Bool)) && truth(), !falsity(), 0, 1));
    Xml document = properties.document();
    GetParam().spoil(document);
    const CapturedLog log;
    EXPECT_EQ(faultOf([&] { parsePropertyText(toDocument(document)); }), GetParam().what);
}

INSTANTIATE_TEST_SUITE_P(
    PropertyParser, PropertyFaults,
    testing::Values(
        Fault{"AnotherRoot", [](Xml& d) { d.rename("formulas"); },
              "Error while parsing:  (Unexpected node:\n\tExpected: formulae .\n\tFound: formulas)"},
        Fault{"EmptyFormula", [](Xml& d) { d.first("cslFormula").remove("p"); },
              "Error while parsing:  (Expected child node '(index 0 out of 0)' missing from 'cslFormula')"},
        Fault{"NoOperator", [](Xml& d) { d.remove("comparisonOperator"); },
              "Error while parsing: P node must have operator (Expected child node 'comparisonOperator' missing from "
              "'p')"},
        Fault{"EmptyOperator", [](Xml& d) { d.first("comparisonOperator") = Xml("comparisonOperator"); },
              "Error while parsing: No or bad operator for P operator (Xml encoded invalid vorn.)"},
        Fault{"BadOperator", [](Xml& d) { d.first("lessThan").rename("less"); },
              "Error while parsing: No or bad operator for P operator (Xml encoded invalid vorn.)"},
        Fault{"NoThreshold", [](Xml& d) { d.remove("threshold"); },
              "Error while parsing: P node must have threshold (Expected child node 'threshold' missing from 'p')"},
        Fault{"ThresholdWithoutValue", [](Xml& d) { d.first("threshold").remove("value"); },
              "Error while parsing: P node must have threshold (Expected child node 'value' missing from "
              "'threshold')"},
        Fault{"ThresholdNotANumber", [](Xml& d) { d.first("threshold").first("value").text("half"); },
              "Error while parsing: Threshold must be double (Unexpected value:\n\tExpected: Any number. .\n\tFound: "
              "half)"},
        Fault{"NoPath", [](Xml& d) { d.remove("u"); },
              "Error while parsing:  (Expected child node '(index 2 out of 2)' missing from 'p')"},
        Fault{"EmptyPathWrapper", [](Xml& d) { d.first("u") = Xml("formula"); },
              "Error while parsing: Formula node has no child (Xml encoded invalid vorn.)"},
        Fault{"NoLowerBound", [](Xml& d) { d.remove("lowerBound"); },
              "Error while parsing: Path formula missing lower bound (Expected child node 'lowerBound' missing from "
              "'u')"},
        Fault{"LowerBoundWithoutValue", [](Xml& d) { d.first("lowerBound").remove("value"); },
              "Error while parsing: Path formula missing lower bound (Expected child node 'value' missing from "
              "'lowerBound')"},
        Fault{"NoUpperBound", [](Xml& d) { d.remove("upperBound"); },
              "Error while parsing: Path formula missing upper bound (Expected child node 'upperBound' missing from "
              "'u')"},
        Fault{"UpperBoundWithoutValue", [](Xml& d) { d.first("upperBound").remove("value"); },
              "Error while parsing: Path formula missing upper bound (Expected child node 'value' missing from "
              "'upperBound')"},
        Fault{"LowerBoundNotANumber", [](Xml& d) { d.first("lowerBound").first("value").text("soon"); },
              "Error while parsing: Lower bound must be double (Unexpected value:\n\tExpected: Any number. .\n\tFound: "
              "soon)"},
        Fault{"UpperBoundNotANumber", [](Xml& d) { d.first("upperBound").first("value").text(""); },
              "Error while parsing: Upper bound must be double (Unexpected value:\n\tExpected: Any number. .\n\tFound: "
              ")"},
        Fault{"BoundsAreLookedForBeforeTheirNumbers",
              [](Xml& d) {
                  d.first("lowerBound").first("value").text("soon");
                  d.remove("upperBound");
              },
              "Error while parsing: Path formula missing upper bound (Expected child node 'upperBound' missing from "
              "'u')"},
        Fault{"UnknownPath", [](Xml& d) { d.first("u").rename("w"); },
              "Error while parsing: Unknown path formula node (Unexpected node:\n\tExpected: Path formula node "
              ".\n\tFound: w)"},
        Fault{"UnknownPathWithoutBounds", [](Xml& d) { d.first("u") = Xml("lra"); },
              "Error while parsing: Path formula missing lower bound (Expected child node 'lowerBound' missing from "
              "'lra')"},
        Fault{"UntilWithOneOperand", [](Xml& d) { d.first("u").remove("not"); },
              "Error while parsing:  (Expected child node '(index 3 out of 3)' missing from 'u')"},
        Fault{"NextWithoutOperand", [](Xml& d) { d.first("u").rename("x").remove("not").remove("and"); },
              "Error while parsing:  (Expected child node '(index 2 out of 2)' missing from 'x')"},
        Fault{"UnknownStateFormula", [](Xml& d) { d.first("false").rename("maybe"); },
              "Error while parsing: Unknown state formula node (Unexpected node:\n\tExpected: State formula node "
              ".\n\tFound: maybe)"},
        Fault{"AndWithOneOperand", [](Xml& d) { d.first("and").remove("true"); },
              "Error while parsing:  (Expected child node '(index 1 out of 1)' missing from 'and')"},
        Fault{"NotWithoutOperand", [](Xml& d) { d.first("not") = Xml("not"); },
              "Error while parsing:  (Expected child node '(index 0 out of 0)' missing from 'not')"},
        Fault{"EmptyStateWrapper", [](Xml& d) { d.first("not") = Xml("formula"); },
              "Error while parsing:  (Expected child node '(index 0 out of 0)' missing from 'formula')"},
        Fault{"EmptyProposition", [](Xml& d) { d.first("atomicProposition") = Xml("atomicProposition"); },
              "Error while parsing:  (Expected child node '(index 0 out of 0)' missing from 'atomicProposition')"},
        Fault{"PropositionNotBoolean",
              [](Xml& d) { d.first("atomicProposition") = Xml("atomicProposition").add(integer(1).xml("e")); },
              "Error while parsing: Type of expression in atomic proposition is not boolean (Xml encoded invalid "
              "vorn.)"},
        Fault{"PropositionThatFails",
              [](Xml& d) { d.first("atomicProposition") = Xml("atomicProposition").add((boolean(true) + 1).xml("e")); },
              "Error while parsing: Failed to parse expression in atomic proposition (Xml encoded invalid vorn.)"},
        Fault{"PropositionThatIsNoExpression",
              [](Xml& d) { d.first("atomicProposition") = Xml("atomicProposition").add(Xml("e")); },
              "Error while parsing: Unexpected node in epxression tree (Unexpected value:\n\tExpected: An expression "
              "type .\n\tFound: )"}),
    CaseName());

TEST(PropertyFaults, StopTheParseAndReclaimWhatWasBuilt) {
    // The leak checker of the sanitizer build watches the first formula and the operands before the fault.
    PropertyWriter properties;
    properties.p(until(truth(), falsity(), 0, 1));
    properties.p(until(iff(truth(), falsity()), StateFormula(Xml("nothing")), 0, 1));
    EXPECT_NE(faultOf([&] { parsePropertyText(properties.text()); }), "no fault");
}

std::string nested(const std::string& open, const std::string& close, int levels) {
    std::string text =
        "<formulae><cslFormula><p><comparisonOperator><lessThan/></comparisonOperator><threshold><value>1</value>"
        "</threshold><x><lowerBound><value>0</value></lowerBound><upperBound><value>1</value></upperBound>";
    for (int i = 0; i < levels; ++i) text += open;
    text += "<true/>";
    for (int i = 0; i < levels; ++i) text += close;
    return text + "</x></p></cslFormula></formulae>";
}

/// What parsing says on a stack of which half is less than 25,000 of the smallest frames.
std::string faultOnASmallStack(const std::string& text) {
    std::string fault;
    onStackOf(std::size_t{1} * 1024 * 1024, [&] { fault = faultOf([&] { parsePropertyText(text); }); });
    return fault;
}

TEST(DeepFormulas, AreRefusedBeforeTheStackEnds) {
    const std::string what = "Error while parsing: Formula is nested too deeply (Xml encoded invalid vorn.)";
    EXPECT_EQ(faultOnASmallStack(nested("<not>", "</not>", 25000)), what);
    EXPECT_EQ(faultOnASmallStack(nested("<and><true/>", "</and>", 25000)), what);
    EXPECT_EQ(faultOnASmallStack(nested("<p><comparisonOperator><lessThan/></comparisonOperator><threshold><value>1"
                                        "</value></threshold><x><lowerBound><value>0</value></lowerBound>"
                                        "<upperBound><value>1</value></upperBound>",
                                        "</x></p>", 14000)),
              what);
}

TEST(DeepFormulas, WithinReachAreParsed) {
    EXPECT_EQ(parsePropertyText(nested("<not>", "</not>", 1000)).size(), 1U);
    EXPECT_EQ(parsePropertyText(nested("<formula>", "</formula>", 25000)).size(), 1U) << "a wrapper needs no stack";
}

}  // namespace
}  // namespace vornrun::test
