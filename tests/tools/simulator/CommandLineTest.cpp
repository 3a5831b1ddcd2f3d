#include "tools/simulator/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/program_options/errors.hpp>
#include <iostream>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/tools/simulator/CapturedStream.h"

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using vornrun::Settings;
using vornrun::test::CapturedStream;

static_assert(std::has_virtual_destructor_v<Settings>);
static_assert(sizeof(LogLevelName) == 4 && sizeof(SimStrategy) == 4);

struct Parse {
    bool goesOn = false;
    Settings settings;
    std::string output;
    std::string errors;
};

Parse parse(std::vector<std::string> words) {
    words.insert(words.begin(), "vornrun");
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    Parse result;
    const CapturedStream output(std::cout);
    const CapturedStream errors(std::cerr);
    result.goesOn = parseCommandLine(static_cast<int>(words.size()), arguments.data(), result.settings);
    result.output = output.text();
    result.errors = errors.text();
    return result;
}

/// Every run of blanks and line breaks as one blank: how the library lays its table out is its own business.
std::string withSingleBlanks(const std::string& text) {
    std::istringstream words(text);
    std::string result;
    for (std::string word; words >> word;) result += word + " ";
    return result;
}

TEST(Settings, HaveTheseDefaults) {
    const Settings settings;
    EXPECT_EQ(settings.inputFile, "");
    EXPECT_EQ(settings.propertyFile, "");
    EXPECT_EQ(settings.logLevel, -1);
    EXPECT_EQ(settings.numTraces, 0U);
    EXPECT_EQ(settings.stepBound, 10000U);
    EXPECT_FALSE(settings.ignoreBoundError);
    EXPECT_FALSE(settings.disallowDeadlock);
    EXPECT_EQ(settings.confidence, 0.95);
    EXPECT_EQ(settings.errorBound, 0.05);
    EXPECT_EQ(settings.seed, 0U);
    EXPECT_EQ(settings.strategy, SimStrategy::asap);
    EXPECT_EQ(settings.threads, 1U);
}

TEST(CommandLine, WithTwoWordsSetsTheFilesAndTheLevelAndKeepsTheDefaults) {
    const Parse result = parse({"model.xml", "properties.xml"});
    EXPECT_TRUE(result.goesOn);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.settings.inputFile, "model.xml");
    EXPECT_EQ(result.settings.propertyFile, "properties.xml");
    EXPECT_EQ(result.settings.logLevel, 20000) << "never -1 after a parse, whatever the log configuration asked for";
    EXPECT_EQ(result.settings.numTraces, 0U);
    EXPECT_EQ(result.settings.stepBound, 10000U);
    EXPECT_FALSE(result.settings.ignoreBoundError);
    EXPECT_FALSE(result.settings.disallowDeadlock);
    EXPECT_EQ(result.settings.confidence, 0.95);
    EXPECT_EQ(result.settings.errorBound, 0.05);
    EXPECT_EQ(result.settings.seed, 0U);
    EXPECT_EQ(result.settings.strategy, SimStrategy::asap);
    EXPECT_EQ(result.settings.threads, 1U);
}

TEST(CommandLine, ReadsEveryLongOption) {
    const Parse result = parse({"--input-file",
                                "m",
                                "--property-file",
                                "p",
                                "--level",
                                "fatal",
                                "--threads",
                                "4294967295",
                                "--seed",
                                "18446744073709551615",
                                "--strategy",
                                "progressive",
                                "--numtraces",
                                "7",
                                "--stepbound",
                                "8",
                                "--confidence",
                                "0.25",
                                "--errorbound",
                                "0.125",
                                "--ignorebounderror",
                                "--disallowdeadlock"});
    EXPECT_TRUE(result.goesOn) << result.errors;
    EXPECT_EQ(result.settings.inputFile, "m");
    EXPECT_EQ(result.settings.propertyFile, "p");
    EXPECT_EQ(result.settings.logLevel, 50000);
    EXPECT_EQ(result.settings.threads, 4294967295U);
    EXPECT_EQ(result.settings.seed, 18446744073709551615U);
    EXPECT_EQ(result.settings.strategy, SimStrategy::progressive);
    EXPECT_EQ(result.settings.numTraces, 7U);
    EXPECT_EQ(result.settings.stepBound, 8U);
    EXPECT_EQ(result.settings.confidence, 0.25);
    EXPECT_EQ(result.settings.errorBound, 0.125);
    EXPECT_TRUE(result.settings.ignoreBoundError);
    EXPECT_TRUE(result.settings.disallowDeadlock);
}

