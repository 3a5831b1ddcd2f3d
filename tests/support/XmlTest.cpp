#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vornrun::test {
namespace {

TEST(Xml, WritesNestedElementsIndented) {
    const Xml root("a", {Xml("b", "text"), Xml("c", {Xml("d").attribute("id", "1")})});
    EXPECT_EQ(root.toString(), "<a>\n  <b>text</b>\n  <c>\n    <d id=\"1\"/>\n  </c>\n</a>\n");
}

TEST(Xml, EscapesTextAndAttributes) {
    EXPECT_EQ(Xml("a", "x < y & z").attribute("n", "\"q\"").toString(),
              "<a n=\"&quot;q&quot;\">x &lt; y &amp; z</a>\n");
}

TEST(Xml, WritesRawMarkupAsItStands) {
    EXPECT_EQ(Xml("a", {Xml::raw("<!-- & -->")}).toString(), "<a>\n  <!-- & -->\n</a>\n");
}

TEST(Xml, FindsDescendantsInDocumentOrder) {
    Xml root("a", {Xml("b", {Xml("x", "1")}), Xml("x", "2")});
    EXPECT_EQ(root.first("x").text(), "1");
    EXPECT_EQ(root.nth("x", 1).text(), "2");
}

TEST(Xml, RemovesTheFirstDescendantOfAName) {
    Xml root("a", {Xml("b", {Xml("x", "1")}), Xml("x", "2")});
    root.remove("x");
    EXPECT_EQ(root.toString(), "<a>\n  <b/>\n  <x>2</x>\n</a>\n");
}

TEST(Xml, RefusesToMissItsTarget) {
    Xml root("a");
    EXPECT_THROW(root.first("b"), std::logic_error);
    EXPECT_THROW(root.remove("b"), std::logic_error);
    EXPECT_THROW(replaceOnce("abc", "d", "e"), std::logic_error);
}

TEST(Xml, SetsAnAttributeAnew) {
    EXPECT_EQ(Xml("a").attribute("n", "1").attribute("n", "2").toString(), "<a n=\"2\"/>\n");
}

TEST(Xml, ReplacesTheFirstPlaceOnly) { EXPECT_EQ(replaceOnce("a b a", "a", "c"), "c b a"); }

}  // namespace
}  // namespace vornrun::test
