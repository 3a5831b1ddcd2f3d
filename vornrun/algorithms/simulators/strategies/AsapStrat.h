#pragma once
/// \file
/// Takes transitions as soon as possible: waits until the first one becomes enabled.

#include <string>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

class AsapStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "AsapStrat"; }
    AsapStrat* clone() const override { return new AsapStrat(*this); }
    SimulationStep* simulateStep() override;

  private:
    /// Fills mCandidates with the non-stochastic transitions that are enabled first.
    /// \return the delay until then; INF_TIME when none is ever enabled
    Time collectEarliest(const QualifiedTransitions& active);
};

}  // namespace vornrun
