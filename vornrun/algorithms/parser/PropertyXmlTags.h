#pragma once
/// \file
/// The element names of the property file, outside its expressions.

#include "vornrun/algorithms/parser/XmlNameTable.h"

namespace vornrun {

/// `ltlFormula`, `ctlFormula`, `pctlFormula`, `mitlFormula`, `longRunAverage` and `expectedTime` are known names that
/// no parser looks for: elements of these names are treated as unknown formulas.
class PropertyXmlTags final : public parser::XmlNameTable {
  public:
    const XMLCh* const ltlFormula = own("ltlFormula");
    const XMLCh* const ctlFormula = own("ctlFormula");
    const XMLCh* const cslFormula = own("cslFormula");
    const XMLCh* const pctlFormula = own("pctlFormula");
    const XMLCh* const mitlFormula = own("mitlFormula");
    const XMLCh* const formula = own("formula");
    const XMLCh* const conjunction = own("and");
    const XMLCh* const disjunction = own("or");
    const XMLCh* const implication = own("imp");
    const XMLCh* const equivalence = own("iff");
    const XMLCh* const equality = own("eq");
    const XMLCh* const negation = own("not");
    const XMLCh* const constantTrue = own("true");
    const XMLCh* const constantFalse = own("false");
    const XMLCh* const atomicProposition = own("atomicProposition");
    const XMLCh* const probability = own("p");
    const XMLCh* const comparisonOperator = own("comparisonOperator");
    const XMLCh* const greaterThan = own("greaterThan");
    const XMLCh* const greaterEqual = own("greaterEqual");
    const XMLCh* const lessThan = own("lessThan");
    const XMLCh* const lessEqual = own("lessEqual");
    const XMLCh* const threshold = own("threshold");
    const XMLCh* const until = own("u");
    const XMLCh* const next = own("x");
    const XMLCh* const lowerBound = own("lowerBound");
    const XMLCh* const upperBound = own("upperBound");
    const XMLCh* const value = own("value");
    const XMLCh* const longRunAverage = own("lra");
    const XMLCh* const expectedTime = own("et");
};

}  // namespace vornrun
