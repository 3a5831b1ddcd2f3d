#pragma once
/// \file
/// A formula whose verdicts the test writes down.

#include <functional>
#include <ostream>
#include <utility>
#include <vector>

#include "vornrun/datastructures/property/CSLFormula.h"

namespace vornrun::test {

/// Gives the listed verdicts to the evaluations of one run after another and then the last one for ever; notes which
/// of them were shallow.
class VerdictFormula final : public CSLFormula {
  public:
    explicit VerdictFormula(std::vector<PropertyResult> verdicts) : mVerdicts(std::move(verdicts)) {}

    PropertyResult evaluate(RunContext* run, bool shallow) const override {
        shallowness.push_back(shallow);
        if (onEvaluate) onEvaluate(run, shallow);
        const PropertyResult verdict = mVerdicts[mNext];
        if (mNext + 1 < mVerdicts.size()) ++mNext;
        return verdict;
    }
    VerdictFormula* clone() const override { return new VerdictFormula(mVerdicts); }
    std::ostream& printFormula(std::ostream& stream) const override { return stream << "verdicts"; }
    VerdictFormula* accept(PropertyVisitor&) const override {
        auto* copy = clone();
        copy->onEvaluate = onEvaluate;
        return copy;
    }

    mutable std::vector<bool> shallowness;
    std::function<void(RunContext*, bool)> onEvaluate;

  private:
    std::vector<PropertyResult> mVerdicts;
    mutable std::size_t mNext = 0;
};

}  // namespace vornrun::test
