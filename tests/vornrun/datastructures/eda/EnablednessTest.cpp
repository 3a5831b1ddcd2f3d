#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/RunningModel.h"

namespace vornrun {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

const Var x = var("x", Type::Clock);
const Var n = var("n", Type::Int);

/// "automaton: source->target | source->target" per entry.
std::vector<std::string> entries(const ConnectionAsTransitions& options) {
    std::vector<std::string> result;
    for (const auto& [eda, transitions] : options) {
        std::string text = eda->identifier() + ":";
        for (const TransitionPtr transition : transitions)
            text += " " + transition->source()->name() + "->" + transition->target()->name();
        result.push_back(text);
    }
    return result;
}

/// A sender "a" on its event "e" and a listener "b" on "f", joined by a connection. The sender can fire in [1, 4] of
/// its clock, the listener in [3, 9] of its own.
struct Pair {
    ModelWriter model;
    template <class... ConnectionParts>
    explicit Pair(const ConnectionParts&... parts) {
        model.type("A").outEvent("e");
        model.type("B").inEvent("f");
        model.implementation("A.i").data(x).mode("m").transition("m", "m", on("e"), when(x >= 1.0 && x <= 4.0));
        model.implementation("B.i").data(x).mode("m").mode("k").transition("m", "k", on("f"),
                                                                           when(x >= 3.0 && x <= 9.0));
        model.implementation("Root.i")
            .subcomponent("a", "A.i")
            .subcomponent("b", "B.i")
            .mode("m")
            .connectEvent("a.e", "b.f", parts...);
    }
};

TEST(Enabledness, AnEventThatReachesOnlyItsOwnAutomatonHasJustTheOwnEntry) {
    ModelWriter model;
    model.type("Root").outEvent("e");
    model.implementation("Root.i").mode("m").transition("m", "m", on("e"));
    RunningModel running(model);
    const EDANetwork& network = running.network();
    EXPECT_THAT(entries(network.enabledTransitions(running.qualified("main", "m", "m"))), ElementsAre("main: m->m"));
    EXPECT_THAT(entries(network.enabledTransitions(QualifiedEvent(&running.eda("main"), running.port("main.e")))),
                ElementsAre("main: m->m"));
}

TEST(Enabledness, APassiveListenerReactsButDoesNotEnable) {
    RunningModel running(Pair(passive).model);
    running.network().takeTimedTransition(3.5);
    const QualifiedTransition sender = running.qualified("main.a", "m", "m");
    EXPECT_THAT(entries(running.network().enabledTransitions(sender)), ElementsAre("main.a: m->m", "main.b: m->k"));
    EXPECT_EQ(printed(running.network().transitionRemainsEnabledFor(sender)), "[-]");
    EXPECT_FALSE(running.network().isEnabled(sender));
}

TEST(Enabledness, ABlockingTransitionNeedsOnePartnerAtTheSameDelay) {
    RunningModel running(Pair().model);
    const QualifiedTransition sender = running.qualified("main.a", "m", "m");
    EXPECT_EQ(printed(running.network().transitionRemainsEnabledFor(sender)), "[3, 4]");
    EXPECT_EQ(printed(running.network().triggerRemainsEnabledFor({sender.first, running.port("main.a.e")})), "[3, 4]");
    EXPECT_FALSE(running.network().isEnabled(sender));
    running.network().takeTimedTransition(3.0);
    EXPECT_TRUE(running.network().isEnabled(sender));
    EXPECT_TRUE(running.network().isEnabled(QualifiedEvent(sender.first, running.port("main.a.e"))));
}

TEST(Enabledness, AListenerWithoutATakeableTransitionLeavesNoEntryAndBlocksNothing) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f");
    model.implementation("A.i").mode("m").transition("m", "m", on("e"));
    model.implementation("B.i")
        .data(var("ready", Type::Bool))
        .mode("m")
        .transition("m", "m", on("f"), when(var("ready", Type::Bool)));
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i")
        .subcomponent("c", "B.i")
        .mode("m")
        .connectEvent("a.e", "b.f")
        .connectEvent("a.e", "c.f");
    RunningModel running(model);
    running.setValue<VornBool>("main.c.ready", true);
    const QualifiedTransition sender = running.qualified("main.a", "m", "m");
    EXPECT_TRUE(running.network().isEnabled(sender));
    EXPECT_THAT(entries(running.network().enabledTransitions(sender)), ElementsAre("main.a: m->m", "main.c: m->m"));
}

