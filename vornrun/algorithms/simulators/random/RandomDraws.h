#pragma once
/// \file
/// How the raw 64-bit outputs of an engine become random numbers. A run with a seed repeats exactly on any machine,
/// which the distributions of the standard library do not guarantee. `source()` is the next output.

#include <cmath>
#include <cstdint>

namespace vornrun::draws {

/// The output as a fraction of 2^64. The conversion rounds to nearest, so that the highest outputs give 1.0.
inline double canon(std::uint64_t output) { return static_cast<double>(output) * 0x1p-64; }

/// Exponentially distributed with the given rate, by inversion of one output. Infinite where canon() gives 1.0.
template <class Source>
double exponential(Source& source, double rate) {
    return -std::log(1.0 - canon(source())) / rate;
}

/// A number in [low, high] from 53 outputs, each weighted twice as much as the one before, the last one by a half. This
/// is the layering of a canonical generator over a source that yields fractions already: the result has the mean of a
/// uniform variable, but only about a third of its variance.
template <class Source>
double real(Source& source, double low, double high) {
    double sum = 0.0;
    double scale = 1.0;
    for (int i = 0; i < 53; ++i) {
        sum += canon(source()) * scale;
        scale = scale + scale;
    }
    return (high - low) * (sum / scale) + low;
}

/// Uniform over the integers of [low, high], by rejection of the outputs beyond the last full span. Unsigned arithmetic
/// throughout: `high` below `low` gives some number.
template <class Source>
std::uint64_t integer(Source& source, std::uint64_t low, std::uint64_t high) {
    constexpr std::uint64_t largest = UINT64_MAX;
    const std::uint64_t range = high - low;
    if (range == largest) return source() + low;
    const std::uint64_t span = range + 1;
    const std::uint64_t scaling = largest / span;
    const std::uint64_t past = span * scaling;
    std::uint64_t output = source();
    while (output >= past) output = source();
    return output / scaling + low;
}

}  // namespace vornrun::draws
