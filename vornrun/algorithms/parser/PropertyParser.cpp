#include "vornrun/algorithms/parser/PropertyParser.h"

#include <cassert>
#include <xercesc/dom/DOMElement.hpp>

#include "vornrun/StackGuard.h"
#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/algorithms/parser/Owned.h"
#include "vornrun/algorithms/parser/PropertyXmlTags.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/datastructures/property/CSLBinaryStateFormula.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLNextPathFormula.h"
#include "vornrun/datastructures/property/CSLPropositionStateFormula.h"
#include "vornrun/datastructures/property/CSLUnaryStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

namespace vornrun {

using parser::at;
using parser::VornXmlCorruptedVornException;
using parser::VornXmlUnexpectedNodeException;
using xercesc::DOMElement;
namespace util = parser::util;

namespace {

bool isNamed(const DOMElement* element, const XMLCh* name) { return util::elemMatchesTag(element, name, true); }

void refuseDeepNesting(const DOMElement* element) {
    if (stackNearlyExhausted()) throw at(element, VornXmlCorruptedVornException("Formula is nested too deeply"));
}

}  // namespace

VornXmlParser::PropertyParser::PropertyParser(parser::XmlContext& context, const ExpressionParser* expressionParser)
    : AbstractVornXmlParser(context), mExpressionParser(expressionParser), mNames(std::make_unique<PropertyXmlTags>()) {
    shareWith(*expressionParser);
}

VornXmlParser::PropertyParser::~PropertyParser() = default;

std::vector<CSLFormula*> VornXmlParser::PropertyParser::parseProperties(const DOMElement* root) {
    parser::Owned<CSLFormula> formulas;
    for (const DOMElement* child : listChildren(root))
        if (std::unique_ptr<CSLFormula> formula{parseProperty(child)}) formulas.push_back(std::move(formula));
    return parser::released(std::move(formulas));
}

CSLFormula* VornXmlParser::PropertyParser::parseProperty(const DOMElement* element) const {
    if (!isNamed(element, mNames->cslFormula)) {
        VORNRUN_LOG(sLogger, Debug, "Ignoring formula: " << util::nodeName(element, true));
        return nullptr;
    }
    const DOMElement* formula = firstChild(element);
    if (!isNamed(formula, mNames->probability)) {
        VORNRUN_LOG(sLogger, Debug, "Ignoring Unsupported CSL formula: " << util::nodeName(formula, true));
        return nullptr;
    }
    return parseStateFormula(formula);
}

CSLStateFormula* VornXmlParser::PropertyParser::parseStateFormula(const DOMElement* element) const {
    refuseDeepNesting(element);
    parser::OpenElements::Entry entry(mOpenStateFormulas);
    entry.enter(element, sharedIdentifier(element));
    while (isNamed(element, mNames->formula)) {
        element = firstChild(element);
        entry.enter(element, sharedIdentifier(element));
    }
    const auto is = [element](const XMLCh* name) { return isNamed(element, name); };
    if (is(mNames->probability)) return parseProbability(element);
    if (is(mNames->atomicProposition)) return parseProposition(element);
    if (is(mNames->conjunction)) return parseBinary<CSLAnd>(element);
    if (is(mNames->disjunction)) return parseBinary<CSLOr>(element);
    if (is(mNames->implication)) return parseBinary<CSLImp>(element);
    if (is(mNames->equivalence) || is(mNames->equality)) return parseBinary<CSLIff>(element);
    if (is(mNames->negation)) {
        std::unique_ptr<CSLStateFormula> operand{parseStateFormula(firstChild(element))};
        return new CSLUnaryStateFormula<CSLNot>(operand.release());
    }
    if (is(mNames->constantTrue)) return new CSLTrue;
    if (is(mNames->constantFalse)) return new CSLFalse;
    throw at(element, VornXmlUnexpectedNodeException("Unknown state formula node", "State formula node",
                                                     util::nodeName(element, true)));
}

CSLStateFormula* VornXmlParser::PropertyParser::parseProbability(const DOMElement* element) const {
    const CSLProbabilityStateFormula::Operator op =
        parseProbOperator(expectChildNode(element, mNames->comparisonOperator, "P node must have operator", true));
    const double bound = util::getRealNumberContent(
        expectValue(element, mNames->threshold, "P node must have threshold"), "Threshold must be double");
    std::unique_ptr<CSLPathFormula> path{parsePathFormula(indexChild(element, 2))};
    return new CSLProbabilityStateFormula(path.release(), bound, op);
}

CSLStateFormula* VornXmlParser::PropertyParser::parseProposition(const DOMElement* element) const {
    const DOMElement* const expression = firstChild(element);
    std::unique_ptr<VornExpressionTree> tree{mExpressionParser->parseSubexpression(expression)};
    if (tree == nullptr)
        throw at(expression, VornXmlCorruptedVornException("Failed to parse expression in atomic proposition"));
    auto proposition = parser::castOrDelete<TypedVornExpressionTree<VornBool>>(std::move(tree));
    if (proposition == nullptr)
        throw at(expression, VornXmlCorruptedVornException("Type of expression in atomic proposition is not boolean"));
    return new CSLPropositionStateFormula(proposition.release());
}

template <class Op>
CSLStateFormula* VornXmlParser::PropertyParser::parseBinary(const DOMElement* element) const {
    std::unique_ptr<CSLStateFormula> left = stateFormulaAt(element, 0);
    std::unique_ptr<CSLStateFormula> right = stateFormulaAt(element, 1);
    return new CSLBinaryStateFormula<Op>(left.release(), right.release());
}

CSLProbabilityStateFormula::Operator VornXmlParser::PropertyParser::parseProbOperator(const DOMElement* element) const {
    using Operator = CSLProbabilityStateFormula::Operator;
    if (findChildWithName(element, mNames->lessEqual, true) != nullptr) return Operator::lessEqual;
    if (findChildWithName(element, mNames->lessThan, true) != nullptr) return Operator::less;
    if (findChildWithName(element, mNames->greaterEqual, true) != nullptr) return Operator::greaterEqual;
    if (findChildWithName(element, mNames->greaterThan, true) != nullptr) return Operator::greater;
    throw at(element, VornXmlCorruptedVornException("No or bad operator for P operator"));
}

CSLPathFormula* VornXmlParser::PropertyParser::parsePathFormula(const DOMElement* element) const {
    refuseDeepNesting(element);
    parser::OpenElements::Entry entry(mOpenPathFormulas);
    entry.enter(element, sharedIdentifier(element));
    while (isNamed(element, mNames->formula)) {
        if (element->getFirstElementChild() == nullptr)
            throw at(element, VornXmlCorruptedVornException("Formula node has no child"));
        element = firstChild(element);
        entry.enter(element, sharedIdentifier(element));
    }
    // Both bounds are read before the kind: there is no formula without bounds.
    const DOMElement* lowerElement = expectValue(element, mNames->lowerBound, "Path formula missing lower bound");
    const DOMElement* upperElement = expectValue(element, mNames->upperBound, "Path formula missing upper bound");
    const double lower = util::getRealNumberContent(lowerElement, "Lower bound must be double");
    const double upper = util::getRealNumberContent(upperElement, "Upper bound must be double");
    if (isNamed(element, mNames->until)) {
        std::unique_ptr<CSLStateFormula> left = stateFormulaAt(element, 2);
        std::unique_ptr<CSLStateFormula> right = stateFormulaAt(element, 3);
        return new CSLUntilPathFormula(left.release(), right.release(), lower, upper);
    }
    if (isNamed(element, mNames->next)) {
        std::unique_ptr<CSLStateFormula> operand = stateFormulaAt(element, 2);
        return new CSLNextPathFormula(operand.release(), lower, upper);
    }
    throw at(element, VornXmlUnexpectedNodeException("Unknown path formula node", "Path formula node",
                                                     util::nodeName(element, true)));
}

std::unique_ptr<CSLStateFormula> VornXmlParser::PropertyParser::stateFormulaAt(const DOMElement* element,
                                                                               unsigned int i) const {
    return std::unique_ptr<CSLStateFormula>{parseStateFormula(indexChild(element, i))};
}

const DOMElement* VornXmlParser::PropertyParser::expectValue(const DOMElement* element, const XMLCh* tag,
                                                             std::string_view description) const {
    return expectChildNode(expectChildNode(element, tag, description, true), mNames->value, description, true);
}

}  // namespace vornrun
