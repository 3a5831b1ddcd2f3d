#pragma once
/// \file
/// The root of all syntax classes: the content of a model file, as objects that print themselves.

#include <iosfwd>

namespace vornrun {

/// Anything of the syntax tree. The printed form is for people; the tool never parses it.
class Vorn {
  public:
    Vorn() = default;
    Vorn(const Vorn&) = default;
    Vorn& operator=(const Vorn&) = default;
    virtual ~Vorn() = default;

    /// Writes the textual form of the object.
    virtual void printVorn(std::ostream& stream) const = 0;
};

std::ostream& operator<<(std::ostream& stream, const Vorn& vorn);

}  // namespace vornrun
