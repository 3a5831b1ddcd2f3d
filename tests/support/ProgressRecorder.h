#pragma once
/// \file
/// An observer that writes the endings of runs as a text.

#include <mutex>
#include <string>

#include "vornrun/algorithms/simulators/steps/RunObserver.h"

namespace vornrun::test {

/// "." for a verdict, "b" for a hit of the step bound, "d" for a deadlock, a newline when all workers have ended.
/// Several threads may call it at the same time.
class ProgressRecorder final : public RunObserver {
  public:
    void verdictReached(bool nested) override { add('.', nested); }
    void stepBoundHit(bool nested) override { add('b', nested); }
    void deadlockReached(bool nested) override { add('d', nested); }
    void workersEnded() override { add('\n', false); }

    /// All characters so far.
    std::string output() const {
        const std::lock_guard lock(mMutex);
        return mAll;
    }
    /// The characters of nested runs.
    std::string nestedOutput() const {
        const std::lock_guard lock(mMutex);
        return mNested;
    }

  private:
    void add(char character, bool nested) {
        const std::lock_guard lock(mMutex);
        mAll += character;
        if (nested) mNested += character;
    }

    mutable std::mutex mMutex;
    std::string mAll;
    std::string mNested;
};

}  // namespace vornrun::test
