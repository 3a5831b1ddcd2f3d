// Steps and questions of a network, by the number of its components. The model is a root with so many subcomponents of
// one shape: two modes with invariants, a clock, a guarded and blocking event that the next one hears, and a data flow.
// In each discrete step the first of them acts and all but its neighbour do nothing. What a step costs must not grow
// with the components that do nothing: the counter `exponent` compares each size with the one before, 0 being constant
// and 1 linear.

#include <benchmark/benchmark.h>
#include <log4cplus/logger.h>

#include <malloc.h>

#include <cmath>
#include <ctime>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/ModelWriter.h"
#include "tests/support/ParseModel.h"
#include "vornrun/Log.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun {
namespace {

using namespace test;

/// Goes round between two modes, with a write, an event that needs a listener, and a guard.
/// \param ready what the clock has to reach for the guard to hold
void writeComponent(ModelWriter& model, const std::string& name, double ready) {
    const Var x = var("x", Type::Clock), n = var("n", Type::Int), o = var("o", Type::Int);
    const Expr bounded = x <= 1e9;
    model.type(name).inEvent("hear").outEvent("say").outData(o, 0);
    model.implementation(name + ".i")
        .data(x)
        .data(n)
        .mode("a", invariant(bounded))
        .mode("b", invariant(bounded))
        .transition("a", "b", on("say"), when(x >= ready), set(n, 1))
        .transition("b", "a", on("say"), when(x >= ready))
        .transition("a", "a", on("hear"))
        .flow(o, n);
}

/// An actor, whose guard holds, and idlers, whose guards hold only after a delay that the benchmark never reaches. Each
/// idler listens to the one before it, the first of them to the actor. The root listens to the actor, so that its event
/// has a listener also when it is alone.
std::unique_ptr<VornSpecification> parse(long components) {
    ModelWriter model;
    writeComponent(model, "Actor", 0.0);
    // Unused it would be a second root.
    if (components > 1) writeComponent(model, "Idler", 9e8);
    ImplementationWriter& root = model.implementation("Root.i");
    root.mode("m").transition("m", "m", on("c0.say"));
    std::string before;
    for (long i = 0; i < components; ++i) {
        std::string name("c");
        name += std::to_string(i);
        root.subcomponent(name, i == 0 ? "main::Actor.i" : "main::Idler.i");
        if (i > 0) root.connectEvent(before + ".say", name + ".hear");
        before = std::move(name);
    }
    log4cplus::Logger::getRoot().setLogLevel(log4cplus::WARN_LOG_LEVEL);
    Log::refreshLevels();
    return parseModel(model);
}

/// Instance tree, values and network of a specification.
struct Realised {
    explicit Realised(const VornSpecification& specification) {
        VornModelConstructor constructor;
        auto [realisation, values] = constructor.realise(*specification.findRootCandidates().begin());
        root.reset(realisation);
        valuation = values;
        network = std::make_unique<EDANetwork>(realisation, values);
    }

    std::unique_ptr<VornComponentRealisation> root;
    ValuationPtr valuation;
    std::unique_ptr<EDANetwork> network;
};

struct Model {
    explicit Model(long components) : specification(parse(components)), realised(*specification) {}
    EDANetwork& network() { return *realised.network; }

