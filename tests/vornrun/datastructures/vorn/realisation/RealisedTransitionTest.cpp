#include "vornrun/datastructures/vorn/realisation/RealisedTransition.h"

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun::test {
namespace {

class RealisedTransitionTest : public RealisationFixture {
  protected:
    const RealisedEventPort* own = eventPort(*root, 1, "own", PortDirection::in);
    std::unique_ptr<VornComponentRealisation> sub = component(1, "sub");
    const RealisedEventPort* below = eventPort(*sub, 2, "below", PortDirection::out);

    template <class T>
    std::unique_ptr<RealisedAssignment> effectOn(const std::string& name) {
        return std::make_unique<TypedRealisedAssignment<T, VornInt>>(variable<T>(name, 0), constant<VornInt>(1),
                                                                     std::vector<RealisedVariable*>(), valuation);
    }
    template <class... T>
    RealisedTransition::Effects effectsOn() {
        RealisedTransition::Effects effects;
        (effects.push_back(effectOn<T>("v")), ...);
        return effects;
    }
};

TEST_F(RealisedTransitionTest, TouchesContinuousWhenAnEffectWritesAClockOrAContinuousVariable) {
    EXPECT_FALSE(transition(0, a, b, own)->touchesContinuous());
    EXPECT_FALSE(transition(0, a, b, own, effectsOn<VornInt, VornReal, VornInterval>())->touchesContinuous());
    EXPECT_TRUE(transition(0, a, b, own, effectsOn<VornInt, VornClock>())->touchesContinuous());
    EXPECT_TRUE(transition(0, a, b, own, effectsOn<VornContinuous, VornInt>())->touchesContinuous());
}

TEST_F(RealisedTransitionTest, ATriggerOfTheOwnPortIsNoDirectCommunication) {
    EXPECT_FALSE(transition(0, a, b, own)->hasDirectCommunicationTrigger());
}

TEST_F(RealisedTransitionTest, AnImplicitTauPortIsNoDirectCommunication) {
    auto* tau = new RealisedEventPort(9, root.get(), new VornEventPort(TAU_PORT_ID, "tau", PortDirection::out, true));
    root->attachEventPort(tau);
    EXPECT_FALSE(transition(0, a, b, tau)->hasDirectCommunicationTrigger());
}

TEST_F(RealisedTransitionTest, ATriggerOfASubcomponentsPortIsDirectCommunication) {
    EXPECT_TRUE(transition(0, a, b, below)->hasDirectCommunicationTrigger());
}

TEST_F(RealisedTransitionTest, IsTriggeredByItsOwnPortAlone) {
    const auto subject = transition(0, a, b, own);
    EXPECT_TRUE(subject->isTriggeredBy(own));
    EXPECT_FALSE(subject->isTriggeredBy(below));
    EXPECT_FALSE(subject->isTriggeredBy(nullptr));
}

TEST_F(RealisedTransitionTest, WithoutAGuardIsOpenNowAndForAllDelays) {
    const auto subject = transition(0, a, b, own);
    EXPECT_TRUE(subject->guardHolds());
    EXPECT_EQ(subject->guardHoldsWhile().ranges, (TimeRanges(std::vector<TimeRange>{{0.0, TimeInterval::INF_TIME}})));
    EXPECT_EQ(subject->guardHoldsWhile().length, TimeInterval::INF_TIME);
}

TEST_F(RealisedTransitionTest, AsksItsGuardWhenItHasOne) {
    const auto shut = transition(0, a, b, own, {}, plainly(constant<VornBool>(false)));
    EXPECT_FALSE(shut->guardHolds());
    EXPECT_TRUE(shut->guardHoldsWhile().empty());
    const auto open = transition(0, a, b, own, {}, plainly(constant<VornBool>(true)));
    EXPECT_TRUE(open->guardHolds());
    EXPECT_EQ(open->guardHoldsWhile().ranges, (TimeRanges(std::vector<TimeRange>{{0.0, TimeInterval::INF_TIME}})));
}

TEST_F(RealisedTransitionTest, PrintsTheSourceByNameAndTheTargetByIdAndName) {
    EXPECT_EQ(printed(*transition(0, a, b, own)), "(a)-[(own)[1]]->11 (b)");
    EXPECT_EQ(printed(*transition(0, a, b, own, {}, plainly(constant<VornBool>(true)))),
              "(a)-[(own)[1] when 1]->11 (b)");
    EXPECT_EQ(printed(*transition(0, c, a, own, effectsOn<VornInt, VornClock>(), plainly(constant<VornBool>(false)))),
              "(c)-[(own)[1] when 0 then v{=0:int} := 1; v{=0:clock} := 1]->10 (a)");
}

TEST_F(RealisedTransitionTest, AMissingEffectIsRefusedWithComponentAndTransition) {
    RealisedTransition::Effects effects = effectsOn<VornInt>();
    effects.push_back(nullptr);
    try {
        transition(0, a, b, own, std::move(effects), plainly(constant<VornBool>(true)));
        FAIL() << "a transition cannot have an effect that is none";
    } catch (const model_exception& fault) {
        EXPECT_STREQ(
            fault.what(),
            "Component root: an effect of transition \"a-[ ]->b; -- 1\" has no value of a type that its target "
            "can take");
    }
}

}  // namespace
}  // namespace vornrun::test
