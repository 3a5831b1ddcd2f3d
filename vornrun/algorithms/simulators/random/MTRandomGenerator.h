#pragma once
/// \file
/// The random generator of the tool, on the 64-bit Mersenne Twister.

#include <memory>
#include <mutex>
#include <random>

#include "vornrun/algorithms/simulators/random/RandomGenerator.h"

namespace vornrun {

/// Real-valued draws of a clone come from the engine of the object that it was cloned from. Reseeding the clone does
/// not change that: a fixed seed repeats only exponential and integer draws. The shared engine has a lock, which is
/// held for one whole draw. A clone's own engine belongs to one thread and has no lock.
class MTRandomGenerator final : public RandomGenerator {
  public:
    /// Starts from a seed of the system's random device.
    MTRandomGenerator() : MTRandomGenerator(0) {}
    /// \param seed 0 takes one from the system's random device
    explicit MTRandomGenerator(unsigned long seed);

    /// The weighted sum of 53 outputs of the engine for real values. Results near the middle of [low, high] are more
    /// likely than those near its ends.
    double uniform(double low, double high) override;
    double exponential(double rate) override;
    unsigned long uniform(unsigned long low, unsigned long high) override;
    /// The clone shares the engine for real values, also beyond the life of this object; may be called while clones
    /// draw.
    MTRandomGenerator* clone() const override;
    /// Leaves the engine for real values as it is, unless that is this object's own.
    void reseed(unsigned long seed) override;

    /// Skips 1024 outputs of this object's own engine.
    void initMT();

  private:
    struct Engine {
        std::mt19937_64 outputs;
        std::mutex mutex;  // held by draws while clones may use the engine too
    };
    MTRandomGenerator(const MTRandomGenerator& other);

    /// Locks this object's own engine when clones draw from it too, that is when it is the engine for real values. The
    /// engine of a clone needs no lock.
    std::unique_lock<std::mutex> lockOwnEngine() const;

    std::shared_ptr<Engine> mEngine;
    std::shared_ptr<Engine> mRealSource;
};

}  // namespace vornrun
