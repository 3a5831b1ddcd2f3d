#pragma once
/// \file
/// The root of the realised model: the instances of what a model file declares.

#include <iosfwd>

namespace vornrun {

/// Anything printable of the realised model.
class Realisation {
  public:
    Realisation() = default;
    Realisation(const Realisation&) = delete;
    Realisation& operator=(const Realisation&) = delete;
    virtual ~Realisation() = default;
    virtual void print(std::ostream& stream) const = 0;
};

std::ostream& operator<<(std::ostream& stream, const Realisation& realisation);

}  // namespace vornrun
