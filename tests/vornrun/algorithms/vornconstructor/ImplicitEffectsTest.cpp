// The effects that VornModelConstructor adds to transitions: for flows that end, and for data that starts to exist.

#include <gtest/gtest.h>

#include "tests/vornrun/algorithms/vornconstructor/RealisedModel.h"

namespace vornrun::test {
namespace {

using namespace direct;

class EndingFlow : public testing::Test {
  protected:
    SyntaxModel model;

    /// A component with the modes A and B whose out ports are driven in A only.
    ComponentDraft draft() {
        ComponentDraft result;
        result.mode("A", VornModeType::initial).mode("B").mode("C");
        result.dataPort<VornInt>("set", PortDirection::out, constant<VornInt>(5));
        result.dataPort<VornInt>("unset", PortDirection::out);
        result.dataPort<VornModeVal>("where", PortDirection::out);
        result.dataPort<VornInt>("inPort", PortDirection::in, constant<VornInt>(6));
        result.flow(var<VornInt>("set"), constant<VornInt>(1), {"A", "C"});
        result.flow(var<VornInt>("unset"), constant<VornInt>(1), {"A"});
        result.flow(var<VornModeVal>("where"), var<VornModeVal>("mode"), {"A"});
        result.flow(var<VornInt>("inPort"), constant<VornInt>(1), {"A"});
        return result;
    }
};

TEST_F(EndingFlow, ResetsThePortToItsDefaultOrItsTypesInTheOrderOfPorts) {
    const Realised realised(model.component("T", draft().transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "set{=5:int} := 5;unset{=0:int} := 0;where{=(null):mode} := (null);");
    EXPECT_TRUE(realised.transition(0).effects()[0]->refsInAssignment().empty());
    realised.valuation->setValue<VornInt>(realised.root->valueRef(realised.part("set")), 77);
    realised.transition(0).effects()[0]->applyAssignment();
    EXPECT_EQ(realised.value<VornInt>("set"), 5);
}

TEST_F(EndingFlow, IsNoneWhereAFlowOfTheTargetGoesOnDrivingThePort) {
    const Realised realised(model.component("T", draft().transition("A", "C")));
    EXPECT_EQ(realised.effects(0), "unset{=0:int} := 0;where{=(null):mode} := (null);");
}

TEST_F(EndingFlow, IsNoneForAPortThatTheTransitionWritesItself) {
    const Realised realised(
        model.component("T", draft().transition("A", "B", "", nullptr,
                                                {assign(var<VornInt>("set"), constant<VornInt>(9)),
                                                 assign(var<VornModeVal>("where"), var<VornModeVal>("mode"))})));
    EXPECT_EQ(realised.effects(0), "set{=5:int} := 9;where{=(null):mode} := mode{=(null):mode};unset{=0:int} := 0;");
}

TEST_F(EndingFlow, IsNoneWhereTheModeStaysOrTheFlowBegins) {
    const Realised realised(
        model.component("T", draft().transition("A", "A").transition("B", "A").transition("B", "B")));
    for (std::size_t position : {0u, 1u, 2u}) EXPECT_EQ(realised.effects(position), "") << position;
}

TEST_F(EndingFlow, ADataConnectionEndsLikeAFlow) {
    const Realised realised(
        model.component("T", ComponentDraft()
                                 .mode("A", VornModeType::initial)
                                 .mode("B")
                                 .dataPort<VornInt>("from", PortDirection::in)
                                 .dataPort<VornReal>("to", PortDirection::out, constant<VornReal>(2.5))
                                 .connectData("from", "to", {"A"})
                                 .transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "to{=2.5:real} := 2.5;");
}

TEST_F(EndingFlow, LeavesThePortsOfSubcomponentsAlone) {
    const auto& sub = model.component(
        "Sub", ComponentDraft().mode("m", VornModeType::initial).dataPort<VornInt>("in", PortDirection::in));
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .subcomponent("sub", sub)
                                                     .flow(var<VornInt>("sub.in"), constant<VornInt>(1), {"A"})
                                                     .transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "");
}

class ArisingData : public testing::Test {
  protected:
    SyntaxModel model;

    ComponentDraft draft() {
        ComponentDraft result;
        result.mode("A", VornModeType::initial).mode("B");
        result.data<VornInt>("always", constant<VornInt>(1));
        result.data<VornInt>("n", constant<VornInt>(4), {"B"});
        result.data<VornBool>("bare", nullptr, {"B"});
        result.data<VornInt>("both", constant<VornInt>(3), {"A", "B"});
        return result;
    }
};

TEST_F(ArisingData, StartsFromItsDefaultOrItsTypes) {
    const Realised realised(model.component("T", draft().transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "bare{=0:bool} := 0;n{=4:int} := 4;");
    realised.valuation->setValue<VornInt>(realised.root->valueRef(realised.part("n")), 77);
    for (const auto& effect : realised.transition(0).effects()) effect->applyAssignment();
    EXPECT_EQ(realised.value<VornInt>("n"), 4);
}

TEST_F(ArisingData, OnTheWayBackItsValueStaysInTheSlot) {
    const Realised realised(model.component("T", draft().transition("B", "A")));
    EXPECT_EQ(realised.effects(0), "");
}

TEST_F(ArisingData, IsLeftToTheTransitionThatWritesItItself) {
    const Realised realised(model.component(
        "T", draft().transition("A", "B", "", nullptr, {assign(var<VornInt>("n"), constant<VornInt>(8))})));
    EXPECT_EQ(realised.effects(0), "n{=4:int} := 8;bare{=0:bool} := 0;");
}

TEST_F(ArisingData, AnImplicitEffectOnAClockTouchesContinuous) {
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .data<VornClock>("t", nullptr, {"B"})
                                                     .transition("A", "B")
                                                     .transition("B", "A")));
    EXPECT_TRUE(realised.transition(0).touchesContinuous());
    EXPECT_FALSE(realised.transition(1).touchesContinuous());
}

TEST_F(ArisingData, AReactivationHasTheWrittenEffectsOnly) {
    const Realised realised(
        model.component("T", draft()
                                 .dataPort<VornInt>("out", PortDirection::out, constant<VornInt>(5))
                                 .flow(var<VornInt>("out"), constant<VornInt>(1), {"A"})
                                 .reactivation("A", "B", {assign(var<VornInt>("always"), constant<VornInt>(2))})));
    const auto& reactivations = realised.root->reactivationTransitions();
    ASSERT_EQ(reactivations.size(), 1u);
    EXPECT_EQ(printed(*reactivations[0]), "(A)-[(@activation)[6] then always{=1:int} := 2]->1 (B)");
    EXPECT_EQ(reactivations[0]->guard(), nullptr);
    EXPECT_EQ(reactivations[0]->trigger()->direction(), PortDirection::in);
    EXPECT_FALSE(reactivations[0]->trigger()->nonblocking());
    EXPECT_EQ(reactivations[0]->trigger()->realises()->id(), 4294967293u);
}
}  // namespace
}  // namespace vornrun::test
