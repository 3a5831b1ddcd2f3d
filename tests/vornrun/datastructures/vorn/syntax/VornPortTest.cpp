#include "vornrun/datastructures/vorn/syntax/VornPort.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

using testing::ThrowsMessage;

template <class T>
std::string written(const T& value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

TEST(PortDirection, IsWrittenAndReadByTheSameWords) {
    EXPECT_EQ(written(PortDirection::in), "in");
    EXPECT_EQ(written(PortDirection::out), "out");
    EXPECT_EQ(portDirection("in"), PortDirection::in);
    EXPECT_EQ(portDirection("out"), PortDirection::out);
}

TEST(PortDirection, RefusesAnyOtherText) {
    EXPECT_THAT([] { portDirection("In"); },
                ThrowsMessage<std::invalid_argument>("Cannot convert In to a port direction"));
    EXPECT_THAT([] { portDirection(""); }, ThrowsMessage<std::invalid_argument>("Cannot convert  to a port direction"));
}

TEST(PortTag, IsWrittenWithABlankInFrontOrNotAtAll) {
    EXPECT_EQ(written(PortTag::none), "");
    EXPECT_EQ(written(PortTag::alarm), " alarm");
    EXPECT_EQ(written(PortTag::observable), " observable");
}

TEST(DistributionType, ComesOfTheNumberOfTheModelFile) {
    EXPECT_EQ(distrTypeToVornDistributionType(0), DistributionType::none);
    EXPECT_EQ(distrTypeToVornDistributionType(1), DistributionType::poisson);
    EXPECT_THAT([] { distrTypeToVornDistributionType(2); },
                ThrowsMessage<std::invalid_argument>("Unknown distribution type 2"));
}

TEST(VornEventPort, PrintsNonblockingOnlyWhenSet) {
    EXPECT_EQ(printed(VornEventPort(10, "go", PortDirection::in, false)), "go : in event port; --10");
    EXPECT_EQ(printed(VornEventPort(11, "done", PortDirection::out, true)), "done : out event port nonblocking; --11");
}

TEST(VornErrorPort, PrintsItsRateOnlyWithADistribution) {
    EXPECT_EQ(printed(VornErrorPort(12, "fail", PortDirection::out, false, DistributionType::none, 0)),
              "fail : out error event port; --12");
    EXPECT_EQ(printed(VornErrorPort(13, "fail", PortDirection::out, true, DistributionType::poisson, 0.25)),
              "fail : out error event port nonblocking occurrence poisson 0.25; --13");
}

TEST(VornDataPort, PrintsTypeDefaultAndTag) {
    EXPECT_EQ(printed(TypedVornDataPort<VornInt>(14, "level", PortDirection::out, new TypedVornValue<VornInt>(7),
                                                 PortTag::alarm)),
              "level : out data port int default 7 alarm; --14");
    EXPECT_EQ(printed(TypedVornDataPort<VornModeVal>(15, "m", PortDirection::in, nullptr, PortTag::none)),
              "m : in data port mode; --15");
    EXPECT_EQ(printed(TypedVornDataPort<VornClock>(16, "c", PortDirection::out, nullptr, PortTag::observable)),
              "c : out data port clock observable; --16");
}

TEST(VornPort, KnowsWhetherItIsAnEventPort) {
    EXPECT_TRUE(VornEventPort(1, "e", PortDirection::in, false).event());
    EXPECT_TRUE(VornErrorPort(2, "f", PortDirection::out, false, DistributionType::poisson, 1).event());
    EXPECT_FALSE(TypedVornDataPort<VornBool>(3, "d", PortDirection::in, nullptr, PortTag::none).event());
}

TEST(VornDataPort, TellsItsTypeAndDefault) {
    const TypedVornDataPort<VornEnum> port(1, "color", PortDirection::in, new TypedVornValue<VornEnum>("red"),
                                           PortTag::none);
    EXPECT_EQ(port.type(), VornDataTypeTag::VornEnum);
    ASSERT_NE(port.defaultValue(), nullptr);
    EXPECT_EQ(port.defaultValue()->value(), "red");
}

}  // namespace
}  // namespace vornrun::test
