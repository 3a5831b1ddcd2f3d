// Two models in one process, on two threads: read, built and run at the same time.

#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "tests/vornrun/api/DoorModels.h"

namespace vornrun::test {
namespace {

struct Outcome {
    std::vector<std::string> values;
    std::vector<std::string> lines;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome outcomeOf(const std::string& example) {
    const std::string folder = std::string(VORNRUN_EXAMPLES) + "/" + example;
    const Model model = Model::fromFile(folder + "/model.xml");
    const Question question = Question::fromFile(folder + "/properties.xml").front();
    Outcome outcome;
    for (const ValueInfo& value : model.values()) outcome.values.push_back(value.name);
    Runner runner(model, question);
    for (unsigned k = 0; k < 20; ++k) {
        TraceStream stream(3, k);
        const auto lines = transcriptOf(runner, stream);
        outcome.lines.insert(outcome.lines.end(), lines.begin(), lines.end());
    }
    return outcome;
}

TEST(SideBySide, ModelsDoNotNoticeEachOther) {
    const Outcome pump = outcomeOf("repairable-pump"), queue = outcomeOf("print-queue");
    constexpr int THREADS = 4;
    std::vector<Outcome> outcomes(THREADS);
    std::latch start(THREADS);
    std::vector<std::jthread> threads;
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            outcomes[static_cast<std::size_t>(i)] = outcomeOf(i % 2 == 0 ? "repairable-pump" : "print-queue");
        });
    }
    threads.clear();
    for (int i = 0; i < THREADS; ++i) EXPECT_EQ(outcomes[static_cast<std::size_t>(i)], i % 2 == 0 ? pump : queue);
}

TEST(SideBySide, ThreadsShareAModelAndAQuestion) {
    const Model model = modelOf(decay(1.0));
    const Question question = questionOf(reaches("over", 1.0));
    const auto verdicts = [&] {
        Runner runner(model, question);
        std::vector<Verdict> result;
        for (unsigned k = 0; k < 200; ++k) {
            TraceStream stream(3, k);
            result.push_back(runner.run(stream).verdict);
        }
        return result;
    };
    const auto expected = verdicts();
    std::vector<std::vector<Verdict>> results(4);
    {
        std::vector<std::jthread> threads;
        for (auto& result : results) threads.emplace_back([&] { result = verdicts(); });
    }
    for (const auto& result : results) EXPECT_EQ(result, expected);
}

}  // namespace
}  // namespace vornrun::test
