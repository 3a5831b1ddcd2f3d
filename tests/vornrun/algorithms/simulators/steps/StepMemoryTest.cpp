#include "vornrun/algorithms/simulators/steps/StepMemory.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/AllocationCounter.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/ModelWriter.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/simulators/Simulator.h"
#include "vornrun/algorithms/simulators/steps/SimulationStep.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {
namespace {

class StepMemory : public testing::Test {
  protected:
    void SetUp() override {
        if (!stepmemory::isKept()) GTEST_SKIP() << "this build gives all memory back at once";
    }
};

TEST_F(StepMemory, OfDroppedStepsServesLaterOnes) {
    std::set<const void*> blocks;
    std::vector<std::unique_ptr<SimulationStep>> steps;
    for (int i = 0; i < 100; ++i) {
        steps.push_back(std::make_unique<TimeSimulationStep>(i));
        blocks.insert(dynamic_cast<const void*>(steps.back().get()));
    }
    EXPECT_EQ(blocks.size(), 100U) << "steps that live together stand apart";
    steps.clear();
    const AllocationCounter allocations;
    for (int i = 0; i < 100; ++i) {
        steps.push_back(std::make_unique<TimeSimulationStep>(i));
        EXPECT_TRUE(blocks.contains(dynamic_cast<const void*>(steps.back().get())));
    }
    EXPECT_EQ(allocations.count(), 0U);
}

TEST_F(StepMemory, OfAListThatWasGivenBackServesTheNextOneEmpty) {
    QualifiedTransitions list = stepmemory::takeList();
    list.resize(3);
    const auto* const storage = list.data();
    stepmemory::giveBack(std::move(list));
    const QualifiedTransitions next = stepmemory::takeList();
    EXPECT_TRUE(next.empty());
    EXPECT_EQ(next.data(), storage);
}

TEST_F(StepMemory, OfAnUnusuallyLongListIsNotKept) {
    QualifiedTransitions list;
    list.resize(1000);
    stepmemory::giveBack(std::move(list));
    EXPECT_LT(stepmemory::takeList().capacity(), 1000U);
}

TEST_F(StepMemory, OfStepsThatOutliveTheirThreadIsGivenBack) {
    std::unique_ptr<SimulationStep> step;
    std::thread([&] {
        const TimeSimulationStep dropped(1.0);
        step = std::make_unique<TimeSimulationStep>(2.0);
    }).join();
    EXPECT_EQ(step->time(), 2.0);
    step.reset();
}

TEST_F(StepMemory, LetsARunAsLongAsThoseBeforeAllocateNothing) {
    const Var x = var("x", Type::Clock);
    ModelWriter model;
    model.implementation("Ticker.i")
        .data(x)
        .mode("run", invariant(x <= 1.0))
        .transition("run", "run", when(x >= 1.0), set(x, 0.0));
    const std::unique_ptr<VornSpecification> specification = parseModel(model);
    const AsapStrat strategy;
    Simulator simulator(*specification->findRootCandidates().begin(), &strategy);
    const CSLUntilPathFormula never(new CSLTrue, new CSLFalse, 0, 1000);
    const CapturedLog log(LogLevel::Fatal);
    // The first run makes the steps, the second one drops them and learns how many there are to keep.
    for (int run = 0; run < 2; ++run) simulator.performRun(&never);
    ASSERT_EQ(simulator.trace().steps().size(), 1001U);

    const AllocationCounter allocations;
    simulator.performRun(&never);
    EXPECT_EQ(allocations.count(), 0U);
    EXPECT_EQ(simulator.trace().steps().size(), 1001U);
}

}  // namespace
}  // namespace vornrun::test
