#include "tests/support/RunTool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <system_error>

#include "tests/support/TempDir.h"

namespace vornrun::test {
namespace {

ToolResult shell(const std::string& script, ToolCall call = {}) {
    call.arguments = {"-c", script};
    return runProgram("/bin/sh", call);
}

TEST(RunTool, TellsBothStreamsApartAndTheExitStatus) {
    const ToolResult result = shell("echo out; echo err >&2; exit 3");
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(result.errors, "err\n");
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.signal, 0);
    EXPECT_FALSE(result.timedOut);
}

TEST(RunTool, TellsTheSignalThatEndedTheProcess) {
    const ToolResult result = shell("echo before; kill -FPE $$");
    EXPECT_EQ(result.output, "before\n");
    EXPECT_EQ(result.exitStatus, -1);
    EXPECT_EQ(result.signal, SIGFPE);
}

TEST(RunTool, FeedsStandardInputToItsEnd) {
    EXPECT_EQ(shell("cat; echo end", {.input = "one\ntwo\n"}).output, "one\ntwo\nend\n");
}

TEST(RunTool, CarriesMoreThanAPipeHolds) {
    const std::string large(1000000, 'x');
    EXPECT_EQ(shell("cat", {.input = large}).output, large);
}

TEST(RunTool, RunsInTheGivenDirectory) {
    const TempDir folder;
    folder.write("here.txt", "found");
    EXPECT_EQ(shell("cat here.txt", {.directory = folder.path()}).output, "found");
}

TEST(RunTool, RunsInAFreshEmptyFolderOtherwise) { EXPECT_EQ(shell("ls -A | wc -l").output, "0\n"); }

TEST(RunTool, KillsAProcessAtTheTimeLimitAndKeepsWhatItWrote) {
    const ToolResult result = shell("echo started; while :; do :; done", {.timeLimit = std::chrono::milliseconds(500)});
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.signal, SIGKILL);
    EXPECT_EQ(result.output, "started\n");
}

TEST(RunTool, ThrowsWhenThereIsNoSuchProgram) { EXPECT_THROW(runProgram("/no/such/program", {}), std::system_error); }

}  // namespace
}  // namespace vornrun::test
