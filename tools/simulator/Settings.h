#pragma once
/// \file
/// All choices of a run, which the command line sets.

#include <cstdint>
#include <string>

/// A log level by the word that names it on the command line. The values are the logging library's own numbers.
enum class LogLevelName : std::int32_t {
    trace = 0,
    debug = 10000,
    info = 20000,
    warn = 30000,
    error = 40000,
    fatal = 50000,
};

/// A simulation strategy by the word that names it on the command line.
enum class SimStrategy : std::int32_t { asap = 0, event = 1, input = 2, local = 3, maxtime = 4, progressive = 5 };

namespace vornrun {

/// Filled once by parseCommandLine(), read-only afterwards.
class Settings {
  public:
    Settings();
    Settings(const Settings&) = default;
    Settings& operator=(const Settings&) = default;
    virtual ~Settings();

    std::string inputFile;     ///< path of the model
    std::string propertyFile;  ///< path of the properties
    std::int32_t logLevel;     ///< level of the root logger; -1 leaves it as the log configuration has it
    std::uint32_t numTraces;   ///< fixed number of traces; 0 takes the number from the Chernoff-Hoeffding bound
    std::uint32_t stepBound;   ///< step bound of each trace
    bool ignoreBoundError;     ///< a trace that hits the step bound still counts; otherwise the property is aborted
    bool disallowDeadlock;     ///< abort the property at a deadlock; otherwise the trace counts as false
    double confidence;         ///< second argument of the Chernoff bound; unused under a fixed number of traces
    double errorBound;         ///< first argument of the Chernoff bound: half the width of the printed interval
    std::uint64_t seed;        ///< 0: a fresh seed in each run
    SimStrategy strategy;      ///< how each step is chosen
    std::uint32_t threads;     ///< number of worker threads; 0: as many as the machine has cores
};

}  // namespace vornrun
