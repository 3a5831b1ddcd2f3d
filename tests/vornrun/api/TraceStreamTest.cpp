#include "vornrun/api/TraceStream.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace vornrun::test {
namespace {

std::vector<double> drawsOf(RandomGenerator& stream) {
    std::vector<double> draws;
    for (int i = 0; i < 10; ++i) {
        draws.push_back(stream.uniform(0.0, 1.0));
        draws.push_back(stream.exponential(2.0));
        draws.push_back(static_cast<double>(stream.uniform(0UL, 1000000UL)));
    }
    return draws;
}

std::vector<double> drawsOf(std::uint64_t seed, std::uint64_t trace) {
    TraceStream stream(seed, trace);
    return drawsOf(stream);
}

TEST(TraceStream, RepeatsUnderTheSameSeedAndTrace) { EXPECT_EQ(drawsOf(5, 17), drawsOf(5, 17)); }

TEST(TraceStream, DiffersInEachBitOfSeedAndTrace) {
    const auto draws = drawsOf(5, 17);
    for (unsigned bit = 0; bit < 64; ++bit) {
        EXPECT_NE(drawsOf(5 ^ (std::uint64_t{1} << bit), 17), draws) << bit;
        EXPECT_NE(drawsOf(5, 17 ^ (std::uint64_t{1} << bit)), draws) << bit;
    }
    EXPECT_NE(drawsOf(17, 5), draws);
}

TEST(TraceStream, IsClonedWithItsPosition) {
    TraceStream stream(5, 17);
    drawsOf(stream);
    const std::unique_ptr<RandomGenerator> clone(stream.clone());
    EXPECT_EQ(drawsOf(*clone), drawsOf(stream));
}

TEST(TraceStream, StartsAnewUnderAnotherSeed) {
    TraceStream stream(5, 17);
    drawsOf(stream);
    stream.reseed(6);
    EXPECT_EQ(drawsOf(stream), drawsOf(6, 17));
}

// Kolmogorov's distance between N draws and their distribution exceeds 2.5 / sqrt(N) with probability below
// 2 exp(-2 * 2.5^2) = 7.5e-6 for each (Massart). The seeds are fixed.
template <class Draw, class Distribution>
void expectDistributed(Draw draw, Distribution distribution) {
    constexpr int COUNT = 20000;
    std::vector<double> draws(COUNT);
    for (double& each : draws) each = draw();
    std::sort(draws.begin(), draws.end());
    double distance = 0.0;
    for (int i = 0; i < COUNT; ++i) {
        const double exact = distribution(draws[static_cast<std::size_t>(i)]);
        distance = std::max({distance, std::abs(exact - i / double{COUNT}), std::abs(exact - (i + 1) / double{COUNT})});
    }
    EXPECT_LT(distance, 2.5 / std::sqrt(double{COUNT}));
}

TEST(TraceStream, DrawsRealNumbersUniformly) {
    TraceStream stream(1, 2);
    expectDistributed([&] { return stream.uniform(2.0, 5.0); }, [](double x) { return (x - 2.0) / 3.0; });
}

TEST(TraceStream, DrawsExponentially) {
    TraceStream stream(1, 3);
    expectDistributed([&] { return stream.exponential(4.0); }, [](double x) { return 1 - std::exp(-4.0 * x); });
}

TEST(TraceStream, IsUniformOverTheFirstDrawsOfItsTraces) {
    std::uint64_t trace = 0;
    expectDistributed(
        [&] {
            TraceStream stream(9, trace++);
            return stream.uniform(0.0, 1.0);
        },
        [](double x) { return x; });
}

}  // namespace
}  // namespace vornrun::test
