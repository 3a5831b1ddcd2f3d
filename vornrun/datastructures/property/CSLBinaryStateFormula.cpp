#include "vornrun/datastructures/property/CSLBinaryStateFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/FormulaPart.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"

namespace vornrun {

CSLFormula* CSLAbstractBinaryStateFormula::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

template <class Op>
PropertyResult CSLBinaryStateFormula<Op>::evaluate(RunContext* run, bool shallow) const {
    const PropertyResult left = property::evaluate(mLeft, run, shallow, "left operand", Op::op);
    const PropertyResult right = property::evaluate(mRight, run, shallow, "right operand", Op::op);
    return combine<Op>(left, right);
}

template <class Op>
CSLBinaryStateFormula<Op>* CSLBinaryStateFormula<Op>::clone() const {
    std::unique_ptr<CSLStateFormula> left(property::clone(mLeft));
    CSLStateFormula* const right = property::clone(mRight);
    return clone(left.release(), right);
}

template <class Op>
CSLBinaryStateFormula<Op>* CSLBinaryStateFormula<Op>::clone(CSLStateFormula* left, CSLStateFormula* right) const {
    return new CSLBinaryStateFormula(left, right);
}

template <class Op>
std::ostream& CSLBinaryStateFormula<Op>::printFormula(std::ostream& stream) const {
    stream << "(";
    property::print(stream, mLeft);
    stream << " " << Op::op << " ";
    property::print(stream, mRight);
    return stream << ")";
}

template class CSLBinaryStateFormula<CSLAnd>;
template class CSLBinaryStateFormula<CSLOr>;
template class CSLBinaryStateFormula<CSLImp>;
template class CSLBinaryStateFormula<CSLIff>;

}  // namespace vornrun
