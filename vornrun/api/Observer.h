#pragma once
/// \file
/// Looking at a trace while it runs.

#include <cstddef>
#include <span>
#include <string_view>

#include "vornrun/api/Value.h"

namespace vornrun {

struct Record;

/// A transition that a component has taken in a step.
struct FiredTransition {
    std::size_t component;    ///< index into Model::components()
    std::string_view source;  ///< name of the mode that it left
    std::string_view target;  ///< name of the mode that it entered, perhaps the same
};

/// A value that a step has changed.
struct Change {
    std::size_t value;  ///< index into Model::values()
    Value before;
    Value after;
};

/// One step of a trace. All views in it are valid during the call that passes it.
struct Step {
    unsigned long number;                          ///< from 1
    double time;                                   ///< model time at the end of the step
    double delay;                                  ///< model time that passed in it, before its transitions
    std::string_view event;                        ///< name of the event that fired; empty when only time has passed
    std::span<const FiredTransition> transitions;  ///< those that fired together, the initiator's first
    std::span<const Change> changes;               ///< in the order of Model::values()
};

/// Sees a trace of a Runner step by step. Called on the runner's thread. What it throws ends the run and leaves
/// Runner::run().
class Observer {
  public:
    virtual ~Observer() = default;
    /// The initial state, before the first step: one value for each of Model::values().
    virtual void start(std::span<const Value> values);
    virtual void step(const Step& step) = 0;
    /// How the trace ended.
    virtual void end(const Record& record);
};

}  // namespace vornrun
