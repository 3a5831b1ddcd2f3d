#pragma once
/// \file
/// The source of the random numbers that strategies draw.

#include <random>

namespace vornrun {

class RandomGenerator {
  public:
    /// Starts from a seed of the system's random device.
    RandomGenerator() : RandomGenerator(0) {}
    /// \param seed 0 takes one from the system's random device
    explicit RandomGenerator(unsigned long seed) : mDevice(DEVICE), mSeed(seed != 0 ? seed : mDevice()) {}
    RandomGenerator& operator=(const RandomGenerator&) = delete;
    virtual ~RandomGenerator() = default;

    /// A real number in [low, high], both ends included. See the implementation for its distribution.
    virtual double uniform(double low, double high) = 0;
    /// A sample of the exponential distribution with the given rate, per unit of model time. May be infinite.
    virtual double exponential(double rate) = 0;
    /// An integer in [low, high], both ends included. `high` below `low` gives some number.
    virtual unsigned long uniform(unsigned long low, unsigned long high) = 0;
    /// A generator of the same class and state; the caller owns it.
    virtual RandomGenerator* clone() const = 0;
    /// Restarts from a seed, 0 taking one from the system's random device. seed() keeps its value.
    virtual void reseed(unsigned long seed) = 0;

    /// The seed that the object started from.
    unsigned long seed() const noexcept { return mSeed; }

  protected:
    /// Copies the seed and opens a device of its own.
    RandomGenerator(const RandomGenerator& other) : mDevice(DEVICE), mSeed(other.mSeed) {}

    /// 32 bits of the system's random device.
    unsigned long drawFromDevice() { return mDevice(); }

  private:
    static constexpr const char* DEVICE = "default";

    std::random_device mDevice;
    unsigned long mSeed;
};

}  // namespace vornrun
