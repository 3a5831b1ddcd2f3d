#include "vornrun/algorithms/simulators/strategies/InputStrat.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <utility>

#include "vornrun/algorithms/simulators/strategies/Console.h"
#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

namespace {

constexpr const char* END_OF_INPUT = "No more input";

// Converts like the standard conversion of strings to int: base 10, leading blanks and trailing text are ignored.
// -1 for a text that does not begin with a number, or begins with one beyond 32 bits.
int leadingNumber(const std::string& token) {
    errno = 0;
    char* end = nullptr;
    const long number = std::strtol(token.c_str(), &end, 10);
    if (end == token.c_str() || errno == ERANGE) return -1;
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) return -1;
    return static_cast<int>(number);
}

// Splits at commas and blanks; adjacent ones count as one. One at the start leaves an empty first token.
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

bool leavesAChoice(const ConnectionAsTransitions& options) {
    return std::any_of(options.begin(), options.end(), [](const auto& entry) { return entry.second.size() >= 2; });
}

}  // namespace

bool getLine(std::istream& in, std::stringstream& line) {
    std::string text;
    std::getline(in, text);
    line.str(text);
    line.clear();
    return static_cast<bool>(in);
}

std::ostream& InputStrat::output() const { return console()->output(); }

SimulationStep* InputStrat::simulateStep() {
    const QualifiedTransitions& active = network().currentActiveTransitions();
    network().collectEnabledTransitions(mCandidates);
    if (active.empty()) throw deadlock_exception("No possible simulation step found: Actionlock");
    if (console() == nullptr) throw abort_exception(END_OF_INPUT);
    const TimeInterval allowed = network().invariantsRemainValidFor();
    console()->dumpTopologies(network());
    showTransitions(active, mCandidates);

    const Command command = askForCommand(mCandidates.size(), allowed);
    if (command.timed) return takeTimed(command.delay, allowed);
    if (command.discrete) return takeDiscrete(mCandidates[command.index]);
    throw deadlock_exception("Invalid user input");
}

void InputStrat::showTransitions(const QualifiedTransitions& active, const QualifiedTransitions& enabled) const {
    output() << "Current enabled transitions are:" << std::endl;
    for (std::size_t i = 0; i < enabled.size(); ++i) {
        output() << i << ": ";
        showInterval(enabled[i], network().transitionRemainsEnabledFor(enabled[i]));
    }
    output() << "Future transitions are:" << std::endl;
    for (const QualifiedTransition& transition : active) {
        const TimeInterval when = network().transitionRemainsEnabledFor(transition);
        // Also lists a transition that never becomes enabled: the lower end of a set without delays is 1.
        if (when.lower != 0.0) showInterval(transition, when);
    }
}

void InputStrat::showInterval(const QualifiedTransition& transition, const TimeInterval& when) const {
    const auto& [eda, realised] = transition;
    output() << eda->identifier() << " : " << *realised->transition() << "\n"
             << (isStochastic(transition) ? "    probabilistic: " : "    active in: ") << when << "\n";
}

void InputStrat::showState() const {
    output() << "Current state:\n" << network() << std::endl;
    output() << "Current time is:" << run()->currentTime() << std::endl;
}

InputStrat::Command InputStrat::askForCommand(std::size_t enabledCount, const TimeInterval& allowed) const {
    Command command;
    while (!command.discrete && !command.timed) {
        if (enabledCount > 0) output() << "Index in: [0, " << enabledCount - 1 << "]\n";
        output() << "Time in:  " << allowed << std::endl;
        output() << "Enter command (s = print state, d # = discrete transition, t #.# = timed transition, q = quit)"
                 << std::endl;
        std::stringstream line;
        const bool read = getLine(console()->input(), line);
        // A last line without a line end is not carried out. A stream that fails otherwise would prompt for ever.
        if (console()->input().eof() || !read) throw abort_exception(END_OF_INPUT);
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

/// The number of the command "d". A negative one wraps, as streams read unsigned numbers, and so is never in range.
std::size_t InputStrat::readIndex(std::istream& line, std::size_t size) const {
    std::uint32_t index = 0;
    if (line >> index && index < size) return index;
    output() << "Bad index, assuming 0" << std::endl;
    return 0;
}

/// The number of the command "t".
Time InputStrat::readDelay(std::istream& line) const {
    Time delay = 0.0;
    if (line >> delay && delay >= 0.0) return delay;
    output() << "Bad time, assuming 0.0" << std::endl;
    return 0.0;
}

SimulationStep* InputStrat::takeTimed(Time delay, const TimeInterval& allowed) {
    output() << "Taking timed transition, delay is " << delay << std::endl;
    if (delay > allowed.upper) {
        output() << "Whoops, sample exceed invariant. Capping at " << allowed.upper << std::endl;
        delay = allowed.upper;
    } else if (allowed.lower > delay) {
        output() << "Whoops, sample too low. Capping at " << allowed.lower << std::endl;
        delay = allowed.lower;
    }
    if (delay > 0) network().takeTimedTransition(delay);
    return new TimeSimulationStep(delay);
}

SimulationStep* InputStrat::takeDiscrete(const QualifiedTransition& transition) {
    network().collectEnabledTransitions(transition, mOptions);
    if (mOptions.empty()) {
        output() << "Could not synchronize trigger, please try a different transition or time delay" << std::endl;
        return new TimeSimulationStep(0.0);
    }
    return new DiscreteSimulationStep(fire(mOptions));
}

/// Lists the alternatives, with an empty line at the end. \return whether there is something to choose
bool InputStrat::showAlternatives(const ConnectionAsTransitions& options) const {
    bool anyShown = false;
    for (const auto& [eda, alternatives] : options) {
        if (alternatives.size() < 2) continue;
        if (!anyShown) output() << "Choose non-deterministic transitions:\n";
        anyShown = true;
        output() << " " << eda->identifier() << "\n";
        for (const TransitionPtr alternative : alternatives) output() << "  " << *alternative->transition() << "\n";
    }
    output() << std::endl;
    return anyShown;
}

/// The line that says which alternatives to take; empty at the end of input.
std::string InputStrat::askForAlternatives() const {
    output() << "Select transitions to take ( r,#,#,r,a )\n"
             << "a/A: Select for all following EDAs automatically\n"
             << "r/R: Select for given EDA randomly\n"
             << "  #: Select for given EDA manually" << std::endl;
    std::stringstream line;
    getLine(console()->input(), line);
    return line.str();
}

// Tokens count all automata of the event, also those with one alternative, which are not shown. A letter is no number,
// so the choice for its own position is random.
QualifiedTransitions InputStrat::selectTransitions(const ConnectionAsTransitions& options) {
    if (console() == nullptr && leavesAChoice(options)) throw abort_exception(END_OF_INPUT);
    const std::string line = console() != nullptr && showAlternatives(options) ? askForAlternatives() : std::string();
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