TEST(Enabledness, AListenerReachedOverTwoPathsStandsTwice) {
    ModelWriter model;
    model.type("A").outEvent("e");
    model.type("B").inEvent("f").inEvent("g");
    model.implementation("A.i").mode("m").transition("m", "m", on("e"));
    model.implementation("B.i").mode("m").transition("m", "m", on("f")).transition("m", "m", on("g"));
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i")
        .mode("m")
        .connectEvent("a.e", "b.f")
        .connectEvent("a.e", "b.g");
    RunningModel running(model);
    EXPECT_THAT(entries(running.network().enabledTransitions(running.qualified("main.a", "m", "m"))),
                ElementsAre("main.a: m->m", "main.b: m->m", "main.b: m->m"));
}

TEST(Enabledness, AnEventOffersItsOwnAutomatonsAlternatives) {
    ModelWriter model;
    model.type("Root").outEvent("e");
    model.implementation("Root.i")
        .data(n)
        .mode("m")
        .mode("k")
        .mode("j")
        .transition("m", "k", on("e"))
        .transition("m", "j", on("e"))
        .transition("m", "m", on("e"), when(n > 0));
    RunningModel running(model);
    EXPECT_THAT(
        entries(running.network().enabledTransitions(QualifiedEvent(&running.eda("main"), running.port("main.e")))),
        ElementsAre("main: m->k m->j"));
}

TEST(Enabledness, ATransitionThatCannotBeTakenGivesAnEmptyList) {
    RunningModel running(Pair().model);
    EXPECT_THAT(entries(running.network().enabledTransitions(running.qualified("main.a", "m", "m"))), IsEmpty());
    EXPECT_THAT(
        entries(running.network().enabledTransitions(QualifiedEvent(&running.eda("main.a"), running.port("main.a.e")))),
        IsEmpty());
}

TEST(Enabledness, ResultsWhoseStorageIsReusedAreTheSame) {
    RunningModel running(Pair().model);
    const EDANetwork& network = running.network();
    const QualifiedTransition sender = running.qualified("main.a", "m", "m");
    ConnectionAsTransitions result(5);
    network.collectEnabledTransitions(sender, result);
    EXPECT_THAT(entries(result), IsEmpty());
    for (int round = 0; round < 3; ++round) {
        running.network().takeTimedTransition(3.5);
        network.collectEnabledTransitions(sender, result);
        EXPECT_THAT(entries(result), ElementsAre("main.a: m->m", "main.b: m->k"));
        running.network().reset();
        network.collectEnabledTransitions(QualifiedEvent(sender.first, running.port("main.a.e")), result);
        EXPECT_THAT(entries(result), IsEmpty());
    }
}

TEST(Enabledness, WithoutInvariantsTimeIsUnbounded) {
    RunningModel running(Pair().model);
    EXPECT_EQ(printed(running.network().invariantsRemainValidFor()), "[0, INFTY]");
}

TEST(Enabledness, ActiveInvariantsAreIntersectedAndSleepingOnesAreNotAsked) {
    ModelWriter model;
    model.implementation("Sub.i").data(x).mode("m", invariant(x <= 2.0));
    model.implementation("Root.i")
        .data(x)
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on", invariant(x <= 5.0))
        .mode("off", invariant(x <= 5.0))
        .transition("on", "off");
    RunningModel running(model);
    EXPECT_EQ(printed(running.network().invariantsRemainValidFor()), "[0, 2]");
    running.take("main", "on", "off");
    EXPECT_EQ(printed(running.network().invariantsRemainValidFor()), "[0, 5]");
}

