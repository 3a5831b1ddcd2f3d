#include "vornrun/algorithms/simulators/strategies/InputStrat.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <sstream>
#include <utility>

#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

namespace {

// As the standard conversion of strings to int: base 10, blanks in front and text behind are passed over.
// -1 for what does not begin with a number, or with one beyond 32 bits.
int leadingNumber(const std::string& token) {
    errno = 0;
    char* end = nullptr;
    const long number = std::strtol(token.c_str(), &end, 10);
    if (end == token.c_str() || errno == ERANGE) return -1;
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) return -1;
    return static_cast<int>(number);
}

// Splits at commas and blanks, adjacent ones counting as one. One at the start leaves an empty first token.
std::vector<std::string> splitTokens(const std::string& text) {
    std::vector<std::string> tokens(1);
    bool separated = false;
    for (const char c : text) {
        if (c == ',' || c == ' ') {
            if (!separated) tokens.emplace_back();
            separated = true;
        } else {
            tokens.back() += c;
            separated = false;
        }
    }
    return tokens;
}

// The number of the command "d". A negative one wraps, as streams read unsigned numbers, and so is never in range.
std::size_t readIndex(std::istream& line, std::size_t size) {
    std::uint32_t index = 0;
    if (line >> index && index < size) return index;
    std::cout << "Bad index, assuming 0" << std::endl;
    return 0;
}

// The number of the command "t".
Time readDelay(std::istream& line) {
    Time delay = 0.0;
    if (line >> delay && delay >= 0.0) return delay;
    std::cout << "Bad time, assuming 0.0" << std::endl;
    return 0.0;
}

// Lists what there is to choose from, with a closing empty line. Tells whether there is anything.
bool showAlternatives(const ConnectionAsTransitions& options) {
    bool anyShown = false;
    for (const auto& [eda, alternatives] : options) {
        if (alternatives.size() < 2) continue;
        if (!anyShown) std::cout << "Choose non-deterministic transitions:\n";
        anyShown = true;
        std::cout << " " << eda->identifier() << "\n";
        for (const TransitionPtr alternative : alternatives) std::cout << "  " << *alternative->transition() << "\n";
    }
    std::cout << std::endl;
    return anyShown;
}

// The line that says which alternatives to take; empty when there is none to be had.
std::string askForAlternatives() {
    std::cout << "Select transitions to take ( r,#,#,r,a )\n"
              << "a/A: Select for all following EDAs automatically\n"
              << "r/R: Select for given EDA randomly\n"
              << "  #: Select for given EDA manually" << std::endl;
    std::stringstream line;
    getLine(std::cin, line);
    return line.str();
}

}  // namespace

bool getLine(std::istream& in, std::stringstream& line) {
    std::string text;
    std::getline(in, text);
    line.str(text);
    line.clear();
    return static_cast<bool>(in);
}

SimulationStep* InputStrat::simulateStep() {
    const QualifiedTransitions& active = network().currentActiveTransitions();
    network().collectEnabledTransitions(mCandidates);
    if (active.empty()) throw deadlock_exception("No possible simulation step found: Actionlock");
    const TimeInterval allowed = network().invariantsRemainValidFor();
    network().dumpTopologies();
    showTransitions(active, mCandidates);

    const Command command = askForCommand(mCandidates.size(), allowed);
    if (command.timed) return takeTimed(command.delay, allowed);
    if (command.discrete) return takeDiscrete(mCandidates[command.index]);
    throw deadlock_exception("Invalid user input");
}

void InputStrat::showTransitions(const QualifiedTransitions& active, const QualifiedTransitions& enabled) const {
    std::cout << "Current enabled transitions are:" << std::endl;
    for (std::size_t i = 0; i < enabled.size(); ++i) {
        std::cout << i << ": ";
        showInterval(enabled[i], network().transitionRemainsEnabledFor(enabled[i]));
    }
    std::cout << "Future transitions are:" << std::endl;
    for (const QualifiedTransition& transition : active) {
        const TimeInterval when = network().transitionRemainsEnabledFor(transition);
        // A transition that never becomes enabled stands here too: a set without delays begins at 1.
        if (when.lower != 0.0) showInterval(transition, when);
    }
}

