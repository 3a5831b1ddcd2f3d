#pragma once
/// \file
/// Process-wide numbers of the parts of component implementations.

namespace vornrun {

/// Counters of the parts as the parser meets them, over all packages and files; never reset. Only the thread that
/// parses uses them.
struct VornComponentImplementationConstructor {
    static unsigned int mSubcompId;     ///< of the next subcomponent
    static unsigned int mModeId;        ///< of the next mode
    static unsigned int mTransitionId;  ///< of the next transition
};

}  // namespace vornrun
