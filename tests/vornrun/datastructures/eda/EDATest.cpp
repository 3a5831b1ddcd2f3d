#include "vornrun/datastructures/eda/EDA.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/RunningModel.h"

namespace vornrun {
namespace {

using namespace test;
using testing::Contains;
using testing::ElementsAre;

const Var x = var("x", Type::Clock);
const Var y = var("y", Type::Continuous);
const Var n = var("n", Type::Int);

/// A subcomponent "sub" that exists in the root's mode "on" and not in "off".
void addSwitchedRoot(ModelWriter& model, const std::string& initialMode = "on") {
    auto& root = model.implementation("Root.i").subcomponent("sub", "Sub.i", inModes("on"));
    root.mode(initialMode).mode(initialMode == "on" ? "off" : "on");
    root.transition("on", "off").transition("off", "on");
}

TEST(EDA, ATimeStepOfZeroChangesNothing) {
    ModelWriter model;
    model.implementation("Root.i").data(x, 1.0).mode("a", invariant(x <= 5.0));
    RunningModel running(model);
    running.eda("main").takeTimedTransition(0.0);
    EXPECT_EQ(running.value<VornClock>("main.x"), 1.0);
}

TEST(EDA, InvalidatingWithADelayShiftsLastResultsAndWithoutOneDropsThem) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x)
        .mode("a", invariant(x <= 5.0))
        .transition("a", "a", when(x >= 3.0), set(x, 0.0));
    RunningModel running(model);
    EDA& eda = running.eda("main");
    const TransitionPtr transition = running.transition("main", "a", "a");
    const Clause& invariant = *eda.currentMode()->invariant()->clauses().front();
    const Clause& guard = *transition->guard()->clauses().front();
    eda.invariantsRemainValidFor();
    transition->guardHoldsWhile();

    eda.invalidateInvariantCache(2.0);
    ASSERT_NE(invariant.lastResult(), nullptr);
    EXPECT_EQ(invariant.lastResult()->upper, 3.0);
    ASSERT_NE(guard.lastResult(), nullptr);
    EXPECT_EQ(guard.lastResult()->lower, 1.0);

    eda.invalidateInvariantCache(0.0);
    EXPECT_EQ(invariant.lastResult(), nullptr);
    EXPECT_EQ(guard.lastResult(), nullptr);
}

TEST(EDA, EnteringTheCurrentModeHasNoEffect) {
    ModelWriter model;
    model.implementation("Root.i").mode("a");
    RunningModel running(model);
    EXPECT_EQ(running.eda("main").setMode(running.mode("main", "a")), EDA::NoEffect);
}

TEST(EDA, ASelfLoopWithEffectsReportsDataEffectAndLeavesRatesUntouched) {
    ModelWriter model;
    model.implementation("Root.i").data(x).data(n, 1).mode("a").transition("a", "a", set(n, n + 1));
    RunningModel running(model);
    EDA& eda = running.eda("main");
    running.setRate<VornClock>("main.x", 0.25);

    EXPECT_EQ(eda.takeEventTransition(running.transition("main", "a", "a")), EDA::DataEffect);
    EXPECT_EQ(running.value<VornInt>("main.n"), 2);
    EXPECT_EQ(running.rate<VornClock>("main.x"), 0.25);
}

TEST(EDA, ATransitionWithoutEffectsBetweenLikeModesHasNoEffect) {
    ModelWriter model;
    model.implementation("Root.i").mode("a").mode("b").transition("a", "b");
    RunningModel running(model);
    EXPECT_EQ(running.eda("main").takeEventTransition(running.transition("main", "a", "b")), EDA::NoEffect);
    EXPECT_EQ(running.modeOf("main"), "b");
}

TEST(EDA, ModesWithOtherConnectionsOrFlowsReportWhatIsStale) {
    ModelWriter model;
    model.type("Sub").outEvent("e").outData(var("d", Type::Int), 1);
    model.type("Root").outEvent("f");
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i")
        .data(n)
        .subcomponent("sub", "Sub.i")
        .mode("plain")
        .mode("connected")
        .mode("flowing")
        .connectEvent("sub.e", "f", inModes("connected"))
        .flow(n, var("sub.d", Type::Int), inModes("flowing"))
        .transition("plain", "connected")
        .transition("plain", "flowing");
    RunningModel running(model);
    EXPECT_EQ(running.eda("main").takeEventTransition(running.transition("main", "plain", "connected")),
              EDA::EventEffect);
    running.network().reset();
    EXPECT_EQ(running.eda("main").takeEventTransition(running.transition("main", "plain", "flowing")), EDA::DataEffect);
}

