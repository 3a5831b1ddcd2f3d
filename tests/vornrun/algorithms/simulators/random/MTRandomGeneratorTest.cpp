#include "vornrun/algorithms/simulators/random/MTRandomGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <thread>
#include <vector>

namespace vornrun {
namespace {

constexpr unsigned long LARGEST = ~0UL;

unsigned long raw(MTRandomGenerator& random) { return random.uniform(0UL, LARGEST); }

/// The engine written out from its definition, apart from the standard library's.
class ReferenceEngine {
  public:
    explicit ReferenceEngine(std::uint64_t seed) {
        mState[0] = seed;
        for (std::size_t i = 1; i < SIZE; ++i)
            mState[i] = 6364136223846793005ULL * (mState[i - 1] ^ (mState[i - 1] >> 62)) + i;
    }
    std::uint64_t operator()() {
        if (mPosition == SIZE) regenerate();
        std::uint64_t output = mState[mPosition++];
        output ^= (output >> 29) & 0x5555555555555555ULL;
        output ^= (output << 17) & 0x71d67fffeda60000ULL;
        output ^= (output << 37) & 0xfff7eee000000000ULL;
        return output ^ (output >> 43);
    }

  private:
    static constexpr std::size_t SIZE = 312;
    void regenerate() {
        for (std::size_t i = 0; i < SIZE; ++i) {
            const std::uint64_t mixed =
                (mState[i] & 0xffffffff80000000ULL) | (mState[(i + 1) % SIZE] & 0x000000007fffffffULL);
            mState[i] = mState[(i + 156) % SIZE] ^ (mixed >> 1) ^ (mixed % 2 != 0 ? 0xb5026f5aa96619e9ULL : 0);
        }
        mPosition = 0;
    }
    std::array<std::uint64_t, SIZE> mState;
    std::size_t mPosition = SIZE;
};

double canonOf(std::uint64_t output) { return std::ldexp(static_cast<double>(output), -64); }

double realOf(ReferenceEngine& engine, double low, double high) {
    double fraction = 0.0;
    for (int i = 0; i < 53; ++i) fraction += std::ldexp(canonOf(engine()), i);
    return (high - low) * std::ldexp(fraction, -53) + low;
}

TEST(MTRandomGenerator, HasTheStandardsCheckValue) {
    MTRandomGenerator random(5489);
    for (int i = 1; i < 10000; ++i) raw(random);
    EXPECT_EQ(raw(random), 9981545732273789042UL);
}

TEST(MTRandomGenerator, DrawsTheKnownRawSequence) {
    MTRandomGenerator random(7);
    for (const unsigned long expected : {13915952638675311015UL, 17511516338625233250UL, 2165911192842364878UL,
                                         16452894106784333046UL, 2606000371313139421UL})
        EXPECT_EQ(raw(random), expected);
}

TEST(MTRandomGenerator, DrawsTheKnownExponentialSequence) {
    MTRandomGenerator random(7);
    for (const double expected :
         {0x1.676bf86dfaac5p-1, 0x1.7dad5cb8e0224p+0, 0x1.ff9679707c641p-5, 0x1.1cc6eaabeb8dep+0})
        EXPECT_DOUBLE_EQ(random.exponential(2.0), expected);
}

TEST(MTRandomGenerator, DrawsTheKnownRealSequence) {
    MTRandomGenerator random(7);
    EXPECT_EQ(random.uniform(0.0, 1.0), 0x1.0ffa291eb4509p-1);
    EXPECT_EQ(random.uniform(0.0, 1.0), 0x1.da540d2bc8a48p-3);
    EXPECT_EQ(random.uniform(0.0, 1.0), 0x1.f1b07ff855c98p-2);
    EXPECT_EQ(random.uniform(-2.0, 6.0), 0x1.ac73a39718d06p+0);
}

TEST(MTRandomGenerator, DrawsTheKnownIntegerSequence) {
    MTRandomGenerator random(7);
    for (const unsigned long expected : {7UL, 9UL, 1UL, 8UL, 1UL, 0UL, 8UL, 9UL, 2UL, 7UL, 7UL, 5UL})
        EXPECT_EQ(random.uniform(0UL, 9UL), expected);
}

TEST(MTRandomGenerator, RejectsOutputsBeyondTheLastSpan) {
    // Of 2^63 + 1 values there is one span only, so that nearly half of the outputs are rejected.
    MTRandomGenerator random(7);
    for (const unsigned long expected :
         {2165911192842364878UL, 2606000371313139421UL, 1016289395134552428UL, 4743729080978854881UL})
        EXPECT_EQ(random.uniform(0UL, 1UL << 63), expected);
}

TEST(MTRandomGenerator, AgreesWithItsDefinitionOverAMixOfDraws) {
    for (const unsigned long seed : {1UL, 42UL, 0xffffffffUL, 0x123456789abcdefUL, LARGEST}) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        MTRandomGenerator random(seed);
        ReferenceEngine engine(seed);
        for (int i = 0; i < 300; ++i) {
            ASSERT_EQ(raw(random), engine());
            ASSERT_DOUBLE_EQ(random.exponential(0.25), -std::log(1.0 - canonOf(engine())) / 0.25);
            ASSERT_EQ(random.uniform(3.0, 11.0), realOf(engine, 3.0, 11.0));
        }
    }
}

TEST(MTRandomGenerator, DrawsARealOfOnePointFromFiftyThreeOutputs) {
    MTRandomGenerator random(7);
    ReferenceEngine engine(7);
    EXPECT_EQ(random.uniform(2.0, 2.0), 2.0);
    for (int i = 0; i < 53; ++i) engine();
    EXPECT_EQ(raw(random), engine());
}

TEST(MTRandomGenerator, DrawsAnIntegerOfOneValueFromOneOutput) {
    MTRandomGenerator random(7);
    ReferenceEngine engine(7);
    EXPECT_EQ(random.uniform(0UL, 0UL), 0u);
    engine();
    EXPECT_EQ(raw(random), engine());
}

TEST(MTRandomGenerator, ReportsTheSeedThatItStartedFrom) {
    MTRandomGenerator random(7);
    EXPECT_EQ(random.seed(), 7u);
    random.reseed(8);
    EXPECT_EQ(random.seed(), 7u);
    const std::unique_ptr<MTRandomGenerator> clone(random.clone());
    EXPECT_EQ(clone->seed(), 7u);
}

TEST(MTRandomGenerator, WithoutASeedTakesThirtyTwoBitsOfTheDevice) {
    MTRandomGenerator first;
    MTRandomGenerator second(0);
    EXPECT_LE(first.seed(), 0xffffffffUL);
    EXPECT_LE(second.seed(), 0xffffffffUL);
    // Two device draws agree with a chance of 2^-32.
    EXPECT_NE(first.seed(), second.seed());
    ReferenceEngine engine(first.seed());
    EXPECT_EQ(raw(first), engine());
}

TEST(MTRandomGenerator, ReseededWithZeroTakesANewSequenceEachTime) {
    MTRandomGenerator random(7);
    random.reseed(0);
    const std::array first{raw(random), raw(random)};
    random.reseed(0);
    const std::array second{raw(random), raw(random)};
    EXPECT_NE(first, second);
}

TEST(MTRandomGenerator, ReseededAlikeRepeatsIntegersAndExponentials) {
    MTRandomGenerator random;
    random.reseed(7);
    const unsigned long integer = random.uniform(0UL, 1000000UL);
    const double exponential = random.exponential(1.5);
    random.reseed(7);
    EXPECT_EQ(random.uniform(0UL, 1000000UL), integer);
    EXPECT_EQ(random.exponential(1.5), exponential);
}

TEST(MTRandomGenerator, SkipsAThousandAndTwentyFourOutputs) {
    MTRandomGenerator random(7);
    random.initMT();
    EXPECT_EQ(raw(random), 9524072882771473771UL);
}

TEST(MTRandomGeneratorClone, GoesOnFromTheStateOfItsPrototype) {
    MTRandomGenerator prototype(7);
    raw(prototype);
    const std::unique_ptr<MTRandomGenerator> clone(prototype.clone());
    for (int i = 0; i < 400; ++i) ASSERT_EQ(raw(*clone), raw(prototype));
}

TEST(MTRandomGeneratorClone, DrawsRealsFromItsPrototypesEngine) {
    MTRandomGenerator prototype(7);
    const std::unique_ptr<MTRandomGenerator> clone(prototype.clone());
    clone->reseed(99);
    ReferenceEngine engine(7);
    EXPECT_EQ(clone->uniform(0.0, 1.0), realOf(engine, 0.0, 1.0));
    EXPECT_EQ(prototype.uniform(0.0, 1.0), realOf(engine, 0.0, 1.0));
    EXPECT_EQ(clone->uniform(0.0, 1.0), realOf(engine, 0.0, 1.0));
    EXPECT_EQ(raw(prototype), engine());
    ReferenceEngine own(99);
    EXPECT_EQ(raw(*clone), own());
}

TEST(MTRandomGeneratorClone, OfACloneDrawsRealsFromTheFirstPrototype) {
    const MTRandomGenerator prototype(7);
    const std::unique_ptr<MTRandomGenerator> clone(prototype.clone());
    clone->reseed(99);
    const std::unique_ptr<MTRandomGenerator> second(clone->clone());
    ReferenceEngine engine(7);
    EXPECT_EQ(second->uniform(0.0, 1.0), realOf(engine, 0.0, 1.0));
    ReferenceEngine own(99);
    EXPECT_EQ(raw(*second), own());
}

TEST(MTRandomGeneratorClone, ReseededAlikeDiffersOnlyInReals) {
    MTRandomGenerator prototype(7);
    const std::unique_ptr<MTRandomGenerator> first(prototype.clone());
    const std::unique_ptr<MTRandomGenerator> second(prototype.clone());
    first->reseed(5);
    second->reseed(5);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(first->exponential(0.5), second->exponential(0.5));
        EXPECT_NE(first->uniform(0.0, 1.0), second->uniform(0.0, 1.0));
    }
}

