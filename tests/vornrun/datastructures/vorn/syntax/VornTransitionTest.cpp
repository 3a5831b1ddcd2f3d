#include "vornrun/datastructures/vorn/syntax/VornTransition.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"

namespace vornrun::test {
namespace {

VornLinearExpression* makeGuard() { return new VornLinearExpression(new TypedVornVariable<VornBool>("ready"), {}); }

VornAssignment* makeEffect(const std::string& variable, long value) {
    return new VornAssignment(new TypedVornVariable<VornInt>(variable), new TypedVornValue<VornInt>(value));
}

TEST(VornTransition, WithoutATriggerHasNone) {
    const VornTransition transition(0, "a", "b", nullptr, nullptr, {});
    EXPECT_FALSE(transition.hasTrigger("go"));
    EXPECT_FALSE(transition.hasTrigger(""));
    EXPECT_FALSE(transition.hasTrigger("reset"));
}

TEST(VornTransition, ComparesTheTriggersNameWithoutItsSubcomponent) {
    const VornTransition transition(0, "a", "b", new VornTransitionTrigger("sub.go"), nullptr, {});
    EXPECT_TRUE(transition.hasTrigger("go"));
    EXPECT_FALSE(transition.hasTrigger("sub.go"));
    EXPECT_FALSE(transition.hasTrigger("sub"));
}

TEST(VornTransition, PrintsNoBlankForAMissingTrigger) {
    EXPECT_EQ(printed(VornTransition(3, "a", "b", nullptr, nullptr, {})), "a-[ ]->b; -- 3");
}

TEST(VornTransition, PrintsABlankBehindTheTrigger) {
    EXPECT_EQ(printed(VornTransition(4, "a", "b", new VornTransitionTrigger("sub.go"), nullptr, {})),
              "a-[ sub.go ]->b; -- 4");
}

TEST(VornTransition, PrintsGuardAndEffects) {
    EXPECT_EQ(printed(VornTransition(5, "a", "b", nullptr, makeGuard(), {})), "a-[  when ready]->b; -- 5");
    EXPECT_EQ(printed(VornTransition(6, "a", "b", nullptr, nullptr, {makeEffect("x", 1)})),
              "a-[  then x :=  1]->b; -- 6");
    EXPECT_EQ(printed(VornTransition(7, "a", "b", new VornTransitionTrigger("go"), makeGuard(),
                                     {makeEffect("x", 1), makeEffect("y", 2)})),
              "a-[ go  when ready then x :=  1; y :=  2]->b; -- 7");
}

TEST(VornTransitionTrigger, OfAResetIsNamedReset) {
    const std::unique_ptr<VornTransitionTrigger> trigger(VornTransitionTrigger::ResetTrigger());
    EXPECT_EQ(trigger->name(), "reset");
    EXPECT_FALSE(trigger->isSub());
}

}  // namespace
}  // namespace vornrun::test
