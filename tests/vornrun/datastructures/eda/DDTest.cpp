#include "vornrun/datastructures/eda/DD.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/CapturedLog.h"
#include "tests/support/RunningModel.h"
#include "tests/support/TempDir.h"

namespace vornrun {
namespace {

using namespace test;
using testing::ElementsAre;

Var integerVariable(const std::string& name) { return var(name, Type::Int); }

const Var a = integerVariable("a"), b = integerVariable("b"), c = integerVariable("c"), n = integerVariable("n");

/// The dump in DOT that the network writes into the working directory.
std::string dump(RunningModel& running) {
    const TempDir folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    running.network().dumpTopologies();
    const std::string text = readFile("DD_output.txt");
    std::filesystem::current_path(before);
    std::ostringstream written;
    running.network().dataDependencies().writeTopology(written);
    EXPECT_EQ(written.str(), text);
    return text;
}

/// A chain of flows v0 <- v1 <- ... of the given length, declared from the last reader on.
std::string chain(unsigned int flows) {
    ModelWriter model;
    auto& root = model.implementation("Root.i").data(integerVariable("v0")).mode("m");
    for (unsigned int i = 1; i <= flows; ++i) {
        const Var to = integerVariable("v" + std::to_string(i - 1)), from = integerVariable("v" + std::to_string(i));
        root.data(from, i == flows ? 17 : 0).flow(to, from);
    }
    return model.text();
}

TEST(DD, AWriterIsEvaluatedBeforeItsReaderWhateverTheOrderInTheModel) {
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b).data(c, 5).mode("m").flow(a, b).flow(b, c);
    RunningModel running(model);
    EXPECT_EQ(running.value<VornInt>("main.a"), 5);
    const auto order = running.network().dataDependencies().evaluationOrder();
    ASSERT_EQ(order.size(), 2u);
    EXPECT_EQ(order[0]->target()->part()->identifier(), "b");
    EXPECT_EQ(order[1]->target()->part()->identifier(), "a");
}

TEST(DD, FlowsOfDifferentModesToOneTargetAreSelectedByTheMode) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(a)
        .data(b, 1)
        .data(c, 2)
        .mode("m")
        .mode("k")
        .flow(a, b, inModes("m"))
        .flow(a, c, inModes("k"))
        .transition("m", "k");
    RunningModel running(model);
    EXPECT_EQ(running.value<VornInt>("main.a"), 1);
    running.take("main", "m", "k");
    EXPECT_EQ(running.value<VornInt>("main.a"), 2);
}

TEST(DD, TheTargetOfAFlowThatGoesOffKeepsItsValue) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(a)
        .data(b, 1)
        .mode("m")
        .mode("k")
        .flow(a, b, inModes("m"))
        .transition("m", "k", set(b, 7));
    RunningModel running(model);
    running.take("main", "m", "k");
    EXPECT_EQ(running.value<VornInt>("main.a"), 1);
    EXPECT_EQ(running.value<VornInt>("main.b"), 7);
}

TEST(DD, AFlowOfASleepingAutomatonIsOffOnceTheFlagsAreRefreshed) {
    ModelWriter model;
    model.implementation("Sub.i").data(a).data(b, 1).mode("m").flow(a, b);
    model.implementation("Root.i")
        .data(n)
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off")
        .transition("off", "off", set(n, n + 1));
    RunningModel running(model);
    running.take("main", "on", "off");
    // This step reported no change of data, so the flag stands as it was.
    running.setValue<VornInt>("main.sub.b", 5);
    running.network().propagateValuesThroughDataPorts();
    EXPECT_EQ(running.value<VornInt>("main.sub.a"), 5);
    // The next step with effects refreshes it.
    running.take("main", "off", "off");
    running.setValue<VornInt>("main.sub.b", 9);
    running.network().propagateValuesThroughDataPorts();
    EXPECT_EQ(running.value<VornInt>("main.sub.a"), 5);
}

TEST(DD, ARestoredSnapshotLeavesTheFlagsAsTheyWere) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(a)
        .data(b, 1)
        .mode("m")
        .mode("k")
        .flow(a, b, inModes("m"))
        .transition("m", "k", set(b, 2));
    RunningModel running(model);
    running.take("main", "m", "k");
    running.network().reset();
    running.setValue<VornInt>("main.b", 6);
    running.network().propagateValuesThroughDataPorts();
    EXPECT_EQ(running.value<VornInt>("main.a"), 1) << "the flow is still off, though its mode is back";
    running.network().computeDataDependencies();
    running.network().propagateValuesThroughDataPorts();
    EXPECT_EQ(running.value<VornInt>("main.a"), 6);
}

