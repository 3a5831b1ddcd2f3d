#pragma once
/// \file
/// The root of the formulas of Continuous Stochastic Logic. A tree is immutable and holds no state of a run. A parsed
/// tree holds variables by name, and all workers share it. Each worker evaluates a copy that is bound to its own
/// values. VariableSubstitutionPropertyVisitor makes that copy.

#include <iosfwd>

#include "vornrun/Log.h"
#include "vornrun/datastructures/property/PropertyResult.h"

namespace vornrun {

class PropertyVisitor;
class RunContext;

class CSLFormula {
  public:
    CSLFormula() = default;
    CSLFormula(const CSLFormula&) = delete;
    CSLFormula& operator=(const CSLFormula&) = delete;
    virtual ~CSLFormula() = default;

    /// The verdict in the current state of the run. On the step path; allocates nothing.
    /// \param run not owned; may be null where neither the time nor a nested estimate is needed
    /// \param shallow answers PropertyUnknown for nested probability formulas instead of simulating them
    /// \throws missing_operand for a part that is null, for instance because a name in it did not resolve
    virtual PropertyResult evaluate(RunContext* run, bool shallow) const = 0;
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
