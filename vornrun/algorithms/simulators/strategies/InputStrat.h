#pragma once
/// \file
/// Lets a person drive a trace from the terminal: shows what can happen now and later, and asks for a command.

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

/// Reads one line of `in`, which becomes the whole content of `line`, whose state flags are cleared; those of `in`
/// stay as the reading has set them. \return whether a line was read
bool getLine(std::istream& in, std::stringstream& line);

/// The dialogue runs over standard input and output. The stochastic events do not race: the person decides.
/// Each step rewrites the dumps of both topologies in the working directory.
class InputStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "InputStrat"; }
    InputStrat* clone() const override { return new InputStrat(*this); }

  protected:
    /// \throws abort_exception when the person quits, and at the end of input
    SimulationStep* simulateStep() override;
    /// The person chooses for each automaton that has alternatives; what is not said falls by chance.
    QualifiedTransitions selectTransitions(const ConnectionAsTransitions& options) override;

  private:
    /// What the person wants: a transition of the enabled ones, or a delay.
    struct Command {
        bool discrete = false;
        bool timed = false;
        std::size_t index = 0;
        Time delay = 0.0;
    };

    void showTransitions(const QualifiedTransitions& active, const QualifiedTransitions& enabled) const;
    void showInterval(const QualifiedTransition& transition, const TimeInterval& when) const;
    void showState() const;
    Command askForCommand(std::size_t enabledCount, const TimeInterval& allowed) const;
    SimulationStep* takeTimed(Time delay, const TimeInterval& allowed);
    SimulationStep* takeDiscrete(const QualifiedTransition& transition);
};

}  // namespace vornrun
