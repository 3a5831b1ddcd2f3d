#pragma once
/// \file
/// Always lets as much time pass as the invariants allow before it takes a transition.

#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

class MaxTimeProgressStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "MaxTimeProgressStrat"; }
    MaxTimeProgressStrat* clone() const override { return new MaxTimeProgressStrat(*this); }
    SimulationStep* simulateStep() override;
};

}  // namespace vornrun
