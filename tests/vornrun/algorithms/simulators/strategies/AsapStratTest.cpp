#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/DrivenModel.h"
#include "tests/vornrun/algorithms/simulators/strategies/StrategyTesting.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

/// One component with a transition behind the guard, an invariant of its only mode and a stochastic event.
ModelWriter guarded(const Expr& guard, const Expr& bound) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i")
        .data(x)
        .mode("busy", invariant(bound))
        .mode("done")
        .mode("dead", ModeKind::Error)
        .transition("busy", "done", when(guard))
        .transition("busy", "dead", on("fail"));
    return model;
}

/// Two jobs without stochastic events, done after the given delays.
ModelWriter twoJobs(double first, double second) {
    ModelWriter model;
    for (const auto& [name, delay] : {std::pair("First.i", first), std::pair("Second.i", second)})
        model.implementation(name).data(x).mode("busy").mode("done").transition("busy", "done", when(x >= delay));
    model.implementation("Plant.i").subcomponent("a", "First.i").subcomponent("b", "Second.i");
    return model;
}

}  // namespace

TEST(AsapStrat, TellsItsNameAndClonesItself) {
    const AsapStrat strategy;
    EXPECT_EQ(strategy.name(), "AsapStrat");
    const std::unique_ptr<SimulationStrategy> copy(strategy.clone());
    EXPECT_EQ(copy->name(), "AsapStrat");
}

