// A trace is a function of model, question, strategy and stream: not of what ran before, not of the runner, not of the
// thread.

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "tests/vornrun/api/DoorModels.h"

namespace vornrun::test {
namespace {

struct Case {
    std::string example;
    std::string strategy;
};

std::ostream& operator<<(std::ostream& stream, const Case& which) {
    return stream << which.example << " under " << which.strategy;
}

std::vector<Case> cases() {
    std::vector<Case> result;
    for (const char* example :
         {"heated-tank", "print-queue", "repairable-pump", "retry-protocol", "standby-generators", "voting-sensors"})
        for (const std::string& strategy : Runner::strategies()) result.push_back({example, strategy});
    return result;
}

class Pristine : public testing::TestWithParam<Case> {
  protected:
    static std::string file(const std::string& name) {
        return std::string(VORNRUN_EXAMPLES) + "/" + GetParam().example + "/" + name;
    }
    Runner runner() const { return Runner(mModel, mQuestion, GetParam().strategy, {.steps = 60}); }
    static std::vector<std::string> traceOf(Runner& runner, unsigned k) {
        TraceStream stream(7, k);
        return transcriptOf(runner, stream);
    }

    const Model mModel = Model::fromFile(file("model.xml"));
    const Question mQuestion = Question::fromFile(file("properties.xml")).front();
};

TEST_P(Pristine, TracesAreTheSameAloneAfterOthersAndOnAnotherThread) {
    const unsigned first = GetParam().example == "repairable-pump" ? 1000 : 50;
    constexpr unsigned COUNT = 3;
    Runner busy = runner();
    for (unsigned k = 0; k < first; ++k) {
        TraceStream stream(7, k);
        busy.run(stream);
    }
    for (unsigned k = first; k < first + COUNT; ++k) {
        SCOPED_TRACE(k);
        Runner fresh = runner();
        const auto alone = traceOf(fresh, k);
        EXPECT_EQ(traceOf(busy, k), alone);
        std::vector<std::string> elsewhere;
        std::thread([&] {
            Runner other = runner();
            elsewhere = traceOf(other, k);
        }).join();
        EXPECT_EQ(elsewhere, alone);
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, Pristine, testing::ValuesIn(cases()), [](const auto& each) {
    std::string name = each.param.example + "_" + each.param.strategy;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

}  // namespace
}  // namespace vornrun::test
