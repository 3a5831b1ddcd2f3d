#pragma once
/// \file
/// The three-valued verdict of a formula in one state of a run.

namespace vornrun {

/// The numbers are the indices of the combination tables.
enum PropertyResult : unsigned int {
    PropertyTrue = 0,     ///< holds, finally, for this run
    PropertyFalse = 1,    ///< does not hold, finally, for this run
    PropertyUnknown = 2,  ///< not decided in this state; the run goes on
};

}  // namespace vornrun
