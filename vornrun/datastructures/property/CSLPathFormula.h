#pragma once
/// \file
/// Formulas about one run. They are evaluated in each state of the run until the verdict is known.

#include "vornrun/datastructures/property/CSLFormula.h"

namespace vornrun {

class CSLPathFormula : public CSLFormula {
  public:
    CSLPathFormula* clone() const override = 0;
};

}  // namespace vornrun
