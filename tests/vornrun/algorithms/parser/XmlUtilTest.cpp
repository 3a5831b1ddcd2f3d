#include "vornrun/algorithms/parser/XmlUtil.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "tests/vornrun/algorithms/parser/XmlDocument.h"

namespace vornrun::test {
namespace {

using namespace parser;

TEST(XmlUtil, KeepsTheLibraryUpUntilTheLastUserHasGone) {
    ASSERT_TRUE(util::initialize());
    ASSERT_TRUE(util::initialize());
    util::clean();
    EXPECT_NE(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    util::clean();
    EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    util::clean();  // one too many is no fault
    ASSERT_TRUE(util::initialize());
    EXPECT_NE(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    util::clean();
}

TEST(XmlUtil, TranscodesToUtf8WhateverTheLocale) {
    EXPECT_EQ(util::transcode(u"plain"), "plain");
    EXPECT_EQ(util::transcode(u""), "");
    EXPECT_EQ(util::transcode(nullptr), "");
    EXPECT_EQ(util::transcode(u"\u00FCber"),
              "\xC3\xBC"
              "ber");
    EXPECT_EQ(util::transcode(u"\u20AC"), "\xE2\x82\xAC");
    EXPECT_EQ(util::transcode(u"\U0001F600"), "\xF0\x9F\x98\x80");
    const char16_t lonely[] = {0xD800, u'x', 0};
    EXPECT_EQ(util::transcode(lonely), "\xEF\xBF\xBDx");
}

TEST(XmlUtil, NamesAnElementWithItsPrefixOrByItsLocalName) {
    const XmlDocument xml("<n:a xmlns:n='urn:n'/>");
    EXPECT_EQ(util::nodeName(xml.root()), "n:a");
    EXPECT_EQ(util::nodeName(xml.root(), true), "a");
    EXPECT_TRUE(util::elemMatchesTag(xml.root(), u"n:a"));
    EXPECT_FALSE(util::elemMatchesTag(xml.root(), u"a"));
    EXPECT_TRUE(util::elemMatchesTag(xml.root(), u"a", true));
    EXPECT_FALSE(util::elemMatchesTag(xml.root(), u"n:a", true));
    EXPECT_FALSE(util::elemMatchesTag(xml.root(), u"A", true)) << "names differ by their capitals";
}

TEST(XmlUtil, ReadsTheTextOfAnElementWithAllThatItHolds) {
    EXPECT_EQ(util::getStringContent(XmlDocument("<a/>").root()), "");
    EXPECT_EQ(util::getStringContent(XmlDocument("<a> x </a>").root()), " x ");
    EXPECT_EQ(util::getStringContent(XmlDocument("<a>x<!--no--><![CDATA[<y>]]><b>z<c>1</c></b><?no no?>w</a>").root()),
              "x<y>z1w");
}

TEST(XmlUtil, ReadsATextHoweverDeepItIsNested) {
    std::string text = "x";
    for (int i = 0; i < 15000; ++i) text = "<a>" + text + "</a>";
    EXPECT_EQ(util::getStringContent(XmlDocument(text).root()), "x");
}

TEST(XmlUtil, TakesOnlyTrueAndFalseWithCapitals) {
    EXPECT_TRUE(util::getBooleanContent(XmlDocument("<a>True</a>").root(), "d"));
    EXPECT_FALSE(util::getBooleanContent(XmlDocument("<a>False</a>").root(), "d"));
    EXPECT_TRUE(util::getBooleanContent(XmlDocument("<a>Tr<!-- -->ue</a>").root(), "d"));
    for (const std::string text : {"true", "false", "TRUE", "1", "", " True", "True "}) {
        const XmlDocument xml("<a>" + text + "</a>");
        EXPECT_EQ(
            faultOf([&] { util::getBooleanContent(xml.root(), "d"); }),
            "Error while parsing: d (Unexpected value:\n\tExpected: Either True or False .\n\tFound: " + text + ")");
    }
}

struct Number {
    std::string text;
    double value;
};

TEST(XmlUtil, TakesNaturalNumbersOf32Bits) {
    for (const auto& [text, value] :
         {Number{"0", 0}, Number{"1", 1}, Number{"+7", 7}, Number{"4294967295", 4294967295}})
        EXPECT_EQ(util::getNaturalNumberContent(XmlDocument("<a>" + text + "</a>").root(), "d"), value) << text;
    for (const std::string text : {"-1", "-0", "4294967296", "1.0", "", " 1", "1 ", "x", "-4294967295"}) {
        const XmlDocument xml("<a>" + text + "</a>");
        EXPECT_EQ(faultOf([&] { util::getNaturalNumberContent(xml.root(), "d"); }),
                  "Error while parsing: d (Unexpected value:\n\tExpected: An integer number larger than or equal 0 "
                  ".\n\tFound: " +
                      text + ")");
    }
}

TEST(XmlUtil, TakesIntegersOf32Bits) {
    for (const auto& [text, value] :
         {Number{"0", 0}, Number{"-1", -1}, Number{"2147483647", 2147483647}, Number{"-2147483648", -2147483648.0}})
        EXPECT_EQ(util::getIntegerNumberContent(XmlDocument("<a>" + text + "</a>").root(), "d"), value) << text;
    for (const std::string text : {"3000000000", "2147483648", "-2147483649", "1.5", "1e3", "", "0x10", "--1"}) {
        const XmlDocument xml("<a>" + text + "</a>");
        EXPECT_EQ(
            faultOf([&] { util::getIntegerNumberContent(xml.root(), "d"); }),
            "Error while parsing: d (Unexpected value:\n\tExpected: Any integer number. .\n\tFound: " + text + ")");
    }
}

TEST(XmlUtil, TakesRealNumbersWithInfinityAndNotANumber) {
    constexpr double INF = std::numeric_limits<double>::infinity();
    for (const auto& [text, value] : {Number{"0", 0}, Number{"-1.5", -1.5}, Number{"1e3", 1000}, Number{".5", 0.5},
                                      Number{"inf", INF}, Number{"-inf", -INF}, Number{"INFINITY", INF}})
        EXPECT_EQ(util::getRealNumberContent(XmlDocument("<a>" + text + "</a>").root(), "d"), value) << text;
    EXPECT_TRUE(std::isnan(util::getRealNumberContent(XmlDocument("<a>nan</a>").root(), "d")));
    for (const std::string text : {"", "x", "1,5", "1.5 ", " 1.5", "1.5x", "True"}) {
        const XmlDocument xml("<a>" + text + "</a>");
        EXPECT_EQ(faultOf([&] { util::getRealNumberContent(xml.root(), "d"); }),
                  "Error while parsing: d (Unexpected value:\n\tExpected: Any number. .\n\tFound: " + text + ")");
    }
}

}  // namespace
}  // namespace vornrun::test
