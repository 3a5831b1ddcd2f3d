#pragma once
/// \file
/// Random numbers for one trace.

#include <cstdint>
#include <random>

#include "vornrun/algorithms/simulators/random/RandomGenerator.h"

namespace vornrun {

/// The stream of trace k under a seed: a function of both alone, so that any trace can be had again. Streams of
/// different traces have nothing to do with each other.
class TraceStream final : public RandomGenerator {
  public:
    TraceStream(std::uint64_t seed, std::uint64_t trace);

    /// Uniform over the numbers of [low, high) on a grid of 2^-53 times its width; `low` when both are equal.
    double uniform(double low, double high) override;
    /// By inversion of one output of the engine; always finite. \pre rate > 0
    double exponential(double rate) override;
    unsigned long uniform(unsigned long low, unsigned long high) override;
    TraceStream* clone() const override { return new TraceStream(*this); }
    /// Starts the stream of the same trace under another seed; 0 takes one from the system's random device.
    void reseed(unsigned long seed) override;

  private:
    /// Uniform over the multiples of 2^-53 in [0, 1).
    double fraction();
    void start(std::uint64_t seed);

    std::uint64_t mTrace;
    std::mt19937_64 mEngine;
};

}  // namespace vornrun
