// A file from a stranger must not make the program read something else, or keep it busy without end. The bounds are on
// work and memory; only the test runner has a timeout.

#include "vornrun/algorithms/parser/DocumentReader.h"

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "tests/vornrun/algorithms/parser/PropertyTest.h"

namespace vornrun::test {
namespace {

std::string document(const std::string& declarations, const std::string& contents) {
    return "<!DOCTYPE formulae [" + declarations + "]><formulae>" + contents + "</formulae>";
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

/// Entities e0 to e9, each ten times the one before.
std::string laughs(const std::string& innermost) {
    std::string text = "<!ENTITY e0 '" + innermost + "'>";
    for (int i = 1; i < 10; ++i)
        text += "<!ENTITY e" + std::to_string(i) + " '" + repeated("&e" + std::to_string(i - 1) + ";", 10) + "'>";
    return text;
}

/// The same with parameter entities, which expand between declarations.
std::string parameterLaughs(const std::string& innermost) {
    std::string text = "<!ENTITY % e0 '" + innermost + "'>";
    for (int i = 1; i < 10; ++i)
        text += "<!ENTITY % e" + std::to_string(i) + " '" + repeated("&#37;e" + std::to_string(i - 1) + ";", 10) + "'>";
    return text + "%e9;";
}

struct Hostile {
    const char* name;
    std::string (*text)();
    const char* what;
};

class HostileDocuments : public testing::TestWithParam<Hostile> {};

TEST_P(HostileDocuments, AreRefusedAsInvalidXml) {
    const std::string text = GetParam().text();
    const std::string what = std::string("Error while parsing: ") + GetParam().what + " (Invalid xml.)";
    EXPECT_EQ(faultOf([&] { parsePropertyText(text); }), what);
    EXPECT_EQ(faultOf([&] { parseModelText(text); }), what);
}

const std::string MANY(1000000, 'A');
constexpr const char* WITHOUT_BOUND = "The document expands without bound";

INSTANTIATE_TEST_SUITE_P(
    Expansion, HostileDocuments,
    testing::Values(
        Hostile{"InContents", [] { return document(laughs("lol"), "<a>&e9;</a>"); }, WITHOUT_BOUND},
        Hostile{"InAnAttribute", [] { return document(laughs("lol"), "<a x='&e9;'/>"); }, WITHOUT_BOUND},
        Hostile{"OfNothing", [] { return document(laughs(""), "<a>&e9;</a>"); }, WITHOUT_BOUND},
        Hostile{"OfElements", [] { return document(laughs("<a/>"), "&e9;"); }, WITHOUT_BOUND},
        Hostile{"InADefault", [] { return document(laughs("lol") + "<!ATTLIST a x CDATA '&e9;'>", "<a/>"); },
                WITHOUT_BOUND},
        Hostile{"OfNothingInADefault", [] { return document(laughs("") + "<!ATTLIST a x CDATA '&e9;'>", "<a/>"); },
                WITHOUT_BOUND},
        Hostile{"OfDeclarations", [] { return document(parameterLaughs("<!--x-->"), ""); }, WITHOUT_BOUND},
        Hostile{"OfNoDeclarations", [] { return document(parameterLaughs(""), ""); }, WITHOUT_BOUND},
        Hostile{"OfALongTextInContents",
                [] { return document("<!ENTITY e '" + MANY + "'>", "<a>" + repeated("&e;", 20000) + "</a>"); },
                WITHOUT_BOUND},
        Hostile{"OfALongTextInAnAttribute",
                [] { return document("<!ENTITY e '" + MANY + "'>", "<a x='" + repeated("&e;", 20000) + "'/>"); },
                WITHOUT_BOUND},
        Hostile{"OfALongTextInADefault",
                [] {
                    return document("<!ENTITY e '" + MANY + "'><!ATTLIST a x CDATA '" + repeated("&e;", 20000) + "'>",
                                    "<a/>");
                },
                WITHOUT_BOUND},
        Hostile{"OfADefaultInEveryElement",
                [] { return document("<!ATTLIST a x CDATA '" + MANY + "'>", repeated("<a/>", 20000)); }, WITHOUT_BOUND},
        Hostile{"OfAContentModel",
                [] { return document("<!ELEMENT a ((a|b)*,a" + repeated(",(a|b)", 24) + ")>", "<a><b/><a/></a>"); },
                WITHOUT_BOUND},
        Hostile{"InDepth", [] { return repeated("<a>", 1000000); }, "The document is nested too deeply"},
        Hostile{"InAttributes",
                [] {
                    std::string text = "<a";
                    for (int i = 0; i < 5000; ++i) text += " a" + std::to_string(i) + "=''";
                    return text + "/>";
                },
                "An element has too many attributes"}),
    CaseName());

// The network address has no listener: a connection would fail quickly, and differ in its message.
INSTANTIATE_TEST_SUITE_P(
    ExternalEntities, HostileDocuments,
    testing::Values(
        Hostile{"OfAFile", [] { return document("<!ENTITY e SYSTEM 'file:///etc/passwd'>", "<a>&e;</a>"); },
                "The document needs the external entity 'file:///etc/passwd', and nothing outside the file is read"},
        Hostile{"OfTheNetwork", [] { return document("<!ENTITY e SYSTEM 'http://127.0.0.1:1/e'>", "<a>&e;</a>"); },
                "The document needs the external entity 'http://127.0.0.1:1/e', and nothing outside the file is read"},
        Hostile{"ByPublicName", [] { return document("<!ENTITY e PUBLIC '-//X//Y' 'e.xml'>", "<a>&e;</a>"); },
                "The document needs the external entity 'e.xml', and nothing outside the file is read"},
        Hostile{"OfDeclarations", [] { return document("<!ENTITY % e SYSTEM 'file:///etc/passwd'> %e;", ""); },
                "The document needs the external entity 'file:///etc/passwd', and nothing outside the file is read"},
        Hostile{"NamedLikeTheDocumentType",
                [] {
                    return std::string(
                        "<!DOCTYPE formulae SYSTEM 'x' [<!ENTITY e SYSTEM 'x'>]><formulae>&e;</formulae>");
                },
                "The document needs the external entity 'x', and nothing outside the file is read"},
        Hostile{"ThatOnlyTheDocumentTypeDeclares",
                [] { return std::string("<!DOCTYPE formulae SYSTEM 'x'><formulae>&e;</formulae>"); },
                "The document does not declare all that it needs: entity 'e' not found"}),
    CaseName());

TEST(ExternalDocumentTypes, AreLeftUnreadWithAWarning) {
    for (const std::string location : {"http://127.0.0.1:1/x.dtd", "file:///etc/passwd", "x.dtd", ""}) {
        const CapturedLog log;
        EXPECT_TRUE(parsePropertyText("<!DOCTYPE formulae SYSTEM '" + location + "'><formulae/>").empty());
        EXPECT_TRUE(parsePropertyText("<!DOCTYPE formulae PUBLIC '-//X//Y' '" + location + "'><formulae/>").empty());
        const LogRecord record{
            LogLevel::Warn, "root.vornxml",
            "The external document type '" + location + "' is not read: nothing outside the file is."};
        EXPECT_EQ(log.records(), (std::vector<LogRecord>{record, record}));
    }
}

TEST(ExternalDocumentTypes, LeaveTheDeclarationsOfTheDocumentItself) {
    const CapturedLog log(LogLevel::Debug);
    EXPECT_TRUE(parsePropertyText("<!DOCTYPE formulae SYSTEM 'x.dtd' [<!ENTITY e '<ltlFormula/>'>]>"
                                  "<formulae>&e;</formulae>")
                    .empty());
    EXPECT_EQ(log.textsFrom(LogLevel::Trace),
              (std::vector<std::string>{"The external document type 'x.dtd' is not read: nothing outside the file is.",
                                        "Ignoring formula: ltlFormula"}));
}

TEST(Declarations, OfTheDocumentItselfWork) {
    const CapturedLog log(LogLevel::Debug);
    EXPECT_TRUE(parsePropertyText(document("<!ENTITY in 'x'><!ENTITY e '<q>&in;</q>'><!ATTLIST q y CDATA 'z'>"
                                           "<!ENTITY unused SYSTEM 'file:///etc/passwd'>",
                                           "&e;<r>&amp;&lt;&#65;</r>"))
                    .empty());
    EXPECT_EQ(log.textsFrom(LogLevel::Trace), (std::vector<std::string>{"Ignoring formula: q", "Ignoring formula: r"}));
}

TEST(Declarations, MayBeUsedManyTimes) {
    EXPECT_TRUE(parsePropertyText(document("<!ENTITY e 'text'>", "<a>" + repeated("&e;", 60000) + "</a>")).empty());
    // The characters that have a name in every document do not count.
    EXPECT_TRUE(parsePropertyText("<formulae><a>" + repeated("&amp;", 300000) + "</a></formulae>").empty());
}

TEST(Declarations, ThatRecurAreRefused) {
    const std::string text = document("<!ENTITY a '&b;'><!ENTITY b '&a;'>", "<x>&a;</x>");
    EXPECT_NE(faultOf([&] { parseModelText(text); }).find("(Invalid xml.)"), std::string::npos);
    EXPECT_EQ(faultOf([&] { parsePropertyText(text); }),
              "Error while parsing: Unexpected Xercesc exception (Parser failed.)");
}

TEST(Inclusions, AndSchemaLocationsAreNotFollowed) {
    const CapturedLog log(LogLevel::Debug);
    EXPECT_TRUE(parsePropertyText("<formulae xmlns:xi='http://www.w3.org/2001/XInclude'>"
                                  "<xi:include href='/etc/passwd' parse='text'/></formulae>")
                    .empty());
    EXPECT_TRUE(parsePropertyText("<formulae xmlns:i='http://www.w3.org/2001/XMLSchema-instance' "
                                  "i:noNamespaceSchemaLocation='http://127.0.0.1:1/s.xsd' "
                                  "i:schemaLocation='urn:a http://127.0.0.1:1/t.xsd'/>")
                    .empty());
    EXPECT_EQ(log.textsFrom(LogLevel::Trace), std::vector<std::string>{"Ignoring formula: include"});
}

TEST(LargeDocuments, OfTheSmallestElementsAreWithinTheBounds) {
    EXPECT_TRUE(parsePropertyText("<formulae>" + repeated("<a/>", 300000) + "</formulae>").empty());
    EXPECT_TRUE(
        parsePropertyText("<formulae>" + repeated("<a>", 20000) + repeated("</a>", 20000) + "</formulae>").empty());
}

}  // namespace
}  // namespace vornrun::test
