// Where faults are.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <xercesc/dom/DOMElement.hpp>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/TempDir.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "vornrun/algorithms/parser/DocumentReader.h"
#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {
namespace {

/// "line:column", or "none".
std::string text(const std::optional<SourcePlace>& place) {
    return place ? std::to_string(place->line) + ":" + std::to_string(place->column) : "none";
}

/// Where the only sign "@" is, which `fileText` leaves out.
struct Marked {
    explicit Marked(const std::string& marked) : fileText(marked) {
        const std::size_t sign = marked.find('@');
        fileText.erase(sign, 1);
        const auto lines = std::count(marked.begin(), marked.begin() + static_cast<std::ptrdiff_t>(sign), '\n');
        const std::size_t start = lines == 0 ? 0 : marked.rfind('\n', sign) + 1;
        place = std::to_string(lines + 1) + ":" + std::to_string(sign - start + 1);
    }
    std::string fileText;
    std::string place;
};

/// The place of the fault of a file; "no fault" without one.
template <class Parse>
std::string placeOfFault(const std::string& fileText, Parse parse) {
    const CapturedLog quiet;
    const TempDir folder;
    const std::string file = folder.write("input.xml", fileText);
    parser::XmlContext context;
    VornXmlParser parser(context);
    try {
        parse(parser, file);
    } catch (const VornXmlException& fault) {
        EXPECT_EQ(fault.place().value_or(SourcePlace{file, 0, 0}).file, file);
        EXPECT_EQ(std::string(fault.what()).find("on line"), std::string::npos);
        return text(fault.place());
    }
    return "no fault";
}

std::string placeInModel(const std::string& fileText) {
    return placeOfFault(fileText, [](VornXmlParser& parser, const std::string& file) {
        const std::unique_ptr<VornSpecification> unused(parser.parseVorn(file));
    });
}

std::string placeInProperties(const std::string& fileText) {
    return placeOfFault(fileText, [](VornXmlParser& parser, const std::string& file) {
        for (CSLFormula* const formula : parser.parseProperties(file)) delete formula;
    });
}

/// A model with an implementation T.i of these contents.
std::string model(const std::string& contents) {
    return "<?xml version='1.0'?>\n<CompileInformation>\n <packages>\n  <Package><name>p</name>\n   "
           "<public_subpackage>\n"
           "<types><ComponentType><name>T</name><category>0</category></ComponentType></types>\n<implementations>\n" +
           contents + "</implementations></public_subpackage></Package></packages></CompileInformation>\n";
}
std::string implementation(const std::string& modes, const std::string& transitions = "") {
    return model("<ComponentImplementation>\n<name>T.i</name>" + modes + "<normal_mode_transitions>" + transitions +
                 "</normal_mode_transitions><data_port_connections/><event_port_connections/><flows/>"
                 "<non_data_subcomponents/><data_subcomponents/></ComponentImplementation>");
}
const std::string MODES = "<modes><Mode><name>m</name><type>0</type></Mode></modes>\n";

struct Faulty {
    const char* name;
    std::string text;  // with "@" where the fault is
};

class Models : public testing::TestWithParam<Faulty> {};

TEST_P(Models, HaveTheirFaultsWhereTheElementStarts) {
    const Marked marked(GetParam().text);
    EXPECT_EQ(placeInModel(marked.fileText), marked.place) << marked.fileText;
}

const std::string GUARD_START = "<ModeTransition><source_mode>m</source_mode><target_mode>m</target_mode><label>\n";
const std::string GUARD_END = "<clauses/></label></ModeTransition>";

INSTANTIATE_TEST_SUITE_P(
    Places, Models,
    testing::Values(
        Faulty{"TheRoot", "<!-- first -->\n <!-- second -->@<Wrong/>"},
        Faulty{"NoPackages", "<?xml version='1.0'?>\n@<CompileInformation></CompileInformation>"},
        Faulty{"AnotherNameInAList", "<CompileInformation><packages>\n  @<Pack/></packages></CompileInformation>"},
        Faulty{"AMissingChildIsAtItsParent", implementation("@<modes>\n <other/> </modes>")},
        Faulty{"AWrongNumberIsAtItsElement",
               implementation("<modes>\n<Mode><name>m</name>  \n  @<type>initial</type></Mode></modes>")},
        Faulty{"AStartTagOfSeveralLines",
               implementation("<modes>\n<Mode><name>m</name>@<type\n a='1'\n  b='2'\n>initial</type></Mode></modes>")},
        Faulty{"BehindEmptyElements",
               implementation("<modes>\n<Mode><x/><y></y><name>m</name>@<type/></Mode></modes>")},
        Faulty{"AnUnknownType", model("<ComponentImplementation>\n\n @<name>U.i</name></ComponentImplementation>")},
        Faulty{"ANameWithoutADot", model("<ComponentImplementation>\n\n @<name>U</name></ComponentImplementation>")},
        Faulty{"AnExpressionOfAnUnknownKind", implementation(MODES, GUARD_START + "@<guard type='Odd'/>" + GUARD_END)},
        Faulty{"AGuardThatIsNotBoolean",
               implementation(MODES, GUARD_START +
                                         "@<guard type='NumberTreeNode'><node_type>1</node_type><number>1"
                                         "</number></guard>" +
                                         GUARD_END)},
        Faulty{"AWrongNodeType", implementation(MODES, GUARD_START +
                                                           "<guard type='NumberTreeNode'> @<node_type>17</node_type>"
                                                           "</guard>" +
                                                           GUARD_END)},
        Faulty{"AWrongOperator",
               implementation(MODES, GUARD_START +
                                         "<guard type='UnaryOperatorTreeNode'><node_type>0</node_type>\n"
                                         "<subexpression type='BooleanTreeNode'><node_type>0</node_type>"
                                         "<value>True</value></subexpression>@<operator>20</operator>"
                                         "</guard>" +
                                         GUARD_END)},
        Faulty{"ACircle", implementation(MODES, GUARD_START +
                                                    "@<guard objid='A' type='UnaryOperatorTreeNode'><node_type>0"
                                                    "</node_type><subexpression objref='A'/></guard>" +
                                                    GUARD_END)},
        Faulty{"AReferenceToNothing", implementation("\n\n  @<modes objref='gone'/>")},
        Faulty{"TheTargetOfAReference",
               implementation("<modes objref='M'/><other>\n<any objid='M'>@<Mode></Mode></any></other>")},
        Faulty{"BehindCharactersOfMoreThanOneByte", implementation("<!-- \xC3\xA4 -->\n<modes>@<Mode/></modes>")},
        Faulty{"BehindAnInstruction", implementation("<?pi x\n y?>@<modes/>")},
        Faulty{"BehindACharacterSection", implementation("<![CDATA[<x>\n<y>]]>@<modes/>")},
        Faulty{"BehindAReferenceToACharacter", implementation("&lt;&#65;@<modes/>")}),
    CaseName());

TEST(Places, OfDocumentsThatAreNotWellFormedAreThoseOfTheLibrary) {
    EXPECT_EQ(placeInModel("<a>\n <b></a>").substr(0, 2), "2:");
    EXPECT_EQ(placeInProperties("<a>\n\n <b></a>").substr(0, 2), "3:");
}

TEST(Places, OfPropertiesAreThoseOfTheirElements) {
    const Marked marked("<n:formulae xmlns:n='urn:n'>\n <n:cslFormula>\n  @<n:p/></n:cslFormula></n:formulae>");
    EXPECT_EQ(placeInProperties(marked.fileText), marked.place);
    const Marked root("\n@<formulas/>");
    EXPECT_EQ(placeInProperties(root.fileText), root.place);
}

TEST(Places, OfRefusedDocumentsAreWhereTheyAreRefused) {
    std::string attributes;
    for (int i = 0; i < 1001; ++i) attributes += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(placeInModel("<a>\n <b" + attributes + "/></a>"), "2:2");
    EXPECT_EQ(placeInModel("<!DOCTYPE a [<!ENTITY e SYSTEM 'x'>]>\n<a>\n\n&e;</a>").substr(0, 2), "4:");
}

TEST(Places, AreUnknownForAFaultOfTheWholeFile) {
    EXPECT_EQ(placeOfFault("", [](VornXmlParser& parser, const std::string& file) { parser.parseVorn(file + "x"); }),
              "none");
}

TEST(Places, OfInvalidArgumentsAreKeptByTheParser) {
    const Marked marked(
        "<CompileInformation><packages><Package><name>p</name><public_subpackage>\n<types><ComponentType><name>T</name>"
        "<category>0</category>\n<out_event_ports><ErrorEventPort><name>e</name><nonblocking>False</nonblocking>"
        "<distribution>1</distribution>\n  @<parameter>-1</parameter></ErrorEventPort></out_event_ports>"
        "</ComponentType></types></public_subpackage></Package></packages></CompileInformation>");
    const TempDir folder;
    const std::string file = folder.write("input.xml", marked.fileText);
    parser::XmlContext context;
    VornXmlParser parser(context);
    EXPECT_EQ(text(parser.placeOfInvalidArgument()), "none");
    EXPECT_THROW(parser.parseVorn(file), std::invalid_argument);
    EXPECT_EQ(text(parser.placeOfInvalidArgument()), marked.place);
    EXPECT_EQ(parser.placeOfInvalidArgument()->file, file);
    EXPECT_TRUE(parser.parseProperties(folder.write("p.xml", "<formulae/>")).empty());
    EXPECT_EQ(text(parser.placeOfInvalidArgument()), "none") << "of another call";
}

TEST(ElementPlaces, AreNoneForNoElementAndForADocumentOfAnotherReader) {
    EXPECT_FALSE(parser::placeOf(nullptr));
    const XmlDocument xml("<r/>");
    EXPECT_FALSE(parser::placeOf(xml.root()));
}

TEST(ElementPlaces, AreFoundForEveryElementThatWasAdded) {
    const XmlDocument xml("<r><a/><b/></r>");
    const auto* const a = xml.root()->getFirstElementChild();
    parser::ElementPlaces places("f");
    places.add(xml.root(), 1, 2);
    places.add(a, 3, std::uint64_t{1} << 40);
    EXPECT_EQ(text(places.find(xml.root())), "1:2");
    EXPECT_EQ(text(places.find(a)), "3:4294967295");
    EXPECT_EQ(text(places.find(xml.root()->getLastElementChild())), "none");
    places.add(xml.root()->getLastElementChild(), 5, 6);
    EXPECT_EQ(text(places.find(xml.root()->getLastElementChild())), "5:6") << "after a search";
}

}  // namespace
}  // namespace vornrun::test
