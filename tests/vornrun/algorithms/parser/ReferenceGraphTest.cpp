#include "vornrun/algorithms/parser/ReferenceGraph.h"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMElement.hpp>

#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"

namespace vornrun::test {
namespace {

using namespace parser;

std::string check(const std::string& text) {
    const XmlDocument xml(text);
    const VornXmlTags tags;
    XmlContext context;
    ReferenceGraph graph(context, u"objid", u"objref", tags);
    graph.enter(xml.root());
    return faultOf([&] { graph.check(); });
}

struct Graph {
    const char* name;
    const char* text;
};

class Cycles : public testing::TestWithParam<Graph> {};

TEST_P(Cycles, AreRefusedByIdentifier) {
    EXPECT_EQ(check(GetParam().text),
              "Error while parsing: XML references lead from an object back to itself: A (Xml encoded invalid vorn.)");
}

INSTANTIATE_TEST_SUITE_P(
    ReferenceGraph, Cycles,
    testing::Values(Graph{"AReferenceToItsParent", "<r><left objid='A'><right objref='A'/></left></r>"},
                    Graph{"AReferenceToAnAncestor",
                          "<r><left objid='A'><right><cases><tuple objref='A'/></cases></right></left></r>"},
                    Graph{"AReferenceToTheRoot", "<r objid='A'><right/><cases objref='A'/></r>"},
                    Graph{"TwoThatPointIntoEachOther",
                          "<r><left objid='A'><x objref='B'/></left><right objid='B'><x objref='A'/></right></r>"},
                    Graph{"ARingOfThree",
                          "<r><left objid='A'><x objref='B'/></left><right objid='B'><x objref='C'/></right>"
                          "<cases objid='C'><x objref='A'/></cases></r>"},
                    Graph{"ByWayOfAReferencesNeighbour",
                          "<r><left objid='A'><not objref='N'/><x objref='B'/></left><not objid='N'/>"
                          "<right objid='B'><not objref='N'/><x objref='A'/></right></r>"},
                    Graph{"BelowAnyChildOfATuple", "<r><tuple><any objid='A'><left objref='A'/></any></tuple></r>"},
                    Graph{"BelowAnyChildOfWhatStandsForATuple",
                          "<r><tuple objref='T'/><other objid='T'><any objid='A'><left objref='A'/></any></other></r>"},
                    Graph{"BelowAnyExpressionOfAProposition",
                          "<r><atomicProposition><any objid='A'><left objref='A'/></any></atomicProposition></r>"},
                    Graph{"BelowAnyReferenceToAFormula",
                          "<formulae><any objref='F'/><cslFormula objid='F'><not><any objref='A'/></not>"
                          "<or objid='A'><any objref='A'/></or></cslFormula></formulae>"},
                    Graph{"BelowAnyReferenceToAPackage",
                          "<r><packages><any objref='A'/></packages><left objid='A'><right objref='A'/></left></r>"},
                    Graph{"InANamespace", "<n:r xmlns:n='urn:n'><n:not objid='A'><n:or objref='A'/></n:not></n:r>"}),
    CaseName());

class Acyclic : public testing::TestWithParam<Graph> {};

TEST_P(Acyclic, AreAccepted) { EXPECT_EQ(check(GetParam().text), "no fault"); }

INSTANTIATE_TEST_SUITE_P(
    ReferenceGraph, Acyclic,
    testing::Values(
        Graph{"Nothing", "<r/>"}, Graph{"NoReference", "<r objid='A'><left objid='B'/></r>"},
        Graph{"SharedTwice", "<r><left objid='A'/><right objref='A'/><cases objref='A'/></r>"},
        Graph{"AForwardAndABackwardReference",
              "<r><x objref='B'/><left objid='A'/><right objid='B'><u objref='A'/></right></r>"},
        Graph{"AReferenceToNothing", "<r><left objref='none'/></r>"},
        // A target's own reference is not followed, so that none of these recurs.
        Graph{"AReferenceToItself", "<r><left objid='A' objref='A'/></r>"},
        Graph{"TwoReferencesToEachOther", "<r><left objid='A' objref='B'/><right objid='B' objref='A'/></r>"},
        // What no parser goes on to may refer back to its owners.
        Graph{"AnElementOfAnUnknownName", "<r objid='A'><owner objref='A'/></r>"},
        Graph{"APartThatIsKnownAndNotRead",
              "<r objid='A'><probabilistic_mode_transitions><left objref='A'/></probabilistic_mode_transitions>"
              "<invariants><left objref='A'/></invariants></r>"},
        Graph{"APartThatOnlyAReferenceHides",
              "<r><or objid='OK'/><left objref='OK'><left objid='A'><right objref='A'/></left></left></r>"},
        Graph{"AReferenceBelowAnIgnoredChild",
              "<r objid='R'><subexpression objref='OK'><x objref='R'/></subexpression><or objid='OK'/></r>"}),
    CaseName());

TEST(ReferenceGraph, StoresTheElementsByIdentifier) {
    const XmlDocument xml("<r objid='1'><left objid='2'/><right/><cases objid='2'/></r>");
    const VornXmlTags tags;
    XmlContext context;
    ReferenceGraph graph(context, u"objid", u"objref", tags);
    graph.enter(xml.root());
    ASSERT_EQ(context.size(), 2U);
    EXPECT_EQ(context.at("1"), xml.root());
    EXPECT_EQ(context.at("2"), xml.root()->getLastElementChild()) << "the last one stands";
}

/// Levels of elements, each of which refers twice to the next.
std::string doubling(int levels) {
    std::string text = "<r>";
    for (int i = 0; i < levels; ++i) {
        const std::string next = std::to_string(i + 1);
        text += "<left objid='" + std::to_string(i) + "'><x objref='" + next + "'/><x objref='" + next + "'/></left>";
    }
    return text + "<left objid='" + std::to_string(levels) + "'/></r>";
}

TEST(ReferenceGraph, RefusesReferencesThatMultiplyBeyondAllMeasure) {
    // Level i of n stands for 2^(n - i + 1) - 1 elements: 25 levels for some 2^27, 10000 for more than a number holds.
    EXPECT_EQ(check(doubling(25)),
              "Error while parsing: XML references multiply the 77 elements of the document to more than 10000000 (Xml "
              "encoded invalid vorn.)");
    EXPECT_EQ(check(doubling(10000)),
              "Error while parsing: XML references multiply the 30002 elements of the document to more than 10000000 "
              "(Xml encoded invalid vorn.)");
}

TEST(ReferenceGraph, AcceptsReferencesThatMultiplyWithinMeasure) {
    // 20 levels stand for some 2^22 elements, which a parser can still build.
    EXPECT_EQ(check(doubling(20)), "no fault");
}

TEST(ReferenceGraph, JudgesALargeDocumentByWhatItHolds) {
    // 120,000 references to an element of 100: 12 million elements, just below 100 times what the document holds.
    const auto sharing = [](int size) {
        std::string text = "<r><subexpression objid='S'>";
        for (int i = 1; i < size; ++i) text += "<flows/>";
        text += "</subexpression>";
        for (int i = 0; i < 120000; ++i) text += "<x objref='S'/>";
        return text + "</r>";
    };
    EXPECT_EQ(check(sharing(100)), "no fault");
    EXPECT_NE(check(sharing(150)), "no fault");
}

TEST(ReferenceGraph, NeedsNoStackForDepth) {
    std::string text;
    for (int i = 0; i < 10000; ++i) text += "<left objid='" + std::to_string(i) + "'>";
    text += "<right objref='5000'/>";
    for (int i = 0; i < 10000; ++i) text += "</left>";
    EXPECT_EQ(check(text),
              "Error while parsing: XML references lead from an object back to itself: 5000 (Xml encoded invalid "
              "vorn.)");
}

}  // namespace
}  // namespace vornrun::test
