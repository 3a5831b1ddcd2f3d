#pragma once
/// \file
/// Lets no time pass while anything can happen now. Otherwise lets as much time pass as the invariants allow.

#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

class EventsFirstStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "EventsFirstStrat"; }
    EventsFirstStrat* clone() const override { return new EventsFirstStrat(*this); }
    SimulationStep* simulateStep() override;
};

}  // namespace vornrun
