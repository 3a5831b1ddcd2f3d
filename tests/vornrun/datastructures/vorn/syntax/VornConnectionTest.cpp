#include "vornrun/datastructures/vorn/syntax/VornConnection.h"

#include <gtest/gtest.h>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

TEST(VornConnection, PrintsAnEventConnection) {
    const VornConnection connection(new VornReference("a.out"), new VornReference("in"), true, {}, false);
    EXPECT_EQ(printed(connection), "event port a.out -> in;");
}

TEST(VornConnection, PrintsADataConnectionWithItsModes) {
    const VornConnection connection(new VornReference("x"), new VornReference("b.c.y"), false, {"m", "n"}, true);
    EXPECT_EQ(printed(connection), "data port x -> b.c.y in modes (m, n);");
}

TEST(VornConnection, TellsItsParts) {
    const VornConnection connection(new VornReference("a.out"), new VornReference("in"), true, {"m"}, true);
    EXPECT_EQ(connection.source().subComponent(), "a");
    EXPECT_EQ(connection.target().name(), "in");
    EXPECT_TRUE(connection.isEvent());
    EXPECT_TRUE(connection.passive());
    EXPECT_EQ(connection.inModes(), std::vector<std::string>{"m"});
}

}  // namespace
}  // namespace vornrun::test