TEST(AsapStrat, AnEnabledTransitionWinsAgainstASampleOfZero) {
    DrivenModel driven(guarded(x >= 0.0, x <= 9.0), AsapStrat());
    driven.script({exponentialDraw(0.0), integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "0: main: busy -> done");
}

TEST(AsapStrat, ATransitionThatIsEnabledNowIsADiscreteStep) {
    DrivenModel driven(guarded(x >= 0.0, x <= 9.0), AsapStrat());
    driven.script({exponentialDraw(3.0), integerDraw(0), integerDraw(0)});
    const std::unique_ptr<SimulationStep> step(driven.strategy().executeStep());
    EXPECT_NE(dynamic_cast<DiscreteSimulationStep*>(step.get()), nullptr);
    EXPECT_EQ(dynamic_cast<TimeSimulationStep*>(step.get()), nullptr);
}

TEST(AsapStrat, WaitsForTheEarliestTransition) {
    DrivenModel driven(guarded(x >= 2.0, x <= 9.0), AsapStrat());
    driven.script({exponentialDraw(3.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "2: main: busy -> done");
    EXPECT_EQ(driven.data(), "x = 2");
}

TEST(AsapStrat, ATieWithTheSampleIsTheTransitions) {
    DrivenModel driven(guarded(x >= 2.0, x <= 9.0), AsapStrat());
    driven.script({exponentialDraw(2.0), integerDraw(0), integerDraw(0)});
    EXPECT_EQ(driven.step(), "2: main: busy -> done");
}

TEST(AsapStrat, AnEarlierSampleFires) {
    DrivenModel driven(guarded(x >= 2.0, x <= 9.0), AsapStrat());
    driven.script({exponentialDraw(1.5), integerDraw(0)});
    EXPECT_EQ(driven.step(), "1.5: main: busy -> dead");
}

TEST(AsapStrat, ATransitionBehindTheInvariantsIsAnActionLockWithABlank) {
    DrivenModel driven(guarded(x >= 5.0, x <= 3.0), AsapStrat());
    driven.script({exponentialDraw(8.0)});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Action lock");
    EXPECT_EQ(driven.data(), "x = 0");
}

TEST(AsapStrat, ATransitionAHairBehindTheInvariantsIsTaken) {
    DrivenModel driven(guarded(x >= 3.0000005, x <= 3.0), AsapStrat());
    driven.script({exponentialDraw(8.0), integerDraw(0), integerDraw(0)});
    const std::unique_ptr<SimulationStep> step(driven.strategy().executeStep());
    EXPECT_EQ(step->time(), 3.0000005);
    EXPECT_EQ(driven.mode(), "done");
}

TEST(AsapStrat, OnlyStochasticTransitionsWithoutASampleAreADeadlock) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i").transition("main", "main", on("fail"));
    DrivenModel driven(model, AsapStrat());
    driven.script({exponentialDraw(std::numeric_limits<double>::infinity())});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Deadlock");
}

TEST(AsapStrat, ATransitionThatIsNeverEnabledIsADeadlock) {
    ModelWriter model;
    model.implementation("Job.i").data(x).transition("main", "main", when(x <= -1.0));
    DrivenModel driven(model, AsapStrat());
    driven.script({});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Deadlock");
}

TEST(AsapStrat, TransitionsThatAreEnabledAtTheSameDelayAreEquallyLikely) {
    for (const unsigned long choice : {0UL, 1UL}) {
        DrivenModel driven(twoJobs(2.0, 2.0), AsapStrat());
        driven.script({integerDraw(choice, 0, 1), integerDraw(0, 0, 0)});
        EXPECT_EQ(driven.step(), choice == 0 ? "2: main.a: busy -> done" : "2: main.b: busy -> done");
    }
}

TEST(AsapStrat, DelaysAreComparedExactly) {
    DrivenModel driven(twoJobs(2.0, 2.0000001), AsapStrat());
    driven.script({integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(driven.step(), "2: main.a: busy -> done");
    DrivenModel reversed(twoJobs(2.0000001, 2.0), AsapStrat());
    reversed.script({integerDraw(0, 0, 0), integerDraw(0, 0, 0)});
    EXPECT_EQ(reversed.step(), "2: main.b: busy -> done") << "the earlier one replaces the first candidate";
}

TEST(AsapStrat, WithoutActiveTransitionsItIsADeadlockWhenNoTimeCanPass) {
    for (const double bound : {0.0, -1.0}) {
        ModelWriter model;
        model.implementation("Job.i").data(x).mode("stuck", invariant(x <= bound));
        DrivenModel driven(model, AsapStrat());
        driven.script({});
        EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Deadlock") << "invariant x <= " << bound;
    }
}

TEST(AsapStrat, WithoutActiveTransitionsItIsAnActionlockWhenTimeCanPass) {
    ModelWriter model;
    model.implementation("Job.i").data(x).mode("stuck", invariant(x <= 3.0));
    DrivenModel driven(model, AsapStrat());
    driven.script({});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: Actionlock");
}

TEST(AsapStrat, AFailedSynchronisationFailsAfterTimeHasPassed) {
    // Guard and target invariant hold within 1e-5 of each other: the analysis takes them for touching, the guard itself
    // has run out by then.
    ModelWriter model;
    model.implementation("Job.i")
        .data(x)
        .mode("busy")
        .mode("done", invariant(x >= 1.000005))
        .transition("busy", "done", when(x <= 1.0));
    DrivenModel driven(model, AsapStrat());
    driven.script({integerDraw(0, 0, 0)});
    EXPECT_DEADLOCK(driven.step(), "No possible simulation step found: ASAP fail");
    EXPECT_EQ(driven.data(), "x = 1.00001");
}

TEST(AsapStrat, ListenersTakePartWithADrawEach) {
    ModelWriter model;
    model.type("Ear").inEvent("go");
    model.implementation("Ear.i")
        .mode("a")
        .mode("b")
        .mode("c")
        .transition("a", "b", on("go"))
        .transition("a", "c", on("go"));
    model.type("Plant").outEvent("go");
    model.implementation("Plant.i")
        .data(x)
        .mode("idle")
        .mode("busy")
        .transition("idle", "busy", on("go"), when(x >= 1.5))
        .subcomponent("ear", "Ear.i")
        .connectEvent("go", "ear.go");
    DrivenModel driven(model, AsapStrat());
    driven.script({integerDraw(0, 0, 0), integerDraw(0, 0, 0), integerDraw(1, 0, 1)});
    EXPECT_EQ(driven.step(), "1.5: main: idle -> busy, main.ear: a -> c");
}

}  // namespace vornrun::test
