#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"

#include <ostream>

#include "vornrun/datastructures/property/FormulaPart.h"
#include "vornrun/datastructures/property/PropertyVisitor.h"
#include "vornrun/datastructures/property/RunContext.h"

namespace vornrun {

namespace {

constexpr double PROBABILITY_TOLERANCE = 5e-7;

bool compares(CSLProbabilityStateFormula::Operator op, double bound, double estimate) {
    using Operator = CSLProbabilityStateFormula::Operator;
    switch (op) {
        case Operator::less:
            return bound - PROBABILITY_TOLERANCE > estimate;
        case Operator::lessEqual:
            return bound + PROBABILITY_TOLERANCE >= estimate;
        case Operator::greater:
            return estimate > bound + PROBABILITY_TOLERANCE;
        case Operator::greaterEqual:
            return estimate >= bound - PROBABILITY_TOLERANCE;
    }
    return false;
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, CSLProbabilityStateFormula::Operator op) {
    using Operator = CSLProbabilityStateFormula::Operator;
    switch (op) {
        case Operator::less:
            return stream << "<";
        case Operator::lessEqual:
            return stream << "<=";
        case Operator::greater:
            return stream << ">";
        case Operator::greaterEqual:
            return stream << ">=";
    }
    return stream << "??";
}

CSLProbabilityStateFormula::CSLProbabilityStateFormula(CSLPathFormula* path, double bound, Operator op)
    : mPath(path), mBound(bound), mOperator(op) {}

PropertyResult CSLProbabilityStateFormula::evaluate(RunContext* run, bool shallow) const {
    if (shallow) return PropertyUnknown;
    if (mPath == nullptr) property::reportMissing("path formula", "a probability formula");
    // An exception of the nested runs ends the outer run too, so that nobody needs the saved state any more.
    run->pushState();
    const double estimate = run->evaluate(mPath.get());
    run->popState();
    return verdictOn(estimate);
}

PropertyResult CSLProbabilityStateFormula::verdictOn(double estimate) const noexcept {
    return compares(mOperator, mBound, estimate) ? PropertyTrue : PropertyFalse;
}

CSLProbabilityStateFormula* CSLProbabilityStateFormula::clone() const { return clone(property::clone(mPath)); }

CSLProbabilityStateFormula* CSLProbabilityStateFormula::clone(CSLPathFormula* path) const {
    return new CSLProbabilityStateFormula(path, mBound, mOperator);
}

std::ostream& CSLProbabilityStateFormula::printFormula(std::ostream& stream) const {
    stream << "P[" << mOperator;
    const std::streamsize formerPrecision = stream.precision(2);
    stream << mBound;
    stream.precision(formerPrecision);
    stream << "]";
    property::print(stream, mPath);
    return stream;
}

CSLFormula* CSLProbabilityStateFormula::accept(PropertyVisitor& visitor) const { return visitor.visit(this); }

}  // namespace vornrun