TEST(EDA, AComponentWithOnlyPlainAndErrorModesCannotBeBuilt) {
    ModelWriter model;
    model.implementation("Root.i").mode("a", ModeKind::Plain).mode("b", ModeKind::Error);
    try {
        RunningModel running(model);
        FAIL() << "an automaton without an initial mode was built";
    } catch (const eda_model_exception& fault) {
        EXPECT_STREQ(fault.what(),
                     "Error during EDA construction: The model for main does not contain an initial/activation mode");
    }
}

TEST(EDA, TheFirstInitialOrActivationModeByNameIsTheInitialOne) {
    ModelWriter model;
    model.implementation("Root.i").mode("z", ModeKind::Initial).mode("k", ModeKind::Activation);
    RunningModel running(model);
    EXPECT_EQ(running.modeOf("main"), "k");
}

TEST(EDA, EffectsSeeTheModeAndTheRatesOfTheSource) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(var("wasA", Type::Bool))
        .mode("a")
        .mode("b")
        .transition("a", "b", set(var("wasA", Type::Bool), modeOf() == modeLiteral("mode:a")));
    RunningModel running(model);
    running.take("main", "a", "b");
    EXPECT_TRUE(running.value<VornBool>("main.wasA"));
}

TEST(EDA, LaterEffectsSeeEarlierOnes) {
    ModelWriter model;
    const Var m = var("m", Type::Int);
    model.implementation("Root.i").data(n, 1).data(m, 10).mode("a").transition("a", "a", set(n, n + 4), set(m, n * 3));
    RunningModel running(model);
    running.take("main", "a", "a");
    EXPECT_EQ(running.value<VornInt>("main.n"), 5);
    EXPECT_EQ(running.value<VornInt>("main.m"), 15);
}

TEST(EDA, EnteringAModeResetsRatesAndThenAssignsTrajectories) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x)
        .data(y)
        .mode("a", invariant(boolean(true)), rate(y, 2.5))
        .mode("b", invariant(boolean(true)), rate(y, -1.0))
        .transition("a", "b");
    RunningModel running(model);
    EXPECT_EQ(running.rate<VornContinuous>("main.y"), 2.5);
    running.take("main", "a", "b");
    EXPECT_EQ(running.rate<VornContinuous>("main.y"), -1.0);
    EXPECT_EQ(running.rate<VornClock>("main.x"), 1.0);
}

TEST(EDA, TimeAdvancesClocksOfTheModeAndIntegratesTrajectories) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x)
        .data(var("later", Type::Clock), inModes("b"))
        .data(y, 10.0)
        .mode("a", invariant(boolean(true)), rate(y, -2.0))
        .mode("b");
    RunningModel running(model);
    running.eda("main").takeTimedTransition(1.5);
    EXPECT_EQ(running.value<VornClock>("main.x"), 1.5);
    EXPECT_EQ(running.value<VornClock>("main.later"), 0.0);
    EXPECT_EQ(running.value<VornContinuous>("main.y"), 7.0);
}

TEST(EDA, AContinuousVariableWithoutAnEquationStandsStill) {
    ModelWriter model;
    model.implementation("Root.i").data(y, 3.0).mode("a");
    RunningModel running(model);
    running.eda("main").takeTimedTransition(4.0);
    EXPECT_EQ(running.value<VornContinuous>("main.y"), 3.0);
}

TEST(EDA, AModeOfTypeActivationReachedByReactivationKeepsItsData) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i")
        .data(n, 7)
        .mode("start", ModeKind::Activation)
        .mode("work", ModeKind::Plain)
        .transition("start", "work", set(n, 42))
        .reactivation("work", "start");
    RunningModel running(model);
    running.take("main.sub", "start", "work");
    running.take("main", "on", "off");
    running.take("main", "off", "on");
    EXPECT_EQ(running.modeOf("main.sub"), "start");
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 42);
}

TEST(EDA, WithoutReactivationAnActivationModeResetsOnWaking) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i")
        .data(n, 7)
        .data(x, 3.0)
        .mode("start", ModeKind::Activation)
        .mode("work", ModeKind::Plain)
        .transition("start", "work", set(n, 42));
    RunningModel running(model);
    running.take("main.sub", "start", "work");
    running.network().takeTimedTransition(2.0);
    running.take("main", "on", "off");
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 42);
    running.take("main", "off", "on");
    EXPECT_EQ(running.modeOf("main.sub"), "start");
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 7);
    EXPECT_EQ(running.value<VornClock>("main.sub.x"), 3.0);
}

