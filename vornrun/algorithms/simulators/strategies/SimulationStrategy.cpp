#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

#include <cassert>
#include <cmath>

#include "vornrun/algorithms/simulators/random/MTRandomGenerator.h"
#include "vornrun/algorithms/simulators/steps/StepMemory.h"

namespace vornrun {

namespace {

// Drawn delays are multiples of the grid above the lower end of their range, rounded down.
constexpr double STEPS_OF_GRID = 0x1p32;
constexpr double GRID = 0x1p-32;

}  // namespace

const Log SimulationStrategy::sLogger("root.sim.strat");

SimulationStrategy::SimulationStrategy()
    : mRandomGenerator(std::make_unique<MTRandomGenerator>()), mStream(mRandomGenerator.get()) {}

SimulationStrategy::SimulationStrategy(const SimulationStrategy& other)
    : mRun(other.mRun),
      mRandomGenerator(other.mRandomGenerator->clone()),
      mStream(mRandomGenerator.get()),
      mNetwork(other.mNetwork),
      mConsole(other.mConsole) {
    mRandomGenerator->reseed(0);
    mRace.setPolicy(other.samplePolicy());
}

SimulationStrategy::~SimulationStrategy() = default;

void SimulationStrategy::reset() { mRace.dropSamples(); }

void SimulationStrategy::restart() { mRace.restart(); }

void SimulationStrategy::registerSimulator(RunContext* run, EDANetwork* network) {
    assert(network != nullptr && mRace.samples().empty());
    mRun = run;
    mNetwork = network;
    for (EDA* eda : network->edas())
        for (const auto& port : eda->component()->eventPorts())
            if (port->stochastic()) mRace.enter({eda, port.get()});
}

void SimulationStrategy::setRandomGenerator(RandomGenerator* randomGenerator) {
    assert(randomGenerator != nullptr);
    const bool drawsFromOwn = mStream == mRandomGenerator.get();
    mRandomGenerator.reset(randomGenerator);
    if (drawsFromOwn) mStream = randomGenerator;
}

SimulationStep* SimulationStrategy::executeStep() {
    if (network().reactivationPending()) return reactivate();
    generateSamples();
    std::unique_ptr<SimulationStep> step(simulateStep());
    updateSamples(step->time());
    return step.release();
}

SimulationStep* SimulationStrategy::reactivate() {
    QualifiedTransitions chosen = selectTransitions(network().enabledReactivationTransitions());
    network().takeReactivationTransition(chosen);
    return new DiscreteSimulationStep(std::move(chosen));
}

SimulationStrategy::Sample SimulationStrategy::getFirstSample() const {
    const Sample* first = mRace.first();
    return first != nullptr ? *first : Sample(TimeInterval::INF_TIME, QualifiedEvent(nullptr, nullptr));
}

SimulationStep* SimulationStrategy::useFirstSample() {
    const auto [time, event] = getFirstSample();
    if (time > network().invariantsRemainValidFor().upper)
        throw deadlock_exception("Deadlock detected for probabilistic event: Exceeds invariants");
    // Without an event nothing could fire, however long the run waited.
    if (event.first == nullptr)
        throw deadlock_exception("Deadlock detected for probabilistic event: No event can occur");
    network().takeTimedTransition(time);
    network().collectEnabledTransitions(event, mOptions);
    if (mOptions.empty()) throw deadlock_exception("Deadlock detected for probabilistic event: No enabled transitions");
    QualifiedTransitions chosen = fire(mOptions);
    // The head of the race is the used sample, unless the sample of a sleeping automaton is before it. Then the sleeper
    // loses its sample, and the used one counts down to 0 and stays.
    mRace.dropHead();
    return new CombinedSimulationStep(std::move(chosen), time);
}

Time SimulationStrategy::sampleFromInterval(const TimeInterval& interval) {
    if (interval.length == 0) return interval.lower;
    assert(!interval.ranges.empty());
    const double drawn = random().uniform(0.0, interval.length);
    Time time = std::floor(drawn * STEPS_OF_GRID) * GRID + interval.ranges.front().lower;
    for (auto range = interval.ranges.begin(); time > range->upper;) {
        time -= range->upper;
        if (++range == interval.ranges.end()) break;  // only rounding leads here
        time += range->lower;
    }
    return time;
}

QualifiedTransitions SimulationStrategy::selectTransitions(const ConnectionAsTransitions& options) {
    QualifiedTransitions chosen = stepmemory::takeList();
    chosen.reserve(options.size());
    for (const auto& [eda, alternatives] : options) {
        requireAlternatives(*eda, alternatives);
        chosen.emplace_back(eda, alternatives[pick(alternatives.size())]);
    }
    return chosen;
}

void SimulationStrategy::requireAlternatives(const EDA& eda, const std::vector<TransitionPtr>& alternatives) {
    // An automaton that waits for its reactivation can be moved by another's event to a mode that has none.
    if (alternatives.empty())
        throw deadlock_exception("No possible simulation step found: " + eda.identifier() + " in mode " +
                                 eda.currentMode()->name() + " has no reactivation transition to take");
}

std::size_t SimulationStrategy::pick(std::size_t size) {
    assert(size > 0);
    return random().uniform(0UL, size - 1UL);
}

QualifiedTransitions SimulationStrategy::fire(const ConnectionAsTransitions& options) {
    QualifiedTransitions chosen = selectTransitions(options);
    network().takeEventTransition(chosen);
    return chosen;
}

QualifiedTransitions SimulationStrategy::fire(const QualifiedTransition& transition) {
    network().collectEnabledTransitions(transition, mOptions);
    return fire(mOptions);
}

bool SimulationStrategy::collectCandidates() {
    network().collectEnabledTransitions(mCandidates);
    const bool anyEnabled = !mCandidates.empty();
    std::erase_if(mCandidates, isStochastic);
    return anyEnabled;
}

void SimulationStrategy::failWithoutActiveTransitions(const TimeInterval& allowed) {
    throw deadlock_exception(allowed.upper == 0.0 ? "No possible simulation step found: Deadlock"
                                                  : "No possible simulation step found: Actionlock");
}

}  // namespace vornrun
