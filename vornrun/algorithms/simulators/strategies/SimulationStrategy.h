#pragma once
/// \file
/// What a model leaves open at each point of a trace a strategy settles: how long to wait, which transition to take,
/// and which alternative each synchronising automaton picks. The base owns what all strategies share: the random
/// generator, the race of the stochastic events, and the uniform choice among alternatives.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/random/RandomGenerator.h"
#include "vornrun/algorithms/simulators/steps/SimulationExceptions.h"
#include "vornrun/algorithms/simulators/steps/SimulationStep.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun {

class RunContext;

/// What becomes of the sample of an event that is no longer active.
enum class SamplePolicy : unsigned int {
    KeepWhileAsleep = 0,  // kept, standing still, while its automaton sleeps; dropped when the automaton is active
    DropInactive = 1,     // always dropped
    AlwaysFresh = 2       // all samples are dropped before each step
};

class SimulationStrategy {
  public:
    SimulationStrategy();
    /// Clones the generator and reseeds the clone from the system's random device; starts without samples.
    SimulationStrategy(const SimulationStrategy& other);
    SimulationStrategy& operator=(const SimulationStrategy&) = delete;
    virtual ~SimulationStrategy();

    /// The class name.
    virtual std::string name() const = 0;
    /// Forgets all samples; called at the start of each run.
    virtual void reset();
    /// Makes an entry in the race for each stochastic event port. Called once; neither argument is owned.
    virtual void registerSimulator(RunContext* run, EDANetwork* network);
    /// A plain copy; the caller owns it.
    virtual SimulationStrategy* clone() const = 0;

    RandomGenerator* getRandomGenerator() const noexcept { return mRandomGenerator.get(); }
    /// Adopts the generator.
    void setRandomGenerator(RandomGenerator* randomGenerator);

    /// Takes one step on the network and returns it; the caller owns it.
    /// \throws deadlock_exception when no step is possible
    SimulationStep* executeStep();

    /// An event of the race: the delay until it fires, TimeInterval::INF_TIME while no sample is drawn.
    using Sample = std::pair<Time, QualifiedEvent>;
    const std::vector<Sample>& eventSamples() const noexcept { return mEventSamples; }
    SamplePolicy samplePolicy() const noexcept { return mSamplePolicy; }
    void setSamplePolicy(SamplePolicy policy) noexcept { mSamplePolicy = policy; }

    // The sampling operations, for the derived strategies and for tests.
    /// The first entry whose automaton is active; (INF_TIME, (null, null)) without one.
    Sample getFirstSample() const;
    /// Lets the first sample fire after its delay; the caller owns the step.
    /// \throws deadlock_exception when the invariants end before, when nothing is enabled then, or without a sample
    SimulationStep* useFirstSample();
    /// A delay drawn uniformly by measure; the lower end, without a draw, of a set of length 0.
    Time sampleFromInterval(const TimeInterval& interval);
    /// Draws samples for active events without one, drops those the policy drops, and sorts the race by time; ties fall
    /// by network order of the automaton, then by the order in which the ports were made.
    void generateSamples();
    /// Counts the samples of active automata down.
    void updateSamples(Time delta);

  protected:
    /// Takes the strategy's own step.
    virtual SimulationStep* simulateStep() = 0;
    /// One alternative for each automaton, uniformly; a draw each, also where there is no choice.
    virtual QualifiedTransitions selectTransitions(const ConnectionAsTransitions& options);

    RunContext* run() const noexcept { return mRun; }
    EDANetwork& network() const noexcept { return *mNetwork; }
    RandomGenerator& random() const noexcept { return *mRandomGenerator; }
    /// A uniform index into a list of `size` elements, which is not 0; a draw also when there is one element only.
    std::size_t pick(std::size_t size);
    /// Takes one alternative of each automaton, as selectTransitions() has it, and returns them.
    QualifiedTransitions fire(const ConnectionAsTransitions& options);
    /// Fires the transition together with all that hear it. \pre it is enabled
    QualifiedTransitions fire(const QualifiedTransition& transition);
    /// Refills mCandidates with the enabled transitions that are not stochastic.
    /// \return whether any transition at all is enabled
    bool collectCandidates();

    static bool isStochastic(const QualifiedTransition& transition) {
        return transition.second->trigger()->stochastic();
    }
    /// \throws deadlock_exception naming automaton and mode when there is nothing to choose from
    static void requireAlternatives(const EDA& eda, const std::vector<TransitionPtr>& alternatives);
    /// For a state in which no transition is active: a deadlock when no time can pass either, else an actionlock.
    [[noreturn]] static void failWithoutActiveTransitions(const TimeInterval& allowed);

    // Work lists, refilled at each use, whose storage serves from step to step.
    QualifiedTransitions mCandidates;
    ConnectionAsTransitions mOptions;

    static const Log sLogger;  // "root.sim.strat", shared by all strategies

  private:
    SimulationStep* reactivate();
    const Sample* firstSample() const;
    using Samples = std::vector<Sample>;
    void sortSamples();
    Samples::iterator moveBack(Samples::iterator hole, std::size_t& movesLeft);
    Samples::iterator moveForward(Samples::iterator from, std::size_t& movesLeft);

    RunContext* mRun = nullptr;
    std::unique_ptr<RandomGenerator> mRandomGenerator;
    EDANetwork* mNetwork = nullptr;
    std::vector<Sample> mEventSamples;
    SamplePolicy mSamplePolicy = SamplePolicy::KeepWhileAsleep;
};

}  // namespace vornrun
