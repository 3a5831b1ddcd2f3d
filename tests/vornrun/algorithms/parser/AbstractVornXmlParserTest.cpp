#include "vornrun/algorithms/parser/AbstractVornXmlParser.h"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMElement.hpp>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::test {
namespace {

using namespace parser;
using xercesc::DOMElement;

/// Makes all helpers public.
class Helpers final : public AbstractVornXmlParser {
  public:
    using AbstractVornXmlParser::AbstractVornXmlParser;
    using AbstractVornXmlParser::buildContext;
    using AbstractVornXmlParser::checkReference;
    using AbstractVornXmlParser::expectChildNode;
    using AbstractVornXmlParser::findChildWithName;
    using AbstractVornXmlParser::firstChild;
    using AbstractVornXmlParser::getDataTypeFromChildNodes;
    using AbstractVornXmlParser::getNameFromChildNodes;
    using AbstractVornXmlParser::indexChild;
    using AbstractVornXmlParser::inModes;
    using AbstractVornXmlParser::listChildren;
    using AbstractVornXmlParser::listChildrenWithTag;
    using AbstractVornXmlParser::listOnlyChildrenWithTag;
    using AbstractVornXmlParser::typeAttribute;
};

/// A document and a parser that knows its references.
struct Parsed {
    explicit Parsed(const std::string& text) : xml(text), helpers(context) { helpers.buildContext(xml.document()); }
    const DOMElement* root() const { return xml.root(); }

    XmlDocument xml;
    XmlContext context;
    Helpers helpers;
};

/// The attributes "id" of elements, which identify them.
std::string ids(const std::vector<const DOMElement*>& elements) {
    std::string result;
    for (const DOMElement* element : elements) result += util::transcode(element->getAttribute(u"id")) + " ";
    return result;
}

TEST(ChildElements, AreCountedWithoutTextsAndComments) {
    const Parsed p("<r> text <!-- c --><a id='1'/><?pi x?><b id='2'/> <![CDATA[<x/>]]><a id='3'/> </r>");
    EXPECT_EQ(ids(p.helpers.listChildren(p.root())), "1 2 3 ");
    EXPECT_EQ(ids({p.helpers.firstChild(p.root())}), "1 ");
    EXPECT_EQ(ids({p.helpers.indexChild(p.root(), 2)}), "3 ");
    EXPECT_EQ(ids(p.helpers.listChildrenWithTag(p.root(), u"a")), "1 3 ");
    EXPECT_EQ(ids({p.helpers.findChildWithName(p.root(), u"a")}), "1 ") << "the first of the name";
    EXPECT_EQ(p.helpers.findChildWithName(p.root(), u"x"), nullptr);
    EXPECT_TRUE(p.helpers.listChildrenWithTag(p.root(), u"x").empty());
}

TEST(ChildElements, OfChildrenAreNotTheirParents) {
    const Parsed p("<r><a><b/></a></r>");
    EXPECT_EQ(p.helpers.findChildWithName(p.root(), u"b"), nullptr);
    EXPECT_EQ(p.helpers.listChildren(p.root()).size(), 1U);
}

TEST(ChildElements, AreFoundByLocalNameWhenAskedFor) {
    const Parsed p("<n:r xmlns:n='urn:n'><n:a id='1'/><a id='2'/></n:r>");
    EXPECT_EQ(ids(p.helpers.listChildrenWithTag(p.root(), u"a", true)), "1 2 ");
    EXPECT_EQ(ids(p.helpers.listChildrenWithTag(p.root(), u"a")), "2 ");
    EXPECT_EQ(ids({p.helpers.findChildWithName(p.root(), u"a", true)}), "1 ");
    EXPECT_EQ(ids({p.helpers.expectChildNode(p.root(), u"n:a", "d")}), "1 ");
    EXPECT_EQ(faultOf([&] { p.helpers.expectChildNode(p.root(), u"x", "d"); }),
              "Error while parsing: d (Expected child node 'x' missing from 'n:r')");
    EXPECT_EQ(faultOf([&] { p.helpers.expectChildNode(p.root(), u"x", "d", true); }),
              "Error while parsing: d (Expected child node 'x' missing from 'r')");
}

TEST(ChildElements, ThatAreMissingAreNamed) {
    const Parsed p("<r><e/><two><a/><b/></two></r>");
    const DOMElement* empty = p.helpers.firstChild(p.root());
    const DOMElement* two = p.helpers.indexChild(p.root(), 1);
    EXPECT_EQ(faultOf([&] { p.helpers.firstChild(empty); }),
              "Error while parsing:  (Expected child node '(index 0 out of 0)' missing from 'e')");
    EXPECT_EQ(faultOf([&] { p.helpers.indexChild(two, 2); }),
              "Error while parsing:  (Expected child node '(index 2 out of 2)' missing from 'two')");
    EXPECT_EQ(faultOf([&] { p.helpers.expectChildNode(two, u"c", "Needed."); }),
              "Error while parsing: Needed. (Expected child node 'c' missing from 'two')");
    EXPECT_EQ(faultOf([&] { p.helpers.getNameFromChildNodes(two); }),
              "Error while parsing:  (Expected child node 'name' missing from 'two')");
}

TEST(ChildElements, OfAnotherNameAreSkippedWithAWarningWhereAListHoldsOneKind) {
    const Parsed p("<r><a id='1'/><b/><a id='2'/></r>");
    const CapturedLog log;
    EXPECT_EQ(ids(p.helpers.listOnlyChildrenWithTag(p.root(), u"a")), "1 2 ");
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Warn, "root.vornxml",
                                                      "[Incomplete parser warning:] Unknown tag 'b' in 'r' "
                                                      "ignored."}}));
}

