#pragma once
/// \file
/// The race of the stochastic events: a sample for each, drawn once and counted down until its event fires.

#include <cstddef>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/random/RandomGenerator.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun {

/// What becomes of the sample of an event that is no longer active.
enum class SamplePolicy : unsigned int {
    KeepWhileAsleep = 0,  // kept, without counting down, while its automaton sleeps; dropped when that is active
    DropInactive = 1,     // always dropped
    AlwaysFresh = 2       // all samples are dropped before each step
};

/// One entry for each event. A step draws samples for the active events that have none, in the order of the entries,
/// and then sorts the entries by time.
class EventRace {
  public:
    /// The delay until the event fires, in model time, and the event. TimeInterval::INF_TIME means that no sample is
    /// drawn.
    using Sample = std::pair<Time, QualifiedEvent>;

    /// Adds an entry without a sample. \pre the port is stochastic
    void enter(const QualifiedEvent& event);
    /// Drops all samples; the entries keep their present order.
    void dropSamples();
    /// Drops all samples and puts the entries into the order in which they were entered.
    void restart();

    /// Draws the samples that are missing, drops those that the policy drops, and sorts. Entries with equal times are
    /// in network order of their automata, then in the order in which their ports were made.
    void generate(const EDANetwork& network, RandomGenerator& random);
    /// Counts the samples of active automata down; a delay of 0 does nothing. One that falls below zero by more than
    /// rounding explains is dropped with a warning.
    void countDown(Time delay);

    /// The first entry whose automaton is active; null without one. Not owned, valid until the race changes.
    const Sample* first() const;
    /// Drops the sample of the first entry of all, whether or not its automaton is active. \pre there is an entry
    void dropHead();

    const std::vector<Sample>& samples() const noexcept { return mSamples; }
    SamplePolicy policy() const noexcept { return mPolicy; }
    void setPolicy(SamplePolicy policy) noexcept { mPolicy = policy; }

  private:
    using Samples = std::vector<Sample>;
    void sort();
    Samples::iterator moveBack(Samples::iterator hole, std::size_t& movesLeft);
    Samples::iterator moveForward(Samples::iterator from, std::size_t& movesLeft);

    static const Log sLogger;  // "root.sim.strat", as that of the strategies
    Samples mSamples;
    std::vector<QualifiedEvent> mEntered;  // in the order of enter()
    SamplePolicy mPolicy = SamplePolicy::KeepWhileAsleep;
};

}  // namespace vornrun
