#pragma once
/// \file
/// As many traces as the Chernoff-Hoeffding bound asks for.

#include <cstdint>
#include <utility>

#include "vornrun/algorithms/simulators/SimulationGenerator.h"

namespace vornrun {

class ChernoffGenerator final : public QuantitativeGenerator {
  public:
    /// Asks for trunc(4 ln(2 / confidence) / errorBound^2) traces: 1191 for an error bound of 0.05 and a confidence of
    /// 0.95. Neither parameter is checked; see total() for what then comes out.
    /// \param errorBound half-width of the interval around the estimate
    /// \param confidence used where the bound has the permitted error probability: a larger value asks for fewer traces
    ChernoffGenerator(double errorBound, double confidence);

    void reset() override;
    void addResult(bool result) override;
    bool done() override;
    /// The ratio of positive results less and plus the error bound, capped to [0, 1]; (0, 1) when nothing is counted.
    std::pair<double, double> getRatio() const override;
    /// The confidence as given.
    double getConfidence() const override;

    /// The number of results after which done() holds: the low 32 bits of the truncated bound. A negative bound (from
    /// a confidence above 2) wraps; one that no 64-bit integer holds, or that is no number, counts as 0.
    std::uint32_t total() const noexcept { return mTotal; }

  private:
    double mErrorBound;
    double mConfidence;
    std::uint32_t mTotal;
    std::uint32_t mCount = 0;
    std::uint32_t mPositive = 0;
};

}  // namespace vornrun
