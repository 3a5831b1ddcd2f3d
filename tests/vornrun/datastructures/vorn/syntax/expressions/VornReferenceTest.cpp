#include "vornrun/datastructures/vorn/syntax/expressions/VornReference.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vornrun::test {
namespace {

struct Split {
    const char* testName;
    const char* text;
    const char* subComponent;
    const char* name;
    bool isSub;
};

class VornReferenceSplits : public testing::TestWithParam<Split> {};

TEST_P(VornReferenceSplits, AtTheFirstDot) {
    const VornReference reference(GetParam().text);
    EXPECT_EQ(reference.subComponent(), GetParam().subComponent);
    EXPECT_EQ(reference.name(), GetParam().name);
    EXPECT_EQ(reference.isSub(), GetParam().isSub);
    EXPECT_EQ(reference.text(), GetParam().text);
    std::ostringstream stream;
    stream << reference;
    EXPECT_EQ(stream.str(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Texts, VornReferenceSplits,
                         testing::Values(Split{"WithoutADot", "x", "", "x", false},
                                         Split{"OneDot", "a.b", "a", "b", true},
                                         Split{"SeveralDots", "a.b.c", "a", "b.c", true},
                                         Split{"LeadingDot", ".x", "", "x", true},
                                         Split{"TrailingDot", "a.", "a", "", true},
                                         Split{"DotAlone", ".", "", "", true}, Split{"Empty", "", "", "", false}),
                         [](const auto& tested) { return std::string(tested.param.testName); });

TEST(VornReference, UnwindsOneLevelAtATime) {
    const VornReference inner = VornReference("a.b.c").getSubReference();
    EXPECT_EQ(inner.subComponent(), "b");
    EXPECT_EQ(inner.name(), "c");
    const VornReference innermost = inner.getSubReference();
    EXPECT_FALSE(innermost.isSub());
    EXPECT_EQ(innermost.name(), "c");
}

TEST(VornReference, WithoutADotIsItsOwnSubReference) {
    const VornReference reference = VornReference("x").getSubReference();
    EXPECT_EQ(reference.name(), "x");
    EXPECT_EQ(reference.subComponent(), "");
    EXPECT_FALSE(reference.isSub());
}

}  // namespace
}  // namespace vornrun::test
