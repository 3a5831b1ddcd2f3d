/// \file
/// The executable as a user calls it: arguments, standard output, standard error and exit status.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/RunTool.h"
#include "tests/support/TempDir.h"
#include "tests/tools/simulator/SmallModels.h"

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

/// Both input files, and calls of the tool on them.
class ToolOnFiles : public testing::Test {
  protected:
    ToolResult run(const std::string& model, const std::string& properties,
                   std::vector<std::string> options = {}) const {
        options.push_back(mFolder.write("model.xml", model));
        options.push_back(mFolder.write("properties.xml", properties));
        return runTool({.arguments = options, .directory = mFolder.path()});
    }
    ToolResult run(const ModelWriter& model, const PropertyWriter& properties,
                   const std::vector<std::string>& options = {}) const {
        return run(model.text(), properties.text(), options);
    }
    const TempDir& folder() const noexcept { return mFolder; }

  private:
    TempDir mFolder;
};

/// Sends all records to a file beside the tool's input, one line each.
std::string loggingTo(const std::string& file) {
    return "log4cplus.rootLogger=ERROR, FILE\nlog4cplus.appender.FILE=log4cplus::FileAppender\n"
           "log4cplus.appender.FILE.File=" +
           file +
           "\nlog4cplus.appender.FILE.layout=log4cplus::PatternLayout\n"
           "log4cplus.appender.FILE.layout.ConversionPattern=%p %c: %m%n\n";
}