TEST(EDA, AnInitialModeResumesWhereItStopped) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i").data(n, 7).mode("start").mode("work").transition("start", "work", set(n, 42));
    RunningModel running(model);
    running.take("main.sub", "start", "work");
    running.take("main", "on", "off");
    EXPECT_FALSE(running.eda("main.sub").active());
    running.take("main", "off", "on");
    EXPECT_EQ(running.modeOf("main.sub"), "work");
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 42);
}

TEST(EDA, ExactlyOneReactivationTransitionIsTakenAtOnce) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i").data(n).mode("m").mode("woken").reactivation("m", "woken", set(n, n + 1));
    RunningModel running(model);
    running.take("main", "on", "off");
    running.take("main", "off", "on");
    EXPECT_EQ(running.modeOf("main.sub"), "woken");
    EXPECT_EQ(running.value<VornInt>("main.sub.n"), 1);
    EXPECT_FALSE(running.eda("main.sub").reactivating());
    EXPECT_FALSE(running.network().reactivationPending());
}

TEST(EDA, TwoReactivationTransitionsLeaveTheChoiceOpenAndSleepDoesNotClearIt) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i").mode("m").mode("p").mode("q").reactivation("m", "p").reactivation("m", "q");
    RunningModel running(model);
    running.take("main", "on", "off");
    running.take("main", "off", "on");
    EXPECT_TRUE(running.eda("main.sub").reactivating());
    EXPECT_TRUE(running.network().reactivationPending());
    EXPECT_EQ(running.modeOf("main.sub"), "m");
    running.take("main", "on", "off");
    EXPECT_TRUE(running.eda("main.sub").reactivating());
    EXPECT_FALSE(running.network().reactivationPending());
}

TEST(EDA, AResetDoesNotOverwriteTheModeSlotWithADefault) {
    ModelWriter model;
    model.implementation("Root.i").mode("a").mode("b").transition("a", "b");
    RunningModel running(model);
    running.take("main", "a", "b");
    EXPECT_EQ(running.value<VornModeVal>("main.mode"), running.mode("main", "b"));
    running.eda("main").setInitial();
    EXPECT_EQ(running.value<VornModeVal>("main.mode"), running.mode("main", "a"));
}

TEST(EDA, ADeclaredVariableNamedModeIsAnOrdinaryVariable) {
    ModelWriter model;
    model.implementation("Root.i").data(var("mode", Type::Int), 5).mode("a").mode("b").transition("a", "b");
    RunningModel running(model);
    running.take("main", "a", "b");
    EXPECT_EQ(running.modeOf("main"), "b");
    EXPECT_EQ(running.value<VornInt>("main.mode"), 5);
}

TEST(EDA, ADefaultThatIsNotDeclaredIsThatOfTheType) {
    ModelWriter model;
    model.implementation("Root.i").data(n).mode("a").transition("a", "a", set(n, 9));
    RunningModel running(model);
    running.take("main", "a", "a");
    running.eda("main").setInitial();
    EXPECT_EQ(running.value<VornInt>("main.n"), 0);
}

TEST(EDA, ASubcomponentOfASleepingParentIsNeverActiveWhateverItsModeListSays) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i").mode("m").subcomponent("leaf", "Leaf.i");
    model.implementation("Leaf.i").mode("m");
    RunningModel running(model);
    EXPECT_TRUE(running.eda("main.sub.leaf").active());
    running.take("main", "on", "off");
    EXPECT_FALSE(running.eda("main.sub").active());
    EXPECT_FALSE(running.eda("main.sub.leaf").active());
    running.take("main", "off", "on");
    EXPECT_TRUE(running.eda("main.sub.leaf").active());
}

TEST(EDA, ActivationIsLoggedInOrder) {
    ModelWriter model;
    addSwitchedRoot(model);
    model.implementation("Sub.i").mode("m").subcomponent("leaf", "Leaf.i");
    model.implementation("Leaf.i").mode("m");
    RunningModel running(model);
    CapturedLog log(LogLevel::Trace);
    running.take("main", "on", "off");
    EXPECT_THAT(log.texts("root.eda.comp"), ElementsAre("main.sub is now inactive", "main.sub.leaf is set inactive"));
    log.clear();
    running.take("main", "off", "on");
    EXPECT_THAT(log.texts("root.eda.comp"), ElementsAre("EDA activation: Noop", "EDA activation: Noop",
                                                        "main.sub.leaf is now active", "main.sub is now active"));
}

