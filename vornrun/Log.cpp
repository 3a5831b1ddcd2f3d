#include "vornrun/Log.h"

#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>
#include <log4cplus/loglevel.h>

#include <algorithm>
#include <cassert>
#include <mutex>

namespace vornrun {

namespace {

static_assert(static_cast<int>(LogLevel::Trace) == log4cplus::TRACE_LOG_LEVEL);
static_assert(static_cast<int>(LogLevel::Fatal) == log4cplus::FATAL_LOG_LEVEL);

struct Registry {
    std::mutex mutex;
    Log* first = nullptr;
    std::atomic<bool> connected = false;  // with the logging library
};

thread_local LogListener* listenerOfThread = nullptr;

/// Reached through a function, since loggers register themselves during static initialisation. Never destroyed: a
/// logger that is destroyed late at exit must still find it.
Registry& registry() {
    static Registry& instance = *new Registry;
    return instance;
}

log4cplus::Logger libraryLogger(const char* name) {
    static const bool initialised = (log4cplus::initialize(), true);
    static_cast<void>(initialised);
    return log4cplus::Logger::getInstance(name);
}

}  // namespace

Log::Log(const char* name) : mName(name), mThreshold(0), mNext(nullptr) {
    const std::lock_guard lock(registry().mutex);
    mNext = registry().first;
    registry().first = this;
    refreshLevel();
}

Log::~Log() {
    const std::lock_guard lock(registry().mutex);
    Log** link = &registry().first;
    while (*link != nullptr && *link != this) link = &(*link)->mNext;
    if (*link == this) *link = mNext;
}

void Log::write(LogLevel level, const std::string& text) const {
    if (listenerOfThread != nullptr && level >= LogLevel::Warn) listenerOfThread->record(level, mName, text);
    if (!registry().connected.load(std::memory_order_relaxed)) return;
    log4cplus::Logger logger = libraryLogger(mName);
    if (logger.isEnabledFor(static_cast<int>(level))) logger.forcedLog(static_cast<int>(level), text);
}

void Log::refreshLevel() {
    // Also of a process that never connects, the library knows all loggers by name.
    const log4cplus::Logger logger = libraryLogger(mName);
    constexpr int LISTENED = static_cast<int>(LogLevel::Warn);
    if (!registry().connected.load(std::memory_order_relaxed)) {
        mThreshold.store(LISTENED, std::memory_order_relaxed);
        return;
    }
    // The chained level of an unconfigured root is what the library reports; a disabled hierarchy shows in the probes.
    int threshold = logger.getChainedLogLevel();
    for (const LogLevel level :
         {LogLevel::Trace, LogLevel::Debug, LogLevel::Info, LogLevel::Warn, LogLevel::Error, LogLevel::Fatal}) {
        if (static_cast<int>(level) >= threshold && !logger.isEnabledFor(static_cast<int>(level)))
            threshold = static_cast<int>(level) + 1;
    }
    mThreshold.store(std::min(threshold, LISTENED), std::memory_order_relaxed);
}

void Log::refreshLevels() {
    const std::lock_guard lock(registry().mutex);
    registry().connected.store(true, std::memory_order_relaxed);
    for (Log* log = registry().first; log != nullptr; log = log->mNext) log->refreshLevel();
}

void Log::shutdown() { log4cplus::Logger::shutdown(); }

LogListener::LogListener() : mFormer(listenerOfThread) { listenerOfThread = this; }

LogListener::~LogListener() {
    assert(listenerOfThread == this && "listeners end in reverse order, on their own thread");
    listenerOfThread = mFormer;
}

}  // namespace vornrun
