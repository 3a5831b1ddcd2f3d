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
    XmlContext context;
    ReferenceGraph graph(context, u"objid", u"objref");
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
    testing::Values(Graph{"AReferenceToItsParent", "<r><a objid='A'><b objref='A'/></a></r>"},
                    Graph{"AReferenceToAnAncestor", "<r><a objid='A'><b><c><d objref='A'/></c></b></a></r>"},
                    Graph{"AReferenceToTheRoot", "<r objid='A'><b/><c objref='A'/></r>"},
                    Graph{"TwoThatPointIntoEachOther",
                          "<r><a objid='A'><x objref='B'/></a><b objid='B'><x objref='A'/></b></r>"},
                    Graph{"ARingOfThree",
                          "<r><a objid='A'><x objref='B'/></a><b objid='B'><x objref='C'/></b>"
                          "<c objid='C'><x objref='A'/></c></r>"},
                    Graph{"ByWayOfAReferencesNeighbour",
                          "<r><a objid='A'><n objref='N'/><x objref='B'/></a><n objid='N'/>"
                          "<b objid='B'><n objref='N'/><x objref='A'/></b></r>"},
                    Graph{"InAPartThatOnlyAReferenceHides",
                          "<r><ok objid='OK'/><s objref='OK'><a objid='A'><b objref='A'/></a></s></r>"}),
    CaseName());

class Acyclic : public testing::TestWithParam<Graph> {};

TEST_P(Acyclic, AreAccepted) { EXPECT_EQ(check(GetParam().text), "no fault"); }

INSTANTIATE_TEST_SUITE_P(
    ReferenceGraph, Acyclic,
    testing::Values(
        Graph{"Nothing", "<r/>"}, Graph{"NoReference", "<r objid='A'><a objid='B'/></r>"},
        Graph{"SharedTwice", "<r><a objid='A'/><b objref='A'/><c objref='A'/></r>"},
        Graph{"AForwardAndABackwardReference", "<r><x objref='B'/><a objid='A'/><b objid='B'><y objref='A'/></b></r>"},
        Graph{"AReferenceToNothing", "<r><a objref='none'/></r>"},
        // A target's own reference is not followed, so that none of these recurs.
        Graph{"AReferenceToItself", "<r><a objid='A' objref='A'/></r>"},
        Graph{"TwoReferencesToEachOther", "<r><a objid='A' objref='B'/><b objid='B' objref='A'/></r>"},
        Graph{"AReferenceBelowAnIgnoredChild", "<r objid='R'><s objref='OK'><x objref='R'/></s><o objid='OK'/></r>"}),
    CaseName());

TEST(ReferenceGraph, StoresTheElementsByIdentifier) {
    const XmlDocument xml("<r objid='1'><a objid='2'/><b/><c objid='2'/></r>");
    XmlContext context;
    ReferenceGraph graph(context, u"objid", u"objref");
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
        text += "<l objid='" + std::to_string(i) + "'><x objref='" + next + "'/><x objref='" + next + "'/></l>";
    }
    return text + "<l objid='" + std::to_string(levels) + "'/></r>";
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
        std::string text = "<r><s objid='S'>";
        for (int i = 1; i < size; ++i) text += "<e/>";
        text += "</s>";
        for (int i = 0; i < 120000; ++i) text += "<x objref='S'/>";
        return text + "</r>";
    };
    EXPECT_EQ(check(sharing(100)), "no fault");
    EXPECT_NE(check(sharing(150)), "no fault");
}

TEST(ReferenceGraph, NeedsNoStackForDepth) {
    std::string text;
    for (int i = 0; i < 10000; ++i) text += "<a objid='" + std::to_string(i) + "'>";
    text += "<b objref='5000'/>";
    for (int i = 0; i < 10000; ++i) text += "</a>";
    EXPECT_EQ(check(text),
              "Error while parsing: XML references lead from an object back to itself: 5000 (Xml encoded invalid "
              "vorn.)");
}

}  // namespace
}  // namespace vornrun::test