TEST(CommandLine, ReadsEveryShortOption) {
    const Parse result = parse(
        {"-f", "m", "-p", "p", "-l", "warn", "-t", "3", "-s", "5", "-n", "7", "-b", "8", "-c", "0.25", "-e", "0.125"});
    EXPECT_TRUE(result.goesOn) << result.errors;
    EXPECT_EQ(result.settings.inputFile, "m");
    EXPECT_EQ(result.settings.propertyFile, "p");
    EXPECT_EQ(result.settings.logLevel, 30000);
    EXPECT_EQ(result.settings.threads, 3U);
    EXPECT_EQ(result.settings.seed, 5U);
    EXPECT_EQ(result.settings.numTraces, 7U);
    EXPECT_EQ(result.settings.stepBound, 8U);
    EXPECT_EQ(result.settings.confidence, 0.25);
    EXPECT_EQ(result.settings.errorBound, 0.125);
}

TEST(CommandLine, TakesTheTwoFlagsIndependently) {
    const Settings ignoring = parse({"m", "p", "--ignorebounderror"}).settings;
    EXPECT_TRUE(ignoring.ignoreBoundError);
    EXPECT_FALSE(ignoring.disallowDeadlock);
    const Settings disallowing = parse({"m", "p", "--disallowdeadlock"}).settings;
    EXPECT_FALSE(disallowing.ignoreBoundError);
    EXPECT_TRUE(disallowing.disallowDeadlock);
}

TEST(CommandLine, PassesZeroThreadsAndZeroTraces) {
    const Parse result = parse({"m", "p", "--threads", "0", "--numtraces", "0"});
    EXPECT_TRUE(result.goesOn) << result.errors;
    EXPECT_EQ(result.settings.threads, 0U);
    EXPECT_EQ(result.settings.numTraces, 0U);
}

TEST(CommandLine, ChecksNoRangeOfTheBoundParameters) {
    const Parse result = parse({"m", "p", "--confidence", "-3.5", "--errorbound", "0"});
    EXPECT_TRUE(result.goesOn) << result.errors;
    EXPECT_EQ(result.settings.confidence, -3.5);
    EXPECT_EQ(result.settings.errorBound, 0.0);
}

struct LevelWord {
    const char* word;
    int level;
};
class CommandLineLevel : public testing::TestWithParam<LevelWord> {};

