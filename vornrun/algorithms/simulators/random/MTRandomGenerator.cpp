#include "vornrun/algorithms/simulators/random/MTRandomGenerator.h"

#include "vornrun/algorithms/simulators/random/RandomDraws.h"

namespace vornrun {

MTRandomGenerator::MTRandomGenerator(unsigned long seed)
    : RandomGenerator(seed), mEngine(std::make_shared<Engine>()), mRealSource(mEngine) {
    mEngine->outputs.seed(this->seed());
}

MTRandomGenerator::MTRandomGenerator(const MTRandomGenerator& other)
    : RandomGenerator(other), mEngine(std::make_shared<Engine>()), mRealSource(other.mRealSource) {
    const auto lock = other.lockOwnEngine();
    mEngine->outputs = other.mEngine->outputs;
}

std::unique_lock<std::mutex> MTRandomGenerator::lockOwnEngine() const {
    return mEngine == mRealSource ? std::unique_lock(mEngine->mutex) : std::unique_lock<std::mutex>();
}

double MTRandomGenerator::uniform(double low, double high) {
    const std::lock_guard lock(mRealSource->mutex);
    return draws::real(mRealSource->outputs, low, high);
}

double MTRandomGenerator::exponential(double rate) {
    const auto lock = lockOwnEngine();
    return draws::exponential(mEngine->outputs, rate);
}

unsigned long MTRandomGenerator::uniform(unsigned long low, unsigned long high) {
    const auto lock = lockOwnEngine();
    return draws::integer(mEngine->outputs, low, high);
}

MTRandomGenerator* MTRandomGenerator::clone() const { return new MTRandomGenerator(*this); }

void MTRandomGenerator::reseed(unsigned long seed) {
    const unsigned long start = seed != 0 ? seed : drawFromDevice();
    const auto lock = lockOwnEngine();
    mEngine->outputs.seed(start);
}

void MTRandomGenerator::initMT() {
    const auto lock = lockOwnEngine();
    mEngine->outputs.discard(1024);
}

}  // namespace vornrun
