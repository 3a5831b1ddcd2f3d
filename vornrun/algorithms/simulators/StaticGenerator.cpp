#include "vornrun/algorithms/simulators/StaticGenerator.h"

namespace vornrun {

StaticGenerator::StaticGenerator(std::uint32_t total) : mTotal(total) {}

void StaticGenerator::reset() {
    mCount = 0;
    mPositive = 0;
}

void StaticGenerator::addResult(bool result) {
    ++mCount;
    if (result) ++mPositive;
}

bool StaticGenerator::done() { return mCount >= mTotal; }

std::pair<double, double> StaticGenerator::getRatio() const {
    const double ratio = static_cast<double>(mPositive) / static_cast<double>(mCount);
    return {ratio, ratio};
}

double StaticGenerator::getConfidence() const { return 0.0; }

}  // namespace vornrun
