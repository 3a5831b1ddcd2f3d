#pragma once
/// \file
/// Each active automaton proposes a delay, uniform over what its own invariant allows; the least proposal wins.

#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

class LocalStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "LocalStrat"; }
    LocalStrat* clone() const override { return new LocalStrat(*this); }
    SimulationStep* simulateStep() override;
};

}  // namespace vornrun
