#include "vornrun/datastructures/vorn/syntax/VornDataSubcomponent.h"

#include <gtest/gtest.h>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

TEST(VornDataSubcomponent, PrintsTypeAndDefault) {
    EXPECT_EQ(printed(TypedVornDataSubcomponent<VornInterval>("n", new TypedVornValue<VornInterval>(-2), {"m"}, true)),
              "n: data interval default -2;");
    EXPECT_EQ(printed(TypedVornDataSubcomponent<VornContinuous>("x", nullptr, {}, false)), "x: data continuous;");
}

template <class T>
class TypedVornDataSubcomponentOf : public testing::Test {};
using AllTypes =
    testing::Types<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornEnum, VornInterval, VornModeVal>;
TYPED_TEST_SUITE(TypedVornDataSubcomponentOf, AllTypes);

TYPED_TEST(TypedVornDataSubcomponentOf, TellsItsTypeAndIsAClockOnlyForClocks) {
    const TypedVornDataSubcomponent<TypeParam> data("x", nullptr, {}, true);
    EXPECT_EQ(data.type(), TypeParam::tag);
    EXPECT_EQ(data.isClock(), TypeParam::tag == VornDataTypeTag::VornClock);
    EXPECT_EQ(data.defaultValue(), nullptr);
    EXPECT_TRUE(data.observable());
    EXPECT_EQ(data.name(), "x");
}

TEST(VornDataSubcomponent, OwnsItsDefault) {
    const TypedVornDataSubcomponent<VornReal> data("x", new TypedVornValue<VornReal>(1.5), {"a", "b"}, false);
    ASSERT_NE(data.defaultValue(), nullptr);
    EXPECT_EQ(data.defaultValue()->value(), 1.5);
    EXPECT_FALSE(data.observable());
    EXPECT_EQ(data.inModes(), (std::vector<std::string>{"a", "b"}));
}

}  // namespace
}  // namespace vornrun::test