    std::unique_ptr<VornSpecification> specification;
    Realised realised;
};

/// How the time grows from the next smaller size measured so far: 1 is linear, 0 is constant.
double exponentOf(const std::string& what, long components, double seconds) {
    static std::map<std::string, std::map<long, double>> all;
    std::map<long, double>& measured = all[what];
    measured[components] = seconds;
    const auto found = measured.find(components);
    if (found == measured.begin()) return 0.0;
    const auto& [fewer, lessTime] = *std::prev(found);
    return std::log(seconds / lessTime) / std::log(static_cast<double>(components) / static_cast<double>(fewer));
}

/// Repeats the operation and reports how its processor time, which other processes do not lengthen, grows.
template <class Operation>
void measure(benchmark::State& state, const std::string& what, const Operation& operation) {
    const std::clock_t start = std::clock();
    for (auto _ : state) operation();
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    state.SetComplexityN(state.range(0));
    state.counters["exponent"] = exponentOf(what, state.range(0), seconds / static_cast<double>(state.iterations()));
}

// The whole of what a simulation does for a step of one automaton: what is enabled, who joins in, the step itself.
void BM_ChosenStep(benchmark::State& state) {
    Model model(state.range(0));
    EDANetwork& network = model.network();
    QualifiedTransitions enabled, taken;
    ConnectionAsTransitions together;
    measure(state, "chosen step", [&] {
        network.collectEnabledTransitions(enabled);
        if (enabled.empty()) throw std::logic_error("nothing is enabled");
        network.collectEnabledTransitions(enabled.front(), together);
        taken.clear();
        for (const auto& [eda, alternatives] : together) taken.emplace_back(eda, alternatives.front());
        network.takeEventTransition(taken);
    });
}

// The step alone: the two transitions of the actor by turns.
void BM_DiscreteStep(benchmark::State& state) {
    Model model(state.range(0));
    EDANetwork& network = model.network();
    QualifiedTransitions steps[2];
    for (QualifiedTransitions& step : steps) {
        step = {network.enabledTransitions().front()};
        network.takeEventTransition(step);
    }
    std::size_t next = 0;
    measure(state, "discrete step", [&] {
        network.takeEventTransition(steps[next]);
        next = 1 - next;
    });
}

void BM_TimeStep(benchmark::State& state) {
    Model model(state.range(0));
    measure(state, "time step", [&] { model.network().takeTimedTransition(0.001); });
}

void BM_ActiveTriggers(benchmark::State& state) {
    Model model(state.range(0));
    measure(state, "active triggers", [&] { benchmark::DoNotOptimize(model.network().activeTriggers().data()); });
}

void BM_EnabledTransitions(benchmark::State& state) {
    Model model(state.range(0));
    measure(state, "enabled transitions",
            [&] { benchmark::DoNotOptimize(model.network().enabledTransitions().data()); });
}

void BM_InvariantsRemainValidFor(benchmark::State& state) {
    Model model(state.range(0));
    measure(state, "invariants", [&] { benchmark::DoNotOptimize(model.network().invariantsRemainValidFor()); });
}

void BM_Snapshot(benchmark::State& state) {
    Model model(state.range(0));
    measure(state, "snapshot", [&] {
        const std::unique_ptr<GlobalConfigurationSnapshot> snapshot(model.network().getState());
        benchmark::DoNotOptimize(snapshot.get());
    });
}

void BM_Restore(benchmark::State& state) {
    Model model(state.range(0));
    const std::unique_ptr<GlobalConfigurationSnapshot> snapshot(model.network().getState());
    measure(state, "restore", [&] { model.network().setState(snapshot.get()); });
}

// Instance tree and network out of a parsed model.
void BM_Construct(benchmark::State& state) {
    const std::unique_ptr<VornSpecification> specification = parse(state.range(0));
    measure(state, "construct", [&] { benchmark::DoNotOptimize(Realised(*specification).network.get()); });
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    const Realised realised(*specification);
    const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    state.counters["memory_MB"] = static_cast<double>(after - before) / 1e6;
}

#define VORNRUN_BENCHMARK(Operation) BENCHMARK(Operation)->RangeMultiplier(10)->Range(1, 1000)
VORNRUN_BENCHMARK(BM_ChosenStep);
VORNRUN_BENCHMARK(BM_DiscreteStep);
VORNRUN_BENCHMARK(BM_TimeStep);
VORNRUN_BENCHMARK(BM_ActiveTriggers);
VORNRUN_BENCHMARK(BM_EnabledTransitions);
VORNRUN_BENCHMARK(BM_InvariantsRemainValidFor);
VORNRUN_BENCHMARK(BM_Snapshot);
VORNRUN_BENCHMARK(BM_Restore);
BENCHMARK(BM_Construct)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vornrun
