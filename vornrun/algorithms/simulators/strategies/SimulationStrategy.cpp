#include "vornrun/algorithms/simulators/strategies/SimulationStrategy.h"

#include <algorithm>
#include <cmath>

#include "vornrun/algorithms/simulators/random/MTRandomGenerator.h"
#include "vornrun/algorithms/simulators/steps/StepMemory.h"

namespace vornrun {

namespace {

// Samples lie on a grid of 2^-14, drawn delays on one of 2^-32; both are rounded down.
constexpr double SAMPLE_STEPS = 16384.0;
constexpr double SAMPLE_GRID = 6.103515625e-5;
constexpr double DELAY_STEPS = 4294967296.0;
constexpr double DELAY_GRID = 2.3283064365386963e-10;
// How far below zero rounding may leave a sample.
constexpr double SAMPLE_TOLERANCE = 1e-6;

// The order of the race. Ties of equal times fall by network order of the automaton, then by the order in which the
// ports were made, never by memory addresses: a run is the same on every machine.
bool firesBefore(const SimulationStrategy::Sample& a, const SimulationStrategy::Sample& b) {
    if (a.first != b.first) return a.first < b.first;
    const auto& [edaA, portA] = a.second;
    const auto& [edaB, portB] = b.second;
    if (edaA != edaB) return EDAOrder()(edaA, edaB);
    return PartOrder()(portA, portB);
}

}  // namespace

const Log SimulationStrategy::sLogger("root.sim.strat");

SimulationStrategy::SimulationStrategy() : mRandomGenerator(std::make_unique<MTRandomGenerator>()) {}

SimulationStrategy::SimulationStrategy(const SimulationStrategy& other)
    : mRun(other.mRun),
      mRandomGenerator(other.mRandomGenerator->clone()),
      mNetwork(other.mNetwork),
      mSamplePolicy(other.mSamplePolicy) {
    mRandomGenerator->reseed(0);
}

SimulationStrategy::~SimulationStrategy() = default;

void SimulationStrategy::reset() {
    for (Sample& sample : mEventSamples) sample.first = TimeInterval::INF_TIME;
}

void SimulationStrategy::registerSimulator(RunContext* run, EDANetwork* network) {
    mRun = run;
    mNetwork = network;
    for (EDA* eda : network->edas())
        for (const auto& port : eda->component()->eventPorts())
            if (port->stochastic()) mEventSamples.push_back({TimeInterval::INF_TIME, {eda, port.get()}});
}

void SimulationStrategy::setRandomGenerator(RandomGenerator* randomGenerator) {
    mRandomGenerator.reset(randomGenerator);
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

void SimulationStrategy::generateSamples() {
    if (mSamplePolicy == SamplePolicy::AlwaysFresh) SimulationStrategy::reset();
    for (auto& [time, event] : mEventSamples) {
        const bool active = network().isActive(event);
        if (time == TimeInterval::INF_TIME) {
            if (active) time = std::floor(random().exponential(event.second->rate()) * SAMPLE_STEPS) * SAMPLE_GRID;
        } else if (!active && (mSamplePolicy == SamplePolicy::DropInactive || event.first->active())) {
            time = TimeInterval::INF_TIME;
        }
    }
    sortSamples();
}

// Nearly sorted already: a step moves few samples against the others. Where two neighbours are in the wrong order,
// either the one before has grown, and the smaller ones that follow move up past it, or the one behind has shrunk and
// moves into its place among those before it. Only where that takes long, as with all samples fresh, a general sort
// goes on. The order is total, so both end alike.
void SimulationStrategy::sortSamples() {
    std::size_t movesLeft = 64 + 8 * mEventSamples.size();
    const auto begin = mEventSamples.begin();
    const auto end = mEventSamples.end();
    for (auto next = begin; next != end; ++next) {
        if (next == begin || !firesBefore(*next, *(next - 1))) continue;
        const bool grown = next - 1 == begin || !firesBefore(*next, *(next - 2));
        next = grown ? moveBack(next - 1, movesLeft) : moveForward(next, movesLeft);
        if (movesLeft == 0) {
            std::sort(begin, end, firesBefore);
            return;
        }
    }
}

// Moves a sample behind those that follow it in ascending order and fire before it. \return where the last of the
// samples in order stands
SimulationStrategy::Samples::iterator SimulationStrategy::moveBack(Samples::iterator hole, std::size_t& movesLeft) {
    const Sample sample = *hole;
    const auto first = hole;
    auto next = hole + 1;
    for (; next != mEventSamples.end() && movesLeft > 0; ++next, ++hole, --movesLeft) {
        if (!firesBefore(*next, sample) || (hole != first && firesBefore(*next, *(hole - 1)))) break;
        *hole = *next;
    }
    *hole = sample;
    return hole;
}

// Moves a sample before those in front of it that fire after it. \return where it stood
SimulationStrategy::Samples::iterator SimulationStrategy::moveForward(Samples::iterator from, std::size_t& movesLeft) {
    const Sample sample = *from;
    auto hole = from;
    for (; hole != mEventSamples.begin() && firesBefore(sample, *(hole - 1)) && movesLeft > 0; --hole, --movesLeft)
        *hole = *(hole - 1);
    *hole = sample;
    return from;
}

void SimulationStrategy::updateSamples(Time delta) {
    if (delta == 0) return;
    for (auto& [time, event] : mEventSamples) {
        if (event.first->active()) time -= delta;
        if (time < -SAMPLE_TOLERANCE) {
            VORNRUN_LOG(sLogger, Warn, "Sample became negative!");
            time = TimeInterval::INF_TIME;
        }
    }
}

const SimulationStrategy::Sample* SimulationStrategy::firstSample() const {
    const auto first = std::find_if(mEventSamples.begin(), mEventSamples.end(),
                                    [](const Sample& sample) { return sample.second.first->active(); });
    return first == mEventSamples.end() ? nullptr : &*first;
}

SimulationStrategy::Sample SimulationStrategy::getFirstSample() const {
    const Sample* first = firstSample();
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
    // Clears the head of the race, which is the sample of a sleeping automaton when one stands before the used one: the
    // sleeper then loses its sample, and the used one counts down to 0 and stays.
    mEventSamples.front().first = TimeInterval::INF_TIME;
    return new CombinedSimulationStep(std::move(chosen), time);
}

Time SimulationStrategy::sampleFromInterval(const TimeInterval& interval) {
    if (interval.length == 0) return interval.lower;
    const double drawn = random().uniform(0.0, interval.length);
    Time time = std::floor(drawn * DELAY_STEPS) * DELAY_GRID + interval.ranges.front().lower;
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

std::size_t SimulationStrategy::pick(std::size_t size) { return random().uniform(0UL, size - 1UL); }

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
