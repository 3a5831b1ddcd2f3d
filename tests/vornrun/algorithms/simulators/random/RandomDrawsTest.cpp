#include "vornrun/algorithms/simulators/random/RandomDraws.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace vornrun::draws {
namespace {

constexpr std::uint64_t LARGEST = UINT64_MAX;
constexpr std::uint64_t HALF = 1ULL << 63;

/// Gives the written outputs, then no more.
class Outputs {
  public:
    explicit Outputs(std::vector<std::uint64_t> outputs) : mOutputs(std::move(outputs)) {}
    Outputs(std::size_t count, std::uint64_t output) : mOutputs(count, output) {}
    std::uint64_t operator()() {
        if (mUsed == mOutputs.size()) throw std::out_of_range("one output too many");
        return mOutputs[mUsed++];
    }
    std::size_t used() const { return mUsed; }

  private:
    std::vector<std::uint64_t> mOutputs;
    std::size_t mUsed = 0;
};

TEST(Canon, IsTheFractionOfTwoToThe64) {
    EXPECT_EQ(canon(0), 0.0);
    EXPECT_EQ(canon(1), std::ldexp(1.0, -64));
    EXPECT_EQ(canon(HALF), 0.5);
    EXPECT_EQ(canon(3ULL << 62), 0.75);
}

TEST(Canon, RoundsToNearestAndSoReachesOne) {
    EXPECT_EQ(canon(LARGEST), 1.0);
    EXPECT_EQ(canon(LARGEST - 1023), 1.0);                         // half way: to even
    EXPECT_EQ(canon(LARGEST - 1024), 1.0 - std::ldexp(1.0, -53));  // nearer to the double below
    EXPECT_EQ(canon(HALF + 1), 0.5);
}

TEST(ExponentialDraw, InvertsTheDistribution) {
    Outputs half({HALF});
    EXPECT_DOUBLE_EQ(exponential(half, 2.0), std::log(2.0) / 2.0);
    Outputs zero({0});
    EXPECT_EQ(exponential(zero, 3.0), 0.0);
    Outputs threeQuarters({3ULL << 62});
    EXPECT_DOUBLE_EQ(exponential(threeQuarters, 0.5), 2.0 * std::log(4.0));
    EXPECT_EQ(threeQuarters.used(), 1u);
}

TEST(ExponentialDraw, IsInfiniteWhereCanonReachesOne) {
    Outputs largest({LARGEST});
    EXPECT_EQ(exponential(largest, 1.0), std::numeric_limits<double>::infinity());
}

TEST(RealDraw, WeighsTheLastOutputMost) {
    std::vector<std::uint64_t> outputs(53, 0);
    outputs.back() = HALF;
    Outputs last(outputs);
    EXPECT_EQ(real(last, 0.0, 1.0), 0.25);
    outputs.back() = 0;
    outputs.front() = HALF;
    Outputs first(outputs);
    EXPECT_EQ(real(first, 0.0, 1.0), std::ldexp(1.0, -54));
}

TEST(RealDraw, OfEqualOutputsIsNearlyTheirFraction) {
    // 0.5 (1 + 2 + ... + 2^52) / 2^53
    Outputs halves(53, HALF);
    EXPECT_EQ(real(halves, 0.0, 1.0), 0.5 * (1.0 - std::ldexp(1.0, -53)));
    EXPECT_EQ(halves.used(), 53u);
}

TEST(RealDraw, ScalesToItsBounds) {
    std::vector<std::uint64_t> outputs(53, 0);
    outputs.back() = HALF;
    Outputs quarter(outputs);
    EXPECT_EQ(real(quarter, -2.0, 6.0), 0.0);
    Outputs zeros(53, 0);
    EXPECT_EQ(real(zeros, -2.0, 6.0), -2.0);
}

TEST(RealDraw, StaysBelowOneEvenWhenEveryOutputRoundsUp) {
    Outputs ones(53, LARGEST);
    EXPECT_EQ(real(ones, 0.0, 1.0), 1.0 - std::ldexp(1.0, -53));
}

TEST(RealDraw, OfOnePointUsesUpFiftyThreeOutputs) {
    Outputs any(53, HALF + 12345);
    EXPECT_EQ(real(any, 2.0, 2.0), 2.0);
    EXPECT_EQ(any.used(), 53u);
}

TEST(IntegerDraw, OfOneValueTakesOneOutput) {
    Outputs any({LARGEST - 1});
    EXPECT_EQ(integer(any, 0, 0), 0u);
    EXPECT_EQ(any.used(), 1u);
}

TEST(IntegerDraw, OfOneValueRejectsOnlyTheLargestOutput) {
    Outputs outputs(std::vector<std::uint64_t>{LARGEST, 5});
    EXPECT_EQ(integer(outputs, 8, 8), 8u);
    EXPECT_EQ(outputs.used(), 2u);
}

TEST(IntegerDraw, OfTheWholeRangeIsTheRawOutput) {
    Outputs outputs(std::vector<std::uint64_t>{LARGEST, 17});
    EXPECT_EQ(integer(outputs, 0, LARGEST), LARGEST);
    EXPECT_EQ(integer(outputs, 0, LARGEST), 17u);
}

TEST(IntegerDraw, DividesTheOutputsIntoEqualSpans) {
    // Ten values: each span has (2^64 - 1) / 10 = 1844674407370955161 outputs.
    constexpr std::uint64_t span = 1844674407370955161ULL;
    Outputs outputs({0, span - 1, span, 9 * span, 10 * span - 1});
    EXPECT_EQ(integer(outputs, 3, 12), 3u);
    EXPECT_EQ(integer(outputs, 3, 12), 3u);
    EXPECT_EQ(integer(outputs, 3, 12), 4u);
    EXPECT_EQ(integer(outputs, 3, 12), 12u);
    EXPECT_EQ(integer(outputs, 3, 12), 12u);
}

TEST(IntegerDraw, RejectsTheOutputsBeyondTheLastSpan) {
    Outputs outputs({18446744073709551610ULL, LARGEST, 18446744073709551609ULL});
    EXPECT_EQ(integer(outputs, 0, 9), 9u);
    EXPECT_EQ(outputs.used(), 3u);
}

TEST(IntegerDraw, OfAnInvertedRangeGivesSomeNumber) {
    // high - low wraps to 2^64 - 1, the whole range.
    Outputs outputs({41});
    EXPECT_EQ(integer(outputs, 1, 0), 42u);
}

}  // namespace
}  // namespace vornrun::draws
