#pragma once
/// \file
/// The steps of the current run and the time that has passed in it.

#include <iosfwd>
#include <memory>
#include <vector>

#include "vornrun/algorithms/simulators/steps/SimulationStep.h"

namespace vornrun {

class SimulationTrace {
  public:
    SimulationTrace() = default;
    SimulationTrace(const SimulationTrace&) = delete;
    SimulationTrace& operator=(const SimulationTrace&) = delete;
    virtual ~SimulationTrace() = default;

    /// Adopts the step; one that lets time pass adds its delay.
    void addStep(SimulationStep* step);
    /// Deletes all steps and sets the time back to 0.
    void clear();
    const std::vector<std::unique_ptr<SimulationStep>>& steps() const noexcept { return mSteps; }
    /// The sum of all delays of the run.
    Time time() const noexcept { return mTime; }

  private:
    std::vector<std::unique_ptr<SimulationStep>> mSteps;
    Time mTime = 0.0;
};

/// One step a line, no line end behind the last.
std::ostream& operator<<(std::ostream& stream, const SimulationTrace& trace);

}  // namespace vornrun
