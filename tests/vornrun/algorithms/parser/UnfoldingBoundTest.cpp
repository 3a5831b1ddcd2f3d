#include "vornrun/algorithms/parser/UnfoldingBound.h"

#include <gtest/gtest.h>

#include "tests/vornrun/algorithms/parser/XmlDocument.h"

namespace vornrun::test {
namespace {

using parser::UnfoldingBound;

/// How many elements may be reached in a document.
std::uint64_t reachable(UnfoldingBound& bound, std::uint64_t atMost) {
    std::uint64_t count = 0;
    while (count < atMost && faultOf([&] { bound.countReached(); }) == "no fault") ++count;
    return count;
}

TEST(UnfoldingBound, IsTenMillionElements) { EXPECT_EQ(UnfoldingBound::ELEMENT_LIMIT, 10'000'000U); }

TEST(UnfoldingBound, IsTheLimitInASmallDocument) {
    UnfoldingBound bound(10'000);
    bound.startDocument(77, true);
    EXPECT_EQ(reachable(bound, 20'000), 10'000U);
    EXPECT_EQ(faultOf([&] { bound.countReached(); }),
              "Error while parsing: XML references multiply the 77 elements of the document to more than 10000 (Xml "
              "encoded invalid vorn.)");
}

TEST(UnfoldingBound, IsAHundredTimesALargeDocument) {
    UnfoldingBound bound(10'000);
    bound.startDocument(120, true);
    EXPECT_EQ(reachable(bound, 20'000), 12'099U);
}

TEST(UnfoldingBound, IsNoneInADocumentWithoutReferences) {
    UnfoldingBound bound(10'000);
    EXPECT_TRUE(bound.hasReferences()) << "as long as nothing is known";
    bound.startDocument(1, false);
    EXPECT_FALSE(bound.hasReferences());
    EXPECT_EQ(reachable(bound, 20'000), 20'000U);
}

TEST(UnfoldingBound, CountsAnewForEachDocument) {
    UnfoldingBound bound(10'000);
    bound.startDocument(1, true);
    EXPECT_EQ(reachable(bound, 9'999), 9'999U);
    bound.startDocument(1, true);
    EXPECT_EQ(reachable(bound, 2), 2U);
}

TEST(UnfoldingBound, HoldsForLooksToo) {
    // Elements that are only looked at cost time as well.
    UnfoldingBound bound(1000);
    bound.startDocument(5, true);
    const std::uint64_t allowed = 1000 * UnfoldingBound::LOOKS_PER_ELEMENT;
    for (std::uint64_t i = 0; i < allowed; ++i) bound.countLook();
    EXPECT_EQ(faultOf([&] { bound.countLook(); }),
              "Error while parsing: XML references multiply the 5 elements of the document to more than 1000 (Xml "
              "encoded invalid vorn.)");
}

}  // namespace
}  // namespace vornrun::test
