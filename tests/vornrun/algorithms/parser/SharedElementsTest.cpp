// Circles of references, of which only those count that a parser runs into, and references that multiply a document.

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "tests/vornrun/algorithms/parser/PropertyTest.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"

namespace vornrun::test {
namespace {

const Var clock = var("x", Type::Clock);
const Var flag = var("b", Type::Bool);

/// A model with one of each: invariant, trajectory, guard, effect, flow, data. What is shared can be in `store`, where
/// no parser looks.
Xml soundDocument() {
    const Var level = var("y", Type::Continuous);
    ModelWriter model;
    model.type("T").inEvent("go").inData(var("d", Type::Int), 1);
    model.implementation("T.i")
        .mode("m", invariant(clock <= 5.0), rate(level, 2.0))
        .mode("n")
        .transition("m", "n", on("go"), when(clock >= 2.0), set(flag, true))
        .transition("n", "m", on("go"))
        .flow(flag, !flag)
        .data(clock)
        .data(level)
        .data(flag);
    Xml document = model.document();
    document.add(Xml("store"));
    return document;
}

std::string faultOfDocument(const Xml& document) {
    const CapturedLog quiet;
    return faultOf([&] { parseModel(document); });
}

/// \param guard the element "guard", as it is written
std::string faultOfGuard(const std::string& guard, const std::string& store = "") {
    Xml document = soundDocument();
    document.first("guard") = Xml::raw(guard);
    document.first("store").add(Xml::raw(store));
    return faultOfDocument(document);
}

/// An element with its contents; the tag may have attributes.
std::string element(const std::string& tag, const std::string& contents) {
    return "<" + tag + ">" + contents + "</" + tag.substr(0, tag.find(' ')) + ">";
}

// Expression elements, by tag and operands. All are boolean.
std::string constant(const std::string& tag) {
    return element(tag + " type='BooleanTreeNode'", "<node_type>0</node_type><value>True</value>");
}
std::string negation(const std::string& tag, const std::string& operand) {
    return element(tag + " type='UnaryOperatorTreeNode'",
                   "<node_type>0</node_type>" + operand + "<operator>15</operator>");
}
std::string conjunction(const std::string& tag, const std::string& left, const std::string& right) {
    return element(tag + " type='BinaryOperatorTreeNode'",
                   "<node_type>0</node_type>" + left + right + "<operator>10</operator>");
}
std::string caseOf(const std::string& tag, const std::string& cases, const std::string& otherwise) {
    return element(tag + " type='CaseExpressionTreeNode'",
                   "<node_type>0</node_type>" + element("cases", cases) + otherwise);
}

constexpr const char* CIRCLE =
    "Error while parsing: XML references lead from an object back to itself: A (Xml encoded invalid vorn.)";

struct Guard {
    const char* name;
    std::string guard;
    std::string store;
};

class CirclesOfExpressions : public testing::TestWithParam<Guard> {};

TEST_P(CirclesOfExpressions, AreRefusedByIdentifier) {
    EXPECT_EQ(faultOfGuard(GetParam().guard, GetParam().store), CIRCLE);
}

INSTANTIATE_TEST_SUITE_P(
    SharedElements, CirclesOfExpressions,
    testing::Values(
        Guard{"AnOperandThatIsItsOwner", negation("guard objid='A'", "<subexpression objref='A'/>"), ""},
        Guard{"ALeftSideThatIsItsOwner", conjunction("guard objid='A'", "<left objref='A'/>", constant("right")), ""},
        Guard{"ARightSideThatIsItsOwner", conjunction("guard objid='A'", constant("left"), "<right objref='A'/>"), ""},
        Guard{"AnOwnerFurtherOut",
              negation("guard objid='A'", conjunction("subexpression", constant("left"), "<right objref='A'/>")), ""},
        Guard{"AnOwnerInside",
              negation("guard objid='B'", negation("subexpression objid='A'", "<subexpression objref='A'/>")), ""},
        Guard{"ADefaultThatIsItsOwner", caseOf("guard objid='A'", "", "<default_expression objref='A'/>"), ""},
        Guard{"AConditionThatIsItsOwner",
              caseOf("guard objid='A'", element("tuple", "<any objref='A'/>" + constant("any")),
                     constant("default_expression")),
              ""},
        Guard{"AValueThatIsItsOwner",
              caseOf("guard objid='A'", element("tuple", constant("any") + "<any objref='A'/>"),
                     constant("default_expression")),
              ""},
        Guard{"ASharedTuple", caseOf("guard objid='A'", "<tuple objref='T'/>", constant("default_expression")),
              element("any objid='T'", constant("any") + "<any objref='A'/>")},
        Guard{"TwoThatReferToEachOther", "<guard objref='A'/>",
              negation("any objid='A'", "<subexpression objref='B'/>") +
                  negation("any objid='B'", "<subexpression objref='A'/>")},
        Guard{"ARingOfThree", "<guard objref='A'/>",
              negation("any objid='A'", "<subexpression objref='B'/>") +
                  negation("any objid='B'", "<subexpression objref='C'/>") +
                  negation("any objid='C'", "<subexpression objref='A'/>")},
        Guard{"BehindAnElementThatIsShared", "<guard objref='A'/>",
              constant("any objid='T'") + conjunction("any objid='A'", "<left objref='T'/>", "<right objref='B'/>") +
                  conjunction("any objid='B'", "<left objref='T'/>", "<right objref='A'/>")}),
    CaseName());

/// Everything in a property but its path formula.
std::string faultOfPath(const std::string& path) {
    const CapturedLog quiet;
    const std::string text =
        element("cslFormula", element("p",
                                      "<comparisonOperator><lessThan/></comparisonOperator><threshold><value>1"
                                      "</value></threshold>" +
                                          path));
    return faultOf([&] { parsePropertyText(element("formulae", text)); });
}

std::string until(const std::string& tag, const std::string& left, const std::string& right) {
    return element(tag,
                   "<lowerBound><value>0</value></lowerBound><upperBound><value>1</value></upperBound>" + left + right);
}

struct Path {
    const char* name;
    std::string path;
};

class CirclesOfFormulas : public testing::TestWithParam<Path> {};

TEST_P(CirclesOfFormulas, AreRefusedByIdentifier) { EXPECT_EQ(faultOfPath(GetParam().path), CIRCLE); }

INSTANTIATE_TEST_SUITE_P(
    SharedElements, CirclesOfFormulas,
    testing::Values(
        Path{"AnOperandThatIsItsOwner", until("u", "<true/>", "<not objid='A'><any objref='A'/></not>")},
        Path{"TwoThatReferToEachOther",
             until("u", "<or objid='A'><true/><any objref='B'/></or>", "<and objid='B'><any objref='A'/></and>")},
        Path{"AWrapperOfItself", until("u", "<true/>", "<formula objid='A'><any objref='A'/></formula>")},
        Path{"AWrapperAroundAFormulaAroundIt",
             until("u", "<true/>", "<formula objid='A'><not><formula objref='A'/></not></formula>")},
        Path{"APathInAWrapperOfItself", "<formula objid='A'><any objref='A'/></formula>"},
        Path{"APathWithinItsOwnFormula",
             until("u objid='A'", "<true/>",
                   "<p><comparisonOperator><lessThan/></comparisonOperator><threshold><value>1</value></threshold>"
                   "<any objref='A'/></p>")},
        Path{"AnExpressionOfAProposition",
             until("u", "<true/>",
                   element("atomicProposition", negation("any objid='A'", "<subexpression objref='A'/>")))}),
    CaseName());

struct Accepted {
    const char* name;
    void (*change)(Xml& document);
};

class BackReferences : public testing::TestWithParam<Accepted> {};

TEST_P(BackReferences, DoNoHarmWhereNoParserLooks) {
    Xml document = soundDocument();
    GetParam().change(document);
    EXPECT_EQ(faultOfDocument(document), "no fault");
}

/// An element of a trajectory in an expression, whose parts refer back to it.
Xml trajectoryNode(const std::string& tag) {
    return Xml(tag)
        .attribute("type", "TrajectoryEquationTreeNode")
        .attribute("objid", "A")
        .add(Xml("node_type", "0"))
        .add(Xml("variable").attribute("objref", "A"))
        .add(Xml("trajectory_expression").attribute("objref", "A"))
        .add(Xml("left").attribute("objref", "A"));
}

Xml backReference(const std::string& tag) { return Xml(tag).attribute("objref", "A"); }

INSTANTIATE_TEST_SUITE_P(
    SharedElements, BackReferences,
    testing::Values(
        Accepted{"ContentsOfATrajectoryInAnExpression", [](Xml& d) { d.first("guard") = trajectoryNode("guard"); }},
        Accepted{"ContentsOfATrajectoryAsAnOperand",
                 [](Xml& d) { d.first("Flow").first("subexpression") = trajectoryNode("subexpression"); }},
        Accepted{"TrajectoriesOfAModeWithoutInvariant",
                 [](Xml& d) { d.nth("Mode", 1).attribute("objid", "A").add(backReference("trajectories")); }},
        Accepted{"ClausesOfAModeWithoutInvariant",
                 [](Xml& d) { d.nth("Mode", 1).attribute("objid", "A").add(backReference("clauses")); }},
        Accepted{"ClausesBesideALabelWithoutGuard",
                 [](Xml& d) { d.nth("label", 1).attribute("objid", "A").add(backReference("clauses")); }},
        Accepted{"AKnownNameInAnotherParent",
                 [](Xml& d) { d.nth("Mode", 1).attribute("objid", "A").add(backReference("left")); }},
        Accepted{"TheSecondOfAName",
                 [](Xml& d) { d.first("guard").attribute("objid", "A").add(backReference("left")); }},
        Accepted{"ThePackagesOfAPackage",
                 [](Xml& d) {
                     d.first("packages").attribute("objid", "A").first("Package").add(backReference("packages"));
                 }},
        Accepted{"AnUnknownName", [](Xml& d) { d.first("guard").attribute("objid", "A").add(backReference("owner")); }},
        Accepted{"NamesThatNoParserReads",
                 [](Xml& d) {
                     d.first("ComponentImplementation")
                         .attribute("objid", "A")
                         .add(backReference("probabilistic_mode_transitions"))
                         .add(backReference("invariants"));
                 }},
        Accepted{"TheDefaultOfAConstant",
                 [](Xml& d) {
                     d.first("default_value")
                         .attribute("objid", "A")
                         .add(backReference("left"))
                         .add(backReference("node_type"));
                 }},
        Accepted{"ContentsOfAReference",
                 [](Xml& d) {
                     d.first("guard").attribute("objid", "A");
                     d.first("store").add(Xml("guard"));
                     d.nth("label", 1).add(Xml("trigger").attribute("objref", "E").add(backReference("subexpression")));
                     d.first("store").add(Xml("event", "go").attribute("objid", "E"));
                 }},
        Accepted{"AnElementOfAnUnknownPort",
                 [](Xml& d) { d.first("in_event_ports").attribute("objid", "A").add(backReference("OddPort")); }}),
    CaseName());

TEST(SharedElements, MayReferToTheirOwnerWhereNoParserGoesOn) {
    // A text ends every walk: the name of the mode is the whole text of the mode.
    Xml document = soundDocument();
    document.nth("Mode", 1) = Xml::raw("<Mode objid='A'>n<name objref='A'/><type>3</type></Mode>");
    document.nth("source_mode", 1).text("n3");
    EXPECT_EQ(faultOfDocument(document), "no fault");
    // A list that is its own element ends in the fault of that element.
    document = soundDocument();
    document.first("modes").attribute("objid", "A").add(backReference("Mode"));
    EXPECT_EQ(faultOfDocument(document), "Error while parsing:  (Expected child node 'name' missing from 'modes')");
}

TEST(SharedElements, InACircleComeAfterTheFaultsThatAreDueBefore) {
    // The left side is a circle, but the right side is looked for first.
    EXPECT_EQ(faultOfGuard(element("guard objid='A' type='BinaryOperatorTreeNode'",
                                   "<node_type>0</node_type><left objref='A'/>")),
              "Error while parsing: Binary subexpressions require a right hand side. (Expected child node 'right' "
              "missing from 'guard')");
    // A mode comes before the transitions.
    Xml document = soundDocument();
    document.first("guard") = Xml::raw(negation("guard objid='A'", "<subexpression objref='A'/>"));
    document.first("Mode").first("type").text("initial");
    EXPECT_EQ(faultOfDocument(document),
              "Error while parsing: Mode type (Unexpected value:\n\tExpected: An integer number larger than or equal 0 "
              ".\n\tFound: initial)");
    document = soundDocument();
    document.first("guard") = Xml::raw(negation("guard objid='A'", "<subexpression objref='A'/>"));
    document.first("flows").rename("flow");
    EXPECT_EQ(faultOfDocument(document), CIRCLE) << "the flows come later";
}

TEST(SharedElements, InARootOfAnotherNameAreNotReached) {
    EXPECT_EQ(faultOf([] { parseModelText("<Other objid='A'><packages objref='A'/></Other>"); }),
              "Error while parsing:  (Unexpected node:\n\tExpected: CompileInformation .\n\tFound: Other)");
}

TEST(SharedElements, MayBeInTheWayOfEachOther) {
    // Shared twice, side by side and one inside another, is no circle.
    EXPECT_EQ(faultOfGuard(conjunction("guard", "<left objref='T'/>", "<right objref='S'/>"),
                           constant("any objid='T'") + negation("any objid='S'", "<subexpression objref='T'/>")),
              "no fault");
    // A target's own reference is not followed.
    EXPECT_EQ(faultOfGuard(conjunction("guard objid='A' objref='T'", "<left objref='A'/>", constant("right")),
                           constant("any objid='T'")),
              "no fault");
}

/// Levels of shared expressions, each of which refers twice to the next: 2^levels times the leaf, whose "objid" is "L".
std::string doubling(int levels, const std::string& leaf) {
    std::string text = leaf;
    for (int i = 0; i < levels; ++i) {
        const std::string next = "objref='L" + (i + 1 == levels ? "" : std::to_string(i + 1)) + "'/>";
        text += conjunction("any objid='L" + std::to_string(i) + "'", "<left " + next, "<right " + next);
    }
    return text;
}

/// An expression of ten thousand elements that fails at the second one, so that nothing is built of it.
std::string wideLeaf() {
    std::string tuples =
        element("tuple", "<any type='NumberTreeNode'><node_type>16</node_type></any>" + constant("any"));
    for (int i = 1; i < 10'000; ++i) tuples += "<tuple/>";
    return caseOf("any objid='L'", tuples, constant("default_expression"));
}

TEST(SharedElements, ThatMultiplyBeyondAllMeasureAreRefused) {
    const std::string fault = faultOfGuard("<guard objref='L0'/>", doubling(60, wideLeaf()));
    EXPECT_TRUE(fault.starts_with("Error while parsing: XML references multiply the 10")) << fault;
    EXPECT_TRUE(fault.ends_with(" elements of the document to more than 10000000 (Xml encoded invalid vorn.)"))
        << fault;
}

TEST(SharedElements, ThatMultiplyWhereNoParserLooksAreNotCounted) {
    EXPECT_EQ(faultOfGuard(constant("guard"), doubling(60, constant("any objid='L'"))), "no fault");
}

TEST(SharedElements, ThatMultiplyWithinMeasureAreAccepted) {
    EXPECT_EQ(faultOfGuard("<guard objref='L0'/>", doubling(12, constant("any objid='L'"))), "no fault");
}

TEST(SharedElements, AreNoCircleInALongChain) {
    // Each refers to the next, and the last one back into the middle.
    std::string store;
    for (int i = 0; i < 200; ++i)
        store += negation("any objid='" + std::to_string(i) + "'",
                          "<subexpression objref='" + std::to_string(i + 1) + "'/>");
    EXPECT_EQ(faultOfGuard("<guard objref='0'/>", store + constant("any objid='200'")), "no fault");
    EXPECT_EQ(
        faultOfGuard("<guard objref='0'/>", store + negation("any objid='200'", "<subexpression objref='100'/>")),
        "Error while parsing: XML references lead from an object back to itself: 100 (Xml encoded invalid vorn.)");
}

}  // namespace
}  // namespace vornrun::test