TEST(MTRandomGeneratorClone, IsNotMovedByReseedingItsPrototypeButItsRealsAre) {
    MTRandomGenerator prototype(7);
    const std::unique_ptr<MTRandomGenerator> clone(prototype.clone());
    prototype.reseed(11);
    ReferenceEngine own(7);
    EXPECT_EQ(raw(*clone), own());
    ReferenceEngine shared(11);
    EXPECT_EQ(clone->uniform(0.0, 1.0), realOf(shared, 0.0, 1.0));
}

TEST(MTRandomGeneratorClone, KeepsTheSharedEngineBeyondItsPrototype) {
    auto prototype = std::make_unique<MTRandomGenerator>(7);
    const std::unique_ptr<MTRandomGenerator> clone(prototype->clone());
    ReferenceEngine engine(7);
    EXPECT_EQ(prototype->uniform(0.0, 1.0), realOf(engine, 0.0, 1.0));
    prototype.reset();
    EXPECT_EQ(clone->uniform(0.0, 1.0), realOf(engine, 0.0, 1.0));
}

// Each real draw holds the lock for its 53 outputs: whatever the order among the threads, together they draw the values
// of one sequence.
TEST(MTRandomGeneratorClone, DrawsWholeRealsWhileOthersDrawToo) {
    constexpr std::size_t threadCount = 4;
    constexpr std::size_t drawCount = 200;
    MTRandomGenerator prototype(7);
    std::vector<std::unique_ptr<MTRandomGenerator>> clones;
    for (std::size_t i = 0; i < threadCount; ++i) clones.emplace_back(prototype.clone());
    std::vector<std::vector<double>> drawn(threadCount);
    {
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i)
            threads.emplace_back([&clone = *clones[i], &values = drawn[i]] {
                for (std::size_t draw = 0; draw < drawCount; ++draw) {
                    values.push_back(clone.uniform(0.0, 1.0));
                    clone.exponential(1.0);
                }
            });
        for (std::thread& thread : threads) thread.join();
    }
    std::vector<double> all;
    for (const std::vector<double>& values : drawn) all.insert(all.end(), values.begin(), values.end());
    std::vector<double> expected;
    ReferenceEngine engine(7);
    for (std::size_t i = 0; i < threadCount * drawCount; ++i) expected.push_back(realOf(engine, 0.0, 1.0));
    std::sort(all.begin(), all.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(all, expected);
}

