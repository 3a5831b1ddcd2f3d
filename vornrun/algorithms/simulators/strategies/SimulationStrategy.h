#pragma once
/// \file
/// A model leaves three things open at each point of a trace: how long to wait, which transition to take, and which of
/// its alternatives each synchronising automaton takes. A strategy decides them. The base class has what all strategies
/// share: the random generator, the race of the stochastic events, and the uniform choice among alternatives.

#include <cassert>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/simulators/random/RandomGenerator.h"
#include "vornrun/algorithms/simulators/steps/SimulationExceptions.h"
#include "vornrun/algorithms/simulators/steps/SimulationStep.h"
#include "vornrun/algorithms/simulators/strategies/EventRace.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun {

class Console;
class RunContext;

class SimulationStrategy {
  public:
    SimulationStrategy();
    /// Clones the generator and reseeds the clone from the system's random device. The copy has an empty race and the
    /// same console.
    SimulationStrategy(const SimulationStrategy& other);
    SimulationStrategy& operator=(const SimulationStrategy&) = delete;
    virtual ~SimulationStrategy();

    /// The class name.
    virtual std::string name() const = 0;
    /// Drops all samples; called at the start of each run. The order of the race stays, and with it the order in which
    /// the next run draws.
    virtual void reset();
    /// As reset(), and also drops what reset() keeps: afterwards the strategy is as registerSimulator() has left it.
    virtual void restart();
    /// Enters each stochastic event port of the network into the race. Called once; neither argument is owned.
    /// \pre no network is registered yet, and the given one is not null
    virtual void registerSimulator(RunContext* run, EDANetwork* network);
    /// A plain copy; the caller owns it.
    virtual SimulationStrategy* clone() const = 0;

    /// The strategy's own generator; not owned by the caller.
    RandomGenerator* getRandomGenerator() const noexcept { return mRandomGenerator.get(); }
    /// Adopts the generator, which is not null.
    void setRandomGenerator(RandomGenerator* randomGenerator);
    /// From now on all draws come from that generator, which is not owned; null goes back to the strategy's own one.
    void drawFrom(RandomGenerator* stream) noexcept { mStream = stream != nullptr ? stream : mRandomGenerator.get(); }

    /// Where the strategy talks to a person; not owned, null at first. Copies of the strategy use the same one.
    void setConsole(Console* console) noexcept { mConsole = console; }
    Console* console() const noexcept { return mConsole; }

    /// Takes one step on the network and returns it; the caller owns it. \pre a network is registered
    /// \throws deadlock_exception when no step is possible
    SimulationStep* executeStep();
    /// Takes the strategy's own step and returns it; the caller owns it. Part of executeStep().
    virtual SimulationStep* simulateStep() = 0;
    /// Chooses one alternative for each automaton, uniformly. Draws for each, also where there is only one.
    virtual QualifiedTransitions selectTransitions(const ConnectionAsTransitions& options);

    // The race.
    using Sample = EventRace::Sample;
    const std::vector<Sample>& eventSamples() const noexcept { return mRace.samples(); }
    SamplePolicy samplePolicy() const noexcept { return mRace.policy(); }
    void setSamplePolicy(SamplePolicy policy) noexcept { mRace.setPolicy(policy); }
    /// The first entry whose automaton is active; (INF_TIME, (null, null)) without one.
    Sample getFirstSample() const;
    /// Lets the first sample fire after its delay; the caller owns the step.
    /// \throws deadlock_exception when the invariants end before, when nothing is enabled then, or without a sample
    SimulationStep* useFirstSample();
    /// Draws missing samples, drops those that the policy drops, and sorts the race.
    void generateSamples() { mRace.generate(network(), random()); }
    /// Counts the samples of active automata down by a delay in model time.
    void updateSamples(Time delta) { mRace.countDown(delta); }
    /// A delay drawn uniformly by measure; for a set of length 0 its lower end, without a draw.
    Time sampleFromInterval(const TimeInterval& interval);

  protected:
    RunContext* run() const noexcept { return mRun; }
    EDANetwork& network() const noexcept;
    RandomGenerator& random() const noexcept { return *mStream; }
    /// A uniform index into a list of `size` elements. Draws also when there is only one element. \pre size > 0
    std::size_t pick(std::size_t size);
    /// Takes what selectTransitions() chooses and returns it.
    QualifiedTransitions fire(const ConnectionAsTransitions& options);
    /// Fires the transition together with all that hear it. \pre it is enabled
    QualifiedTransitions fire(const QualifiedTransition& transition);
    /// Refills mCandidates with the enabled transitions that are not stochastic.
    /// \return whether any transition at all is enabled
    bool collectCandidates();

    static bool isStochastic(const QualifiedTransition& transition) {
        return transition.second->trigger()->stochastic();
    }
    /// \throws deadlock_exception with the automaton and its mode when there is nothing to choose from
    static void requireAlternatives(const EDA& eda, const std::vector<TransitionPtr>& alternatives);
    /// For a state in which no transition is active: a deadlock when no time can pass either, else an actionlock.
    [[noreturn]] static void failWithoutActiveTransitions(const TimeInterval& allowed);

    // Work lists. Each use refills them; their storage stays from step to step.
    QualifiedTransitions mCandidates;
    ConnectionAsTransitions mOptions;

    static const Log sLogger;  // "root.sim.strat", shared by all strategies

  private:
    SimulationStep* reactivate();

    RunContext* mRun = nullptr;
    std::unique_ptr<RandomGenerator> mRandomGenerator;
    RandomGenerator* mStream;  // where draws come from: mRandomGenerator, or what drawFrom() has set
    EDANetwork* mNetwork = nullptr;
    Console* mConsole = nullptr;
    EventRace mRace;
};

inline EDANetwork& SimulationStrategy::network() const noexcept {
    assert(mNetwork != nullptr);
    return *mNetwork;
}

}  // namespace vornrun