TEST_P(CommandLineLevel, HasTheNumberOfItsWord) {
    const Parse result = parse({"--level", GetParam().word, "m", "p"});
    EXPECT_TRUE(result.goesOn) << result.errors;
    EXPECT_EQ(result.settings.logLevel, GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(CommandLine, CommandLineLevel,
                         testing::Values(LevelWord{"trace", 0}, LevelWord{"debug", 10000}, LevelWord{"info", 20000},
                                         LevelWord{"warn", 30000}, LevelWord{"error", 40000},
                                         LevelWord{"fatal", 50000}),
                         [](const auto& instance) { return std::string(instance.param.word); });

struct StrategyWord {
    const char* word;
    int number;
};
class CommandLineStrategy : public testing::TestWithParam<StrategyWord> {};

TEST_P(CommandLineStrategy, HasTheNumberOfItsWord) {
    const Parse result = parse({"m", "p", "--strategy", GetParam().word});
    EXPECT_TRUE(result.goesOn) << result.errors;
    EXPECT_EQ(static_cast<int>(result.settings.strategy), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(CommandLine, CommandLineStrategy,
                         testing::Values(StrategyWord{"asap", 0}, StrategyWord{"event", 1}, StrategyWord{"input", 2},
                                         StrategyWord{"local", 3}, StrategyWord{"maxtime", 4},
                                         StrategyWord{"progressive", 5}),
                         [](const auto& instance) { return std::string(instance.param.word); });

TEST(CommandLine, AcceptsTheStrategyEventThoughTheHelpLeavesItOut) {
    const Parse result = parse({"m", "p", "--strategy", "event"});
    EXPECT_TRUE(result.goesOn);
    EXPECT_EQ(result.settings.strategy, SimStrategy::event);
    EXPECT_THAT(parse({"--help"}).output, testing::Not(HasSubstr("event")));
}

TEST(CommandLine, HelpShowsTheUsageAndTheVisibleOptionsInTheirOrder) {
    const Parse result = parse({"--help"});
    EXPECT_FALSE(result.goesOn);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, StartsWith("Usage: vornrun [options] input-file property-file\n"));
    EXPECT_THAT(result.output, AllOf(EndsWith("finding deadlock\n\n"), testing::Not(HasSubstr("-file arg"))));
    EXPECT_EQ(withSingleBlanks(result.output),
              "Usage: vornrun [options] input-file property-file "
              "Generic options: "
              "-h [ --help ] Display this help message "
              "-l [ --level ] arg Logging level (trace, debug, info, warn, error, fatal) "
              "-t [ --threads ] arg Number of threads to use (0 for auto detect) "
              "Input parameters: "
              "-s [ --seed ] arg Fixed random seed "
              "Strategy options: "
              "--strategy arg Strategy to use (asap, input, local, maxtime, progressive) "
              "-n [ --numtraces ] arg Number of traces to generate (use 0 for CH bound) "
              "-b [ --stepbound ] arg Maximum number of steps for each trace "
              "-c [ --confidence ] arg Confidence of result (CH) "
              "-e [ --errorbound ] arg Error bound of result (CH) "
              "--ignorebounderror Ignore traces exceeding the step bound "
              "--disallowdeadlock Generate error when finding deadlock ");
}

TEST(CommandLine, HelpComesBeforeAMissingFileName) {
    EXPECT_THAT(parse({"-h", "m"}).output, StartsWith("Usage: "));
    EXPECT_EQ(parse({"-h", "m"}).errors, "");
}

TEST(CommandLine, HelpIsShownBesideACompleteCommandLineToo) {
    const Parse result = parse({"m", "p", "--help"});
    EXPECT_FALSE(result.goesOn);
    EXPECT_THAT(result.output, StartsWith("Usage: "));
}

struct Refusal {
    const char* name;
    std::vector<std::string> words;
    const char* mentions;  ///< what the library's text is bound to name
};
void PrintTo(const Refusal& refusal, std::ostream* stream) { *stream << refusal.name; }

class CommandLineRefusal : public testing::TestWithParam<Refusal> {};

TEST_P(CommandLineRefusal, IsOneErrorLineOfTheLibrary) {
    const Parse result = parse(GetParam().words);
    EXPECT_FALSE(result.goesOn);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, AllOf(StartsWith("Error: "), HasSubstr(GetParam().mentions), EndsWith("\n")));
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, CommandLineRefusal,
    testing::Values(
        Refusal{"AThirdFreeWord", {"m", "p", "q"}, "'--property-file' cannot be specified more than once"},
        Refusal{"AFourthFreeWord", {"m", "p", "q", "r"}, "too many positional options"},
        Refusal{
            "AFreeWordBesideTheShortFormOfItsPosition", {"-f", "m", "n", "p"}, "cannot be specified more than once"},
        Refusal{"AStrategyThatIsNone", {"m", "p", "--strategy", "lazy"}, "--strategy"},
        Refusal{"AStrategyInCapitals", {"m", "p", "--strategy", "Asap"}, "--strategy"},
        Refusal{"ALevelInCapitals", {"m", "p", "--level", "INFO"}, "--level"},
        Refusal{"ALevelThatIsANumber", {"m", "p", "--level", "20000"}, "--level"},
        Refusal{"ALevelGivenTwice", {"m", "p", "--level", "info", "--level", "info"}, "more than once"},
        Refusal{"AStrategyGivenTwice", {"m", "p", "--strategy", "asap", "--strategy", "asap"}, "more than once"},
        Refusal{"ANumberThatIsNone", {"m", "p", "--seed", "tomorrow"}, "--seed"},
        Refusal{"ANumberWithATail", {"m", "p", "--confidence", "0.5x"}, "--confidence"},
        Refusal{"ANumberTooLargeForItsType", {"m", "p", "--threads", "4294967296"}, "--threads"},
        Refusal{"AnOptionWithoutItsValue", {"m", "p", "--errorbound"}, "--errorbound"},
        Refusal{"AFlagWithAValue", {"m", "p", "--disallowdeadlock=1"}, "--disallowdeadlock"},
        Refusal{"AnUnknownOption", {"m", "p", "--colour"}, "--colour"},
        Refusal{"HelpBesideAnInvalidValue", {"--help", "--strategy", "lazy"}, "--strategy"}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(CommandLine, WithoutWordsAsksForTheInputFile) {
    const Parse result = parse({});
    EXPECT_FALSE(result.goesOn);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "Error: Must specify exactly one input file\n");
}

TEST(CommandLine, WithOneWordAsksForThePropertyFile) {
    const Parse result = parse({"m"});
    EXPECT_FALSE(result.goesOn);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "Error: Must specify exactly one property file\n");
}

TEST(CommandLine, WithOnlyAPropertyFileAsksForTheInputFile) {
    EXPECT_EQ(parse({"-p", "p"}).errors, "Error: Must specify exactly one input file\n");
}

TEST(CommandLine, LeavesTheSettingsAloneWhenAWordIsRefused) {
    const Parse result = parse({"m", "p", "--threads", "9", "--level", "loud"});
    EXPECT_FALSE(result.goesOn);
    EXPECT_EQ(result.settings.logLevel, -1);
    EXPECT_EQ(result.settings.threads, 1U);
    EXPECT_EQ(result.settings.inputFile, "");
}

TEST(CommandLine, ValidatorsStoreTheValueAndRefuseASecondOne) {
    boost::any level;
    validate(level, {"debug"}, static_cast<LogLevelName*>(nullptr), 0);
    EXPECT_EQ(boost::any_cast<LogLevelName>(level), LogLevelName::debug);
    EXPECT_THROW(validate(level, {"debug"}, static_cast<LogLevelName*>(nullptr), 0),
                 boost::program_options::multiple_occurrences);

    boost::any strategy;
    validate(strategy, {"local"}, static_cast<SimStrategy*>(nullptr), 0);
    EXPECT_EQ(boost::any_cast<SimStrategy>(strategy), SimStrategy::local);
    EXPECT_THROW(validate(strategy, {"local"}, static_cast<SimStrategy*>(nullptr), 0),
                 boost::program_options::multiple_occurrences);
}

TEST(CommandLine, ValidatorsNameTheFaultOfAnUnknownWord) {
    boost::any value;
    try {
        validate(value, {"loud"}, static_cast<LogLevelName*>(nullptr), 0);
        FAIL() << "accepted an unknown level";
    } catch (const boost::program_options::validation_error& error) {
        EXPECT_EQ(error.kind(), boost::program_options::validation_error::invalid_option_value);
        EXPECT_EQ(error.get_option_name(), "invalid log level");
    }
    try {
        validate(value, {"lazy"}, static_cast<SimStrategy*>(nullptr), 0);
        FAIL() << "accepted an unknown strategy";
    } catch (const boost::program_options::validation_error& error) {
        EXPECT_EQ(error.kind(), boost::program_options::validation_error::invalid_option_value);
        EXPECT_EQ(error.get_option_name(), "invalid strategy name");
    }
    EXPECT_TRUE(value.empty());
}

}  // namespace