TEST_F(ToolOnFiles, PrintsOneRowAndOneResultPerPropertyInFileOrder) {
    const ToolResult result =
        run(tickingModel(), PropertyWriter().p(falseAtOnce()).p(trueAtOnce()), {"--level", "warn", "--numtraces", "3"});
    EXPECT_EQ(result.output,
              "...\nProperty holds with probability [0.0000000000,0.0000000000]\n"
              ".\nProperty holds with probability [0.2500000000,0.2500000000]\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, WithNumtracesZeroTakesTheBound) {
    const ToolResult result = run(tickingModel(), PropertyWriter().p(trueAtOnce()),
                                  {"--level", "warn", "--numtraces", "0", "--errorbound", "0.5"});
    EXPECT_EQ(result.output, "...........\nProperty holds with probability [0.5000000000,1.0000000000]\n");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, WithThreadsZeroRunsAsManyWorkersAsThereAreCores) {
    const ToolResult result =
        run(tickingModel(), PropertyWriter().p(trueAtOnce()), {"--threads", "0", "--numtraces", "1"});
    EXPECT_THAT(result.output, HasSubstr("INFO - Number of cores determined to be "));
    EXPECT_THAT(result.output, EndsWith("\nProperty holds with probability [1.0000000000,1.0000000000]\n"));
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, KeepsTheResultBeforeAnAbortAndExitsWithStatusZero) {
    const ToolResult result = run(tickingModel(), PropertyWriter().p(trueAtOnce()).p(openForLong()).p(trueAtOnce()),
                                  {"--level", "error", "--numtraces", "1", "--stepbound", "20"});
    EXPECT_THAT(result.output, StartsWith(".\nProperty holds with probability [1.0000000000,1.0000000000]\nb"));
    EXPECT_THAT(result.output, HasSubstr("ERROR - Simulation aborted: Exception occurred during simulation\n"));
    EXPECT_EQ(result.output.find("Property holds"), result.output.rfind("Property holds")) << result.output;
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, GoesOnBehindTheStepBoundWhenThatIsIgnored) {
    const ToolResult result = run(tickingModel(), PropertyWriter().p(openForLong()),
                                  {"--level", "error", "--numtraces", "1", "--stepbound", "20", "--ignorebounderror"});
    EXPECT_EQ(result.output, "b\nProperty holds with probability [0.0000000000,0.0000000000]\n");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, CountsADeadlockAsNotSatisfiedUnlessItIsDisallowed) {
    ModelWriter stuck;
    const Var x = var("x", Type::Clock);
    stuck.implementation("Stuck.i").data(x).data(var("no", Type::Bool), false).mode("waiting", invariant(x <= 1.0));
    const PropertyWriter properties = PropertyWriter().p(openForLong());
    const ToolResult allowed = run(stuck, properties, {"--level", "error", "--numtraces", "2"});
    EXPECT_EQ(allowed.output, "dd\nProperty holds with probability [0.0000000000,0.0000000000]\n");
    EXPECT_EQ(allowed.exitStatus, 0);

    const ToolResult disallowed =
        run(stuck, properties, {"--level", "error", "--numtraces", "2", "--disallowdeadlock"});
    EXPECT_THAT(disallowed.output, StartsWith("d"));
    EXPECT_THAT(disallowed.output, HasSubstr("ERROR - Simulation aborted: "));
    EXPECT_THAT(disallowed.output, Not(HasSubstr("Property holds")));
    EXPECT_EQ(disallowed.exitStatus, 0);
}

TEST_F(ToolOnFiles, WarnsOfAPropertyFileWithoutFormulas) {
    const ToolResult result = run(tickingModel(), PropertyWriter(), {"--level", "warn"});
    EXPECT_EQ(result.output, "WARN - No properties were loaded, no simulation performed\n");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, WarnsOfAPropertyFileThatFailsToParse) {
    const ToolResult result = run(tickingModel().text(), "<formulae><cslFormula>", {"--level", "warn"});
    EXPECT_THAT(result.output, StartsWith("ERROR - Exception during parsing of properties: Error while parsing"));
    EXPECT_THAT(result.output, EndsWith("WARN - No properties were loaded, no simulation performed\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("Property holds")));
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(ToolOnFiles, NamesBothOfTwoRootCandidatesAndStops) {
    ModelWriter model = tickingModel();
    model.implementation("Other.i");
    const ToolResult result = run(model, PropertyWriter().p(trueAtOnce()), {"--level", "error"});
    EXPECT_EQ(result.output,
              "ERROR - Need exactly 1 root candidate in specification, found 2\n"
              "ERROR -   Candidate: Clock.i\n"
              "ERROR -   Candidate: Other.i\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitStatus, 1);
}

TEST_F(ToolOnFiles, StopsWhenThereIsNoRootCandidate) {
    const ToolResult result = run(modelWithoutARoot(), PropertyWriter().p(trueAtOnce()), {"--level", "error"});
    EXPECT_EQ(result.output, "ERROR - Need exactly 1 root candidate in specification, found 0\n");
    EXPECT_EQ(result.exitStatus, 1);
}

struct BadModel {
    const char* name;
    std::string text;
};
void PrintTo(const BadModel& model, std::ostream* stream) { *stream << model.name; }

class ToolOnBadModels : public ToolOnFiles, public testing::WithParamInterface<BadModel> {};

TEST_P(ToolOnBadModels, ReportsTheModelAloneAndExitsWithStatusOne) {
    const ToolResult result = run(GetParam().text, "<not even properties");
    EXPECT_THAT(result.output, HasSubstr("ERROR - Exception during parsing of Vorn: Error while parsing"));
    EXPECT_THAT(result.output, Not(HasSubstr("properties"))) << "a fault of the model comes first";
    EXPECT_EQ(result.exitStatus, 1);
}

INSTANTIATE_TEST_SUITE_P(Tool, ToolOnBadModels,
                         testing::Values(BadModel{"Empty", ""}, BadModel{"OfAnotherKind", "To be, or not to be"},
                                         BadModel{"WithAnotherRoot", "<other/>"},
                                         BadModel{"Truncated",
                                                  tickingModel().text().substr(0, tickingModel().text().size() / 2)},
                                         BadModel{"OfZeroBytes", std::string(100, '\0')}),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(Tool, ReportsAModelThatDoesNotExist) {
    const ToolResult result = runTool({.arguments = {"missing.xml", "properties.xml"}});
    EXPECT_THAT(result.output, HasSubstr("ERROR - Exception during parsing of Vorn: Error while parsing"));
    EXPECT_EQ(result.exitStatus, 1);
}

TEST(Tool, ReportsAModelThatIsAFolder) {
    const TempDir folder;
    const ToolResult result = runTool({.arguments = {folder.path(), "properties.xml"}});
    EXPECT_THAT(result.output, HasSubstr("ERROR - Exception during parsing of Vorn: Error while parsing"));
    EXPECT_EQ(result.exitStatus, 1);
}

TEST_F(ToolOnFiles, EndsByTheAbortSignalWithOneLineForARateThatIsNotPositive) {
    ModelWriter model;
    model.type("A").errorPort("fail", -1.0);
    model.implementation("A.i");
    const ToolResult result = run(model, PropertyWriter().p(trueAtOnce()));
    EXPECT_EQ(result.signal, SIGABRT);
    EXPECT_THAT(result.errors, StartsWith("vornrun: fatal: "));
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1);
}

/// Has the sanitizers leave the arithmetic signal alone; without them it changes nothing.
void leaveTheArithmeticSignalAlone() {
    for (const char* name : {"ASAN_OPTIONS", "TSAN_OPTIONS"}) {
        const char* former = std::getenv(name);
        const std::string options = (former != nullptr ? std::string(former) + ":" : "") + "handle_sigfpe=0";
        setenv(name, options.c_str(), 1);
    }
}

TEST_F(ToolOnFiles, KeepsTheResultsBeforeADivisionByZero) {
    leaveTheArithmeticSignalAlone();
    ModelWriter model;
    const Var n = var("n", Type::Int);
    model.implementation("Clock.i").data(n, 0).data(var("yes", Type::Bool), true).mode("only");
    const ToolResult result = run(model, PropertyWriter().p(trueAtOnce()).p(eventually(1 / n == 1, 0, 1)),
                                  {"--level", "error", "--numtraces", "1"});
    EXPECT_EQ(result.signal, SIGFPE);
    EXPECT_EQ(result.output, ".\nProperty holds with probability [1.0000000000,1.0000000000]\n");
}

TEST_F(ToolOnFiles, LogsAsThePropertiesFileOfTheCurrentDirectorySaysButAtInfo) {
    const std::string log = folder().file("out.log");
    folder().write("vornrun.properties", loggingTo(log));
    const ToolResult result = run(tickingModel(), PropertyWriter().p(trueAtOnce()), {"--numtraces", "1"});
    EXPECT_EQ(result.output, ".\nProperty holds with probability [1.0000000000,1.0000000000]\n");
    EXPECT_THAT(readFile(log), HasSubstr("INFO root.main: Parsing properties from: "));
    EXPECT_THAT(readFile(log), HasSubstr("INFO root.main: Property evaluated to [1, 1]\n"));
}

TEST_F(ToolOnFiles, LosesNoRecordThatAnAppenderHoldsBackWhenFlowsDependInACircle) {
    const Var a = var("a", Type::Int), b = var("b", Type::Int), c = var("c", Type::Int);
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b).data(c).mode("m").flow(a, b).flow(b, a).flow(c, a);
    const std::string log = folder().file("out.log");
    folder().write("vornrun.properties", loggingTo(log) + "log4cplus.appender.FILE.ImmediateFlush=false\n");
    const ToolResult result =
        run(model, PropertyWriter().p(eventually(c == 1, 0, 1)), {"--level", "fatal", "--numtraces", "1"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(readFile(log), "FATAL root.eda.network.dd: Dataflow topology level > 128, possible cycle\n");
}

TEST_F(ToolOnFiles, LogsAtTheLevelOfTheCommandLine) {
    const std::string log = folder().file("out.log");
    folder().write("vornrun.properties", loggingTo(log));
    run(tickingModel(), PropertyWriter(), {"--level", "warn"});
    EXPECT_EQ(readFile(log), "WARN root.main: No properties were loaded, no simulation performed\n");
}

TEST_F(ToolOnFiles, FindsTheLogConfigurationBesideTheExecutable) {
    const TempDir installation;
    const std::string log = installation.file("out.log");
    installation.write("vornrun.properties", loggingTo(log));
    const std::filesystem::path link = installation.path() / "vornrun";
    std::filesystem::create_symlink(toolPath(), link);
    const std::string model = folder().write("model.xml", tickingModel().text());
    const std::string properties = folder().write("properties.xml", PropertyWriter().text());
    const ToolResult result = runProgram(link, {.arguments = {model, properties}});
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(readFile(log), EndsWith("WARN root.main: No properties were loaded, no simulation performed\n"));
}

}  // namespace
}  // namespace vornrun::test
