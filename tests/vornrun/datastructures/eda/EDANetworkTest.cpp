#include "vornrun/datastructures/eda/EDANetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/RunningModel.h"

namespace vornrun {
namespace {

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const Var n = var("n", Type::Int);
const Var x = var("x", Type::Clock);

std::vector<std::string> names(const std::vector<EDA*>& edas) {
    std::vector<std::string> result;
    for (const EDA* eda : edas) result.push_back(eda->identifier());
    return result;
}

/// "automaton: source->target" each.
std::vector<std::string> names(const QualifiedTransitions& transitions) {
    std::vector<std::string> result;
    for (const auto& [eda, transition] : transitions)
        result.push_back(eda->identifier() + ": " + transition->source()->name() + "->" + transition->target()->name());
    return result;
}

std::vector<std::string> names(const std::vector<QualifiedEvent>& events) {
    std::vector<std::string> result;
    for (const auto& [eda, port] : events) result.push_back(eda->identifier() + "/" + port->fullIdentifier());
    return result;
}

TEST(EDANetwork, OneComponentGivesOneAutomatonAndResetRestoresModeDataAndPorts) {
    ModelWriter model;
    model.type("Root").outData(var("o", Type::Int), 3);
    model.implementation("Root.i").data(n, 1).data(x).mode("a").mode("b").transition("a", "b", set(n, 8),
                                                                                     set(var("o", Type::Int), 9));
    RunningModel running(model);
    const std::string before = printed(running.network());
    EXPECT_EQ(running.network().edas().size(), 1u);
    running.network().takeTimedTransition(2.5);
    running.take("main", "a", "b");
    EXPECT_NE(printed(running.network()), before);
    running.network().reset();
    EXPECT_EQ(printed(running.network()), before);
    EXPECT_EQ(running.value<VornInt>("main.o"), 3);
    EXPECT_EQ(running.modeOf("main"), "a");
}

TEST(EDANetwork, ASubcomponentSwitchedOffLeavesTheActiveSetInTheSameStep) {
    ModelWriter model;
    model.type("Sub").outEvent("e", nonblocking);
    model.implementation("Sub.i").mode("m").transition("m", "m", on("e"));
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off");
    RunningModel running(model);
    EXPECT_THAT(names(running.network().activeEDAs()), ElementsAre("main", "main.sub"));
    EXPECT_THAT(names(running.network().activeTriggers()), Contains("main.sub/main.sub.e"));
    running.take("main", "on", "off");
    EXPECT_THAT(names(running.network().activeEDAs()), ElementsAre("main"));
    EXPECT_THAT(names(running.network().activeTriggers()), Not(Contains("main.sub/main.sub.e")));
    EXPECT_THAT(names(running.network().activeTransitions()), IsEmpty());
}

TEST(EDANetwork, AChildPutToSleepByItsParentInOneStepStillTakesItsTransitionButIsNotUpdated) {
    ModelWriter model;
    model.implementation("Leaf.i").mode("m");
    model.implementation("Sub.i")
        .subcomponent("leaf", "Leaf.i", inModes("second"))
        .mode("first")
        .mode("second")
        .transition("first", "second");
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off");
    RunningModel running(model);
    running.network().takeEventTransition(
        {running.qualified("main", "on", "off"), running.qualified("main.sub", "first", "second")});
    EXPECT_EQ(running.modeOf("main.sub"), "second");
    EXPECT_FALSE(running.eda("main.sub").active());
    EXPECT_FALSE(running.eda("main.sub.leaf").active());
}

TEST(EDANetwork, ParticipantsActInListOrderEachSeeingWhatTheOnesBeforeItWrote) {
    const Var shared = var("sub.n", Type::Int);
    ModelWriter model;
    model.implementation("Sub.i").data(n, 1).mode("m").transition("m", "m", set(n, n + 1));
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i")
        .mode("m")
        .transition("m", "m", set(shared, shared * 10));
    RunningModel running(model);
    running.network().takeEventTransition(
        {running.qualified("main", "m", "m"), running.qualified("main.sub", "m", "m")});
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 11);
    running.network().takeEventTransition(
        {running.qualified("main.sub", "m", "m"), running.qualified("main", "m", "m")});
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 120);
}

