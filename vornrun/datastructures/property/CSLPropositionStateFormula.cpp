#include "vornrun/datastructures/property/CSLPropositionStateFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/FormulaPart.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"

namespace vornrun {

PropertyResult CSLPropositionStateFormula::evaluate(RunContext*, bool) const {
    if (mExpression == nullptr) [[unlikely]] {
        property::reportMissing("expression", "an atomic proposition (did its name resolve, and to a boolean?)");
    }
    const bool holds = mExpression->evaluateDirect();
    VORNRUN_LOG(sLogger, Debug, "Checking AP " << *mExpression << ": " << (holds ? "1" : "0"));
    return holds ? PropertyTrue : PropertyFalse;
}

CSLPropositionStateFormula* CSLPropositionStateFormula::clone() const { return clone(property::clone(mExpression)); }

CSLPropositionStateFormula* CSLPropositionStateFormula::clone(TypedVornExpressionTree<VornBool>* expression) const {
    return new CSLPropositionStateFormula(expression);
}

std::ostream& CSLPropositionStateFormula::printFormula(std::ostream& stream) const {
    property::print(stream, mExpression);
    return stream;
}

CSLFormula* CSLPropositionStateFormula::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

}  // namespace vornrun
