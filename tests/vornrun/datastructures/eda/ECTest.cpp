#include "vornrun/datastructures/eda/EC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/RunningModel.h"
#include "tests/support/TempDir.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun {
namespace {

using namespace test;
using testing::ElementsAre;

/// Who hears a port: "automaton/port" each, with "(passive)" behind it for a passive way.
std::vector<std::string> heardBy(RunningModel& running, const std::string& port) {
    std::vector<std::string> result;
    for (const auto& [eda, heard, passive] : running.network().eventConnections().getTargets(running.port(port)))
        result.push_back(eda->identifier() + "/" + heard->fullIdentifier() + (passive ? " (passive)" : ""));
    return result;
}

std::vector<std::string> triggersOf(RunningModel& running) {
    std::vector<std::string> result;
    for (const auto& [eda, port] : running.network().eventConnections().getTriggers())
        result.push_back(eda->identifier() + "/" + port->fullIdentifier());
    return result;
}

/// Two siblings "a" and "b"; a's out event "e" is connected to b's in event "f" by `root`'s caller.
struct Siblings {
    ModelWriter model;
    ImplementationWriter* root;
    Siblings() {
        model.type("A").outEvent("e");
        model.type("B").inEvent("f");
        model.implementation("A.i").mode("m").transition("m", "m", on("e"));
        model.implementation("B.i").mode("m").transition("m", "m", on("f"));
        root = &model.implementation("Root.i").subcomponent("a", "A.i").subcomponent("b", "B.i");
    }
};

TEST(EC, AnOutPortWithoutAnyConnectionStillIsATriggerThatOnlyItselfHears) {
    ModelWriter model;
    model.type("Root").outEvent("e");
    model.implementation("Root.i").mode("m");
    RunningModel running(model);
    EXPECT_THAT(triggersOf(running), ElementsAre("main/main.e"));
    EXPECT_THAT(heardBy(running, "main.e"), ElementsAre("main/main.e"));
}

TEST(EC, AParentThatUsesASubcomponentsInPortRaisesIt) {
    ModelWriter model;
    model.type("Sub").inEvent("go");
    model.implementation("Sub.i").mode("m").transition("m", "m", on("go"));
    model.implementation("Root.i").subcomponent("sub", "Sub.i").mode("m").transition("m", "m", on("sub.go"));
    RunningModel running(model);
    EXPECT_THAT(triggersOf(running), ElementsAre("main/main.sub.go"));
    EXPECT_THAT(heardBy(running, "main.sub.go"), ElementsAre("main/main.sub.go", "main.sub/main.sub.go"));
    const auto& sources = running.network().eventConnections().getSourceTransitions();
    ASSERT_EQ(sources.size(), 1u);
    EXPECT_EQ(sources[0].first, &running.eda("main"));
}

TEST(EC, AParentOnASubcomponentsOutPortListensAndStartsNothing) {
    ModelWriter model;
    model.type("Sub").outEvent("done");
    model.implementation("Sub.i").mode("m").transition("m", "m", on("done"));
    model.implementation("Root.i").subcomponent("sub", "Sub.i").mode("m").transition("m", "m", on("sub.done"));
    RunningModel running(model);
    EXPECT_THAT(heardBy(running, "main.sub.done"), ElementsAre("main.sub/main.sub.done", "main/main.sub.done"));
    const auto& sources = running.network().eventConnections().getSourceTransitions();
    ASSERT_EQ(sources.size(), 1u);
    EXPECT_EQ(sources[0].first, &running.eda("main.sub"));
}

TEST(EC, TwoTransitionsOfAParentOnOnePortShareOneNode) {
    ModelWriter model;
    model.type("Sub").outEvent("done");
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i")
        .mode("m")
        .transition("m", "m", on("sub.done"))
        .transition("m", "m", on("sub.done"));
    RunningModel running(model);
    EXPECT_THAT(heardBy(running, "main.sub.done"), ElementsAre("main.sub/main.sub.done", "main/main.sub.done"));
}

TEST(EC, OfParentAndGrandparentOnOnePortOnlyTheFirstHearsIt) {
    ModelWriter model;
    model.type("Leaf").outEvent("e");
    model.implementation("Leaf.i").mode("m");
    model.implementation("Mid.i").subcomponent("leaf", "Leaf.i").mode("m").transition("m", "m", on("leaf.e"));
    model.implementation("Root.i").subcomponent("mid", "Mid.i").mode("m").transition("m", "m", on("mid.leaf.e"));
    RunningModel running(model);
    EXPECT_THAT(heardBy(running, "main.mid.leaf.e"),
                ElementsAre("main.mid.leaf/main.mid.leaf.e", "main/main.mid.leaf.e"));
}

TEST(EC, AConnectionWithAModeListIsOffInOtherModesAndWhatLiesBehindIsNotReached) {
    Siblings siblings;
    siblings.root->mode("on").mode("off").transition("on", "off").connectEvent("a.e", "b.f", inModes("on"));
    RunningModel running(siblings.model);
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e", "main.b/main.b.f"));
    running.take("main", "on", "off");
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e"));
    running.network().reset();
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e", "main.b/main.b.f"));
}

TEST(EC, APassiveConnectionMarksEverythingBehindItAsPassive) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f");
    model.type("Inner").inEvent("g");
    model.implementation("A.i").mode("m");
    model.implementation("Inner.i").mode("m");
    model.implementation("B.i").subcomponent("inner", "Inner.i").mode("m").connectEvent("f", "inner.g");
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i")
        .mode("m")
        .connectEvent("a.e", "b.f", passive);
    RunningModel running(model);
    EXPECT_THAT(heardBy(running, "main.a.e"),
                ElementsAre("main.a/main.a.e", "main.b/main.b.f (passive)", "main.b.inner/main.b.inner.g (passive)"));
}

