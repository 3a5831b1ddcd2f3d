// Estimates, digit for digit. Where all draws are exponential or integer ones, a fixed seed settles every trace, and a
// few lines of plain simulation, which know nothing of the strategy classes, predict the estimate.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <tuple>

#include "tests/vornrun/algorithms/simulators/estimates/Estimate.h"

namespace vornrun {
namespace {

using namespace test;

constexpr double NEVER = std::numeric_limits<double>::max();

/// A model in a few lines: which events can occur, and what happens when one does.
struct Plain {
    struct Event {
        double rate;
        std::function<bool()> active;
        std::function<void()> fire;
    };
    std::vector<Event> events;  // in the order of components and, within one, of port names
    std::function<void()> restart;
    std::function<bool()> goal;
    /// Takes what can be taken at once, with the draws that this needs; false when there is nothing.
    std::function<bool(std::mt19937_64&)> immediate = [](std::mt19937_64&) { return false; };
    double horizon;
};

/// One of n, by rejection.
std::uint64_t choose(std::mt19937_64& engine, std::uint64_t n) {
    const std::uint64_t scaling = ~std::uint64_t(0) / n;
    std::uint64_t drawn = engine();
    while (drawn >= n * scaling) drawn = engine();
    return drawn / scaling;
}

/// A worker's traces: the race of the events, kept from step to step, and its order even from trace to trace.
class PlainWorker {
  public:
    PlainWorker(Plain& model, unsigned long seed) : mModel(model), mEngine(seed) {
        for (std::size_t i = 0; i < model.events.size(); ++i) mRace.emplace_back(NEVER, i);
    }

    bool trace() {
        mModel.restart();
        for (auto& [time, event] : mRace) time = NEVER;
        double now = 0.0;
        while (now <= mModel.horizon) {
            if (mModel.goal()) return true;
            now += step();
        }
        return false;
    }

  private:
    double step() {
        for (auto& [time, index] : mRace) {
            const Plain::Event& event = mModel.events[index];
            if (!event.active())
                time = NEVER;
            else if (time == NEVER)
                time = std::floor(-std::log(1.0 - double(mEngine()) * 0x1p-64) / event.rate * 16384.0) / 16384.0;
        }
        std::sort(mRace.begin(), mRace.end());
        if (mModel.immediate(mEngine)) return 0.0;
        const double delay = mRace.front().first;
        if (delay == NEVER) return delay;  // nothing can happen any more
        choose(mEngine, 1);                // among the one automaton's one alternative
        mModel.events[mRace.front().second].fire();
        mRace.front().first = NEVER;
        for (auto& [time, index] : mRace) time -= delay;
        return delay;
    }

