#pragma once
/// \file
/// The system's view of its loggers: a named logger that answers "is this level on?" with one relaxed load, so that the
/// step path can ask at every step. The logging library itself stays behind this header.
///
/// A process that has not configured the logging library gets no log: records reach the library from the first call of
/// Log::refreshLevels() on. A LogListener gets the warnings and errors of its thread in any case.

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
    /// \param name the logger's full name in the hierarchy, for instance "root.sim"; must outlive the object
    explicit Log(const char* name);
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    ~Log();

    /// True when a record of this level would reach the appenders, and from Warn on always, since a listener may want
    /// the record.
    bool isOn(LogLevel level) const noexcept {
        return static_cast<int>(level) >= mThreshold.load(std::memory_order_relaxed);
    }
    /// Sends one record to the thread's listener and to the appenders that its level reaches.
    void write(LogLevel level, const std::string& text) const;

    const char* name() const noexcept { return mName; }

    /// Connects the loggers with the logging library, and reads the levels of all of them anew from there.
    static void refreshLevels();
    /// Writes out what appenders hold back and closes them: for those who end the process at once.
    static void shutdown();

  private:
    void refreshLevel();

    const char* mName;
    std::atomic<int> mThreshold;
    Log* mNext;  // all loggers are in one list, so that refreshLevels() finds them
};

/// Gets the records of level Warn and above that its own thread writes during its lifetime, beside the appenders.
/// Listeners of one thread nest: the latest one gets the records.
class LogListener {
  public:
    LogListener();
    LogListener(const LogListener&) = delete;
    LogListener& operator=(const LogListener&) = delete;
    /// \pre runs on the thread of the constructor, in reverse order of construction
    virtual ~LogListener();

    virtual void record(LogLevel level, const char* logger, const std::string& text) = 0;

  private:
    LogListener* mFormer;
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