TEST(MTRandomGenerator, MayBeClonedAndUsedWhileClonesDrawReals) {
    MTRandomGenerator prototype(7);
    const std::unique_ptr<MTRandomGenerator> clone(prototype.clone());
    std::thread other([&clone] {
        for (int i = 0; i < 200; ++i) clone->uniform(0.0, 1.0);
    });
    for (int i = 0; i < 200; ++i) {
        const std::unique_ptr<MTRandomGenerator> late(prototype.clone());
        EXPECT_LE(late->uniform(0UL, 9UL), 9u);
        EXPECT_GE(prototype.exponential(1.0), 0.0);
        EXPECT_LE(prototype.uniform(0UL, 9UL), 9u);
    }
    other.join();
}

// The sum of independent uniform terms of width 1/2, 1/4, ...: mean 1/2, variance (1/4 + 1/16 + ...) / 12 = 1/36. The
// mean of 20000 draws leaves 1/2 by more than 6 standard errors, 6 / 6 / sqrt(20000) = 0.0071, with a chance of 2e-9.
// With an excess kurtosis of -0.72 the variance estimate has a standard error of 1/36 * sqrt(1.28 / 20000) = 2.3e-4.
TEST(MTRandomGenerator, DrawsRealsThatCrowdTheMiddle) {
    MTRandomGenerator random(20240607);
    constexpr int count = 20000;
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < count; ++i) {
        const double value = random.uniform(0.0, 1.0);
        sum += value;
        squares += value * value;
    }
    const double mean = sum / count;
    EXPECT_NEAR(mean, 0.5, 0.0071);
    EXPECT_NEAR(squares / count - mean * mean, 1.0 / 36.0, 6 * 2.3e-4);
}

}  // namespace
}  // namespace vornrun
