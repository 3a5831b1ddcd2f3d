#include "vornrun/api/TraceStream.h"

#include <cmath>

#include "vornrun/algorithms/simulators/random/RandomDraws.h"

namespace vornrun {

TraceStream::TraceStream(std::uint64_t seed, std::uint64_t trace) : RandomGenerator(seed), mTrace(trace) {
    start(seed);
}

void TraceStream::start(std::uint64_t seed) {
    // Both numbers reach the engine whole: the sequence spreads four words of 32 bits over its state.
    const auto low = [](std::uint64_t number) { return static_cast<std::uint32_t>(number); };
    const auto high = [](std::uint64_t number) { return static_cast<std::uint32_t>(number >> 32); };
    std::seed_seq words{low(seed), high(seed), low(mTrace), high(mTrace)};
    mEngine.seed(words);
}

double TraceStream::fraction() { return static_cast<double>(mEngine() >> 11) * 0x1p-53; }

double TraceStream::uniform(double low, double high) { return low + (high - low) * fraction(); }

double TraceStream::exponential(double rate) { return -std::log1p(-fraction()) / rate; }

unsigned long TraceStream::uniform(unsigned long low, unsigned long high) { return draws::integer(mEngine, low, high); }

void TraceStream::reseed(unsigned long seed) { start(seed != 0 ? seed : drawFromDevice()); }

}  // namespace vornrun
