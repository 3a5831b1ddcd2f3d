#include "vornrun/algorithms/simulators/strategies/EventRace.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace vornrun {

namespace {

// Samples are multiples of the grid, rounded down.
constexpr double STEPS_OF_GRID = 0x1p14;
constexpr double GRID = 0x1p-14;
// How far below zero rounding may leave a sample.
constexpr double TOLERANCE = 1e-6;

// The order never follows memory addresses, so that a run is the same on every machine.
bool firesBefore(const EventRace::Sample& a, const EventRace::Sample& b) {
    if (a.first != b.first) return a.first < b.first;
    const auto& [edaA, portA] = a.second;
    const auto& [edaB, portB] = b.second;
    if (edaA != edaB) return EDAOrder()(edaA, edaB);
    return PartOrder()(portA, portB);
}

}  // namespace

const Log EventRace::sLogger("root.sim.strat");

void EventRace::enter(const QualifiedEvent& event) {
    assert(event.first != nullptr && event.second != nullptr && event.second->stochastic());
    mSamples.emplace_back(TimeInterval::INF_TIME, event);
    mEntered.push_back(event);
}

void EventRace::dropSamples() {
    for (Sample& sample : mSamples) sample.first = TimeInterval::INF_TIME;
}

void EventRace::restart() {
    for (std::size_t i = 0; i < mEntered.size(); ++i) mSamples[i] = {TimeInterval::INF_TIME, mEntered[i]};
}

void EventRace::generate(const EDANetwork& network, RandomGenerator& random) {
    if (mPolicy == SamplePolicy::AlwaysFresh) dropSamples();
    for (auto& [time, event] : mSamples) {
        const bool active = network.isActive(event);
        if (time == TimeInterval::INF_TIME) {
            if (active) time = std::floor(random.exponential(event.second->rate()) * STEPS_OF_GRID) * GRID;
        } else if (!active && (mPolicy == SamplePolicy::DropInactive || event.first->active())) {
            time = TimeInterval::INF_TIME;
        }
    }
    sort();
}

// Nearly sorted already: a step moves few samples against the others. Two neighbours in the wrong order have one of two
// reasons. Either the earlier one has grown, and the smaller ones behind it move up past it. Or the later one has
// shrunk, and it moves into its place among those before it. Where that takes long, as with all samples fresh, a
// general sort goes on. The order is total, so both give the same.
void EventRace::sort() {
    std::size_t movesLeft = 64 + 8 * mSamples.size();
    const auto begin = mSamples.begin();
    const auto end = mSamples.end();
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

// Moves a sample behind those that follow it in ascending order and fire before it.
// \return the position of the last sample that is in order
EventRace::Samples::iterator EventRace::moveBack(Samples::iterator hole, std::size_t& movesLeft) {
    const Sample sample = *hole;
    const auto first = hole;
    auto next = hole + 1;
    for (; next != mSamples.end() && movesLeft > 0; ++next, ++hole, --movesLeft) {
        if (!firesBefore(*next, sample) || (hole != first && firesBefore(*next, *(hole - 1)))) break;
        *hole = *next;
    }
    *hole = sample;
    return hole;
}

// Moves a sample before those in front of it that fire after it. \return its former position
EventRace::Samples::iterator EventRace::moveForward(Samples::iterator from, std::size_t& movesLeft) {
    const Sample sample = *from;
    auto hole = from;
    for (; hole != mSamples.begin() && firesBefore(sample, *(hole - 1)) && movesLeft > 0; --hole, --movesLeft)
        *hole = *(hole - 1);
    *hole = sample;
    return from;
}

void EventRace::countDown(Time delay) {
    if (delay == 0) return;
    for (auto& [time, event] : mSamples) {
        if (event.first->active()) time -= delay;
        if (time < -TOLERANCE) {
            VORNRUN_LOG(sLogger, Warn, "Sample became negative!");
            time = TimeInterval::INF_TIME;
        }
    }
}

const EventRace::Sample* EventRace::first() const {
    const auto first = std::find_if(mSamples.begin(), mSamples.end(),
                                    [](const Sample& sample) { return sample.second.first->active(); });
    return first == mSamples.end() ? nullptr : &*first;
}

void EventRace::dropHead() {
    assert(!mSamples.empty());
    mSamples.front().first = TimeInterval::INF_TIME;
}

}  // namespace vornrun
