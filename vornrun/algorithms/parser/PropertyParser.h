#pragma once
/// \file
/// The property file: formulas of Continuous Stochastic Logic. Names are matched on the local name, since the writer of
/// the file uses namespaces; within an expression they are matched as in the model.

#include <memory>
#include <string_view>
#include <vector>

#include "vornrun/algorithms/parser/OpenElements.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"

namespace vornrun {

class CSLFormula;
class CSLPathFormula;
class CSLStateFormula;
class PropertyXmlTags;

/// A formula that is not a `cslFormula` with a `p` at its top is skipped with a DEBUG line. Within a `p` every fault
/// stops the whole parse. The caller owns all results.
/// \pre no element is null
class VornXmlParser::PropertyParser final : public parser::AbstractVornXmlParser {
  public:
    /// \param expressionParser for atomic propositions; not owned, not null, outlives this object
    PropertyParser(parser::XmlContext& context, const ExpressionParser* expressionParser);
    ~PropertyParser() override;  // in the source, where PropertyXmlTags is complete

    /// The formulas to be checked among the children of the root, in file order.
    std::vector<CSLFormula*> parseProperties(const xercesc::DOMElement* root);
    /// Null when the element is not a formula to be checked.
    CSLFormula* parseProperty(const xercesc::DOMElement* element) const;
    // Both throw VornXmlCorruptedVornException "Formula is nested too deeply" when the stack does not suffice, or
    // with the identifier when the formula contains itself by references.
    CSLStateFormula* parseStateFormula(const xercesc::DOMElement* element) const;
    CSLPathFormula* parsePathFormula(const xercesc::DOMElement* element) const;
    /// The comparison in a `comparisonOperator`. Of several, the first of this list counts: `lessEqual`, `lessThan`,
    /// `greaterEqual`, `greaterThan`.
    CSLProbabilityStateFormula::Operator parseProbOperator(const xercesc::DOMElement* element) const;

  private:
    CSLStateFormula* parseProbability(const xercesc::DOMElement* element) const;
    CSLStateFormula* parseProposition(const xercesc::DOMElement* element) const;
    template <class Op>
    CSLStateFormula* parseBinary(const xercesc::DOMElement* element) const;
    /// The state formula at position i from 0.
    std::unique_ptr<CSLStateFormula> stateFormulaAt(const xercesc::DOMElement* element, unsigned int i) const;
    /// The element `value` in the child of that name; the description serves both misses.
    const xercesc::DOMElement* expectValue(const xercesc::DOMElement* element, const XMLCh* tag,
                                           std::string_view description) const;

    const ExpressionParser* mExpressionParser;
    std::unique_ptr<PropertyXmlTags> mNames;
    // Both are empty when no call is in progress.
    mutable parser::OpenElements mOpenStateFormulas;
    mutable parser::OpenElements mOpenPathFormulas;
};

}  // namespace vornrun
