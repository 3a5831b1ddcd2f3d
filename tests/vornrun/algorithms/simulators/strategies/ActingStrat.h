#pragma once
/// \file
/// A strategy that does what the test says, so that the base class can be watched alone.

#include <functional>
#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun::test {

class ActingStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "ActingStrat"; }
    ActingStrat* clone() const override { return new ActingStrat(*this); }

    /// The next steps do this; it returns the step.
    std::function<SimulationStep*(ActingStrat&)> act = [](ActingStrat& strategy) { return strategy.wait(0.0); };
    int steps = 0;

    SimulationStep* wait(Time delay) {
        network().takeTimedTransition(delay);
        return new TimeSimulationStep(delay);
    }
    SimulationStep* take(const QualifiedTransition& transition) {
        network().takeEventTransition({transition});
        return new DiscreteSimulationStep({transition});
    }
    SimulationStep* simulateStep() override {
        ++steps;
        return act(*this);
    }
};

}  // namespace vornrun::test
