#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/FormulaPart.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"
#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

CSLUntilPathFormula::CSLUntilPathFormula(CSLStateFormula* left, CSLStateFormula* right, double lower, double upper)
    : mLeft(left), mRight(right), mLower(lower), mUpper(upper) {}

PropertyResult CSLUntilPathFormula::evaluate(RunContext* run, bool shallow) const {
    return evaluateAt(run->currentTime(), run, shallow);
}

PropertyResult CSLUntilPathFormula::evaluateAt(Time now, RunContext* run, bool shallow) const {
    if (now > mUpper) return PropertyFalse;
    if (now >= mLower) {
        const PropertyResult right = property::evaluate(mRight, run, shallow, "right operand", "an until formula");
        return right == PropertyTrue ? PropertyTrue : PropertyUnknown;
    }
    const PropertyResult left = property::evaluate(mLeft, run, shallow, "left operand", "an until formula");
    return left == PropertyTrue ? PropertyUnknown : PropertyFalse;
}

CSLUntilPathFormula* CSLUntilPathFormula::clone() const {
    std::unique_ptr<CSLStateFormula> left(property::clone(mLeft));
    CSLStateFormula* const right = property::clone(mRight);
    return clone(left.release(), right);
}

CSLUntilPathFormula* CSLUntilPathFormula::clone(CSLStateFormula* left, CSLStateFormula* right) const {
    return new CSLUntilPathFormula(left, right, mLower, mUpper);
}

std::ostream& CSLUntilPathFormula::printFormula(std::ostream& stream) const {
    property::print(stream, mLeft);
    stream << "U[" << mLower << "," << mUpper << "]";
    property::print(stream, mRight);
    return stream;
}

CSLFormula* CSLUntilPathFormula::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

}  // namespace vornrun
