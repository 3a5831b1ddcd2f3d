// Parsers on several threads at once.

#include <gtest/gtest.h>

#include <barrier>
#include <sstream>
#include <thread>
#include <vector>

#include "tests/support/ParseModel.h"
#include "tests/vornrun/algorithms/parser/PropertyTest.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun::test {
namespace {

constexpr int THREADS = 4;
constexpr int ROUNDS = 20;

/// Calls `work` with the number of the thread, on all threads at once, several times.
template <class Work>
void onAllThreads(Work work) {
    std::barrier start(THREADS);
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < THREADS; ++thread)
        threads.emplace_back([&, thread] {
            for (int round = 0; round < ROUNDS; ++round) {
                start.arrive_and_wait();
                work(thread);
            }
        });
}

TEST(ParallelParsing, StartsAndStopsTheLibraryAsOftenAsItMust) {
    const int before = parser::util::initCount;
    onAllThreads([](int) {
        ASSERT_TRUE(parser::util::initialize());
        // Between the two calls the library works.
        EXPECT_EQ(parser::util::transcode(parser::util::tagBoolTrue), "True");
        parser::util::clean();
    });
    EXPECT_EQ(parser::util::initCount, before);
}

TEST(ParallelParsing, GivesEachThreadItsOwnModel) {
    std::vector<std::string> names(THREADS);
    onAllThreads([&](int thread) {
        const std::string name = "T" + std::to_string(thread);
        ModelWriter model;
        model.type(name).inEvent("go").outData(var("d", Type::Int), 3);
        model.implementation(name + ".i")
            .data(var("x", Type::Clock))
            .mode("m", invariant(var("x", Type::Clock) <= 5.0))
            .transition("m", "m", on("go"), when(var("x", Type::Clock) >= 2.0));
        const auto specification = parseModel(model);
        names[static_cast<std::size_t>(thread)] = (*specification->findRootCandidates().begin())->qualifiedName();
    });
    for (int thread = 0; thread < THREADS; ++thread)
        EXPECT_EQ(names[static_cast<std::size_t>(thread)], "T" + std::to_string(thread) + ".i");
}

TEST(ParallelParsing, GivesEachThreadItsOwnProperties) {
    std::vector<Formulas> formulas(THREADS);
    onAllThreads([&](int thread) {
        PropertyWriter properties;
        properties.p(Bound::Below, 0.5, eventually(var("v" + std::to_string(thread), Type::Bool), 0, 1));
        formulas[static_cast<std::size_t>(thread)] = parsePropertyText(properties.text());
    });
    for (int thread = 0; thread < THREADS; ++thread) {
        const std::vector<std::string> texts = printed(formulas[static_cast<std::size_t>(thread)]);
        ASSERT_EQ(texts.size(), 1U);
        EXPECT_NE(texts[0].find("v" + std::to_string(thread)), std::string::npos) << texts[0];
    }
}

}  // namespace
}  // namespace vornrun::test
