#include "vornrun/datastructures/vorn/realisation/RealisedPort.h"

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"

namespace vornrun::test {
namespace {

using RealisedPortTest = RealisationFixture;

TEST_F(RealisedPortTest, AnEventPortCopiesItsDeclaration) {
    const VornEventPort blocking(20, "go", PortDirection::in, false);
    const VornEventPort nonblocking(21, "tick", PortDirection::out, true);
    const RealisedEventPort first(4, root.get(), &blocking);
    const RealisedEventPort second(5, root.get(), &nonblocking);
    EXPECT_FALSE(first.nonblocking());
    EXPECT_TRUE(second.nonblocking());
    EXPECT_EQ(first.direction(), PortDirection::in);
    EXPECT_EQ(second.direction(), PortDirection::out);
    EXPECT_EQ(first.realises(), &blocking);
    EXPECT_EQ(first.occurrence(), DistributionType::none);
    EXPECT_FALSE(first.stochastic());
    EXPECT_EQ(first.rate(), 0.0);
    EXPECT_EQ(static_cast<unsigned int>(first.type()), 0u);
}

TEST_F(RealisedPortTest, AnErrorPortNeverBlocksWhateverItsDeclarationSays) {
    const VornErrorPort declaration(20, "fail", PortDirection::out, false, DistributionType::poisson, 0.25);
    const RealisedEventPort port(4, root.get(), &declaration);
    EXPECT_TRUE(port.nonblocking());
    EXPECT_EQ(static_cast<unsigned int>(port.occurrence()), 1u);
    EXPECT_TRUE(port.stochastic());
    EXPECT_EQ(port.rate(), 0.25);
}

TEST_F(RealisedPortTest, AnErrorPortWithoutADistributionDoesNotOccurByItselfAndStillNeverBlocks) {
    const VornErrorPort declaration(20, "fail", PortDirection::out, false, DistributionType::none, 0.0);
    const RealisedEventPort port(4, root.get(), &declaration);
    EXPECT_TRUE(port.nonblocking());
    EXPECT_FALSE(port.stochastic());
    EXPECT_EQ(port.rate(), 0.0);
}

TEST_F(RealisedPortTest, AnEventPortPrintsItsNameAndId) {
    const VornEventPort declaration(20, "go", PortDirection::in, false);
    EXPECT_EQ(printed(RealisedEventPort(4, root.get(), &declaration)), "(go)[4]");
}

TEST_F(RealisedPortTest, ADataPortForwardsTheTypeAndPrintsBothIds) {
    const TypedVornDataPort<VornInt> declaration(20, "level", PortDirection::out, nullptr, PortTag::none);
    const RealisedDataPort port(4, root.get(), &declaration);
    EXPECT_EQ(port.type(), VornDataTypeTag::VornInt);
    EXPECT_EQ(port.realises(), &declaration);
    EXPECT_EQ(port.direction(), PortDirection::out);
    EXPECT_EQ(printed(port), "[4] (from feature [20]) (level)");
}

class DeathNotice final : public VornEventPort {
  public:
    DeathNotice(unsigned int id, bool& died) : VornEventPort(id, "p", PortDirection::in, false), mDied(died) {}
    ~DeathNotice() override { mDied = true; }

  private:
    bool& mDied;
};

class SyntheticPort : public RealisationFixture, public testing::WithParamInterface<unsigned int> {};

TEST_P(SyntheticPort, OwnsItsDeclaration) {
    bool died = false;
    { const RealisedEventPort port(4, root.get(), new DeathNotice(GetParam(), died)); }
    EXPECT_TRUE(died);
}

INSTANTIATE_TEST_SUITE_P(ReservedIds, SyntheticPort, testing::Values(4294967295u, 4294967294u, 4294967293u),
                         NamesInOrder({"Largest", "LargestButOne", "LargestButTwo"}));

TEST_F(RealisedPortTest, APortOfAnyOtherIdLeavesItsDeclarationAlone) {
    for (const unsigned int id : {0u, 10u, 4294967292u}) {
        bool died = false;
        const std::unique_ptr<DeathNotice> declaration = std::make_unique<DeathNotice>(id, died);
        { const RealisedEventPort port(4, root.get(), declaration.get()); }
        EXPECT_FALSE(died) << "declaration id " << id;
    }
}

TEST_F(RealisedPortTest, ADataSubcomponentForwardsTheTypeAndPrintsItsId) {
    const RealisedDataSubcomponent* part = data<VornClock>(9, "x", {a, b});
    EXPECT_EQ(part->type(), VornDataTypeTag::VornClock);
    EXPECT_EQ(part->identifier(), "x");
    EXPECT_EQ(part->modes(), (ModeList{a, b}));
    EXPECT_EQ(part->data(), dataDeclarations.back().get());
    EXPECT_EQ(printed(*part), "[9] (x)");
}

}  // namespace
}  // namespace vornrun::test