TEST(DD, AFlowWithoutAModeListIsOnInAllModes) {
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b, 1).mode("m").mode("k").flow(a, b).transition("m", "k", set(b, 3));
    RunningModel running(model);
    running.take("main", "m", "k");
    EXPECT_EQ(running.value<VornInt>("main.a"), 3);
}

TEST(DD, ASelfReferencingFlowRunsOncePerStep) {
    ModelWriter model;
    model.implementation("Root.i").data(a).mode("m").flow(a, a + 1).transition("m", "m");
    RunningModel running(model);
    EXPECT_EQ(running.value<VornInt>("main.a"), 1);
    running.take("main", "m", "m");
    EXPECT_EQ(running.value<VornInt>("main.a"), 2);
}

TEST(DD, ACycleThatNothingReadsIsAcceptedSilently) {
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b).mode("m").flow(a, b + 1).flow(b, a + 1);
    CapturedLog log(LogLevel::Warn);
    RunningModel running(model);
    EXPECT_EQ(running.value<VornInt>("main.a"), 1);
    EXPECT_EQ(running.value<VornInt>("main.b"), 2);
    EXPECT_TRUE(log.records().empty());
}

TEST(DD, ACycleWithAReaderIsRefused) {
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b).data(c).mode("m").flow(a, b).flow(b, a).flow(c, a);
    const CapturedLog log(LogLevel::Fatal);
    EXPECT_THROW(RunningModel running(model), flow_topology_exception);
}

TEST(DD, AChainOf128FlowsPasses) {
    RunningModel running(chain(128));
    EXPECT_EQ(running.value<VornInt>("main.v0"), 17);
}

TEST(DD, AChainOf129FlowsIsRefusedWithARecord) {
    const std::string model = chain(129);
    const CapturedLog log(LogLevel::Fatal);
    EXPECT_THAT([&] { RunningModel running(model); },
                testing::ThrowsMessage<flow_topology_exception>("Dataflow topology level > 128, possible cycle"));
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Fatal, "root.eda.network.dd",
                                                     "Dataflow topology level > 128, possible cycle"}));
}

TEST(DD, LevelsAndOrderAreLogged) {
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b).data(c, 5).mode("m").flow(a, b).flow(b, c);
    CapturedLog log(LogLevel::Debug);
    RunningModel running(model);
    EXPECT_THAT(log.texts("root.eda.network.dd"),
                ElementsAre("DD: Flow level map:", "    a{=0:int} := b{=0:int} :: 0", "    b{=0:int} := c{=5:int} :: 1",
                            "DD: Flow evaluation order:", "    b{=0:int} := c{=5:int}", "    a{=0:int} := b{=0:int}"));
}

TEST(DD, TheDumpShowsFlowsInEvaluationOrderWithTheirReaders) {
    ModelWriter model;
    model.implementation("Root.i").data(a).data(b).data(c, 5).mode("m").mode("k").flow(a, b, inModes("k")).flow(b, c);
    RunningModel running(model);
    EXPECT_EQ(dump(running),
              "digraph EC {\n"
              " 1[label=\"b{=5:int} := c{=5:int}\" color=green];\n"
              " 2[label=\"a{=0:int} := b{=5:int} in modes (k)\" color=red];\n"
              "1->2\n"
              "}\n");
}

TEST(DD, WithoutFlowsTheDumpHasOnlyItsFirstAndLastLine) {
    ModelWriter model;
    model.implementation("Root.i").mode("m").transition("m", "m");
    RunningModel running(model);
    running.take("main", "m", "m");
    running.network().computeDataDependencies();
    EXPECT_EQ(dump(running), "digraph EC {\n}\n");
}

TEST(DD, AFlowFromAClockShowsTheOldValueUntilTheNextDiscreteStep) {
    const Var clock = var("x", Type::Clock), seen = var("seen", Type::Real);
    ModelWriter model;
    model.implementation("Root.i").data(clock).data(seen).mode("m").flow(seen, clock).transition("m", "m");
    RunningModel running(model);
    running.network().takeTimedTransition(2.0);
    EXPECT_EQ(running.value<VornReal>("main.seen"), 0.0);
    running.take("main", "m", "m");
    EXPECT_EQ(running.value<VornReal>("main.seen"), 2.0);
}

}  // namespace
}  // namespace vornrun