TEST(Enabledness, ANonblockingTriggerDoesNotAskItsPartners) {
    ModelWriter model;
    model.type("A").outEvent("e", nonblocking);
    model.type("B").inEvent("f");
    model.implementation("A.i").data(x).mode("m").transition("m", "m", on("e"), when(x >= 1.0 && x <= 4.0));
    model.implementation("B.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("a", "A.i")
        .subcomponent("b", "B.i")
        .mode("m")
        .connectEvent("a.e", "b.f");
    RunningModel running(model);
    const QualifiedTransition sender = running.qualified("main.a", "m", "m");
    EXPECT_EQ(printed(running.network().transitionRemainsEnabledFor(sender)),
              printed(sender.first->transitionRemainsValidFor(sender.second)));
    EXPECT_EQ(printed(running.network().transitionRemainsEnabledFor(sender)), "[1, 4]");
}

TEST(Enabledness, ATimeStepOfZeroStillTestsAllInvariants) {
    ModelWriter model;
    model.implementation("Root.i").data(x, 1.0).mode("m", invariant(x <= 2.0));
    RunningModel running(model);
    const std::string before = printed(running.network());
    EXPECT_TRUE(running.network().canTakeTimedTransition(0.0));
    EXPECT_EQ(printed(running.network()), before);
    running.setValue<VornClock>("main.x", 7.0);
    EXPECT_FALSE(running.network().canTakeTimedTransition(0.0));
}

TEST(Enabledness, AnInvariantThatFailedWhenItsComponentWentToSleepRefusesAnyDelay) {
    ModelWriter model;
    model.implementation("Sub.i").data(x).mode("m", invariant(x <= 2.0));
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i", inModes("on"))
        .mode("on")
        .mode("off")
        .transition("on", "off");
    RunningModel running(model);
    running.take("main", "on", "off");
    EXPECT_TRUE(running.network().canTakeTimedTransition(100.0)) << "a sleeping clock stands still";
    running.setValue<VornClock>("main.sub.x", 3.0);
    EXPECT_FALSE(running.network().canTakeTimedTransition(1.0));
    EXPECT_FALSE(running.network().allInvariantsHold());
}

TEST(Enabledness, ARefusedDelayIsReportedAndTheStateRestored) {
    ModelWriter model;
    model.implementation("Root.i").data(x).mode("m", invariant(x <= 2.0)).transition("m", "m", when(x >= 1.0));
    RunningModel running(model);
    const std::string before = printed(running.network());
    running.network().takeTimedTransition(3.0);
    const std::string after = printed(running.network());
    const std::string transition = printed(*running.transition("main", "m", "m"));
    running.network().reset();
    CapturedLog log(LogLevel::Warn);
    EXPECT_FALSE(running.network().canTakeTimedTransition(3.0));
    EXPECT_THAT(log.texts("root.eda.network"),
                ElementsAre("Unable to take timed transition 3:\n" + after, "  " + transition, "  [-]",
                            "  Invariant failed:  x{=3:clock} <= 2"));
    EXPECT_EQ(printed(running.network()), before);
}

TEST(Enabledness, ADiscreteStepIsTriedAndTakenBack) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x, 8.0)
        .data(n, 1)
        .mode("m")
        .mode("k", invariant(x <= 5.0))
        .transition("m", "k", when(n > 0))
        .transition("m", "k", when(n > 1))
        .transition("m", "k", set(x, 1.0));
    RunningModel running(model);
    EDANetwork& network = running.network();
    const std::string before = printed(network);
    EXPECT_FALSE(network.canTakeEventTransition({running.qualified("main", "m", "k", 0)}));
    EXPECT_TRUE(network.canTakeEventTransition({running.qualified("main", "m", "k", 2)}));
    EXPECT_EQ(printed(network), before);
    CapturedLog log(LogLevel::Debug);
    EXPECT_FALSE(network.canTakeEventTransition({running.qualified("main", "m", "k", 1)}));
    EXPECT_THAT(log.texts("root.eda.network"), ElementsAre("Checking if event transition can be taken...",
                                                           "Cannot take given event transition. Guard disabled for " +
                                                               printed(*running.transition("main", "m", "k", 1))));
}

TEST(Enabledness, WhatFiresTogetherIsLogged) {
    RunningModel running(Pair().model);
    running.network().takeTimedTransition(3.5);
    const std::string sender = printed(*running.transition("main.a", "m", "m"));
    const std::string listener = printed(*running.transition("main.b", "m", "k"));
    CapturedLog log(LogLevel::Trace);
    running.network().enabledTransitions(running.qualified("main.a", "m", "m"));
    EXPECT_THAT(log.texts("root.eda.network"),
                ElementsAre("Enabled transitions for trans " + sender + ":\n EDA: main.a\n  " + sender +
                            "\n EDA: main.b\n  " + listener));
}

}  // namespace
}  // namespace vornrun
