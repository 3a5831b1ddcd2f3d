#pragma once
/// \file
/// The state formulas true and false.

#include "vornrun/datastructures/property/CSLStateFormula.h"

namespace vornrun {

class CSLTrue final : public CSLStateFormula {
  public:
    PropertyResult evaluate(RunContext*, bool) const override { return PropertyTrue; }
    CSLTrue* clone() const override { return new CSLTrue; }
    std::ostream& printFormula(std::ostream& stream) const override;
    CSLFormula* accept(PropertyVisitor& visitor) const override;
};

class CSLFalse final : public CSLStateFormula {
  public:
    PropertyResult evaluate(RunContext*, bool) const override { return PropertyFalse; }
    CSLFalse* clone() const override { return new CSLFalse; }
    std::ostream& printFormula(std::ostream& stream) const override;
    CSLFormula* accept(PropertyVisitor& visitor) const override;
};

}  // namespace vornrun
