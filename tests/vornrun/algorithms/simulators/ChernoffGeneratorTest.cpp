#include "vornrun/algorithms/simulators/ChernoffGenerator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace vornrun {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void addResults(SimulationGenerator& generator, unsigned int positive, unsigned int negative) {
    for (unsigned int i = 0; i < positive; ++i) generator.addResult(true);
    for (unsigned int i = 0; i < negative; ++i) generator.addResult(false);
}

struct SampleSize {
    const char* name;
    double errorBound;
    double confidence;
    std::uint32_t total;
};

class ChernoffSampleSize : public testing::TestWithParam<SampleSize> {};

TEST_P(ChernoffSampleSize, IsTheLowWordOfTheTruncatedBound) {
    EXPECT_EQ(ChernoffGenerator(GetParam().errorBound, GetParam().confidence).total(), GetParam().total);
}

INSTANTIATE_TEST_SUITE_P(
    , ChernoffSampleSize,
    testing::Values(SampleSize{"TheDefaultsAskFor1191", 0.05, 0.95, 1191},          // 4 ln(2 / 0.95) / 0.0025 = 1191.1
                    SampleSize{"ASmallerConfidenceAsksForMore", 0.05, 0.05, 5902},  // 4 ln 40 / 0.0025 = 5902.2
                    SampleSize{"ASmallerErrorBoundAsksForMore", 0.01, 0.95,
                               29777},  // 4 ln(2 / 0.95) / 0.0001 = 29777.6
                    SampleSize{"ANegativeErrorBoundIsSquared", -0.05, 0.95, 1191},
                    SampleSize{"AConfidenceOfTwoAsksForNone", 0.05, 2.0, 0},
                    // 4 ln(1/2) / 0.01 = -277.2, truncated towards zero to -277; low 32 bits of that
                    SampleSize{"AConfidenceAboveTwoWraps", 0.1, 4.0, 4294967019U},
                    // 4 ln 2 / 1e-10 = 27725887222.3 = 6 * 2^32 + 1956083446.3
                    SampleSize{"OnlyTheLowWordOfALargeBoundStays", 1e-5, 1.0, 1956083446U},
                    SampleSize{"AnErrorBoundOfZeroLeavesNoInteger", 0.0, 0.95, 0},
                    SampleSize{"ABoundBeyond64BitsLeavesNoInteger", 1e-150, 0.95, 0},
                    SampleSize{"ANegativeBoundBeyond64BitsLeavesNoInteger", 1e-150, 4.0, 0},
                    SampleSize{"AConfidenceOfZeroLeavesNoInteger", 0.05, 0.0, 0},
                    SampleSize{"AnInfiniteConfidenceLeavesNoInteger", 0.05, kInfinity, 0},
                    SampleSize{"ANegativeConfidenceLeavesNoInteger", 0.05, -1.0, 0},
                    SampleSize{"AConfidenceThatIsNoNumberLeavesNoInteger", 0.05, kNaN, 0},
                    SampleSize{"AnErrorBoundThatIsNoNumberLeavesNoInteger", kNaN, 0.95, 0},
                    SampleSize{"AnInfiniteErrorBoundAsksForNone", kInfinity, 0.95, 0}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(ChernoffGenerator, IsDoneWithTheComputedCountAndNotBefore) {
    ChernoffGenerator generator(0.05, 0.95);
    addResults(generator, 1000, 190);
    EXPECT_FALSE(generator.done());
    generator.addResult(false);
    EXPECT_TRUE(generator.done());
}

TEST(ChernoffGenerator, WithoutResultsTheIntervalIsFull) {
    EXPECT_EQ(ChernoffGenerator(0.05, 0.95).getRatio(), std::make_pair(0.0, 1.0));
}

TEST(ChernoffGenerator, IsCappedAtOneWhenAllResultsArePositive) {
    ChernoffGenerator generator(0.05, 0.95);
    addResults(generator, 100, 0);
    EXPECT_EQ(generator.getRatio(), std::make_pair(1.0 - 0.05, 1.0));
}

TEST(ChernoffGenerator, IsCappedAtZeroWhenNoResultIsPositive) {
    ChernoffGenerator generator(0.05, 0.95);
    addResults(generator, 0, 100);
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.0, 0.05));
}

TEST(ChernoffGenerator, IsTheRatioLessAndPlusTheErrorBoundInBetween) {
    ChernoffGenerator generator(0.125, 0.95);
    addResults(generator, 5, 5);
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.375, 0.625));
}

TEST(ChernoffGenerator, TouchesTheEndsOfTheUnitIntervalWithoutLeavingThem) {
    ChernoffGenerator generator(0.5, 0.95);
    addResults(generator, 1, 1);
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.0, 1.0));
}

TEST(ChernoffGenerator, WithAnErrorBoundThatIsNoNumberTheIntervalIsFull) {
    ChernoffGenerator generator(kNaN, 0.95);
    addResults(generator, 1, 1);
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.0, 1.0));
}

TEST(ChernoffGenerator, ResetForgetsTheResultsAndKeepsTheCount) {
    ChernoffGenerator generator(0.5, 0.95);  // 4 ln(2 / 0.95) / 0.25 = 11.9
    addResults(generator, 11, 0);
    EXPECT_TRUE(generator.done());
    generator.reset();
    EXPECT_FALSE(generator.done());
    EXPECT_EQ(generator.getRatio(), std::make_pair(0.0, 1.0));
    EXPECT_EQ(generator.total(), 11U);
}

TEST(ChernoffGenerator, KeepsCountingWhenItServesASecondProperty) {
    ChernoffGenerator generator(0.5, 0.95);
    addResults(generator, 11, 0);
    EXPECT_TRUE(generator.done());
    addResults(generator, 0, 1);
    EXPECT_TRUE(generator.done());
    EXPECT_EQ(generator.getRatio().first, 11.0 / 12.0 - 0.5) << "the earlier results stay in the ratio";
}

TEST(ChernoffGenerator, TellsItsConfidenceAsGiven) { EXPECT_EQ(ChernoffGenerator(0.05, 0.9).getConfidence(), 0.9); }

}  // namespace
}  // namespace vornrun
