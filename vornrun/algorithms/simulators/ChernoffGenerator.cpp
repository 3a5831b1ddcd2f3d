#include "vornrun/algorithms/simulators/ChernoffGenerator.h"

#include <cmath>

namespace vornrun {

namespace {

/// Truncates towards zero to a 64-bit integer and gives the low 32 bits. What no 64-bit integer holds, and what is no
/// number, becomes the lowest one as the processor's own conversion has it, whose low bits are 0. The language leaves
/// those cases undefined, hence the test before the cast.
std::uint32_t lowBitsOfTruncated(double value) {
    constexpr double kTwoTo63 = 9223372036854775808.0;
    const bool fits = value >= -kTwoTo63 && value < kTwoTo63;
    return fits ? static_cast<std::uint32_t>(static_cast<std::int64_t>(value)) : 0U;
}

}  // namespace

ChernoffGenerator::ChernoffGenerator(double errorBound, double confidence)
    : mErrorBound(errorBound),
      mConfidence(confidence),
      mTotal(lowBitsOfTruncated(4.0 * std::log(2.0 / confidence) / (errorBound * errorBound))) {}

void ChernoffGenerator::reset() {
    mCount = 0;
    mPositive = 0;
}

void ChernoffGenerator::addResult(bool result) {
    ++mCount;
    if (result) ++mPositive;
}

bool ChernoffGenerator::done() { return mCount >= mTotal; }

std::pair<double, double> ChernoffGenerator::getRatio() const {
    const double ratio = static_cast<double>(mPositive) / static_cast<double>(mCount);
    const double lower = ratio - mErrorBound;
    const double upper = ratio + mErrorBound;
    // Both comparisons are false for a not-a-number, which therefore gives the full interval.
    return {lower > 0.0 ? lower : 0.0, upper < 1.0 ? upper : 1.0};
}

double ChernoffGenerator::getConfidence() const { return mConfidence; }

}  // namespace vornrun