TEST(EC, AllEdgesOfASleepingAutomatonsPortAreOff) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f");
    model.implementation("A.i").mode("m");
    model.implementation("B.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("a", "A.i", inModes("on"))
        .subcomponent("b", "B.i")
        .mode("on")
        .mode("off")
        .transition("on", "off")
        .connectEvent("a.e", "b.f");
    RunningModel running(model);
    running.take("main", "on", "off");
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e"));
}

TEST(EC, ASleepingTargetIsHeardThroughAConnectionThatItsOwnerKeeps) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f");
    model.implementation("A.i").mode("m");
    model.implementation("B.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off")
        .connectEvent("a.e", "b.f");
    RunningModel running(model);
    running.take("main", "on", "off");
    EXPECT_FALSE(running.eda("main.b").active());
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e", "main.b/main.b.f"));
}

TEST(EC, APortReachedOverTwoWaysStandsTwiceInTheOrderOfConnections) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f").inEvent("g");
    model.type("C").inEvent("h");
    model.implementation("A.i").mode("m");
    model.implementation("C.i").mode("m");
    model.implementation("B.i").subcomponent("c", "C.i").mode("m").connectEvent("g", "c.h").connectEvent("f", "c.h");
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i")
        .mode("m")
        .connectEvent("a.e", "b.g")
        .connectEvent("a.e", "b.f");
    RunningModel running(model);
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e", "main.b/main.b.g", "main.b.c/main.b.c.h",
                                                          "main.b/main.b.f", "main.b.c/main.b.c.h"));
}

TEST(EC, TheImplicitEdgeComesBeforeConnections) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f");
    model.implementation("A.i").mode("m");
    model.implementation("B.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i")
        .mode("m")
        .connectEvent("a.e", "b.f")
        .transition("m", "m", on("a.e"));
    RunningModel running(model);
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e", "main/main.a.e", "main.b/main.b.f"));
}

