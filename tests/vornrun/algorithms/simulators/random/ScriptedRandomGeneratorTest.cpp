#include "tests/support/ScriptedRandomGenerator.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace vornrun::test {
namespace {

using testing::ElementsAre;

TEST(ScriptedRandomGenerator, HandsOutItsDrawsInOrder) {
    ScriptedRandomGenerator random(
        {realDraw(0.25), exponentialDraw(3.5, 2.0), integerDraw(4, 0, 9), realDraw(7, 5, 8)});
    EXPECT_EQ(random.uniform(0.0, 1.0), 0.25);
    EXPECT_EQ(random.exponential(2.0), 3.5);
    EXPECT_EQ(random.uniform(0UL, 9UL), 4u);
    EXPECT_EQ(random.remaining(), 1u);
    EXPECT_EQ(random.uniform(5.0, 8.0), 7.0);
}

TEST(ScriptedRandomGenerator, SharesItsScriptWithClones) {
    const auto random = std::make_unique<ScriptedRandomGenerator>(std::vector{realDraw(1), realDraw(2), realDraw(3)});
    const std::unique_ptr<ScriptedRandomGenerator> clone(random->clone());
    EXPECT_EQ(random->uniform(0.0, 9.0), 1.0);
    EXPECT_EQ(clone->uniform(0.0, 9.0), 2.0);
    clone->reseed(0);
    random->reseed(17);
    EXPECT_EQ(random->uniform(0.0, 9.0), 3.0);
    EXPECT_THAT(random->reseeds(), ElementsAre(0u, 17u));
}

void drawTwiceFromOne() {
    ScriptedRandomGenerator random({realDraw(1)});
    random.uniform(0.0, 1.0);
    EXPECT_THROW(random.uniform(0.0, 1.0), std::logic_error);
}

TEST(ScriptedRandomGenerator, FailsOnAMissingDraw) {
    EXPECT_NONFATAL_FAILURE(drawTwiceFromOne(), "no draw is left for the real number that is asked for");
}

void drawAnotherKind() {
    ScriptedRandomGenerator random({realDraw(1)});
    EXPECT_THROW(random.exponential(1.0), std::logic_error);
    random.uniform(0.0, 1.0);
}

TEST(ScriptedRandomGenerator, FailsOnADrawOfAnotherKind) {
    EXPECT_NONFATAL_FAILURE(drawAnotherKind(), "draw 1 is not the exponential sample that is asked for");
}

TEST(ScriptedRandomGenerator, FailsOnAnUnusedDraw) {
    EXPECT_NONFATAL_FAILURE(ScriptedRandomGenerator({integerDraw(1)}), "scripted draws were left over");
}

TEST(ScriptedRandomGenerator, FailsOnOtherArgumentsThanExpected) {
    EXPECT_NONFATAL_FAILURE(ScriptedRandomGenerator({realDraw(1, 0, 2)}).uniform(0.0, 1.0), "bounds of a real draw");
    EXPECT_NONFATAL_FAILURE(ScriptedRandomGenerator({exponentialDraw(1, 0.5)}).exponential(2.0),
                            "rate of an exponential draw");
    EXPECT_NONFATAL_FAILURE(ScriptedRandomGenerator({integerDraw(1, 0, 2)}).uniform(1UL, 2UL),
                            "bounds of an integer draw");
}

}  // namespace
}  // namespace vornrun::test
