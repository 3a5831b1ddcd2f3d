#pragma once
/// \file
/// Every non-stochastic active transition draws a delay from the delays at which it can be taken. The earliest wins.
/// The delays may be extended to the end of the automaton's invariant. A draw in that extension lets time pass without
/// taking the transition.

#include <cstdint>
#include <string>
#include <vector>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

/// What to do when the chosen transition cannot be taken after its delay.
enum class ProgressiveAttitude : std::uint32_t {
    TakeDelay = 0,    // the delay alone is the step
    Conservative = 1  // the delay is undone and the next step draws again, at most ten times for each strategy
};

class ProgressiveStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "ProgressiveStrat"; }
    /// Copies the settings and the count of retries.
    ProgressiveStrat* clone() const override { return new ProgressiveStrat(*this); }
    /// Also sets the count of retries back to 0.
    void restart() override;
    SimulationStep* simulateStep() override;

    /// Whether an automaton with several candidates keeps the one with the earliest delay, or a random one.
    bool localChoice() const noexcept { return mLocalChoice; }
    void setLocalChoice(bool localChoice) noexcept { mLocalChoice = localChoice; }
    /// Whether a transition's delays are extended to the end of its automaton's own invariant.
    bool extendToInvariant() const noexcept { return mExtendToInvariant; }
    void setExtendToInvariant(bool extend) noexcept { mExtendToInvariant = extend; }
    ProgressiveAttitude attitude() const noexcept { return mAttitude; }
    void setAttitude(ProgressiveAttitude attitude) noexcept { mAttitude = attitude; }
    /// The failed attempts under the conservative attitude, in all runs since the last restart().
    std::uint32_t retries() const noexcept { return mRetries; }

  private:
    /// A transition and the delay that it has drawn.
    struct Candidate {
        QualifiedTransition transition;
        Time delay;
    };
    using Candidates = std::vector<Candidate>;

    void collectDelays(const QualifiedTransitions& active, const TimeInterval& allowed, Time sample);
    void reportEarlyDelay(const QualifiedTransition& transition, const TimeInterval& basis, const TimeInterval& when,
                          const TimeInterval& allowed) const;
    TimeInterval delaysOf(const QualifiedTransition& transition, const TimeInterval& basis,
                          const TimeInterval& allowed) const;
    void reduceAutomata();
    Candidate reduceAutomaton(Candidates::const_iterator begin, Candidates::const_iterator end);
    Candidate earliest(Candidates::const_iterator begin, Candidates::const_iterator end);
    SimulationStep* take(const Candidate& winner);
    SimulationStep* giveUp(Time delay);

    bool mLocalChoice = true;
    bool mExtendToInvariant = true;
    ProgressiveAttitude mAttitude = ProgressiveAttitude::TakeDelay;
    std::uint32_t mRetries = 0;

    // Work lists. Their storage stays from step to step.
    Candidates mDelays;   // those still in the race, by network order of the automaton
    Candidates mReduced;  // one for each automaton
    Candidates mTied;     // those with the least delay
};

}  // namespace vornrun
