/// \file
/// The executable in surroundings that someone has set up oddly: limits of the shell, a faulty log configuration.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/RunTool.h"
#include "tests/support/TempDir.h"
#include "tests/tools/simulator/SmallModels.h"

namespace vornrun::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

const std::string ONE_RESULT = ".\nProperty holds with probability [1.0000000000,1.0000000000]\n";

/// `P[true U not not ... true]`.
std::string deepProperty(std::size_t negations) {
    std::string open;
    std::string close;
    for (std::size_t i = 0; i < negations; ++i) {
        open += "<not>";
        close += "</not>";
    }
    return "<formulae><cslFormula><p><comparisonOperator><lessThan/></comparisonOperator>"
           "<threshold><value>0.5</value></threshold><u><lowerBound><value>0</value></lowerBound>"
           "<upperBound><value>10</value></upperBound><true/>" +
           open + "<true/>" + close + "</u></p></cslFormula></formulae>";
}

/// Calls the tool from a shell that has lifted the limit on the initial thread's stack, at which the system gives the
/// other threads a smaller one than usual.
ToolResult runWithoutStackLimit(const TempDir& folder, std::size_t negations) {
    const std::string script = "ulimit -s unlimited 2>/dev/null || exit 77; exec \"$@\"";
    return runProgram("/bin/sh", {.arguments = {"-c", script, "sh", toolPath().string(), "--level", "warn",
                                                "--numtraces", "1", folder.write("model.xml", tickingModel().text()),
                                                folder.write("properties.xml", deepProperty(negations))},
                                  .directory = folder.path()});
}

TEST(ToolWithoutStackLimit, EvaluatesAFormulaOrRefusesItAsTooDeep) {
    const TempDir folder;
    for (std::size_t negations = 2000; negations <= 20000; negations += 3000) {
        const ToolResult result = runWithoutStackLimit(folder, negations);
        if (result.exitStatus == 77) GTEST_SKIP() << "this limit cannot be lifted here";
        ASSERT_EQ(result.exitStatus, 0) << negations << " negations, signal " << result.signal;
        if (result.output == ONE_RESULT) continue;
        EXPECT_THAT(result.output, HasSubstr("Formula is nested too deeply")) << negations << " negations";
    }
}

TEST(ToolWithAFaultyLogConfiguration, TakesTheLevelOfTheCommandLineInPlaceOfOneThatIsNone) {
    const TempDir folder;
    folder.write("vornrun.properties",
                 "log4cplus.rootLogger=LOUD, OUT\n"
                 "log4cplus.appender.OUT=log4cplus::ConsoleAppender\n"
                 "log4cplus.appender.OUT.layout=log4cplus::SimpleLayout\n");
    const std::string model = folder.write("model.xml", tickingModel().text());
    const std::string properties = folder.write("properties.xml", PropertyWriter().p(trueAtOnce()).text());
    const auto run = [&](const std::string& level) {
        return runTool(
            {.arguments = {"--level", level, "--numtraces", "1", model, properties}, .directory = folder.path()});
    };
    const ToolResult quiet = run("warn");
    EXPECT_EQ(quiet.output, ONE_RESULT) << quiet.errors;
    EXPECT_EQ(quiet.exitStatus, 0);
    const ToolResult talkative = run("info");
    EXPECT_THAT(talkative.output, HasSubstr("INFO - Parsing properties from: ")) << talkative.errors;
    EXPECT_THAT(talkative.output, EndsWith(ONE_RESULT.substr(2)));
    EXPECT_EQ(talkative.exitStatus, 0);
}

}  // namespace
}  // namespace vornrun::test
