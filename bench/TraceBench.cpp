// What a step and a trace cost, from the initial state to the verdict, under the strategy AsapStrat. Two models go
// through the real parser: a queue of one component and eleven modes, and ten machines under one root. Beside each
// stands the limit: the same model as a hand-written loop with its state in local variables. `ns/step` is processor
// time, which other processes do not lengthen; `tool/limit` compares it with the limit measured last before.

#include <benchmark/benchmark.h>
#include <log4cplus/logger.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/AllocationCounter.h"
#include "tests/support/ModelWriter.h"
#include "tests/support/ParseModel.h"
#include "tests/support/PropertyWriter.h"
#include "tests/support/TempDir.h"
#include "vornrun/Log.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/simulators/Simulator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"

namespace vornrun {
namespace {

using namespace test;

constexpr std::uint64_t SEED = 42;
constexpr double HORIZON = 100.0;
constexpr double NEVER = std::numeric_limits<double>::infinity();

constexpr int ROOM = 10;
constexpr double ARRIVAL = 0.8;
constexpr double SERVICE = 1.0;

constexpr int MACHINES = 10;
constexpr double FAILURE = 0.1;
constexpr double REPAIR = 1.0;

// ---- The models

struct Question {
    ModelWriter model;
    PropertyWriter properties;
};

std::string numbered(std::string name, int number) {
    name += std::to_string(number);
    return name;
}

/// One component whose mode is the number of customers.
void askQueue(Question& question) {
    question.model.type("Queue").errorPort("arrive", ARRIVAL).errorPort("serve", SERVICE);
    auto& queue = question.model.implementation("Queue.i");
    const auto mode = [](int customers) { return numbered("q", customers); };
    for (int customers = 0; customers <= ROOM; ++customers) queue.mode(mode(customers));
    for (int customers = 0; customers < ROOM; ++customers) {
        queue.transition(mode(customers), mode(customers + 1), on("arrive"));
        queue.transition(mode(customers + 1), mode(customers), on("serve"));
    }
    question.properties.p(eventually(modeOf() == modeLiteral(numbered("mode:q", ROOM)), 0, HORIZON));
}

/// Each machine says whether it is down; a flow of the root counts those that are.
void askMachines(Question& question) {
    const Var down = var("down", Type::Int), count = var("count", Type::Int);
    question.model.type("Machine").errorPort("fail", FAILURE).errorPort("repair", REPAIR).outData(down, 0);
    question.model.implementation("Machine.i")
        .mode("up")
        .mode("broken")
        .transition("up", "broken", on("fail"), set(down, 1))
        .transition("broken", "up", on("repair"), set(down, 0));
    const auto machine = [](int number) { return numbered("m", number); };
    auto& root = question.model.implementation("Root.i").data(count).mode("m");
    Expr sum = var(machine(0) + ".down", Type::Int);
    for (int i = 0; i < MACHINES; ++i) {
        root.subcomponent(machine(i), "Machine.i");
        if (i > 0) sum = sum + var(machine(i) + ".down", Type::Int);
    }
    root.flow(count, sum);
    question.properties.p(eventually(count == MACHINES, 0, HORIZON));
}

// ---- The limits

struct Trace {
    std::uint64_t steps = 0;
    bool positive = false;
};

double draw(std::mt19937_64& engine, double rate) {
    return -std::log(1.0 - static_cast<double>(engine()) * 0x1p-64) / rate;
}

/// The first of the samples.
template <std::size_t Count>
std::size_t least(const std::array<double, Count>& samples) {
    std::size_t best = 0;
    for (std::size_t i = 1; i < Count; ++i)
        if (samples[i] < samples[best]) best = i;
    return best;
}

/// The queue, with a sample kept for the arrival and one for the service.
Trace queueTrace(std::mt19937_64& engine) {
    enum { Arrive, Serve };
    std::array<double, 2> samples = {NEVER, NEVER};
    int customers = 0;
    double now = 0.0;
    Trace trace;
    while (now <= HORIZON) {
        if (customers == ROOM) {
            trace.positive = true;
            break;
        }
        if (samples[Arrive] == NEVER) samples[Arrive] = draw(engine, ARRIVAL);
        if (customers == 0)
            samples[Serve] = NEVER;
        else if (samples[Serve] == NEVER)
            samples[Serve] = draw(engine, SERVICE);
        const std::size_t event = least(samples);
        const double delay = samples[event];
        for (double& sample : samples) sample -= delay;
        samples[event] = NEVER;
        customers += event == Arrive ? 1 : -1;
        now += delay;
        ++trace.steps;
    }
    return trace;
}

/// The machines, with one sample each: of its failure while it is up, of its repair while it is down.
Trace machinesTrace(std::mt19937_64& engine) {
    std::array<double, MACHINES> samples;
    for (double& sample : samples) sample = draw(engine, FAILURE);
    std::bitset<MACHINES> down;
    double now = 0.0;
    Trace trace;
    while (now <= HORIZON) {
        if (down.all()) {
            trace.positive = true;
            break;
        }
        const std::size_t machine = least(samples);
        const double delay = samples[machine];
        for (double& sample : samples) sample -= delay;
        down.flip(machine);
        samples[machine] = draw(engine, down[machine] ? REPAIR : FAILURE);
        now += delay;
        ++trace.steps;
    }
    return trace;
}

// ---- Measuring

/// What was measured of the traces of one benchmark.
struct Measured {
    std::uint64_t steps = 0;
    std::uint64_t positive = 0;
    std::uint64_t allocations = 0;
    double seconds = 0.0;
};

template <class RunTrace>
Measured measure(benchmark::State& state, const RunTrace& runTrace) {
    Measured measured;
    const AllocationCounter allocations;
    const std::clock_t start = std::clock();
    for (auto _ : state) {
        const Trace trace = runTrace();
        measured.steps += trace.steps;
        measured.positive += trace.positive ? 1 : 0;
    }
    measured.seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    measured.allocations = allocations.count();
    return measured;
}

double nanosecondsPerStep(const Measured& measured) {
    return measured.seconds * 1e9 / static_cast<double>(measured.steps);
}

void report(benchmark::State& state, const Measured& measured) {
    const auto traces = static_cast<double>(state.iterations());
    const auto steps = static_cast<double>(measured.steps);
    state.counters["steps/s"] = steps / measured.seconds;
    state.counters["traces/s"] = traces / measured.seconds;
    state.counters["ns/step"] = nanosecondsPerStep(measured);
    state.counters["allocations/step"] = static_cast<double>(measured.allocations) / steps;
    state.counters["steps/trace"] = steps / traces;
    state.counters["positive"] = static_cast<double>(measured.positive) / traces;
}

/// Time per step of the limit measured last, by model.
std::map<std::string, double>& limits() {
    static std::map<std::string, double> nanoseconds;
    return nanoseconds;
}

void BM_Limit(benchmark::State& state, const std::string& model, Trace (*runTrace)(std::mt19937_64&)) {
    std::mt19937_64 engine(SEED);
    const Measured measured = measure(state, [&] { return runTrace(engine); });
    report(state, measured);
    limits()[model] = nanosecondsPerStep(measured);
}

void silenceLogs() {
    log4cplus::Logger::getRoot().setLogLevel(log4cplus::ERROR_LOG_LEVEL);
    Log::refreshLevels();
}

std::unique_ptr<CSLFormula> parseProperty(const PropertyWriter& properties) {
    const TempDir folder;
    parser::XmlContext context;
    VornXmlParser parser(context);
    return std::unique_ptr<CSLFormula>(parser.parseProperties(folder.write("properties.xml", properties.text())).at(0));
}

void BM_Tool(benchmark::State& state, const std::string& model, void (*ask)(Question&)) {
    silenceLogs();
    Question question;
    ask(question);
    const std::unique_ptr<VornSpecification> specification = parseModel(question.model);
    const std::unique_ptr<CSLFormula> property = parseProperty(question.properties);
    const AsapStrat strategy;
    Simulator simulator(*specification->findRootCandidates().begin(), &strategy);
    simulator.strategy()->getRandomGenerator()->reseed(SEED);
    simulator.setProperty(dynamic_cast<const CSLProbabilityStateFormula&>(*property).path());

    const Measured measured = measure(state, [&] {
        const bool positive = simulator.performRun(simulator.property());
        return Trace{simulator.trace().steps().size(), positive};
    });
    report(state, measured);
    const auto limit = limits().find(model);
    if (limit != limits().end()) state.counters["tool/limit"] = nanosecondsPerStep(measured) / limit->second;
}

BENCHMARK_CAPTURE(BM_Limit, queue, "queue", queueTrace)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Tool, queue, "queue", askQueue)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Limit, machines, "machines", machinesTrace)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Tool, machines, "machines", askMachines)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vornrun
