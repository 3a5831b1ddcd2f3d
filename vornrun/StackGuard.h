#pragma once
/// \file
/// A bound on recursion: input files decide how deep some recursive walks go, and a walk must end in a message before
/// it ends in a stack overflow.

namespace vornrun {

/// True when the calling thread has used more than half of its stack, counting no more of it than 8 MiB, nor than a
/// new thread would have. The rest leaves room for later walks over the same structure on any thread (cloning,
/// evaluation, destruction), whose frames are smaller than the parser's.
bool stackNearlyExhausted();

}  // namespace vornrun
