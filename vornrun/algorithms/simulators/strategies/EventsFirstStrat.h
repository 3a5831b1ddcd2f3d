#pragma once
/// \file
/// Lets no time pass while anything can happen now, and as much as the invariants allow otherwise.

#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

class EventsFirstStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "EventsFirstStrat"; }
    EventsFirstStrat* clone() const override { return new EventsFirstStrat(*this); }

  protected:
    SimulationStep* simulateStep() override;
};

}  // namespace vornrun
