#include "vornrun/algorithms/parser/VornXmlParser.h"

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "tests/support/TempDir.h"
#include "tests/vornrun/algorithms/parser/PropertyTest.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentDeclaration.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun::test {
namespace {

using Texts = std::vector<std::string>;

std::string package(const std::string& name, const std::string& contents = "") {
    return "<Package><name>" + name + "</name>" + contents + "</Package>";
}
std::string model(const std::string& packages) { return "<CompileInformation>" + packages + "</CompileInformation>"; }
std::string type(const std::string& name) {
    return "<ComponentType><name>" + name + "</name><category>0</category></ComponentType>";
}
std::string implementation(const std::string& name) {
    return "<ComponentImplementation><name>" + name +
           "</name><modes><Mode><name>m</name><type>0</type></Mode></modes><normal_mode_transitions/>"
           "<data_port_connections/><event_port_connections/><flows/><non_data_subcomponents/><data_subcomponents/>"
           "</ComponentImplementation>";
}
std::string subpackage(const std::string& kind, const std::string& types, const std::string& implementations) {
    return "<" + kind + "_subpackage><types>" + types + "</types><implementations>" + implementations +
           "</implementations></" + kind + "_subpackage>";
}

Texts packageNames(const std::string& text) {
    Texts names;
    const std::unique_ptr<VornSpecification> specification = parseModelText(text);
    for (const auto& entry : specification->packages()) names.push_back(entry.first);
    return names;
}

std::string modelFault(const std::string& text) {
    return faultOf([&] { parseModelText(text); });
}

TEST(Models, MustHaveTheRightRoot) {
    EXPECT_EQ(modelFault("<Compile/>"),
              "Error while parsing:  (Unexpected node:\n\tExpected: CompileInformation .\n\tFound: Compile)");
    EXPECT_EQ(modelFault("<n:CompileInformation xmlns:n='urn:n'/>"),
              "Error while parsing:  (Unexpected node:\n\tExpected: CompileInformation .\n\tFound: "
              "n:CompileInformation)")
        << "a model's names are matched with their prefix";
}

TEST(Models, MustHavePackages) {
    const char* const what = "Error while parsing: Found no packages (Xml encoded invalid vorn.)";
    EXPECT_EQ(modelFault(model("")), what);
    EXPECT_EQ(modelFault(model("<packages/>")), what);
    EXPECT_EQ(modelFault(model("<Package><name>p</name></Package>")), what) << "only in a list of packages";
}

TEST(Models, HoldThePackagesOfTheLastList) {
    const std::string first = "<packages>" + package("a") + package("b") + "</packages>";
    EXPECT_EQ(packageNames(model(first)), (Texts{"a", "b"}));
    EXPECT_EQ(packageNames(model(first + "<other/><packages>" + package("c") + "</packages>")), Texts{"c"});
    EXPECT_EQ(modelFault(model(first + "<packages/>")),
              "Error while parsing: Found no packages (Xml encoded invalid vorn.)");
}

TEST(Models, MustHavePackagesOnlyInAList) {
    EXPECT_EQ(modelFault(model("<packages>" + package("a") + "<Pack/></packages>")),
              "Error while parsing:  (Unexpected node:\n\tExpected: Package .\n\tFound: Pack)");
    EXPECT_EQ(modelFault(model("<packages><Pack/></packages><packages>" + package("a") + "</packages>")),
              "Error while parsing:  (Unexpected node:\n\tExpected: Package .\n\tFound: Pack)")
        << "a list that does not count must be free of faults too";
    EXPECT_EQ(modelFault(model("<packages><Package/></packages>")),
              "Error while parsing:  (Expected child node 'name' missing from 'Package')");
}

TEST(Models, AreReadThroughReferencesForwardAndBackward) {
    // In a list of packages it is the target whose name counts.
    EXPECT_EQ(packageNames(model("<packages><any objref='1'/></packages><x>"
                                 "<Package objid='1'><name objref='2'>own</name></Package><n objid='2'>real</n></x>")),
              Texts{"real"});
    EXPECT_EQ(modelFault(model("<packages><Package objref='1'/></packages><x objid='1'/>")),
              "Error while parsing:  (Unexpected node:\n\tExpected: Package .\n\tFound: x)");
    EXPECT_EQ(modelFault(model("<packages><Package objref='gone'/></packages>")),
              "Error while parsing: XML references object that has not been parsed yet: gone (Parser failed.)");
}

TEST(Packages, AreReadInDocumentOrder) {
    const auto fault = [](const std::string& contents) {
        return modelFault(model("<packages>" + package("p", contents) + "</packages>"));
    };
    // An implementation sees the types of its own and of earlier subpackages only.
    EXPECT_EQ(fault(subpackage("public", type("T"), "") + subpackage("private", "", implementation("T.i"))),
              "no fault");
    EXPECT_EQ(fault(subpackage("private", type("T"), "") + subpackage("public", "", implementation("T.i"))),
              "no fault");
    EXPECT_EQ(fault(subpackage("public", "", implementation("T.i")) + subpackage("private", type("T"), "")),
              "Error while parsing:  (Xml encoded invalid vorn.Unknown type T not found in package.)");
}

TEST(Packages, AreSplitIntoAPublicAndAPrivatePart) {
    const auto specification =
        parseModelText(model("<packages>" +
                             package("p", "<ignored/>" + subpackage("private", type("A"), implementation("A.i")) +
                                              subpackage("public", type("B"), implementation("B.i"))) +
                             "</packages>"));
    const VornPackage& parsed = *specification->packages().at("p");
    // Public ones come first.
    ASSERT_EQ(parsed.declarations().size(), 2U);
    EXPECT_EQ(parsed.declarations()[0]->name(), "B");
    EXPECT_EQ(parsed.declarations()[1]->name(), "A");
    ASSERT_EQ(parsed.implementations().size(), 2U);
    EXPECT_EQ(parsed.implementations()[0], parsed.findImplementation("B.i"));
}

TEST(Packages, AreReadThroughAReferenceToASubpackage) {
    const auto specification =
        parseModelText(model("<packages>" + package("p", "<public_subpackage objref='S'/>") +
                             package("q", "<any objref='S'/>") + "</packages><public_subpackage objid='S'><types>" +
                             type("T") + "</types><implementations/></public_subpackage>"));
    EXPECT_NE(specification->packages().at("p")->findDeclaration("T"),
              specification->packages().at("q")->findDeclaration("T"))
        << "each place gets its own objects";
}

TEST(Packages, HaveTheSectionThatTheTargetOfAReferenceIsNamedAfter) {
    const auto specification = parseModelText(
        model("<packages>" +
              package("p", "<public_subpackage objref='S'/>" + subpackage("public", type("B"), implementation("B.i"))) +
              "</packages><private_subpackage objid='S'><types>" + type("A") +
              "</types><implementations/></private_subpackage>"));
    const VornPackage& parsed = *specification->packages().at("p");
    ASSERT_EQ(parsed.declarations().size(), 2U);
    EXPECT_EQ(parsed.declarations()[0]->name(), "B") << "public ones come first";
    EXPECT_EQ(parsed.declarations()[1]->name(), "A");
}

TEST(Packages, PassOverAReferenceToSomethingElse) {
    const auto specification = parseModelText(model("<packages>" + package("p", "<public_subpackage objref='S'/>") +
                                                    "</packages><s objid='S'><types/><implementations/></s>"));
    EXPECT_TRUE(specification->packages().at("p")->declarations().empty());
}

TEST(Packages, MayHaveAReferenceToNothingInAChildThatIsNotRead) {
    EXPECT_EQ(packageNames(model("<packages>" + package("p", "<owner objref='gone'/>") + "</packages>")), Texts{"p"});
    EXPECT_EQ(modelFault(model("<packages>" + package("p", "<public_subpackage objref='gone'/>") + "</packages>")),
              "Error while parsing: XML references object that has not been parsed yet: gone (Parser failed.)");
}

struct BadFile {
    const char* name;
    std::string contents;
    const char* what;
};

class BadFiles : public testing::TestWithParam<BadFile> {};

TEST_P(BadFiles, AreInvalidXmlAsAModelAndUnexpectedAsProperties) {
    EXPECT_EQ(modelFault(GetParam().contents),
              std::string("Error while parsing: ") + GetParam().what + " (Invalid xml.)");
    EXPECT_EQ(faultOf([] { parsePropertyText(GetParam().contents); }),
              "Error while parsing: Unexpected Xercesc exception (Parser failed.)");
}

INSTANTIATE_TEST_SUITE_P(VornXmlParser, BadFiles,
                         testing::Values(BadFile{"Empty", "", "invalid document structure"},
                                         BadFile{"PlainText", "hello", "invalid document structure"},
                                         BadFile{"Truncated", "<CompileInformation><packages><Pack",
                                                 "unexpected end of input"},
                                         BadFile{"WrongEnd", "<a><b></a>", "expected end of tag 'b'"},
                                         BadFile{"Zeros", std::string(8, '\0'), "invalid document structure"},
                                         BadFile{"TwoRoots", "<a/><b/>", "comment or processing instruction expected"},
                                         BadFile{"UndeclaredEntity", "<a>&b;</a>", "entity 'b' not found"}),
                         CaseName());

TEST(Files, ThatAreMissingAreNamed) {
    const TempDir folder;
    const std::string path = folder.file("none.xml");
    parser::XmlContext context;
    VornXmlParser parser(context);
    EXPECT_EQ(faultOf([&] { parser.parseVorn(path); }),
              "Error while parsing: unable to open primary document entity '" + path + "' (Invalid xml.)");
    EXPECT_EQ(faultOf([&] { parser.parseProperties(path); }),
              "Error while parsing: Unexpected Xercesc exception (Parser failed.)");
}

TEST(Files, ThatAreFoldersAreNamed) {
    const TempDir folder;
    const std::string path = folder.path().string();
    parser::XmlContext context;
    VornXmlParser parser(context);
    const std::string what = "Error while parsing: '" + path + "' is a folder, not a file (Invalid xml.)";
    EXPECT_EQ(faultOf([&] { parser.parseVorn(path); }), what);
    EXPECT_EQ(faultOf([&] { parser.parseProperties(path); }), what);
}

TEST(Files, AreFoundUnderAnyName) {
    const TempDir folder;
    for (const std::string name : {"a b.xml", "\xC3\xBC.xml", "100%25.xml", "http:x.xml", "a#b?c.xml"}) {
        const std::string path = folder.write(name, "<formulae/>");
        parser::XmlContext context;
        EXPECT_TRUE(VornXmlParser(context).parseProperties(path).empty()) << name;
    }
}

TEST(Files, MayBeReadOneAfterTheOtherByOneParser) {
    const TempDir folder;
    const std::string declared = "<!DOCTYPE formulae [<!ENTITY one '<ltlFormula/>'>]><formulae>&one;</formulae>";
    parser::XmlContext context;
    VornXmlParser parser(context);
    EXPECT_NE(faultOf([&] { parser.parseProperties(folder.write("bad.xml", "<formulae><a>")); }), "no fault");
    EXPECT_TRUE(parser.parseProperties(folder.write("p.xml", declared)).empty());
    EXPECT_TRUE(parser.parseProperties(folder.write("q.xml", declared)).empty());
    const std::unique_ptr<VornSpecification> specification(
        parser.parseVorn(folder.write("m.xml", model("<packages>" + package("p") + "</packages>"))));
    EXPECT_EQ(specification->packages().size(), 1U);
}

TEST(Files, MayBeInAnyEncodingOfTheLibrary) {
    const std::string latin =
        "<?xml version='1.0' encoding='ISO-8859-1'?>" + model("<packages>" + package("\xFC") + "</packages>");
    EXPECT_EQ(packageNames(latin), Texts{"\xC3\xBC"});
}

}  // namespace
}  // namespace vornrun::test
