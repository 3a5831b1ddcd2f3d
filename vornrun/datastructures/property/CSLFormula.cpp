#include "vornrun/datastructures/property/CSLFormula.h"

#include <ostream>

namespace vornrun {

const Log CSLFormula::sLogger("root.formula");

std::ostream& operator<<(std::ostream& stream, const CSLFormula& formula) { return formula.printFormula(stream); }

}  // namespace vornrun
