#include "vornrun/datastructures/property/CSLUnaryStateFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/FormulaPart.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"

namespace vornrun {

CSLFormula* CSLAbstractUnaryStateFormula::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

template <class Op>
PropertyResult CSLUnaryStateFormula<Op>::evaluate(RunContext* run, bool shallow) const {
    return combine<Op>(property::evaluate(mOperand, run, shallow, "operand", Op::op));
}

template <class Op>
CSLUnaryStateFormula<Op>* CSLUnaryStateFormula<Op>::clone() const {
    return clone(property::clone(mOperand));
}

template <class Op>
CSLUnaryStateFormula<Op>* CSLUnaryStateFormula<Op>::clone(CSLStateFormula* operand) const {
    return new CSLUnaryStateFormula(operand);
}

template <class Op>
std::ostream& CSLUnaryStateFormula<Op>::printFormula(std::ostream& stream) const {
    stream << "(" << Op::op << " ";
    property::print(stream, mOperand);
    return stream << ")";
}

template class CSLUnaryStateFormula<CSLNot>;

}  // namespace vornrun
