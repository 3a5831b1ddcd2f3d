#include "tools/simulator/FatalHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "tests/support/RunTool.h"

namespace vornrun::test {
namespace {

struct FatalEnd {
    const char* name;
    const char* way;
    const char* line;
};

class FatalHandlerEnds : public testing::TestWithParam<FatalEnd> {};

TEST_P(FatalHandlerEnds, WithTheOutputSoFarOneLineAndTheAbortSignal) {
    const ToolResult result = runProgram(VORNRUN_FATAL_PROGRAM, {.arguments = {GetParam().way}});
    EXPECT_EQ(result.signal, SIGABRT);
    EXPECT_EQ(result.output, "by printf;by cout;");
    EXPECT_EQ(result.errors, std::string(GetParam().line) + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    FatalHandler, FatalHandlerEnds,
    testing::Values(FatalEnd{"AnExceptionThatLeavesMain", "main", "vornrun: fatal: thrown in main"},
                    FatalEnd{"AnExceptionThatLeavesAWorker", "worker", "vornrun: fatal: thrown in a worker"},
                    FatalEnd{"ExceptionsOfTwoWorkersAtOnce", "two", "vornrun: fatal: one of two"},
                    FatalEnd{"AnExceptionWithoutAText", "number", "vornrun: fatal: an exception of an unknown type"},
                    FatalEnd{"ACallOfTerminate", "terminate", "vornrun: fatal: terminated without an exception"},
                    FatalEnd{"AnExceptionWhereNoneMayBe", "noexcept", "vornrun: fatal: thrown in a destructor, say"}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(FatalHandler, LeavesAnOrdinaryEndAlone) {
    const ToolResult result = runProgram(VORNRUN_FATAL_PROGRAM, {.arguments = {"none"}});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "by printf;by cout;");
    EXPECT_EQ(result.errors, "");
}

}  // namespace
}  // namespace vornrun::test
