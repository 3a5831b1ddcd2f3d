#include "tests/support/CapturedLog.h"

#include <log4cplus/appender.h>
#include <log4cplus/logger.h>
#include <log4cplus/spi/loggingevent.h>

#include <mutex>
#include <ostream>

namespace vornrun::test {

namespace {

struct Records {
    mutable std::mutex mutex;
    std::vector<LogRecord> list;
};

class CapturingAppender final : public log4cplus::Appender {
  public:
    explicit CapturingAppender(std::shared_ptr<Records> records) : mRecords(std::move(records)) {}
    ~CapturingAppender() override { destructorImpl(); }
    void close() override { closed = true; }

  private:
    void append(const log4cplus::spi::InternalLoggingEvent& event) override {
        const std::lock_guard lock(mRecords->mutex);
        mRecords->list.push_back(
            {static_cast<LogLevel>(event.getLogLevel()), event.getLoggerName(), event.getMessage()});
    }

    std::shared_ptr<Records> mRecords;
};

}  // namespace

struct CapturedLog::State {
    std::shared_ptr<Records> records = std::make_shared<Records>();
    int formerLevel = 0;
};

void PrintTo(const LogRecord& record, std::ostream* stream) {
    *stream << static_cast<int>(record.level) << " " << record.logger << ": \"" << record.text << "\"";
}

CapturedLog::CapturedLog(LogLevel level) : mState(std::make_unique<State>()) {
    log4cplus::Logger root = log4cplus::Logger::getRoot();
    mState->formerLevel = root.getLogLevel();
    root.removeAllAppenders();
    root.addAppender(log4cplus::SharedAppenderPtr(new CapturingAppender(mState->records)));
    root.setLogLevel(static_cast<int>(level));
    Log::refreshLevels();
}

CapturedLog::~CapturedLog() {
    log4cplus::Logger root = log4cplus::Logger::getRoot();
    root.removeAllAppenders();
    root.setLogLevel(mState->formerLevel);
    Log::refreshLevels();
}

std::vector<LogRecord> CapturedLog::records() const {
    const std::lock_guard lock(mState->records->mutex);
    return mState->records->list;
}

std::vector<std::string> CapturedLog::texts(const std::string& logger) const {
    std::vector<std::string> result;
    for (const LogRecord& record : records())
        if (record.logger == logger) result.push_back(record.text);
    return result;
}

std::vector<std::string> CapturedLog::textsFrom(LogLevel level) const {
    std::vector<std::string> result;
    for (const LogRecord& record : records())
        if (record.level >= level) result.push_back(record.text);
    return result;
}

void CapturedLog::clear() {
    const std::lock_guard lock(mState->records->mutex);
    mState->records->list.clear();
}

}  // namespace vornrun::test