/// A subcomponent "sub" that wakes in mode "m" with two ways out, "p" and "q", and has a child in "p" only.
ModelWriter withTwoReactivations() {
    ModelWriter model;
    model.implementation("Leaf.i").mode("m");
    model.implementation("Sub.i")
        .subcomponent("leaf", "Leaf.i", inModes("p"))
        .mode("m")
        .mode("p")
        .mode("q")
        .reactivation("m", "p")
        .reactivation("m", "q")
        .transition("p", "p");
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off")
        .transition("off", "on");
    return model;
}

TEST(EDANetwork, AReactivationEndsTheWaitAndLeavesSubcomponentsToTheNextEventTransition) {
    RunningModel running(withTwoReactivations());
    EDANetwork& network = running.network();
    running.take("main", "on", "off");
    running.take("main", "off", "on");
    ASSERT_TRUE(network.reactivationPending());
    const ConnectionAsTransitions options = network.enabledReactivationTransitions();
    ASSERT_EQ(options.size(), 1u);
    EXPECT_EQ(options[0].first, &running.eda("main.sub"));
    ASSERT_EQ(options[0].second.size(), 2u);

    network.takeReactivationTransition({{options[0].first, options[0].second[0]}});

    EXPECT_FALSE(network.reactivationPending());
    EXPECT_FALSE(running.eda("main.sub").reactivating());
    EXPECT_EQ(running.modeOf("main.sub"), "p");
    EXPECT_FALSE(running.eda("main.sub.leaf").active()) << "this step does not switch subcomponents";
    running.take("main.sub", "p", "p");
    EXPECT_TRUE(running.eda("main.sub.leaf").active());
}

TEST(EDANetwork, ABlockingOutPortWithoutConnectionIsActiveButNeverEnabled) {
    ModelWriter model;
    model.type("Root").outEvent("e");
    model.implementation("Root.i").mode("m").transition("m", "m", on("e"));
    RunningModel running(model);
    EXPECT_THAT(names(running.network().activeTransitions()), ElementsAre("main: m->m"));
    EXPECT_THAT(names(running.network().enabledTransitions()), IsEmpty());
    EXPECT_THAT(names(running.network().activeTriggers()), ElementsAre("main/main.e"));
    EXPECT_THAT(names(running.network().enabledTriggers()), IsEmpty());
}

TEST(EDANetwork, APrivatePortPassesThePartnerTestByBeingNonblocking) {
    ModelWriter model;
    model.implementation("Root.i").mode("m").transition("m", "m");
    RunningModel running(model);
    EXPECT_THAT(names(running.network().enabledTransitions()), ElementsAre("main: m->m"));
    EXPECT_THAT(names(running.network().enabledTriggers()), ElementsAre("main/main.tau"));
}

TEST(EDANetwork, APushedStateIsRestoredByPopAndDroppedByApply) {
    ModelWriter model;
    model.type("Sub").outEvent("e").inEvent("f");
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i")
        .data(n, 1)
        .subcomponent("a", "Sub.i", inModes("on"))
        .subcomponent("b", "Sub.i")
        .connectEvent("a.e", "b.f")
        .mode("on")
        .mode("off")
        .transition("on", "off", set(n, 2));
    RunningModel running(model);
    EDANetwork& network = running.network();
    const std::string before = printed(network);
    const auto targets = [&] { return network.eventConnections().getTargets(running.port("main.a.e")).size(); };

    network.pushState();
    running.take("main", "on", "off");
    EXPECT_EQ(targets(), 1u);
    network.popState();
    EXPECT_EQ(printed(network), before);
    EXPECT_THAT(names(network.activeEDAs()), ElementsAre("main", "main.a", "main.b"));
    EXPECT_EQ(targets(), 2u);

    network.pushState();
    running.take("main", "on", "off");
    network.applyState();
    EXPECT_EQ(running.modeOf("main"), "off");
    EXPECT_THROW(network.popState(), std::logic_error);
}

