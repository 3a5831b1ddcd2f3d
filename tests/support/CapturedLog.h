#pragma once
/// \file
/// Captures log records, so that tests can assert them.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/Log.h"

namespace vornrun::test {

/// One log record.
struct LogRecord {
    LogLevel level;
    std::string logger;
    std::string text;

    friend bool operator==(const LogRecord&, const LogRecord&) = default;
};
void PrintTo(const LogRecord& record, std::ostream* stream);

/// For its lifetime the only appender of the root logger, which passes records at or above `level`. Afterwards the
/// root logger has no appender and its former level. One at a time.
class CapturedLog {
  public:
    explicit CapturedLog(LogLevel level = LogLevel::Info);
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;
    ~CapturedLog();

    /// All records so far, in order.
    std::vector<LogRecord> records() const;
    /// The texts of the records of one logger, in order.
    std::vector<std::string> texts(const std::string& logger) const;
    /// The texts of the records at or above a level, in order.
    std::vector<std::string> textsFrom(LogLevel level) const;
    void clear();

  private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace vornrun::test