TEST(InModes, AreAllModesWithoutTheElementAndTheNamedOnesWithIt) {
    const Parsed p("<r><a/><b><in_modes/></b><c><in_modes><x>on</x><y>o<!-- -->ff</y></in_modes></c></r>");
    EXPECT_TRUE(p.helpers.inModes(p.helpers.indexChild(p.root(), 0)).empty());
    EXPECT_TRUE(p.helpers.inModes(p.helpers.indexChild(p.root(), 1)).empty());
    EXPECT_EQ(p.helpers.inModes(p.helpers.indexChild(p.root(), 2)), (std::vector<std::string>{"on", "off"}));
}

TEST(TypeAttribute, IsEmptyWithoutOne) {
    const Parsed p("<r type='T'><a kind='x'/></r>");
    EXPECT_EQ(p.helpers.typeAttribute(p.root()), "T");
    EXPECT_EQ(p.helpers.typeAttribute(p.helpers.firstChild(p.root())), "");
}

struct TypeCase {
    const char* name;
    VornDataTypeTag tag;
};

class DeclaredTypes : public testing::TestWithParam<TypeCase> {};

TEST_P(DeclaredTypes, AreReadFromTheAttribute) {
    const Parsed p("<r><data_type key='k' type='" + std::string(GetParam().name) + "'>ignored</data_type></r>");
    EXPECT_EQ(p.helpers.getDataTypeFromChildNodes(p.root()), GetParam().tag);
}

INSTANTIATE_TEST_SUITE_P(
    DataType, DeclaredTypes,
    testing::Values(TypeCase{"Bool", VornDataTypeTag::VornBool}, TypeCase{"Enum", VornDataTypeTag::VornEnum},
                    TypeCase{"Real", VornDataTypeTag::VornReal}, TypeCase{"Clock", VornDataTypeTag::VornClock},
                    TypeCase{"Continuous", VornDataTypeTag::VornContinuous}, TypeCase{"Int", VornDataTypeTag::VornInt},
                    TypeCase{"IntRange", VornDataTypeTag::VornInterval}),
    CaseName());

TEST(DataType, OfNoKindIsRefused) {
    const Parsed missing("<r/>");
    EXPECT_EQ(faultOf([&] { missing.helpers.getDataTypeFromChildNodes(missing.root()); }),
              "Error while parsing: Data type specification is needed for data elements (Expected child node "
              "'data_type' missing from 'r')");
    for (const std::string type : {"Mode", "bool", "IntRange ", ""}) {
        const Parsed p("<r><data_type type='" + type + "'/></r>");
        EXPECT_EQ(faultOf([&] { p.helpers.getDataTypeFromChildNodes(p.root()); }),
                  "Error while parsing:  (Unexpected value:\n\tExpected: One out of {Bool, Clock, Continuous, Enum, "
                  "Int, IntRange, Real} .\n\tFound: " +
                      type + ")");
    }
    const Parsed without("<r><data_type/></r>");
    EXPECT_NE(faultOf([&] { without.helpers.getDataTypeFromChildNodes(without.root()); }), "no fault");
}

