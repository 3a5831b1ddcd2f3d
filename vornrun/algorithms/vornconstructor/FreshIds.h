#pragma once
/// \file
/// Numbers of a model that depend on its file alone.

#include <cstdint>

namespace vornrun {

/// For its lifetime, the numbers of ports, modes, transitions, subcomponents and implementations start anew. Its
/// destructor restores the former ones. Guards nest. Each thread has its own numbers, and a guard acts on its thread
/// only, so that several threads can parse models at the same time.
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
