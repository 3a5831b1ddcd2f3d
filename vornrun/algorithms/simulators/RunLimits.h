#pragma once
/// \file
/// What limits a run, and what becomes of a run that meets a limit.

namespace vornrun {

struct RunLimits {
    /// How often the formula is evaluated at most. N evaluations leave room for N - 1 steps, and a verdict of the N-th
    /// one still counts as hitting the bound.
    unsigned int stepBound = 10000;
    /// Whether a deadlock makes Simulator::performRun() false, or ends the property.
    bool allowDeadlock = true;
    /// Whether Simulator::performRun() goes on at the step bound, or ends the property.
    bool ignoreBoundError = false;
};

}  // namespace vornrun
