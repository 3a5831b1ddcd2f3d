#pragma once
/// \file
/// Counts calls of operator new, so that tests can say "this allocates nothing". A program that uses it gets operator
/// new replaced by one that counts.

#include <cstddef>

namespace vornrun::test {

/// Counts the allocations of the process from its construction on.
class AllocationCounter {
  public:
    AllocationCounter();
    /// Allocations since construction.
    std::size_t count() const;

  private:
    std::size_t mStart;
};

}  // namespace vornrun::test
