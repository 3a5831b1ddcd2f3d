#pragma once
/// \file
/// What ends a run, or a whole property, before its verdict.

#include <stdexcept>

namespace vornrun {

/// The evaluation of the property is over: the step bound was exceeded, a deadlock is disallowed, or the user quit.
class abort_exception : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// No step can be taken from the current state.
class deadlock_exception : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

}  // namespace vornrun
