#include "vornrun/datastructures/property/CSLConstantStateFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/PropertyVisitor.h"

namespace vornrun {

std::ostream& CSLTrue::printFormula(std::ostream& stream) const { return stream << "true"; }

CSLFormula* CSLTrue::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

std::ostream& CSLFalse::printFormula(std::ostream& stream) const { return stream << "false"; }

CSLFormula* CSLFalse::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

}  // namespace vornrun