    Plain& mModel;
    std::mt19937_64 mEngine;
    std::vector<std::pair<double, std::size_t>> mRace;
};

/// What the tool counts: whole sweeps of one trace of each worker.
double predict(Plain& model, const Traces& run) {
    const unsigned int sweeps = (run.count + run.threads - 1) / run.threads;
    unsigned int positive = 0;
    for (unsigned int id = 0; id < run.threads; ++id) {
        PlainWorker worker(model, run.seed + id);
        for (unsigned int i = 0; i < sweeps; ++i) positive += worker.trace() ? 1u : 0u;
    }
    return double(positive) / (sweeps * run.threads);
}

class Exactness : public testing::TestWithParam<std::tuple<unsigned int, unsigned long>> {
  protected:
    Traces run() const { return {500, std::get<0>(GetParam()), std::get<1>(GetParam())}; }
};

TEST_P(Exactness, OfMachinesThatFailAndAreRepaired) {
    constexpr int machines = 3;
    ModelWriter model;
    model.type("Machine").errorPort("fail", 0.4).errorPort("repair", 1.0).outData(var("down", Type::Int), 0);
    model.implementation("Machine.i")
        .mode("up")
        .mode("broken")
        .transition("up", "broken", on("fail"), set(var("down", Type::Int), 1))
        .transition("broken", "up", on("repair"), set(var("down", Type::Int), 0));
    auto& root = model.implementation("Root.i").data(var("count", Type::Int)).mode("m");
    Expr sum = integer(0);
    for (int i = 0; i < machines; ++i) {
        root.subcomponent("m" + std::to_string(i), "Machine.i");
        sum = sum + var("m" + std::to_string(i) + ".down", Type::Int);
    }
    root.flow(var("count", Type::Int), sum);

    std::vector<bool> up;
    Plain plain;
    for (std::size_t i = 0; i < machines; ++i) {
        plain.events.push_back({0.4, [&up, i] { return bool(up[i]); }, [&up, i] { up[i] = false; }});
        plain.events.push_back({1.0, [&up, i] { return !up[i]; }, [&up, i] { up[i] = true; }});
    }
    plain.restart = [&] { up.assign(machines, true); };
    plain.goal = [&] { return std::count(up.begin(), up.end(), true) == 0; };
    plain.horizon = 10.0;
    EXPECT_EQ(estimate(model, eventually(var("count", Type::Int) == machines, 0, 10), run()), predict(plain, run()));
}

TEST_P(Exactness, OfARaceOfThreeEventsOfOneComponent) {
    ModelWriter model;
    model.type("Root").errorPort("a", 0.5).errorPort("b", 0.25).errorPort("c", 2.0);
    model.implementation("Root.i")
        .mode("start")
        .mode("inA")
        .mode("inB")
        .mode("back")
        .transition("start", "inA", on("a"))
        .transition("start", "inB", on("b"))
        .transition("start", "back", on("c"))
        .transition("back", "start", on("c"));

    int state = 0;  // start, inA, inB, back
    Plain plain;
    plain.events = {{0.5, [&] { return state == 0; }, [&] { state = 1; }},
                    {0.25, [&] { return state == 0; }, [&] { state = 2; }},
                    {2.0, [&] { return state == 0 || state == 3; }, [&] { state = state == 0 ? 3 : 0; }}};
    plain.restart = [&] { state = 0; };
    plain.goal = [&] { return state == 2; };
    plain.horizon = 1.5;
    EXPECT_EQ(estimate(model, eventually(modeOf() == modeLiteral("mode:inB"), 0, 1.5), run()), predict(plain, run()));
}

TEST_P(Exactness, OfChoicesAmongTransitionsThatAreEnabledAtOnce) {
    ModelWriter model;
    model.type("Root").errorPort("go", 1.0);
    model.implementation("Root.i")
        .mode("wait")
        .mode("choose")
        .mode("left")
        .mode("middle")
        .mode("right")
        .transition("wait", "choose", on("go"))
        .transition("choose", "left")
        .transition("choose", "middle")
        .transition("choose", "right")
        .transition("left", "wait")
        .transition("middle", "choose");

    enum { Wait, Choose, Left, Middle, Right } state = Wait;
    Plain plain;
    plain.events = {{1.0, [&] { return state == Wait; }, [&] { state = Choose; }}};
    plain.restart = [&] { state = Wait; };
    plain.goal = [&] { return state == Right; };
    plain.immediate = [&](std::mt19937_64& engine) {
        if (state == Wait) return false;
        const std::uint64_t pick = choose(engine, state == Choose ? 3 : 1);
        choose(engine, 1);  // among the picked transition's own alternatives
        state = state == Choose ? (pick == 0 ? Left : pick == 1 ? Middle : Right) : state == Left ? Wait : Choose;
        return true;
    };
    plain.horizon = 2.0;
    EXPECT_EQ(estimate(model, eventually(modeOf() == modeLiteral("mode:right"), 0, 2), run()), predict(plain, run()));
}

INSTANTIATE_TEST_SUITE_P(ThreadsAndSeeds, Exactness,
                         testing::Combine(testing::Values(1u, 2u, 4u), testing::Values(1ul, 42ul, 20261121ul)),
                         [](const auto& each) {
                             return "Threads" + std::to_string(std::get<0>(each.param)) + "Seed" +
                                    std::to_string(std::get<1>(each.param));
                         });

}  // namespace
}  // namespace vornrun
