#pragma once
/// \file
/// The random generator of the tool, on the 64-bit Mersenne Twister.

#include <memory>
#include <mutex>
#include <random>

#include "vornrun/algorithms/simulators/random/RandomGenerator.h"

namespace vornrun {

/// Real-valued draws of a clone come from the engine of the object that it was cloned from, whatever the clone is
/// reseeded with: a fixed seed repeats exponential and integer draws only. That shared engine has a lock, held for one
/// draw as a whole. A clone's own engine belongs to one thread and has none.
class MTRandomGenerator final : public RandomGenerator {
  public:
    /// Starts from a seed of the system's random device.
    MTRandomGenerator() : MTRandomGenerator(0) {}
    /// \param seed 0 takes one from the system's random device
    explicit MTRandomGenerator(unsigned long seed);

    /// The weighted sum of 53 outputs of the engine for real values: around the middle of [low, high] more likely than
    /// at its ends.
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

    /// Locks this object's own engine when clones draw from it too: when it is the engine for real values. A clone's is
    /// nobody else's, and its lock stays open.
    std::unique_lock<std::mutex> lockOwnEngine() const;

    std::shared_ptr<Engine> mEngine;
    std::shared_ptr<Engine> mRealSource;
};

}  // namespace vornrun
