#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>

#include "tests/support/CaseName.h"

namespace vornrun::test {
namespace {

using testing::ThrowsMessage;

std::unique_ptr<VornEventPort> eventPort(const std::string& name) {
    return std::unique_ptr<VornEventPort>(VornPartsConstructor::createEventPort(name, PortDirection::in, true));
}

// Read before any test runs: other tests of this program make ports as well.
const unsigned int ID_AT_PROGRAM_START = VornPartsConstructor::portIdCounter;

TEST(VornPartsConstructor, GivesTheFirstPortOfTheProcessId10) { EXPECT_EQ(ID_AT_PROGRAM_START, 10u); }

TEST(VornPartsConstructor, CountsTheIdsOfAllKindsOfPortsUp) {
    const unsigned int first = VornPartsConstructor::portIdCounter;
    EXPECT_EQ(eventPort("a")->id(), first);
    EXPECT_EQ(eventPort("b")->id(), first + 1);
    const std::unique_ptr<VornPort> error(
        VornPartsConstructor::createErrorPort("c", PortDirection::out, false, DistributionType::poisson, 0.5));
    EXPECT_EQ(error->id(), first + 2);
    const std::unique_ptr<VornPort> silent(VornPartsConstructor::createErrorPort("d", PortDirection::out, false));
    EXPECT_EQ(silent->id(), first + 3);
    const std::unique_ptr<VornPort> data(VornPartsConstructor::createDataPort(
        "e", PortDirection::out, VornDataTypeTag::VornBool, nullptr, PortTag::none));
    EXPECT_EQ(data->id(), first + 4);
}

TEST(VornPartsConstructor, MakesEventPortsAsTold) {
    const auto port = eventPort("go");
    EXPECT_EQ(port->name(), "go");
    EXPECT_EQ(port->direction(), PortDirection::in);
    EXPECT_TRUE(port->nonblocking());
}

TEST(VornPartsConstructor, MakesErrorPortsWithoutDistribution) {
    const std::unique_ptr<VornErrorPort> port(VornPartsConstructor::createErrorPort("fail", PortDirection::out, false));
    EXPECT_EQ(port->distribution(), DistributionType::none);
    EXPECT_EQ(port->parameter(), 0.0);
    EXPECT_FALSE(port->nonblocking());
}

class RefusedRate : public testing::TestWithParam<double> {};

TEST_P(RefusedRate, ThrowsAndLeavesTheIdToTheNextPort) {
    const unsigned int next = VornPartsConstructor::portIdCounter;
    EXPECT_THAT(
        [] {
            VornPartsConstructor::createErrorPort("f", PortDirection::out, false, DistributionType::poisson,
                                                  GetParam());
        },
        ThrowsMessage<std::invalid_argument>("Poisson numbers have to be positive"));
    EXPECT_EQ(eventPort("a")->id(), next);
}

INSTANTIATE_TEST_SUITE_P(Rates, RefusedRate,
                         testing::Values(0.0, -0.0, -1.0, std::nan(""), -std::numeric_limits<double>::infinity()),
                         NamesInOrder({"Zero", "MinusZero", "Negative", "NoNumber", "MinusInfinity"}));

TEST(VornPartsConstructor, AcceptsASmallPositiveRate) {
    const std::unique_ptr<VornErrorPort> port(
        VornPartsConstructor::createErrorPort("f", PortDirection::out, true, DistributionType::poisson, 0.001));
    EXPECT_EQ(port->parameter(), 0.001);
    EXPECT_EQ(port->distribution(), DistributionType::poisson);
    EXPECT_TRUE(port->nonblocking());
}

TEST(VornPartsConstructor, MakesNoDataPortOfATagBeyondTheEightAndUsesNoId) {
    const unsigned int next = VornPartsConstructor::portIdCounter;
    EXPECT_EQ(VornPartsConstructor::createDataPort("d", PortDirection::in, static_cast<VornDataTypeTag>(8),
                                                   new TypedVornValue<VornInt>(1), PortTag::none),
              nullptr);
    EXPECT_EQ(eventPort("a")->id(), next);
}

template <class T>
class DataPortOf : public testing::Test {};
using AllTypes =
    testing::Types<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornEnum, VornInterval, VornModeVal>;
TYPED_TEST_SUITE(DataPortOf, AllTypes);

TYPED_TEST(DataPortOf, HasTheTypeOfItsTagAndTheGivenDefault) {
    auto* const value = new TypedVornValue<TypeParam>(TypeParam::DefaultValue);
    const std::unique_ptr<VornDataPort> port(
        VornPartsConstructor::createDataPort("d", PortDirection::out, TypeParam::tag, value, PortTag::alarm));
    EXPECT_EQ(port->type(), TypeParam::tag);
    EXPECT_EQ(port->defaultValue(), value);
    EXPECT_EQ(port->tag(), PortTag::alarm);
}

TYPED_TEST(DataPortOf, HasNoDefaultWhenNoneIsGiven) {
    const std::unique_ptr<VornDataPort> port(
        VornPartsConstructor::createDataPort("d", PortDirection::in, TypeParam::tag, nullptr, PortTag::none));
    EXPECT_EQ(port->defaultValue(), nullptr);
}

TYPED_TEST(DataPortOf, CanBeMadeInTheTypedForm) {
    const std::unique_ptr<TypedVornDataPort<TypeParam>> port(VornPartsConstructor::createDataPort<TypeParam>(
        "d", PortDirection::in, static_cast<TypedVornValue<TypeParam>*>(nullptr), PortTag::observable));
    EXPECT_EQ(port->type(), TypeParam::tag);
    EXPECT_EQ(port->tag(), PortTag::observable);
}

TEST(VornPartsConstructor, DropsADefaultOfAnotherType) {
    const std::unique_ptr<VornDataPort> port(VornPartsConstructor::createDataPort(
        "d", PortDirection::in, VornDataTypeTag::VornReal, new TypedVornValue<VornInt>(1), PortTag::none));
    EXPECT_EQ(port->defaultValue(), nullptr);
}

}  // namespace
}  // namespace vornrun::test
