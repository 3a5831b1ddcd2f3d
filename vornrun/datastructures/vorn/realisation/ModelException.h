#pragma once
/// \file
/// The fault of a model that shows only when it is realised.

#include <stdexcept>

/// A model that was parsed but has no sound meaning; the text names the component by its full identifier.
class model_exception : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};
