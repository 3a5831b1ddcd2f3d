#pragma once
/// \file
/// All choices of a run, as the command line makes them.

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
    std::uint32_t numTraces;   ///< fixed number of traces; 0 asks for as many as the Chernoff-Hoeffding bound says
    std::uint32_t stepBound;   ///< step bound of each trace
    bool ignoreBoundError;     ///< drop a trace that exceeds the step bound, where otherwise the property is aborted
    bool disallowDeadlock;     ///< abort the property at a deadlock, where otherwise the trace does not satisfy it
    double confidence;         ///< second argument of the Chernoff bound; unused under a fixed number of traces
    double errorBound;         ///< first argument of the Chernoff bound: half the width of the printed interval
    std::uint64_t seed;        ///< 0: a fresh seed in each run
    SimStrategy strategy;      ///< how each step is chosen
    std::uint32_t threads;     ///< number of worker threads; 0: as many as the machine has cores
};

}  // namespace vornrun
