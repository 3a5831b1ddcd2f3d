#pragma once
/// \file
/// A generator counts the verdicts of traces, decides when there are enough, and gives the result. Generators have no
/// lock: threads that share one take turns.

#include <utility>

namespace vornrun {

/// A counter of trace results with a stopping rule.
class SimulationGenerator {
  public:
    SimulationGenerator() = default;
    SimulationGenerator(const SimulationGenerator&) = delete;
    SimulationGenerator& operator=(const SimulationGenerator&) = delete;
    virtual ~SimulationGenerator();

    /// Forgets all results.
    virtual void reset() = 0;
    /// Counts one trace. `result` is true when the property holds in it.
    virtual void addResult(bool result) = 0;
    /// True when the results counted so far suffice.
    virtual bool done() = 0;
};

/// A generator that estimates a probability.
class QuantitativeGenerator : public SimulationGenerator {
  public:
    /// Lower and upper bound of the estimated probability.
    virtual std::pair<double, double> getRatio() const = 0;
    /// The confidence that belongs to the bounds; 0 when nothing is claimed about it.
    virtual double getConfidence() const = 0;
};

/// A generator that decides whether a property holds, without an estimate of its probability.
class QualitativeGenerator : public SimulationGenerator {
  public:
    /// The verdict. \pre done()
    virtual bool getResult() const = 0;
};

}  // namespace vornrun
