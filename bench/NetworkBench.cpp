// Steps and questions of a network, by the number of its components. The model is a root with so many subcomponents of
// one shape: two modes with invariants, a clock, a guarded and blocking event that the next one hears, and a data flow.
// In each discrete step the first of them acts and all but its neighbour do nothing. What a step costs must not grow
// with the components that do nothing: the counter `exponent` compares each size with the one before, 0 being constant
// and 1 linear.

#include <benchmark/benchmark.h>
#include <log4cplus/logger.h>

#include <malloc.h>
#include <unistd.h>

#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>

#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/eda/EDANetwork.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun {
namespace {

// An actor goes round between two modes, with a guard that holds, a write, and a blocking event. An idler has the same
// shape, but its guard holds only after a delay that the benchmark never reaches.
constexpr const char* TYPE =
    "<ComponentType><name>@</name><category>6</category>"
    "<in_event_ports><InEventPort><name>hear</name></InEventPort></in_event_ports>"
    "<out_event_ports><OutEventPort><name>say</name><nonblocking>False</nonblocking></OutEventPort></out_event_ports>"
    "<out_data_ports><OutDataPort><name>o</name><observable>False</observable><alarm>False</alarm>"
    "<data_type type=\"Int\"/><default_value><number>0</number></default_value></OutDataPort></out_data_ports>"
    "</ComponentType>\n";

// A comparison of the clock with a number, plain and as clauses: @1 its tag, @2 the number, @3 the operator.
constexpr const char* COMPARISON =
    "<@1 type=\"BinaryOperatorTreeNode\"><node_type>0</node_type>"
    "<left type=\"IdentifierTreeNode\"><node_type>5</node_type><name>x</name></left>"
    "<right type=\"NumberTreeNode\"><node_type>2</node_type><number>@2</number></right><operator>@3</operator></@1>"
    "<clauses><Clause><equations><LinExp>"
    "<constant type=\"NumberTreeNode\"><node_type>2</node_type><number>@2</number></constant>"
    "<operator>@3</operator><terms><Term>"
    "<factor type=\"NumberTreeNode\"><node_type>2</node_type><number>1.0</number></factor>"
    "<var type=\"IdentifierTreeNode\"><node_type>5</node_type><name>x</name></var></Term></terms>"
    "</LinExp></equations></Clause></clauses>";

constexpr const char* VARIABLE = "type=\"IdentifierTreeNode\"><node_type>1</node_type><name>";
constexpr const char* NUMBER = "type=\"NumberTreeNode\"><node_type>1</node_type><number>";

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

std::string comparison(const std::string& tag, const std::string& number, int operation) {
    return replaced(replaced(replaced(COMPARISON, "@1", tag), "@2", number), "@3", std::to_string(operation));
}

std::string transition(const std::string& from, const std::string& to, const std::string& label) {
    return "<ModeTransition><source_mode>" + from + "</source_mode><target_mode>" + to + "</target_mode><label>" +
           label + "</label></ModeTransition>";
}

/// \param guard what the clock has to reach for a transition
std::string component(const std::string& name, const std::string& guard) {
    const std::string ready = comparison("guard", guard, 3);
    const std::string write = std::string("<effects><BinaryOperatorTreeNode><left ") + VARIABLE +
                              "n</name></left><right " + NUMBER +
                              "1</number></right></BinaryOperatorTreeNode></effects>";
    const std::string bounded = comparison("invariant", "1000000000.0", 1);
    return "<ComponentImplementation><name>" + name + ".i</name><modes><Mode><name>a</name><type>0</type>" + bounded +
           "</Mode><Mode><name>b</name><type>3</type>" + bounded + "</Mode></modes><normal_mode_transitions>" +
           transition("a", "b", "<trigger>say</trigger>" + ready + write) +
           transition("b", "a", "<trigger>say</trigger>" + ready) + transition("a", "a", "<trigger>hear</trigger>") +
           "</normal_mode_transitions><data_port_connections/><event_port_connections/"
           "><flows><Flow><expression><left " +
           VARIABLE + "o</name></left><right " + VARIABLE +
           "n</name></right></expression></Flow></flows>"
           "<non_data_subcomponents/><data_subcomponents>"
           "<DataSubcomponent><name>x</name><data_type type=\"Clock\"/></DataSubcomponent>"
           "<DataSubcomponent><name>n</name><data_type type=\"Int\"/></DataSubcomponent>"
           "</data_subcomponents></ComponentImplementation>\n";
}

/// The first subcomponent is the actor, the others are idlers, each of which listens to the one before it. The root
/// listens to the actor, so that its event has a partner also when it is alone.
void writeRoot(std::ostream& stream, long components) {
    stream << "<ComponentImplementation><name>Root.i</name><modes><Mode><name>m</name><type>0</type></Mode></modes>"
           << "<normal_mode_transitions>" << transition("m", "m", "<trigger>c0.say</trigger>")
           << "</normal_mode_transitions><data_port_connections/><event_port_connections>\n";
    for (long i = 0; i < components && components > 1; ++i)
        stream << "<PortConnection><source_port>c" << i << ".say</source_port><target_port>c" << (i + 1) % components
               << ".hear</target_port><passive>False</passive></PortConnection>\n";
    stream << "</event_port_connections><flows/><non_data_subcomponents>\n";
    for (long i = 0; i < components; ++i)
        stream << "<NonDataSubcomponent><name>c" << i
               << "</name><implementation_ref>main::" << (i == 0 ? "Actor" : "Idler")
               << ".i</implementation_ref><accesses/><running_on/><stored_in/></NonDataSubcomponent>\n";
    stream << "</non_data_subcomponents><data_subcomponents/></ComponentImplementation>";
}

/// A generated model file, removed at the end.
class ModelFile {
  public:
    explicit ModelFile(long components)
        : mPath(std::filesystem::temp_directory_path() /
                ("vornrun-network-bench-" + std::to_string(getpid()) + ".xml")) {
        std::ofstream stream(mPath);
        stream << "<CompileInformation><packages><Package><name>main</name><public_subpackage><types>\n"
               << "<ComponentType><name>Root</name><category>8</category></ComponentType>\n"
               << replaced(TYPE, "@", "Actor") << replaced(TYPE, "@", "Idler") << "</types><implementations>\n"
               << component("Actor", "0.0");
        // Unused it would be a second root.
        if (components > 1) stream << component("Idler", "900000000.0");
        writeRoot(stream, components);
        stream << "</implementations></public_subpackage></Package></packages></CompileInformation>\n";
        if (!stream.flush()) throw std::runtime_error("cannot write " + mPath.string());
    }
    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;
    ~ModelFile() {  // the file is this object's alone
        std::error_code ignored;
        std::filesystem::remove(mPath, ignored);
    }
    std::string path() const { return mPath.string(); }

  private:
    std::filesystem::path mPath;
};

std::unique_ptr<VornSpecification> parse(long components) {
    // Without a level the logging library passes the records of every step.
    log4cplus::Logger::getRoot().setLogLevel(log4cplus::WARN_LOG_LEVEL);
    const ModelFile file(components);
    parser::XmlContext context;
    VornXmlParser parser(context);
    return std::unique_ptr<VornSpecification>(parser.parseVorn(file.path()));
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
