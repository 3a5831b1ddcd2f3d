#include "tools/simulator/ConsoleObserver.h"

#include <gtest/gtest.h>

#include <csignal>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "tests/support/TempDir.h"
#include "tests/tools/simulator/CapturedStream.h"
#include "tools/simulator/FatalHandler.h"
#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"
#include "vornrun/datastructures/eda/DD.h"

namespace vornrun::test {
namespace {

TEST(ConsoleObserver, WritesACharacterForEachEndingAlsoOfNestedRuns) {
    const CapturedStream output(std::cout);
    RunObserver& observer = consoleObserver();
    for (const bool nested : {false, true}) {
        observer.verdictReached(nested);
        observer.stepBoundHit(nested);
        observer.deadlockReached(nested);
    }
    observer.workersEnded();
    EXPECT_EQ(output.text(), ".bd.bd\n");
}

/// What the tool does with an exception that leaves a worker.
template <class Fault>
void failBy(const Fault& fault) {
    installFatalHandler();
    consoleObserver().workerFailed(std::make_exception_ptr(fault));
}

TEST(ConsoleObserverDeathTest, EndsByTheFatalLineWhenAWorkerFails) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(failBy(std::runtime_error("no mode")), testing::KilledBySignal(SIGABRT), "vornrun: fatal: no mode\n");
}

TEST(ConsoleObserverDeathTest, EndsWithStatusOneWhenFlowsFormACycle) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(failBy(flow_topology_exception("cycle")), testing::ExitedWithCode(1), "");
}

TEST(StandardConsole, TalksThroughStandardInputAndOutput) {
    Console& console = standardConsole();
    EXPECT_EQ(&console.output(), &std::cout);
    EXPECT_EQ(&console.input(), &std::cin);
}

// ---- The words of the strategies, where files of their own list them

class ListOfStrategies : public testing::TestWithParam<std::string> {};

TEST_P(ListOfStrategies, HasTheWordOfEachAndInTheirOrder) {
    const std::string text = readFile(std::string(VORNRUN_SOURCE) + "/" + GetParam());
    const bool completion = GetParam().ends_with("completion");
    std::string completed;
    std::size_t from = 0;
    for (const StrategyEntry& entry : strategyTable()) {
        completed += (completed.empty() ? "" : " ") + std::string(entry.word);
        if (completion) continue;
        const std::size_t found = text.find("\n.TP\n.B " + std::string(entry.word) + "\n", from);
        ASSERT_NE(found, std::string::npos) << entry.word;
        from = found;
    }
    if (completion) {
        EXPECT_NE(text.find("words=\"" + completed + "\""), std::string::npos) << completed;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, ListOfStrategies,
                         testing::Values("tools/simulator/vornrun.bash-completion", "docs/vornrun.1"),
                         [](const auto& file) {
                             return std::string(file.param.ends_with("completion") ? "Completion" : "ManualPage");
                         });

}  // namespace
}  // namespace vornrun::test
