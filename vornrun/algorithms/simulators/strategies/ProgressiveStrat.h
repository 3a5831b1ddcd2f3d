#pragma once
/// \file
/// Every non-stochastic active transition draws a delay of its own from the delays at which it can be taken, and the
/// earliest wins. The delays may be extended to the end of its automaton's invariant: a draw in the extension lets time
/// pass without taking the transition.

#include <cstdint>
#include <string>
#include <vector>

#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

namespace vornrun {

/// What to do when the transition picked cannot be taken after its delay.
enum class ProgressiveAttitude : std::uint32_t {
    TakeDelay = 0,    // the delay alone is the step
    Conservative = 1  // the delay is taken back and the next step draws anew, ten times in the life of the strategy
};

class ProgressiveStrat final : public SimulationStrategy {
  public:
    std::string name() const override { return "ProgressiveStrat"; }
    /// Takes over the settings and the count of retries.
    ProgressiveStrat* clone() const override { return new ProgressiveStrat(*this); }

    /// Whether an automaton with several candidates keeps the one with the earliest delay, or a random one.
    bool localChoice() const noexcept { return mLocalChoice != 0; }
    void setLocalChoice(bool localChoice) noexcept { mLocalChoice = localChoice ? 1 : 0; }
    /// Whether a transition's delays reach on to the end of its automaton's own invariant.
    bool extendToInvariant() const noexcept { return mExtendToInvariant == 1; }
    void setExtendToInvariant(bool extend) noexcept { mExtendToInvariant = extend ? 1 : 0; }
    ProgressiveAttitude attitude() const noexcept { return mAttitude; }
    void setAttitude(ProgressiveAttitude attitude) noexcept { mAttitude = attitude; }
    /// The failed attempts under the conservative attitude, in all runs so far.
    std::uint32_t retries() const noexcept { return mRetries; }

  protected:
    SimulationStep* simulateStep() override;

  private:
    /// A transition with the delay that it has drawn.
    struct Candidate {
        QualifiedTransition transition;
        Time delay;
    };
    using Candidates = std::vector<Candidate>;

    void collectDelays(const QualifiedTransitions& active, const TimeInterval& allowed, Time sample);
    TimeInterval delaysOf(const QualifiedTransition& transition, const TimeInterval& basis,
                          const TimeInterval& allowed) const;
    void reduceAutomata();
    Candidate reduceAutomaton(Candidates::const_iterator begin, Candidates::const_iterator end);
    Candidate earliest(Candidates::const_iterator begin, Candidates::const_iterator end);
    SimulationStep* take(const Candidate& winner);
    SimulationStep* giveUp(Time delay);

    std::uint32_t mLocalChoice = 1;
    std::uint32_t mExtendToInvariant = 1;
    ProgressiveAttitude mAttitude = ProgressiveAttitude::TakeDelay;
    std::uint32_t mRetries = 0;  // never reset

    // Work lists, whose storage serves from step to step.
    Candidates mDelays;   // those still in the race, by network order of the automaton
    Candidates mReduced;  // one for each automaton
    Candidates mTied;     // those with the least delay
};

}  // namespace vornrun
