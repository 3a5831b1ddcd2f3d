#include "vornrun/datastructures/property/CSLNextPathFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/FormulaPart.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"
#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

CSLNextPathFormula::CSLNextPathFormula(CSLStateFormula* operand, double lower, double upper)
    : mOperand(operand), mLower(lower), mUpper(upper) {}

PropertyResult CSLNextPathFormula::evaluate(RunContext* run, bool shallow) const {
    return evaluateAt(run->currentTime(), run, shallow);
}

PropertyResult CSLNextPathFormula::evaluateAt(Time now, RunContext* run, bool shallow) const {
    if (now > mUpper) return PropertyFalse;
    if (now >= mLower) {
        const PropertyResult operand = property::evaluate(mOperand, run, shallow, "operand", "a next formula");
        return operand == PropertyTrue ? PropertyTrue : PropertyUnknown;
    }
    return PropertyUnknown;
}

CSLNextPathFormula* CSLNextPathFormula::clone() const { return clone(property::clone(mOperand)); }

CSLNextPathFormula* CSLNextPathFormula::clone(CSLStateFormula* operand) const {
    return new CSLNextPathFormula(operand, mLower, mUpper);
}

std::ostream& CSLNextPathFormula::printFormula(std::ostream& stream) const {
    stream << "X[" << mLower << "," << mUpper << "]";
    property::print(stream, mOperand);
    return stream;
}

CSLFormula* CSLNextPathFormula::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

}  // namespace vornrun
