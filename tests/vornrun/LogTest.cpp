#include "vornrun/Log.h"

#include <gtest/gtest.h>
#include <log4cplus/logger.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/support/CapturedLog.h"

namespace vornrun::test {
namespace {

const Log sLogger("root.test");

class Texts final : public LogListener {
  public:
    void record(LogLevel, const char* logger, const std::string& text) override {
        list.push_back(std::string(logger) + ": " + text);
    }
    std::vector<std::string> list;
};

TEST(Log, StaysSilentUntilTheLoggingLibraryIsConfigured) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    VORNRUN_LOG(sLogger, Fatal, "nobody hears this");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_FALSE(sLogger.isOn(LogLevel::Info));
}

TEST(Log, KnowsItsLoggersByNameFromTheStart) { EXPECT_TRUE(log4cplus::Logger::exists("root.test")); }

TEST(LogListener, GetsWarningsAndErrorsOfItsThread) {
    const Texts texts;
    VORNRUN_LOG(sLogger, Info, "info");
    VORNRUN_LOG(sLogger, Warn, "warning");
    std::thread([] { VORNRUN_LOG(sLogger, Error, "elsewhere"); }).join();
    VORNRUN_LOG(sLogger, Error, "error");
    EXPECT_EQ(texts.list, (std::vector<std::string>{"root.test: warning", "root.test: error"}));
}

TEST(LogListener, GetsItsRecordsBesideTheAppendersWhateverTheirLevel) {
    const CapturedLog log(LogLevel::Error);
    const Texts texts;
    VORNRUN_LOG(sLogger, Warn, "warning");
    VORNRUN_LOG(sLogger, Error, "error");
    EXPECT_EQ(texts.list, (std::vector<std::string>{"root.test: warning", "root.test: error"}));
    EXPECT_EQ(log.texts("root.test"), std::vector<std::string>{"error"});
}

TEST(LogListener, GivesWayToALaterOneForAsLongAsThatLives) {
    const Texts outer;
    {
        const Texts inner;
        VORNRUN_LOG(sLogger, Warn, "first");
        EXPECT_EQ(inner.list.size(), 1U);
    }
    VORNRUN_LOG(sLogger, Warn, "second");
    EXPECT_EQ(outer.list, std::vector<std::string>{"root.test: second"});
}

}  // namespace
}  // namespace vornrun::test