TEST(EC, TriggersStandInTheOrderInWhichPortsWereMade) {
    ModelWriter model;
    model.type("Sub").outEvent("s");
    model.type("Root").outEvent("r");
    model.implementation("Sub.i").mode("m").transition("m", "m");
    model.implementation("Root.i").subcomponent("sub", "Sub.i").mode("m").transition("m", "m");
    RunningModel running(model);
    // The root's own ports come first; private ports of transitions are made after the whole subtree.
    EXPECT_THAT(triggersOf(running),
                ElementsAre("main/main.r", "main.sub/main.sub.s", "main.sub/main.sub.tau", "main/main.tau"));
}

TEST(EC, ACycleOfActiveConnectionsIsRefusedWithAMessageAndLeavesTheTopologyUsable) {
    ModelWriter model;
    model.type("A").outEvent("e").inEvent("f");
    model.implementation("A.i").mode("m").connectEvent("f", "e", inModes("m")).transition("m", "m", on("e"));
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .mode("m")
        .mode("n")
        .transition("m", "n")
        .connectEvent("a.e", "a.f", inModes("m"));
    RunningModel running(model);
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            heardBy(running, "main.a.e");
            FAIL() << "a cycle was walked";
        } catch (const model_exception& fault) {
            EXPECT_STREQ(fault.what(),
                         "Component main.a: active event connections form a cycle through the port main.a.e");
        }
    }
    running.take("main", "m", "n");
    EXPECT_THAT(heardBy(running, "main.a.e"), ElementsAre("main.a/main.a.e"));
}

TEST(EC, ALongChainOfConnectionsIsWalkedWithoutRecursion) {
    ModelWriter model;
    auto& type = model.type("Root").outEvent("e0");
    auto& root = model.implementation("Root.i").mode("m");
    constexpr unsigned int length = 20000;
    for (unsigned int i = 1; i <= length; ++i) {
        type.inEvent("e" + std::to_string(i));
        root.connectEvent("e" + std::to_string(i - 1), "e" + std::to_string(i));
    }
    RunningModel running(model);
    EXPECT_EQ(heardBy(running, "main.e0").size(), length + 1);
}

TEST(EC, APortThatRaisesNothingHasNoTargets) {
    ModelWriter model;
    model.type("Root").inEvent("f");
    model.implementation("Root.i").mode("m");
    RunningModel running(model);
    EXPECT_THROW(heardBy(running, "main.f"), model_exception);
}

TEST(EC, TheDumpShowsNodesAndEdgesWithTheirActivity) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f");
    model.implementation("A.i").mode("m");
    model.implementation("B.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("a", "A.i", inModes("on"))
        .subcomponent("b", "B.i")
        .mode("on")
        .mode("off")
        .connectEvent("a.e", "b.f", passive)
        .transition("on", "off", on("a.e"));
    RunningModel running(model);
    const TempDir folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    running.network().dumpTopologies();
    const std::string awake = readFile("EC_output.txt");
    running.take("main", "on", "off");
    running.network().dumpTopologies();
    const std::string asleep = readFile("EC_output.txt");
    std::filesystem::current_path(before);

    // Ids: main's "mode" 0, a's port 1 and "mode" 2, b's port 3 and "mode" 4.
    const std::string connection = "label=\"[1] -> [3] (event port a.e -> b.f;)\"";
    EXPECT_EQ(awake,
              "digraph EC {\n"
              " 1[label=\"e\" color=\"green\"]\n"
              " 2[label=\"f\" color=\"green\"]\n"
              " 3[label=\"e\" color=\"green\"]\n"
              "1->3[ color=green]\n"
              "1->2[ style=dotted " +
                  connection +
                  " color=green]\n"
                  "}\n");
    EXPECT_EQ(asleep,
              "digraph EC {\n"
              " 1[label=\"e\" color=\"red\"]\n"
              " 2[label=\"f\" color=\"green\"]\n"
              " 3[label=\"e\" color=\"green\"]\n"
              "1->3[ color=red]\n"
              "1->2[ style=dotted " +
                  connection +
                  " color=red]\n"
                  "}\n");
}

}  // namespace
}  // namespace vornrun
