#pragma once
/// \file
/// Lets a person choose each step: shows what can happen now and later, and asks for a command.

#include <cstddef>
#include <iosfwd>
#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

/// Reads one line of `in`, which becomes the whole content of `line`. Clears the state flags of `line`; those of `in`
/// stay as the reading has set them. \return whether a line was read
bool getLine(std::istream& in, std::stringstream& line);

/// The dialogue uses the console of the strategy. The stochastic events do not race: the person decides. Each step
/// dumps both topologies to the console.
class InputStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "InputStrat"; }
    InputStrat* clone() const override { return new InputStrat(*this); }

    /// \throws abort_exception when the person quits, at the end of input, and without a console
    SimulationStep* simulateStep() override;
    /// The person chooses for each automaton that has alternatives. What the person does not say is chosen at random.
    /// \throws abort_exception when there is something to choose, but no console
    QualifiedTransitions selectTransitions(const ConnectionAsTransitions& options) override;

  private:
    /// What the person wants: a transition of the enabled ones, or a delay.
    struct Command {
        bool discrete = false;
        bool timed = false;
        std::size_t index = 0;
        Time delay = 0.0;
    };

    std::ostream& output() const;
    void showTransitions(const QualifiedTransitions& active, const QualifiedTransitions& enabled) const;
    void showInterval(const QualifiedTransition& transition, const TimeInterval& when) const;
    void showState() const;
    bool showAlternatives(const ConnectionAsTransitions& options) const;
    std::string askForAlternatives() const;
    Command askForCommand(std::size_t enabledCount, const TimeInterval& allowed) const;
    std::size_t readIndex(std::istream& line, std::size_t size) const;
    Time readDelay(std::istream& line) const;
    SimulationStep* takeTimed(Time delay, const TimeInterval& allowed);
    SimulationStep* takeDiscrete(const QualifiedTransition& transition);
};

}  // namespace vornrun
