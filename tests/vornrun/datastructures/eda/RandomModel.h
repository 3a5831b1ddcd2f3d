#pragma once
/// \file
/// Random models of one to four levels, for tests that hold whatever the model is.
///
/// Time decides nothing by a tolerance: values are multiples of 0.5 as long as every delay is one, rates are powers of
/// two, and the constants that values are compared with lie halfway between multiples of 0.5. What is compared with a
/// constant therefore never equals it at a moment that a test looks at, neither at multiples of 0.5 nor at the delays
/// of probeDelays().

#include <cstdint>
#include <random>
#include <vector>

#include "tests/support/ModelWriter.h"

namespace vornrun::test {

/// Choices that a seed alone decides, on every machine.
class Choices {
  public:
    explicit Choices(unsigned int seed) : mEngine(seed) {}

    /// A number from 0 to `count` - 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(mEngine() % count); }
    /// A number from `least` to `most`.
    std::size_t between(std::size_t least, std::size_t most) { return least + below(most - least + 1); }
    bool chance(unsigned int percent) { return below(100) < percent; }
    template <class Element>
    const Element& oneOf(const std::vector<Element>& elements) {
        return elements[below(elements.size())];
    }

  private:
    std::mt19937 mEngine;
};

/// A model of exactly one root, the implementation "C0.i". Components have up to three subcomponents, some of them in
/// some modes only; modes of kind initial and activation; invariants, clocks, a continuous variable with trajectories;
/// event connections (also passive, also in some modes only); transitions on subcomponents' ports; reactivation
/// transitions; flows and data connections without cycles.
ModelWriter randomModel(Choices& choices);

/// Delays up to 8 at which no comparison of a random model is near its bound: some multiples of 0.5, and some halfway
/// between multiples of 1/16.
std::vector<double> probeDelays(Choices& choices);

}  // namespace vornrun::test
