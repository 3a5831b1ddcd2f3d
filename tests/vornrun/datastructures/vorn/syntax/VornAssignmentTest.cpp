#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"

#include <gtest/gtest.h>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

TEST(VornAssignment, PrintsVariableAndExpressionWithTwoBlanksBehindTheSign) {
    const VornAssignment assignment(new TypedVornVariable<VornInt>("sub.x"), new TypedVornValue<VornInt>(3));
    EXPECT_EQ(printed(assignment), "sub.x :=  3");
}

TEST(VornAssignment, PrintsPartsWhoseParsingFailed) {
    EXPECT_EQ(printed(VornAssignment(new TypedVornVariable<VornInt>("x"), nullptr)), "x :=  (null)");
    EXPECT_EQ(printed(VornAssignment(nullptr, new TypedVornValue<VornBool>(true))), "(null) :=  1");
}

TEST(VornFlow, PrintsLikeAnAssignmentAndKeepsItsModes) {
    const VornFlow flow(new TypedVornVariable<VornReal>("out"), new TypedVornVariable<VornReal>("in"), {"a", "b"});
    EXPECT_EQ(printed(flow), "out :=  in");
    EXPECT_EQ(flow.inModes(), (std::vector<std::string>{"a", "b"}));
}

}  // namespace
}  // namespace vornrun::test
