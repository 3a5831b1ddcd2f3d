#include "vornrun/algorithms/simulators/strategies/ProgressiveStrat.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "vornrun/algorithms/simulators/strategies/Console.h"

namespace vornrun {

namespace {

constexpr std::uint32_t MAX_RETRIES = 10;

}  // namespace

void ProgressiveStrat::restart() {
    SimulationStrategy::restart();
    mRetries = 0;
}

SimulationStep* ProgressiveStrat::simulateStep() {
    const QualifiedTransitions& active = network().currentActiveTransitions();
    const TimeInterval allowed = network().invariantsRemainValidFor();
    if (active.empty()) failWithoutActiveTransitions(allowed);

    const Time sample = getFirstSample().first;
    collectDelays(active, allowed, sample);
    if (mDelays.empty()) return useFirstSample();
    reduceAutomata();
    // The draw among the earliest comes before the test of the sample, so it takes place also when the sample wins.
    const Candidate winner = earliest(mReduced.begin(), mReduced.end());
    if (winner.delay >= sample) return useFirstSample();
    return take(winner);
}

void ProgressiveStrat::collectDelays(const QualifiedTransitions& active, const TimeInterval& allowed, Time sample) {
    mDelays.clear();
    for (const QualifiedTransition& transition : active) {
        if (isStochastic(transition)) continue;
        const TimeInterval basis = network().transitionRemainsEnabledFor(transition);
        if (basis.empty()) continue;
        const TimeInterval when = delaysOf(transition, basis, allowed);
        if (when.empty()) continue;
        const Time delay = sampleFromInterval(when);
        // Either a stochastic event is earlier, or an unbounded draw has overflowed to infinity.
        if (delay > sample || delay > TimeInterval::INF_TIME) continue;
        mDelays.push_back({transition, delay});
        if (basis.lower > delay) reportEarlyDelay(transition, basis, when, allowed);
    }
    // Automata are in network order; the transitions of one automaton keep their order.
    const auto inNetworkOrder = [](const Candidate& a, const Candidate& b) {
        return EDAOrder()(a.transition.first, b.transition.first);
    };
    if (!std::is_sorted(mDelays.begin(), mDelays.end(), inNetworkOrder))
        std::stable_sort(mDelays.begin(), mDelays.end(), inNetworkOrder);
}

/// For the person who writes the model: a transition has drawn a delay at which it is not enabled yet.
void ProgressiveStrat::reportEarlyDelay(const QualifiedTransition& transition, const TimeInterval& basis,
                                        const TimeInterval& when, const TimeInterval& allowed) const {
    if (console() == nullptr) return;
    const auto& [eda, realised] = transition;
    console()->output() << "TOO SMALL " << eda->identifier() << " " << *realised << "\n"
                        << basis << "\n"
                        << when << "\n"
                        << allowed << "\n"
                        << *eda << std::endl;
}

TimeInterval ProgressiveStrat::delaysOf(const QualifiedTransition& transition, const TimeInterval& basis,
                                        const TimeInterval& allowed) const {
    if (!mExtendToInvariant) return basis.intersect(allowed);
    const TimeInterval own = transition.first->invariantsRemainValidFor();
    // The extension is empty when the transition stays enabled for longer than the invariant holds.
    return basis.unite(TimeInterval(basis.upper, own.upper)).intersect(allowed);
}

void ProgressiveStrat::reduceAutomata() {
    mReduced.clear();
    for (auto begin = mDelays.cbegin(); begin != mDelays.cend();) {
        const EDA* eda = begin->transition.first;
        const auto end = std::find_if(begin, mDelays.cend(),
                                      [eda](const Candidate& other) { return other.transition.first != eda; });
        mReduced.push_back(reduceAutomaton(begin, end));
        begin = end;
    }
}

ProgressiveStrat::Candidate ProgressiveStrat::reduceAutomaton(Candidates::const_iterator begin,
                                                              Candidates::const_iterator end) {
    const auto size = static_cast<std::size_t>(end - begin);
    if (size == 1) return *begin;
    if (mLocalChoice) return earliest(begin, end);
    return *(begin + static_cast<std::ptrdiff_t>(pick(size)));
}

ProgressiveStrat::Candidate ProgressiveStrat::earliest(Candidates::const_iterator begin,
                                                       Candidates::const_iterator end) {
    Time best = TimeInterval::INF_TIME;
    mTied.clear();
    for (auto candidate = begin; candidate != end; ++candidate) {
        if (best > candidate->delay) {
            best = candidate->delay;
            mTied.clear();
        }
        if (best == candidate->delay) mTied.push_back(*candidate);
    }
    return mTied[pick(mTied.size())];
}

SimulationStep* ProgressiveStrat::take(const Candidate& winner) {
    const bool speculative = mAttitude == ProgressiveAttitude::Conservative;
    if (speculative) network().pushState();
    if (winner.delay > 0) network().takeTimedTransition(winner.delay);
    network().collectEnabledTransitions(winner.transition, mOptions);
    if (mOptions.empty()) return giveUp(winner.delay);

    QualifiedTransitions chosen = fire(mOptions);
    if (speculative) network().applyState();
    if (winner.delay > 0) return new CombinedSimulationStep(std::move(chosen), winner.delay);
    return new DiscreteSimulationStep(std::move(chosen));
}

// The normal outcome of a delay at which the transition is no longer enabled.
SimulationStep* ProgressiveStrat::giveUp(Time delay) {
    if (mAttitude != ProgressiveAttitude::Conservative) return new TimeSimulationStep(delay);
    VORNRUN_LOG(sLogger, Debug, "Conservative attitude: retry");
    network().popState();
    ++mRetries;
    if (mRetries > MAX_RETRIES) {
        VORNRUN_LOG(sLogger, Error, "Conservative attitude: Too many retries, aborting");
        throw deadlock_exception("No possible simulation step found: Conservative");
    }
    return new TimeSimulationStep(0.0);
}

}  // namespace vornrun
