#include "tools/simulator/CommandLine.h"

#include <array>
#include <boost/program_options.hpp>
#include <iostream>
#include <optional>
#include <string_view>

#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"

namespace po = boost::program_options;

namespace {

struct LevelWord {
    std::string_view text;
    LogLevelName value;
};

constexpr std::array<LevelWord, 6> kLogLevels{{
    {"trace", LogLevelName::trace},
    {"debug", LogLevelName::debug},
    {"info", LogLevelName::info},
    {"warn", LogLevelName::warn},
    {"error", LogLevelName::error},
    {"fatal", LogLevelName::fatal},
}};

std::optional<LogLevelName> findLevel(std::string_view word) {
    for (const LevelWord& level : kLogLevels)
        if (level.text == word) return level.value;
    return std::nullopt;
}

std::optional<SimStrategy> findStrategy(std::string_view word) {
    const vornrun::StrategyEntry* entry = vornrun::findStrategy(word);
    if (entry == nullptr) return std::nullopt;
    return static_cast<SimStrategy>(entry->number);
}

/// \param find gives the value of a word, if it has one
template <class Find>
void validateWord(boost::any& value, const std::vector<std::string>& tokens, const Find& find, const char* fault) {
    po::validators::check_first_occurrence(value);
    const auto found = find(po::validators::get_single_string(tokens));
    if (!found) throw po::validation_error(po::validation_error::invalid_option_value, fault, "");
    value = boost::any(*found);
}

/// The options in their groups. All but the hidden ones are shown by --help, in the order of their declaration.
struct Options {
    po::options_description visible;
    po::options_description all;
    po::positional_options_description positional;
};

po::options_description genericOptions(vornrun::Settings& settings, LogLevelName& level) {
    po::options_description options("Generic options");
    options.add_options()                                                                                       //
        ("help,h", "Display this help message")                                                                 //
        ("level,l", po::value<LogLevelName>(&level), "Logging level (trace, debug, info, warn, error, fatal)")  //
        ("threads,t", po::value<std::uint32_t>(&settings.threads), "Number of threads to use (0 for auto detect)");
    return options;
}

po::options_description hiddenOptions(vornrun::Settings& settings) {
    po::options_description options("Hidden options");
    options.add_options()                                                                                    //
        ("input-file,f", po::value<std::string>(&settings.inputFile)->required(), "Input file (XML model)")  //
        ("property-file,p", po::value<std::string>(&settings.propertyFile)->required(),
         "Property file (XML properties)");
    return options;
}

po::options_description inputOptions(vornrun::Settings& settings) {
    po::options_description options("Input parameters");
    options.add_options()("seed,s", po::value<std::uint64_t>(&settings.seed), "Fixed random seed");
    return options;
}

po::options_description strategyOptions(vornrun::Settings& settings, SimStrategy& strategy) {
    po::options_description options("Strategy options");
    options.add_options()  //
        ("strategy", po::value<SimStrategy>(&strategy),
         "Strategy to use (asap, input, local, maxtime, progressive)")  //
        ("numtraces,n", po::value<std::uint32_t>(&settings.numTraces),
         "Number of traces to generate (use 0 for CH bound)")  //
        ("stepbound,b", po::value<std::uint32_t>(&settings.stepBound),
         "Maximum number of steps for each trace")                                               //
        ("confidence,c", po::value<double>(&settings.confidence), "Confidence of result (CH)")   //
        ("errorbound,e", po::value<double>(&settings.errorBound), "Error bound of result (CH)")  //
        ("ignorebounderror", "Ignore traces exceeding the step bound")                           //
        ("disallowdeadlock", "Generate error when finding deadlock");
    return options;
}

Options declareOptions(vornrun::Settings& settings, LogLevelName& level, SimStrategy& strategy) {
    Options options;
    options.visible.add(genericOptions(settings, level))
        .add(inputOptions(settings))
        .add(strategyOptions(settings, strategy));
    options.all.add(options.visible).add(hiddenOptions(settings));
    // Room for a third free word: the library then refuses it as a repeated option.
    options.positional.add("input-file", 1).add("property-file", 2);
    return options;
}

}  // namespace

void validate(boost::any& value, const std::vector<std::string>& tokens, LogLevelName*, int) {
    validateWord(value, tokens, findLevel, "invalid log level");
}

void validate(boost::any& value, const std::vector<std::string>& tokens, SimStrategy*, int) {
    validateWord(value, tokens, findStrategy, "invalid strategy name");
}

bool parseCommandLine(int argc, char** argv, vornrun::Settings& settings) {
    LogLevelName level = LogLevelName::info;
    SimStrategy strategy = SimStrategy::asap;
    try {
        const Options options = declareOptions(settings, level, strategy);
        po::variables_map given;
        po::store(
            po::basic_command_line_parser<char>(argc, argv).options(options.all).positional(options.positional).run(),
            given);
        if (given.count("help") > 0) {
            std::cout << "Usage: vornrun [options] input-file property-file\n" << options.visible << "\n";
            return false;
        }
        if (given.count("input-file") == 0) {
            std::cerr << "Error: Must specify exactly one input file\n";
            return false;
        }
        if (given.count("property-file") == 0) {
            std::cerr << "Error: Must specify exactly one property file\n";
            return false;
        }
        po::notify(given);
        settings.ignoreBoundError = given.count("ignorebounderror") > 0;
        settings.disallowDeadlock = given.count("disallowdeadlock") > 0;
    } catch (const po::error& error) {
        std::cerr << "Error: " << error.what() << "\n";
        return false;
    }
    settings.logLevel = static_cast<std::int32_t>(level);
    settings.strategy = strategy;
    return true;
}
