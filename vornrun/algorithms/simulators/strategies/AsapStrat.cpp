#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"

#include <utility>

namespace vornrun {

namespace {

// How far the earliest delay may be beyond the end of the invariants.
constexpr double INVARIANT_SLACK = 1e-6;

}  // namespace

SimulationStep* AsapStrat::simulateStep() {
    const QualifiedTransitions& active = network().currentActiveTransitions();
    const TimeInterval allowed = network().invariantsRemainValidFor();
    if (active.empty()) failWithoutActiveTransitions(allowed);

    const Time best = collectEarliest(active);
    if (best > getFirstSample().first) return useFirstSample();
    if (best == TimeInterval::INF_TIME || mCandidates.empty())
        throw deadlock_exception("No possible simulation step found: Deadlock");
    if (best - INVARIANT_SLACK > allowed.upper)
        throw deadlock_exception("No possible simulation step found: Action lock");

    if (best > 0) network().takeTimedTransition(best);
    network().collectEnabledTransitions(mCandidates[pick(mCandidates.size())], mOptions);
    if (mOptions.empty()) throw deadlock_exception("No possible simulation step found: ASAP fail");
    QualifiedTransitions chosen = fire(mOptions);
    if (best > 0) return new CombinedSimulationStep(std::move(chosen), best);
    return new DiscreteSimulationStep(std::move(chosen));
}

Time AsapStrat::collectEarliest(const QualifiedTransitions& active) {
    Time best = TimeInterval::INF_TIME;
    mCandidates.clear();
    for (const QualifiedTransition& transition : active) {
        if (isStochastic(transition)) continue;
        const TimeInterval when = network().transitionRemainsEnabledFor(transition);
        if (when.empty()) continue;
        if (best > when.lower) {
            best = when.lower;
            mCandidates.clear();
        }
        if (best == when.lower) mCandidates.push_back(transition);
    }
    return best;
}

}  // namespace vornrun
