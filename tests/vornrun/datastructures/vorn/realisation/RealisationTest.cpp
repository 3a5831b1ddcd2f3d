#include "vornrun/datastructures/vorn/realisation/Realisation.h"

#include <sstream>

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"

namespace vornrun::test {
namespace {

using RealisedIdentifierTest = RealisationFixture;

TEST_F(RealisedIdentifierTest, TheRootsFullIdentifierIsItsNameAlone) {
    EXPECT_EQ(root->fullIdentifier(), "root");
    EXPECT_EQ(root->parent(), nullptr);
}

TEST_F(RealisedIdentifierTest, APartTwoLevelsDownIsNamedByTheWholePath) {
    auto sub = component(1, "sub");
    const RealisedEventPort* part = eventPort(*sub, 7, "part", PortDirection::in);
    EXPECT_EQ(part->fullIdentifier(), "root.sub.part");
    EXPECT_EQ(part->identifier(), "part");
    EXPECT_EQ(part->id(), 7u);
    EXPECT_EQ(part->parent(), sub.get());
    EXPECT_EQ(part->component(), sub.get());
}

TEST_F(RealisedIdentifierTest, AnIdentifierWithoutAParentStandsAlone) {
    const RealisedIdentifier lone(3, "lone");
    EXPECT_EQ(lone.fullIdentifier(), "lone");
    EXPECT_EQ(lone.id(), 3u);
    EXPECT_EQ(lone.parent(), nullptr);
}

TEST_F(RealisedIdentifierTest, InsertingARealisationIntoAStreamPrintsIt) {
    std::ostringstream stream;
    stream << static_cast<const Realisation&>(*b);
    EXPECT_EQ(stream.str(), "b: mode");
}

TEST_F(RealisedIdentifierTest, PartsAreOrderedByTheirIdsWhereverTheyLie) {
    const RealisedPart* second = eventPort(*root, 2, "x", PortDirection::in);
    const RealisedPart* first = eventPort(*root, 1, "y", PortDirection::in);
    EXPECT_TRUE(PartOrder()(first, second));
    EXPECT_FALSE(PartOrder()(second, first));
    EXPECT_FALSE(PartOrder()(first, first));
}

}  // namespace
}  // namespace vornrun::test
