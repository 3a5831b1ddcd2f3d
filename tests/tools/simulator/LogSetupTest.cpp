#include "tools/simulator/LogSetup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <log4cplus/consoleappender.h>
#include <log4cplus/hierarchy.h>
#include <log4cplus/logger.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/TempDir.h"
#include "tools/simulator/CommandLine.h"
#include "vornrun/Log.h"

namespace {

using vornrun::Log;
using vornrun::LogLevel;
using vornrun::test::TempDir;

/// Each test starts from a logging library that nobody has configured.
class LogSetup : public testing::Test {
  protected:
    LogSetup() { log4cplus::Logger::getDefaultHierarchy().resetConfiguration(); }
};

/// A configuration that sends everything at or above the level to a file, as bare texts.
std::string configurationTo(const std::string& file, const std::string& level) {
    return "log4cplus.rootLogger=" + level + ", FILE\n" + "log4cplus.appender.FILE=log4cplus::FileAppender\n" +
           "log4cplus.appender.FILE.File=" + file + "\n" + "log4cplus.appender.FILE.ImmediateFlush=true\n" +
           "log4cplus.appender.FILE.layout=log4cplus::PatternLayout\n" +
           "log4cplus.appender.FILE.layout.ConversionPattern=%p %c: %m%n\n";
}

std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

void expectBasicConfiguration() {
    const log4cplus::SharedAppenderPtrList appenders = log4cplus::Logger::getRoot().getAllAppenders();
    ASSERT_EQ(appenders.size(), 1U);
    EXPECT_NE(dynamic_cast<log4cplus::ConsoleAppender*>(appenders[0].get()), nullptr);
    EXPECT_EQ(log4cplus::Logger::getRoot().getLogLevel(), log4cplus::DEBUG_LOG_LEVEL);
}

TEST_F(LogSetup, WithoutANameSelectsTheBasicConfiguration) {
    setupLogging("");
    expectBasicConfiguration();
}

TEST_F(LogSetup, WithAFileThatDoesNotExistSelectsTheBasicConfiguration) {
    setupLogging(TempDir().path() / "vornrun.properties");
    expectBasicConfiguration();
}

TEST_F(LogSetup, WithAFolderInPlaceOfTheFileSelectsTheBasicConfiguration) {
    const TempDir folder;
    setupLogging(folder.path());
    expectBasicConfiguration();
}

TEST_F(LogSetup, AnEmptyFileIsAConfigurationWithoutAppenders) {
    const TempDir folder;
    setupLogging(folder.write("vornrun.properties", ""));
    EXPECT_TRUE(log4cplus::Logger::getRoot().getAllAppenders().empty());
}

TEST_F(LogSetup, AFileThatIncludesItselfSelectsTheBasicConfiguration) {
    const TempDir folder;
    const std::string other = folder.path() / "other.properties";
    const std::string file = folder.write("vornrun.properties", "include " + other + "\n");
    folder.write("other.properties", "# around\n  include\t" + file + "\nlog4cplus.rootLogger=ERROR\n");
    testing::internal::CaptureStderr();
    setupLogging(file);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "The log configuration '" + file + "' includes itself and is not used\n");
    expectBasicConfiguration();
}

TEST_F(LogSetup, FilesThatIncludeOneTwiceAreApplied) {
    const TempDir folder;
    const std::string shared = folder.write("shared.properties", "log4cplus.rootLogger=ERROR\n");
    const std::string include = "include " + shared + "\n";
    setupLogging(folder.write("vornrun.properties", include + include + "note=include vornrun.properties\n"));
    EXPECT_EQ(log4cplus::Logger::getRoot().getLogLevel(), log4cplus::ERROR_LOG_LEVEL);
}

TEST_F(LogSetup, AppliesTheFileToTheLoggersOfTheTool) {
    const TempDir folder;
    const std::string log = folder.path() / "out.log";
    setupLogging(
        folder.write("vornrun.properties", configurationTo(log, "WARN") + "log4cplus.logger.root.sim=TRACE\n"));
    const Log ofTheTool("root.main");
    const Log ofTheSimulator("root.sim");
    VORNRUN_LOG(ofTheTool, Info, "below the level");
    VORNRUN_LOG(ofTheTool, Warn, "at the level");
    VORNRUN_LOG(ofTheSimulator, Trace, "at its own level");
    EXPECT_EQ(contentOf(log), "WARN root.main: at the level\nTRACE root.sim: at its own level\n");
}

TEST_F(LogSetup, ReachesLoggersThatWereMadeBefore) {
    const Log logger("root.main");
    const TempDir folder;
    setupLogging(folder.write("vornrun.properties", configurationTo(folder.path() / "out.log", "FATAL")));
    EXPECT_FALSE(logger.isOn(LogLevel::Info)) << "above that, a listener may want the record";
    applyLogLevel(static_cast<int>(LogLevel::Debug));
    EXPECT_TRUE(logger.isOn(LogLevel::Debug));
    EXPECT_FALSE(logger.isOn(LogLevel::Trace));
}

TEST_F(LogSetup, TheLevelMinusOneLeavesTheConfiguredOne) {
    const TempDir folder;
    setupLogging(folder.write("vornrun.properties", configurationTo(folder.path() / "out.log", "ERROR")));
    applyLogLevel(-1);
    EXPECT_EQ(log4cplus::Logger::getRoot().getLogLevel(), log4cplus::ERROR_LOG_LEVEL);
}

int rootLevelAfter(const std::string& configured, std::vector<std::string> words) {
    const TempDir folder;
    setupLogging(folder.write("vornrun.properties", configurationTo(folder.path() / "out.log", configured)));
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    vornrun::Settings settings;
    EXPECT_TRUE(parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), settings));
    applyLogLevel(settings.logLevel);
    return log4cplus::Logger::getRoot().getLogLevel();
}

TEST_F(LogSetup, ALevelOfTheCommandLineOverridesTheFile) {
    EXPECT_EQ(rootLevelAfter("ERROR", {"vornrun", "m", "p", "--level", "trace"}), log4cplus::TRACE_LOG_LEVEL);
}

TEST_F(LogSetup, TheAbsenceOfALevelOverridesTheFileTooWithInfo) {
    EXPECT_EQ(rootLevelAfter("ERROR", {"vornrun", "m", "p"}), log4cplus::INFO_LOG_LEVEL);
    EXPECT_EQ(rootLevelAfter("TRACE", {"vornrun", "m", "p"}), log4cplus::INFO_LOG_LEVEL);
}

TEST_F(LogSetup, FindsTheFileOfTheInitialDirectoryFirst) {
    const TempDir initial;
    const TempDir executable;
    const std::string first = initial.write("vornrun.properties", "");
    executable.write("vornrun.properties", "");
    EXPECT_EQ(findLogConfiguration(initial.path().string(), executable.path().string()), first);
}

TEST_F(LogSetup, FindsTheFileBesideTheExecutableNext) {
    const TempDir initial;
    const TempDir executable;
    const std::string second = executable.write("vornrun.properties", "");
    EXPECT_EQ(findLogConfiguration(initial.path().string(), executable.path().string()), second);
}

TEST_F(LogSetup, FindsNoFileWhereThereIsNone) {
    const TempDir initial;
    const TempDir executable;
    initial.write("other.properties", "");
    EXPECT_EQ(findLogConfiguration(initial.path().string(), executable.path().string()), "");
}

}  // namespace
