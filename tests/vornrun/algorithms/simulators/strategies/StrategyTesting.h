#pragma once
/// \file
/// What the tests of all strategies use.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "tests/support/DrivenModel.h"

/// The statement throws a deadlock_exception of that text.
#define EXPECT_DEADLOCK(statement, text)                         \
    EXPECT_THROW(                                                \
        try { statement; } catch (const deadlock_exception& e) { \
            EXPECT_STREQ(e.what(), text);                        \
            throw;                                               \
        },                                                       \
        deadlock_exception)

namespace vornrun::test {

/// Exponential draws of a few different values, so that many samples are equal.
class FewValuesGenerator final : public RandomGenerator {
  public:
    explicit FewValuesGenerator(unsigned long seed) : RandomGenerator(seed), mOutputs(seed) {}
    double uniform(double low, double) override { return low; }
    double exponential(double) override { return static_cast<double>(mOutputs() % 20) * 0.25; }
    unsigned long uniform(unsigned long low, unsigned long) override { return low; }
    FewValuesGenerator* clone() const override { return new FewValuesGenerator(seed()); }
    void reseed(unsigned long seed) override { mOutputs.seed(seed); }

  private:
    std::mt19937_64 mOutputs;
};

}  // namespace vornrun::test