TEST(EDANetwork, AStateTakenAndSetAgainGivesTheIdenticalNetwork) {
    RunningModel running(withTwoReactivations());
    EDANetwork& network = running.network();
    running.take("main", "on", "off");
    running.take("main", "off", "on");
    const std::string before = printed(network);
    const std::unique_ptr<GlobalConfigurationSnapshot> snapshot(network.getState());
    network.reset();
    EXPECT_FALSE(network.reactivationPending());
    network.setState(snapshot.get());
    EXPECT_EQ(printed(network), before);
    EXPECT_TRUE(network.reactivationPending());
}

TEST(EDANetwork, SleepingAutomataDoNotLetTimePass) {
    ModelWriter model;
    model.implementation("Sub.i").data(x).mode("m");
    model.implementation("Root.i")
        .data(x)
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off");
    RunningModel running(model);
    running.network().takeTimedTransition(1.0);
    running.take("main", "on", "off");
    running.network().takeTimedTransition(2.0);
    EXPECT_EQ(running.value<VornClock>("main.x"), 3.0);
    EXPECT_EQ(running.value<VornClock>("main.sub.x"), 1.0);
}

TEST(EDANetwork, AutomataAreFoundByComponent) {
    RunningModel running(withTwoReactivations());
    EDANetwork& network = running.network();
    const VornComponentRealisation* sub = running.eda("main.sub").component();
    const VornComponentRealisation stranger(99, "stranger", running.root(), {}, nullptr);
    EXPECT_EQ(network.edaOfComponent(sub), &running.eda("main.sub"));
    EXPECT_EQ(network.edaOfComponent(&stranger), nullptr);
    EXPECT_THAT(network.edasOfComponents({&stranger, sub}), ElementsAre(nullptr, &running.eda("main.sub")));
}

TEST(EDANetwork, EventNamesAreTheLocalNamesOfAllEventPorts) {
    ModelWriter model;
    model.type("Sub").outEvent("e").inEvent("b");
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i").subcomponent("s", "Sub.i").subcomponent("t", "Sub.i").mode("m").transition("m", "m");
    CapturedLog log(LogLevel::Debug);
    RunningModel running(model);
    EXPECT_THAT(running.network().eventNames(), ElementsAre("b", "e", "tau"));
    EXPECT_THAT(log.texts("root.eda.network"),
                Contains("The following event names are used within the network: b, e, tau"));
}

TEST(EDANetwork, ConstructionIsLogged) {
    ModelWriter model;
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i").subcomponent("s", "Sub.i").mode("m");
    CapturedLog log(LogLevel::Debug);
    RunningModel running(model);
    EXPECT_THAT(
        log.texts("root.eda.network"),
        ElementsAre("Constructing EDA for component realization main", "Constructing EDA for component realization s",
                    "The following event names are used within the network: ",
                    "Topology has changed. Will recompute active components, event connections & data "
                    "dependencies.",
                    "Compute active", "Successfully initialized EDA network consisting of 2 EDAs"));
}

TEST(EDANetwork, EveryDiscreteStepLogsTheRecomputation) {
    ModelWriter model;
    model.implementation("Root.i").mode("m").transition("m", "m");
    RunningModel running(model);
    CapturedLog log(LogLevel::Debug);
    running.take("main", "m", "m");
    EXPECT_THAT(log.texts("root.eda.network"),
                ElementsAre("Topology has changed. Will recompute active components, event connections & data "
                            "dependencies.",
                            "Compute active"));
}

TEST(EDANetwork, TheReportListsActiveTriggersAndRefreshesFlowFlags) {
    ModelWriter model;
    model.type("Root").outEvent("e");
    model.implementation("Root.i").mode("m").transition("m", "m", on("e")).transition("m", "m");
    RunningModel running(model);
    // Ids: the port e 0, the variable mode 1, the private port 2.
    EXPECT_EQ(running.network().reportAllCurrentTransitions(), "Active triggers:\n main (e)[0]\n main (tau)[2]\n");
}

TEST(EDANetwork, PrintsItsAutomataInOrder) {
    ModelWriter model;
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i").subcomponent("s", "Sub.i").mode("m");
    RunningModel running(model);
    EXPECT_EQ(printed(running.network()),
              "EDANetwork(\n" + printed(running.eda("main")) + "\n" + printed(running.eda("main.s")) + "\n)");
}

}  // namespace
}  // namespace vornrun
