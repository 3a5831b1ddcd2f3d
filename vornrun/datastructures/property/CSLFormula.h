#pragma once
/// \file
/// The root of the formulas of Continuous Stochastic Logic. A tree is immutable; all state of a run lies in the
/// simulator. Parsed trees hold variables by name and are shared by all workers; what is evaluated is a copy bound to
/// one worker's values, made by VariableSubstitutionPropertyVisitor.

#include <iosfwd>

#include "vornrun/Log.h"
#include "vornrun/datastructures/property/PropertyResult.h"

namespace vornrun {

class PropertyVisitor;
class Simulator;

class CSLFormula {
  public:
    CSLFormula() = default;
    CSLFormula(const CSLFormula&) = delete;
    CSLFormula& operator=(const CSLFormula&) = delete;
    virtual ~CSLFormula() = default;

    /// The verdict in the simulator's current state. The step path: allocates nothing.
    /// \param shallow answers PropertyUnknown for nested probability formulas instead of simulating them
    /// \throws missing_operand naming a part that is null, for instance because a name in it did not resolve
    virtual PropertyResult evaluate(Simulator* simulator, bool shallow) const = 0;
    /// A deep copy; the caller owns it.
    virtual CSLFormula* clone() const = 0;
    /// Writes the textual form, numbers in the stream's format, "(null)" for a missing part.
    virtual std::ostream& printFormula(std::ostream& stream) const = 0;
    /// Calls the visitor's operation for this class and returns the new formula, owned by the caller.
    virtual CSLFormula* accept(PropertyVisitor& visitor) const = 0;

  protected:
    static const Log sLogger;
};

std::ostream& operator<<(std::ostream& stream, const CSLFormula& formula);

}  // namespace vornrun
