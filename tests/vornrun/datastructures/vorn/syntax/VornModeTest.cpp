#include "vornrun/datastructures/vorn/syntax/VornMode.h"

#include <gtest/gtest.h>

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

VornLinearExpression* makeInvariant() { return new VornLinearExpression(new TypedVornVariable<VornBool>("safe"), {}); }

VornTrajectoryEquation* makeTrajectory(const std::string& variable, long rate) {
    return new TypedVornTrajectoryEquation<VornInt>(new TypedVornVariable<VornContinuous>(variable),
                                                    new TypedVornValue<VornInt>(rate));
}

struct ModeTypeCase {
    const char* name;
    VornModeType type;
    unsigned int number;
    const char* printed;
};

class VornModeTypeNamed : public testing::TestWithParam<ModeTypeCase> {};

TEST_P(VornModeTypeNamed, PrintsBetweenColonAndMode) {
    EXPECT_EQ(static_cast<unsigned int>(GetParam().type), GetParam().number);
    EXPECT_EQ(printed(VornMode(4, "m", nullptr, {}, GetParam().type)), GetParam().printed);
}

INSTANTIATE_TEST_SUITE_P(AllFour, VornModeTypeNamed,
                         testing::Values(ModeTypeCase{"Plain", VornModeType::plain, 0, "m: mode;"},
                                         ModeTypeCase{"Initial", VornModeType::initial, 1, "m: initial mode;"},
                                         ModeTypeCase{"Activation", VornModeType::activation, 2, "m: activation mode;"},
                                         ModeTypeCase{"Error", VornModeType::error, 3, "m: error mode;"}),
                         CaseName());

TEST(VornMode, PrintsInvariantAndTrajectoriesJoinedByAnd) {
    EXPECT_EQ(printed(VornMode(0, "m", makeInvariant(), {}, VornModeType::plain)), "m: mode while safe;");
    EXPECT_EQ(printed(VornMode(0, "m", nullptr, {makeTrajectory("x", 1)}, VornModeType::plain)),
              "m: mode while x' = 1;");
    EXPECT_EQ(printed(VornMode(0, "m", makeInvariant(), {makeTrajectory("x", 1), makeTrajectory("y", -2)},
                               VornModeType::initial)),
              "m: initial mode while safe and x' = 1 and y' = -2;");
}

TEST(VornTrajectoryEquation, PrintsPartsThatAreMissing) {
    EXPECT_EQ(printed(TypedVornTrajectoryEquation<VornReal>(nullptr, nullptr)), "(null)' = (null)");
}

TEST(VornTrajectoryEquation, HasTheTypeOfItsRightSide) {
    const TypedVornTrajectoryEquation<VornReal> equation(new TypedVornVariable<VornContinuous>("x"),
                                                         new TypedVornValue<VornReal>(0.5));
    EXPECT_EQ(equation.type(), VornDataTypeTag::VornReal);
    EXPECT_EQ(equation.variable()->name(), "x");
    EXPECT_EQ(equation.rhs()->value(), 0.5);
}

}  // namespace
}  // namespace vornrun::test
