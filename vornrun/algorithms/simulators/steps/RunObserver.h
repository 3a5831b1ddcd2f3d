#pragma once
/// \file
/// What somebody outside can see of runs while they happen.

#include <exception>

#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

class SimulationStep;

/// One step of a run. Valid during the call of stepTaken().
struct TakenStep {
    unsigned int number;         // 1 for the first step of the run
    Time time;                   // the model time of the run after the step
    Time delay;                  // of this step alone
    const SimulationStep& step;  // not owned
    bool nested;                 // the run belongs to a nested estimate
};

/// Sees the events of runs; every operation does nothing unless it is overridden. The workers of a PropertySimulator
/// call one observer from several threads at the same time. An exception of an observer ends the run like any other.
class RunObserver {
  public:
    virtual ~RunObserver() = default;

    /// A run begins; the network is in its initial state.
    virtual void runStarted(bool /*nested*/) {}
    /// A step was taken; the network is in the state after it.
    virtual void stepTaken(const TakenStep& /*taken*/) {}

    // The ending of a run of Simulator::performRun(), before the run reports a failure or throws. A run that is decided
    // at its last permitted evaluation first hits the bound and then has its verdict. `nested` is true for a run that
    // belongs to a nested estimate.
    virtual void verdictReached(bool /*nested*/) {}
    virtual void stepBoundHit(bool /*nested*/) {}
    virtual void deadlockReached(bool /*nested*/) {}

    /// All workers of a property have ended; on the thread that has started them.
    virtual void workersEnded() {}
    /// A worker has failed outside its runs, for instance since its model cannot be built; on the worker's own thread.
    /// The exception is the one being handled. When this returns, the thread that has started the workers gets it.
    virtual void workerFailed(const std::exception_ptr& /*fault*/) {}
};

}  // namespace vornrun
