#pragma once
/// \file
/// A fixed number of traces.

#include <cstdint>
#include <utility>

#include "vornrun/algorithms/simulators/SimulationGenerator.h"

namespace vornrun {

class StaticGenerator final : public QuantitativeGenerator {
  public:
    /// \param total the number of results after which done() holds
    explicit StaticGenerator(std::uint32_t total);

    void reset() override;
    void addResult(bool result) override;
    bool done() override;
    /// The plain ratio of positive results, twice: a fixed number of traces claims no interval. Not-a-number when
    /// nothing is counted.
    std::pair<double, double> getRatio() const override;
    /// Always 0.
    double getConfidence() const override;

  private:
    std::uint32_t mTotal;
    std::uint32_t mCount = 0;
    std::uint32_t mPositive = 0;
};

}  // namespace vornrun
