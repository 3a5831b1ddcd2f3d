#pragma once
/// \file
/// What a formula asks of the run in which it is evaluated.

#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

class CSLFormula;

/// The run as formulas and strategies see it. One thread uses a context.
class RunContext {
  public:
    RunContext() = default;
    RunContext(const RunContext&) = delete;
    RunContext& operator=(const RunContext&) = delete;
    virtual ~RunContext() = default;

    /// The model time that has passed in the run.
    virtual Time currentTime() const = 0;
    /// A nested estimate: the share of runs from the initial state in which the formula is true.
    /// \param formula bound to the values of this context; not null, not owned
    virtual double evaluate(const CSLFormula* formula) = 0;
    /// Saves the state of the model. Every call needs one of popState().
    virtual void pushState() = 0;
    /// Restores the state that was saved last. \pre a state is saved
    virtual void popState() = 0;
};

}  // namespace vornrun