void InputStrat::showInterval(const QualifiedTransition& transition, const TimeInterval& when) const {
    const auto& [eda, realised] = transition;
    std::cout << eda->identifier() << " : " << *realised->transition() << "\n"
              << (isStochastic(transition) ? "    probabilistic: " : "    active in: ") << when << "\n";
}

void InputStrat::showState() const {
    std::cout << "Current state:\n" << network() << std::endl;
    std::cout << "Current time is:" << run()->currentTime() << std::endl;
}

InputStrat::Command InputStrat::askForCommand(std::size_t enabledCount, const TimeInterval& allowed) const {
    Command command;
    while (!command.discrete && !command.timed) {
        if (enabledCount > 0) std::cout << "Index in: [0, " << enabledCount - 1 << "]\n";
        std::cout << "Time in:  " << allowed << std::endl;
        std::cout << "Enter command (s = print state, d # = discrete transition, t #.# = timed transition, q = quit)"
                  << std::endl;
        std::stringstream line;
        const bool read = getLine(std::cin, line);
        // A last line without a line end is not carried out. A stream that fails otherwise would prompt for ever.
        if (std::cin.eof() || !read) throw abort_exception("No more input");
        std::string word;
        line >> word;
        if (word == "q") throw abort_exception("Simulation terminated by the user");
        if (word == "s") {
            showState();
        } else if (word == "d" && enabledCount > 0) {
            command.index = readIndex(line, enabledCount);
            command.discrete = true;
        } else if (word == "t") {
            command.delay = readDelay(line);
            command.timed = true;
        }
    }
    return command;
}

SimulationStep* InputStrat::takeTimed(Time delay, const TimeInterval& allowed) {
    std::cout << "Taking timed transition, delay is " << delay << std::endl;
    if (delay > allowed.upper) {
        std::cout << "Whoops, sample exceed invariant. Capping at " << allowed.upper << std::endl;
        delay = allowed.upper;
    } else if (allowed.lower > delay) {
        std::cout << "Whoops, sample too low. Capping at " << allowed.lower << std::endl;
        delay = allowed.lower;
    }
    if (delay > 0) network().takeTimedTransition(delay);
    return new TimeSimulationStep(delay);
}

SimulationStep* InputStrat::takeDiscrete(const QualifiedTransition& transition) {
    network().collectEnabledTransitions(transition, mOptions);
    if (mOptions.empty()) {
        std::cout << "Could not synchronize trigger, please try a different transition or time delay" << std::endl;
        return new TimeSimulationStep(0.0);
    }
    return new DiscreteSimulationStep(fire(mOptions));
}

// Tokens count all automata of the event, also those that have one alternative and were not shown. A letter converts to
// no number and so leaves the choice of its own position to chance.
QualifiedTransitions InputStrat::selectTransitions(const ConnectionAsTransitions& options) {
    const std::string line = showAlternatives(options) ? askForAlternatives() : std::string();
    const std::vector<std::string> tokens = splitTokens(line);
    QualifiedTransitions chosen;
    chosen.reserve(options.size());
    for (std::size_t i = 0; i < options.size(); ++i) {
        const auto& [eda, alternatives] = options[i];
        requireAlternatives(*eda, alternatives);
        const int number = i < tokens.size() ? leadingNumber(tokens[i]) : -1;
        std::size_t index = 0;
        if (alternatives.size() >= 2) {
            const bool inRange = number >= 0 && static_cast<std::size_t>(number) < alternatives.size();
            index = inRange ? static_cast<std::size_t>(number) : pick(alternatives.size());
        }
        chosen.emplace_back(eda, alternatives[index]);
    }
    return chosen;
}

}  // namespace vornrun
