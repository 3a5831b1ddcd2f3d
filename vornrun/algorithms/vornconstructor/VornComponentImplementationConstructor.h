#pragma once
/// \file
/// Numbers of the parts of component implementations.

namespace vornrun {

/// Counters of the parts as the parser meets them. Each thread has its own. They start at 0 and count over all packages
/// and files of the thread; FreshIds starts them anew.
struct VornComponentImplementationConstructor {
    static thread_local unsigned int mSubcompId;     ///< of the next subcomponent
    static thread_local unsigned int mModeId;        ///< of the next mode
    static thread_local unsigned int mTransitionId;  ///< of the next transition
};

}  // namespace vornrun