TEST(EDA, AGuardAndTheTargetInvariantAfterTheEffectsDecideTogether) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x, 8.0)
        .mode("a")
        .mode("b", invariant(x <= 5.0))
        .transition("a", "b")
        .transition("a", "b", set(x, 0.0))
        .transition("a", "b", when(x < 3.0), set(x, 0.0));
    RunningModel running(model);
    EDA& eda = running.eda("main");
    EXPECT_FALSE(eda.canLocallyTakeEventTransition(running.transition("main", "a", "b", 0)));
    EXPECT_TRUE(eda.canLocallyTakeEventTransition(running.transition("main", "a", "b", 1)));
    EXPECT_FALSE(eda.canLocallyTakeEventTransition(running.transition("main", "a", "b", 2)));
    EXPECT_EQ(running.value<VornClock>("main.x"), 8.0) << "the effects were only tried";
}

TEST(EDA, ADelayIsCountedInTheSourceModeAndAWrittenClockStandsStillAfterwards) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x)
        .mode("a")
        .mode("b", invariant(x <= 5.0))
        .transition("a", "b", when(x >= 2.0))
        .transition("a", "b", when(x >= 2.0), set(x, 1.0));
    RunningModel running(model);
    EDA& eda = running.eda("main");
    // Without a write the target's invariant ends when the clock passes 5.
    EXPECT_EQ(printed(eda.transitionRemainsValidFor(running.transition("main", "a", "b", 0))), "[2, 5]");
    // A written clock counts as standing still, so its invariant never ends.
    EXPECT_EQ(printed(eda.transitionRemainsValidFor(running.transition("main", "a", "b", 1))), "[2, INFTY]");
    // On entering the mode the clock runs again.
    running.take("main", "a", "b", 1);
    EXPECT_EQ(printed(eda.invariantsRemainValidFor()), "[0, 4]");
}

TEST(EDA, AnalysisAndTheRealStepDifferForATransitionThatWritesAClockTwice) {
    ModelWriter model;
    model.implementation("Root.i")
        .data(x)
        .mode("a")
        .mode("b", invariant(x <= 5.0))
        .transition("a", "b", set(x, 9.0), set(x, 1.0));
    RunningModel running(model);
    EDA& eda = running.eda("main");
    const TransitionPtr transition = running.transition("main", "a", "b");
    // A tried write stands: the first value of a slot in a layer wins, and 9 breaks the invariant.
    EXPECT_FALSE(eda.canLocallyTakeEventTransition(transition));
    EXPECT_EQ(printed(eda.transitionRemainsValidFor(transition)), "[-]");
    // The real step keeps the last.
    eda.takeEventTransition(transition);
    EXPECT_EQ(running.value<VornClock>("main.x"), 1.0);
    EXPECT_TRUE(eda.currentMode()->invariantHolds());
}

TEST(EDA, TriggersOnSubcomponentsPortsAreListedOncePerTransition) {
    ModelWriter model;
    model.type("Sub").inEvent("go");
    model.implementation("Sub.i").mode("m");
    model.implementation("Root.i")
        .subcomponent("sub", "Sub.i")
        .mode("a")
        .transition("a", "a", on("sub.go"))
        .transition("a", "a")
        .transition("a", "a", on("sub.go"));
    RunningModel running(model);
    EXPECT_THAT(running.eda("main").activeSubcomponentTriggers(),
                ElementsAre(running.port("main.sub.go"), running.port("main.sub.go")));
}

TEST(EDA, PrintsItsWholeState) {
    ModelWriter model;
    model.type("Root").outData(var("o", Type::Int), 4).inData(var("i", Type::Bool));
    model.implementation("Root.i").data(n, 2).data(x, 1.5).data(y, 3.0).mode("a", invariant(x <= 5.0), rate(y, 0.5));
    RunningModel running(model);
    EXPECT_EQ(printed(running.eda("main")),
              "main\n"
              "  active:           Yes\n"
              "  mode:             a\n"
              "  invariant:        [0, 3.5]: x{=1.5:clock} <= 5\n"
              "  trajectories:\n"
              "                    y{=3:continuous}' = 0.5\n"
              "\n"
              "  trajectory data: x' = 1, y' = 0.5, \n"
              "  val:             n = 2, x = 1.5, y = 3, i <- 0, o -> 4");
}

TEST(EDA, PrintsTrueForNoInvariant) {
    ModelWriter model;
    model.implementation("Root.i").mode("a");
    RunningModel running(model);
    EXPECT_EQ(printed(running.eda("main")),
              "main\n"
              "  active:           Yes\n"
              "  mode:             a\n"
              "  invariant:        [0, INFTY]: true\n"
              "  trajectories:\n"
              "\n"
              "  trajectory data: \n"
              "  val:             ");
}

}  // namespace
}  // namespace vornrun
