// Reading of model files: one package of many component types and implementations, and a root that instantiates each
// of them once, so that lists of children, tables of names and the resolution of references grow all together. Reading
// must stay linear in the size of the file: the counter `exponent` compares each size with the one before.

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cmath>
#include <cstdint>
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
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun {
namespace {

// In the texts @ stands for the number of the component.
constexpr const char* TYPE =
    "<ComponentType><name>C@</name><category>6</category>"
    "<in_event_ports><InEventPort><name>start</name></InEventPort></in_event_ports>"
    "<out_event_ports><ErrorEventPort><name>fail</name><nonblocking>False</nonblocking>"
    "<distribution>1</distribution><parameter>0.5</parameter></ErrorEventPort></out_event_ports></ComponentType>\n";

constexpr const char* IMPLEMENTATION =
    "<ComponentImplementation><name>C@.i</name><modes><Mode><name>idle</name><type>0</type></Mode>"
    "<Mode><name>run</name><type>3</type></Mode></modes><normal_mode_transitions>"
    "<ModeTransition><source_mode>idle</source_mode><target_mode>run</target_mode>"
    "<label><trigger>start</trigger><guard type=\"BinaryOperatorTreeNode\"><node_type>0</node_type>"
    "<left type=\"IdentifierTreeNode\"><node_type>5</node_type><name>x</name></left>"
    "<right type=\"NumberTreeNode\"><node_type>2</node_type><number>@.5</number></right><operator>3</operator></guard>"
    "<clauses><Clause><equations><LinExp>"
    "<constant type=\"NumberTreeNode\"><node_type>2</node_type><number>@.5</number></constant>"
    "<operator>3</operator><terms><Term>"
    "<factor type=\"NumberTreeNode\"><node_type>2</node_type><number>1</number></factor>"
    "<var type=\"IdentifierTreeNode\"><node_type>5</node_type><name>x</name></var></Term></terms>"
    "</LinExp></equations></Clause></clauses></label></ModeTransition></normal_mode_transitions>"
    "<data_port_connections/><event_port_connections/><flows/><non_data_subcomponents/>"
    "<data_subcomponents><DataSubcomponent><name>x</name><data_type type=\"Clock\"/></DataSubcomponent>"
    "</data_subcomponents></ComponentImplementation>\n";

constexpr const char* ROOT_MODES =
    "<ComponentImplementation><name>Root.i</name><modes><Mode><name>m</name><type>0</type></Mode></modes>"
    "<normal_mode_transitions/><data_port_connections/><event_port_connections>\n";

constexpr const char* CONNECTION =
    "<PortConnection><source_port>go</source_port><target_port>c@.start</target_port><passive>False</passive>"
    "</PortConnection>\n";

constexpr const char* SUBCOMPONENT =
    "<NonDataSubcomponent><name>c@</name><implementation_ref>C@.i</implementation_ref><accesses/><running_on/>"
    "<stored_in/></NonDataSubcomponent>\n";

void writeNumbered(std::ostream& stream, const std::string& text, long components) {
    for (long number = 0; number < components; ++number) {
        std::string::size_type from = 0;
        for (auto at = text.find('@'); at != std::string::npos; at = text.find('@', from)) {
            stream << text.substr(from, at - from) << number;
            from = at + 1;
        }
        stream << text.substr(from);
    }
}

/// A generated model file, removed at the end.
class ModelFile {
  public:
    explicit ModelFile(long components)
        : mPath(std::filesystem::temp_directory_path() /
                ("vornrun-bench-" + std::to_string(getpid()) + "-" + std::to_string(components) + ".xml")) {
        std::ofstream stream(mPath);
        stream << "<CompileInformation><packages><Package><name>main</name><public_subpackage><types>\n"
               << "<ComponentType><name>Root</name><category>8</category><in_event_ports><InEventPort>"
               << "<name>go</name></InEventPort></in_event_ports></ComponentType>\n";
        writeNumbered(stream, TYPE, components);
        stream << "</types><implementations>\n";
        writeNumbered(stream, IMPLEMENTATION, components);
        stream << ROOT_MODES;
        writeNumbered(stream, CONNECTION, components);
        stream << "</event_port_connections><flows/><non_data_subcomponents>\n";
        writeNumbered(stream, SUBCOMPONENT, components);
        stream << "</non_data_subcomponents><data_subcomponents/></ComponentImplementation></implementations>"
               << "</public_subpackage></Package></packages></CompileInformation>\n";
        if (!stream.flush()) throw std::runtime_error("cannot write " + mPath.string());
    }
    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;
    ~ModelFile() {  // the file is this object's alone
        std::error_code ignored;
        std::filesystem::remove(mPath, ignored);
    }

    std::string path() const { return mPath.string(); }
    std::uintmax_t bytes() const { return std::filesystem::file_size(mPath); }

  private:
    std::filesystem::path mPath;
};

/// How the time grows from the next smaller size measured so far: 1 is linear, 2 is quadratic.
double exponentOf(long components, double seconds) {
    static std::map<long, double> measured;
    measured[components] = seconds;
    const auto found = measured.find(components);
    if (found == measured.begin()) return 0.0;
    const auto& [fewer, lessTime] = *std::prev(found);
    return std::log(seconds / lessTime) / std::log(static_cast<double>(components) / static_cast<double>(fewer));
}

void BM_ParseModel(benchmark::State& state) {
    const long components = state.range(0);
    const ModelFile file(components);
    double ticks = 0;  // of processor time, which other processes do not lengthen
    for (auto _ : state) {
        const std::clock_t start = std::clock();
        {
            parser::XmlContext context;
            VornXmlParser parser(context);
            const std::unique_ptr<VornSpecification> specification(parser.parseVorn(file.path()));
            benchmark::DoNotOptimize(specification.get());
        }
        ticks += static_cast<double>(std::clock() - start);
    }
    const auto iterations = static_cast<std::int64_t>(state.iterations());
    state.SetBytesProcessed(iterations * static_cast<std::int64_t>(file.bytes()));
    state.SetComplexityN(components);
    state.counters["file_MB"] = static_cast<double>(file.bytes()) / 1e6;
    state.counters["exponent"] = exponentOf(components, ticks / CLOCKS_PER_SEC / static_cast<double>(iterations));
}
BENCHMARK(BM_ParseModel)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
}  // namespace vornrun
