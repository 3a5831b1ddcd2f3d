#pragma once
/// \file
/// Describes the steps of a run to an observer of the door. Part of the library's inside.

#include <cstddef>
#include <vector>

#include "vornrun/api/Observer.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

class EDANetwork;
class SimulationStep;

namespace api {

/// Keeps the values of the state before, so that it can tell what a step has changed. Looks at all values of the model
/// after each step.
class StepReport {
  public:
    /// \param network whose steps are described; not owned
    StepReport(const EDANetwork& network, const GlobalValuation& valuation);

    void start(Observer& observer);
    /// \param time model time at the end of the step
    void step(Observer& observer, unsigned long number, Time time, const SimulationStep& step);

  private:
    void collectTransitions(const SimulationStep& step);
    void collectChanges();

    const GlobalValuation& mValuation;
    std::vector<TypedValueRef> mSlots;  // by index of Model::values()
    std::vector<Value> mValues;
    std::vector<FiredTransition> mTransitions;
    std::vector<Change> mChanges;
};

}  // namespace api
}  // namespace vornrun
