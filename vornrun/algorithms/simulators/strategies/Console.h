#pragma once
/// \file
/// Where a strategy talks to a person.

#include <iosfwd>

namespace vornrun {

class EDANetwork;

/// The library has none: the user of a strategy provides one.
class Console {
  public:
    virtual ~Console() = default;

    /// What the person reads; not owned by the caller.
    virtual std::ostream& output() = 0;
    /// What the person types; not owned by the caller.
    virtual std::istream& input() = 0;
    /// Shows both topologies of the network as they are now.
    virtual void dumpTopologies(const EDANetwork& network) = 0;
};

}  // namespace vornrun