// References to shared elements.

TEST(References, LeadForwardAndBackward) {
    const Parsed p("<r><a objref='2'/><s objid='1' id='one'/><s objid='2' id='two'/><a objref='1'/></r>");
    EXPECT_EQ(ids(p.helpers.listChildren(p.root())), "two one two one ");
    EXPECT_EQ(ids({p.helpers.firstChild(p.root())}), "two ");
    EXPECT_EQ(ids({p.helpers.indexChild(p.root(), 3)}), "one ");
}

TEST(References, AreFoundByTheirOwnNameWhateverTheirTargetIsCalled) {
    const Parsed p("<r><a objref='1'/><s objid='1' id='one'/></r>");
    EXPECT_EQ(ids({p.helpers.findChildWithName(p.root(), u"a")}), "one ");
    EXPECT_EQ(ids(p.helpers.listChildrenWithTag(p.root(), u"a")), "one ");
    EXPECT_EQ(ids({p.helpers.expectChildNode(p.root(), u"a", "")}), "one ");
    EXPECT_EQ(ids(p.helpers.listChildrenWithTag(p.root(), u"s")), "one ");
}

TEST(References, AreReplacedByTheirTargetAndTheirChildrenIgnored) {
    const Parsed p("<r><a objref='1'><name>own</name></a><s objid='1'><name>target</name></s></r>");
    EXPECT_EQ(p.helpers.getNameFromChildNodes(p.helpers.firstChild(p.root())), "target");
}

TEST(References, AreFollowedForASingleStep) {
    const Parsed p(
        "<r><a objref='1'/><b objid='1' objref='2' id='one'><name>mine</name></b><c objid='2' id='two'/></r>");
    EXPECT_EQ(ids({p.helpers.firstChild(p.root())}), "one ");
    EXPECT_EQ(p.helpers.getNameFromChildNodes(p.helpers.firstChild(p.root())), "mine");
    EXPECT_EQ(ids({p.helpers.indexChild(p.root(), 1)}), "two ");
}

TEST(References, LeadToTheLastElementOfARepeatedIdentifier) {
    const Parsed p("<r><s objid='1' id='first'/><a objref='1'/><s objid='1' id='last'/></r>");
    EXPECT_EQ(ids({p.helpers.indexChild(p.root(), 1)}), "last ");
}

TEST(References, ToNothingFailWhenTheyAreLookedAt) {
    const Parsed p("<r><ok/><a objref='no such'/><b objref=''/></r>");
    EXPECT_NO_THROW(p.helpers.firstChild(p.root()));
    EXPECT_EQ(faultOf([&] { p.helpers.findChildWithName(p.root(), u"a"); }),
              "Error while parsing: XML references object that has not been parsed yet: no such (Parser failed.)");
    EXPECT_EQ(faultOf([&] { p.helpers.findChildWithName(p.root(), u"b"); }),
              "Error while parsing: XML references object that has not been parsed yet:  (Parser failed.)")
        << "an empty reference is one";
    EXPECT_EQ(faultOf([&] { p.helpers.checkReference(p.xml.root()->getLastElementChild()); }),
              "Error while parsing: XML references object that has not been parsed yet:  (Parser failed.)");
}

TEST(References, WithoutAnAttributeAreTheElementItself) {
    const Parsed p("<r objid='7'/>");
    EXPECT_EQ(p.helpers.checkReference(p.root()), p.root());
    EXPECT_EQ(p.context.size(), 1U);
    EXPECT_EQ(p.context.at("7"), p.root());
}

TEST(References, LeadToAnEarlierDocumentSinceTheContextIsNeverCleared) {
    const XmlDocument first("<r objid='1' id='first'/>");
    const XmlDocument second("<q><a objref='1'/></q>");
    XmlContext context;
    Helpers helpers(context);
    helpers.buildContext(first.document());
    helpers.buildContext(second.document());
    EXPECT_EQ(ids({helpers.firstChild(second.root())}), "first ");
}

}  // namespace
}  // namespace vornrun::test
