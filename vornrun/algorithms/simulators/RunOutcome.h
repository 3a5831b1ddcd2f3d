#pragma once
/// \file
/// What came out of one run.

#include <string>

#include "vornrun/datastructures/property/PropertyResult.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

/// Why a run ended.
enum class RunEnding {
    decided,    // the formula has a verdict
    deadlock,   // no step was possible
    stepBound,  // the formula was evaluated as often as the limits permit
};

struct RunOutcome {
    /// PropertyUnknown when the run ended before. Known with RunEnding::stepBound for a verdict of the last permitted
    /// evaluation.
    PropertyResult verdict = PropertyUnknown;
    RunEnding ending = RunEnding::decided;
    /// How many steps the run took.
    unsigned int steps = 0;
    /// The model time at the end, as the formula sees it: after a nested estimate, that of the last nested run.
    Time time = 0.0;
    /// Why no step was possible; empty unless the run ended in a deadlock.
    std::string text;
};

}  // namespace vornrun
