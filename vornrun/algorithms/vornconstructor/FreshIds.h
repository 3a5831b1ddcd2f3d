#pragma once
/// \file
/// Numbers of a model that depend on its file alone.

#include <cstdint>

namespace vornrun {

/// Starts all numbers that parsing hands out anew for its lifetime: those of ports, modes, transitions, subcomponents
/// and implementations. Afterwards the former numbers go on. Guards nest. A guard acts on its own thread only, as the
/// numbers do, so that models can be parsed on several threads at the same time.
///
///     const FreshIds fresh;
///     parser.parseVorn(file);  // ports start at 10, everything else at 0
class FreshIds {
  public:
    FreshIds() noexcept;
    FreshIds(const FreshIds&) = delete;
    FreshIds& operator=(const FreshIds&) = delete;
    /// \pre runs on the thread of the constructor, in reverse order of construction
    ~FreshIds();

  private:
    std::uint32_t mPort;
    unsigned int mSubcomponent;
    unsigned int mMode;
    unsigned int mTransition;
    unsigned int mImplementation;
};

}  // namespace vornrun
