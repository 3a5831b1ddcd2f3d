/// \file
/// The executable as a user calls it: arguments, standard output, standard error and exit status.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/RunTool.h"
#include "tests/support/TempDir.h"

namespace vornrun::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(Tool, WithoutWordsAsksForTheInputFile) {
    const ToolResult result = runTool({});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "Error: Must specify exactly one input file\n");
    EXPECT_EQ(result.exitStatus, 1);
}

TEST(Tool, WithOneWordAsksForThePropertyFile) {
    const ToolResult result = runTool({.arguments = {"model.xml"}});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "Error: Must specify exactly one property file\n");
    EXPECT_EQ(result.exitStatus, 1);
}

TEST(Tool, WithThreeWordsReportsARepeatedOption) {
    const ToolResult result = runTool({.arguments = {"model.xml", "properties.xml", "more.xml"}});
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, StartsWith("Error: "));
    EXPECT_THAT(result.errors, HasSubstr("more than once"));
    EXPECT_EQ(result.exitStatus, 1);
}

TEST(Tool, EndsAHelpRequestWithStatusOneAndTheUsageOnStandardOutput) {
    const ToolResult result = runTool({.arguments = {"--help"}});
    EXPECT_THAT(result.output, StartsWith("Usage: vornrun [options] input-file property-file\n\nGeneric options:\n"));
    EXPECT_THAT(result.output, EndsWith("finding deadlock\n\n"));
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 1);
}

TEST(Tool, RefusesAStrategyThatIsNone) {
    const ToolResult result = runTool({.arguments = {"model.xml", "properties.xml", "--strategy", "lazy"}});
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, StartsWith("Error: the argument for option '--strategy' is invalid\n"));
    EXPECT_EQ(result.exitStatus, 1);
}

TEST(Tool, RefusesALevelInCapitals) {
    const ToolResult result = runTool({.arguments = {"model.xml", "properties.xml", "--level", "INFO"}});
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, StartsWith("Error: the argument for option '--level' is invalid\n"));
    EXPECT_EQ(result.exitStatus, 1);
}

}  // namespace
}  // namespace vornrun::test
