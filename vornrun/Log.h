#pragma once
/// \file
/// The tool's view of its loggers: a named logger that answers "is this level on?" with one relaxed load, so that the
/// step path can ask at every step. The logging library itself stays behind this header.

#include <atomic>
#include <sstream>
#include <string>

namespace vornrun {

/// Levels by the logging library's own numbers.
enum class LogLevel : int { Trace = 0, Debug = 10000, Info = 20000, Warn = 30000, Error = 40000, Fatal = 50000 };

/// A logger of the hierarchy, made during static initialisation: one per class that logs.
/// The level is a copy: whoever changes the logging configuration calls refreshLevels() afterwards.
class Log {
  public:
    /// \param name the logger's full name in the hierarchy, for instance "root.sim"
    explicit Log(const char* name);
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    ~Log();

    /// True when a record of this level would reach the appenders.
    bool isOn(LogLevel level) const noexcept {
        return static_cast<int>(level) >= mThreshold.load(std::memory_order_relaxed);
    }
    /// Sends one record, without a further level test.
    void write(LogLevel level, const std::string& text) const;

    const char* name() const noexcept { return mName; }

    /// Reads the levels of all loggers anew from the logging library.
    static void refreshLevels();
    /// Writes out what appenders hold back and closes them: for those who end the process at once.
    static void shutdown();

  private:
    void refreshLevel();

    const char* mName;
    std::atomic<int> mThreshold;
    Log* mNext;  // all loggers stand in one list, so that refreshLevels() finds them
};

}  // namespace vornrun

/// Builds and sends a record only when its level is on; `text` is a chain of stream insertions.
#define VORNRUN_LOG(log, level, text)                                        \
    do {                                                                     \
        if ((log).isOn(::vornrun::LogLevel::level)) {                        \
            std::ostringstream vornrunLogText;                               \
            vornrunLogText << text; /* NOLINT(bugprone-macro-parentheses) */ \
            (log).write(::vornrun::LogLevel::level, vornrunLogText.str());   \
        }                                                                    \
    } while (false)
