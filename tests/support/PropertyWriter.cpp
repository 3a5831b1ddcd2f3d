#include "tests/support/PropertyWriter.h"

namespace vornrun::test {

namespace {

Xml valueXml(const std::string& tag, double value) { return Xml(tag, {Xml("value", numberText(value))}); }

std::string boundName(Bound bound) {
    switch (bound) {
        case Bound::Below:
            return "lessThan";
        case Bound::AtMost:
            return "lessEqual";
        case Bound::Above:
            return "greaterThan";
        case Bound::AtLeast:
            return "greaterEqual";
    }
    return "";
}

StateFormula joined(const std::string& tag, const StateFormula& left, const StateFormula& right) {
    return StateFormula(Xml(tag, {left.xml(), right.xml()}));
}

void addPrefix(Xml& element, const std::string& prefix) {
    const bool isProposition = element.name() == "atomicProposition";
    if (!element.name().empty()) element.rename(prefix + ":" + element.name());
    if (isProposition) return;  // the names of expression elements are matched with their prefix
    for (Xml& child : element.children()) addPrefix(child, prefix);
}

}  // namespace

StateFormula::StateFormula(const Expr& proposition) : mXml("atomicProposition", {proposition.xml("expression")}) {}

StateFormula atom(const Expr& proposition) { return proposition; }
StateFormula truth() { return StateFormula(Xml("true")); }
StateFormula falsity() { return StateFormula(Xml("false")); }
StateFormula operator!(const StateFormula& operand) { return StateFormula(Xml("not", {operand.xml()})); }
StateFormula operator&&(const StateFormula& left, const StateFormula& right) { return joined("and", left, right); }
StateFormula operator||(const StateFormula& left, const StateFormula& right) { return joined("or", left, right); }
StateFormula imp(const StateFormula& left, const StateFormula& right) { return joined("imp", left, right); }
StateFormula iff(const StateFormula& left, const StateFormula& right) { return joined("iff", left, right); }
StateFormula eq(const StateFormula& left, const StateFormula& right) { return joined("eq", left, right); }

StateFormula p(Bound bound, double threshold, const PathFormula& path) {
    return StateFormula(
        Xml("p", {Xml("comparisonOperator", {Xml(boundName(bound))}), valueXml("threshold", threshold), path.xml()}));
}

PathFormula until(const StateFormula& left, const StateFormula& right, double lower, double upper) {
    return PathFormula(
        Xml("u", {valueXml("lowerBound", lower), valueXml("upperBound", upper), left.xml(), right.xml()}));
}

PathFormula eventually(const StateFormula& goal, double lower, double upper) {
    return until(truth(), goal, lower, upper);
}

PathFormula next(const StateFormula& goal, double lower, double upper) {
    return PathFormula(Xml("x", {valueXml("lowerBound", lower), valueXml("upperBound", upper), goal.xml()}));
}

StateFormula wrapped(const StateFormula& formula) { return StateFormula(Xml("formula", {formula.xml()})); }
PathFormula wrapped(const PathFormula& formula) { return PathFormula(Xml("formula", {formula.xml()})); }

PropertyWriter& PropertyWriter::p(const PathFormula& path) { return p(Bound::Above, 0.0, path); }

PropertyWriter& PropertyWriter::p(Bound bound, double threshold, const PathFormula& path) {
    return formula(test::p(bound, threshold, path));
}

PropertyWriter& PropertyWriter::formula(const StateFormula& formula) {
    return splice(Xml("cslFormula", {formula.xml()}));
}

PropertyWriter& PropertyWriter::splice(Xml child) {
    mFormulae.push_back(std::move(child));
    return *this;
}

PropertyWriter& PropertyWriter::prefix(const std::string& prefix) {
    mPrefix = prefix;
    return *this;
}

Xml PropertyWriter::document() const {
    Xml root("formulae", mFormulae);
    if (mPrefix.empty()) return root;
    addPrefix(root, mPrefix);
    return root.attribute("xmlns:" + mPrefix, "urn:formulae");
}

}  // namespace vornrun::test
