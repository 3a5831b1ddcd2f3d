#pragma once
/// \file
/// Expression elements of either input file become expression trees, value elements become constants.

#include <memory>
#include <string_view>
#include <utility>

#include "vornrun/algorithms/parser/OpenElements.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorType.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

class VornValue;
class VornVariable;

namespace parser {
/// The operator of a number from 0 to 19. \throws VornXmlUnexpectedValueException for any other
OperatorType parsedIntToOperatorType(int number);
/// The operator whose number is the text of an element.
/// \throws VornXmlUnexpectedValueException for a text that is no such number, with the description for one that is no
///         number at all
OperatorType getOperatorContent(const xercesc::DOMElement* element, std::string_view description);
}  // namespace parser

/// Structural faults throw VornXmlException. Faults of types are logged, and the result is null; so is the result of
/// every expression around it. The caller owns all results.
/// \pre no element is null
class VornXmlParser::ExpressionParser final : public parser::AbstractVornXmlParser {
  public:
    explicit ExpressionParser(parser::XmlContext& context);
    ~ExpressionParser() override;  // in the source, where TypeNames is complete

    /// The tree of an expression element, or null when an operand in it failed.
    /// \throws VornXmlCorruptedVornException "Expression is nested too deeply" when the stack does not suffice, or
    ///         with the identifier when the expression contains itself by references
    VornExpressionTree* parseSubexpression(const xercesc::DOMElement* element) const;
    /// The variable that an element names. The result is not null.
    VornVariable* parseIdentifierNode(const xercesc::DOMElement* element) const;
    /// A constant whose type is that of the element's node type. Null as in the next operation.
    VornValue* parseVornValue(const xercesc::DOMElement* element) const;
    /// A constant of the given type; null, with an ERROR record, for an interval: the file cannot have such a constant.
    VornValue* parseVornValueOfGivenType(const xercesc::DOMElement* element, VornDataTypeTag tag) const;
    /// The number in `node_type`, 0 to 20 without 17 and 18.
    int getNodeTypeForExpressionNode(const xercesc::DOMElement* element) const;
    /// The data type of that number.
    VornDataTypeTag getDataTypeForExpressionLeaves(const xercesc::DOMElement* element) const;

    // The cases of parseSubexpression(), by the attribute "type". Null as there.

    VornExpressionTree* parseBinaryExpression(const xercesc::DOMElement* element) const;
    VornExpressionTree* parseUnaryExpression(const xercesc::DOMElement* element) const;
    VornExpressionTree* parseCaseExpression(const xercesc::DOMElement* element) const;
    /// The constant true, whatever the element contains.
    VornExpressionTree* parseTrajectoryNode(const xercesc::DOMElement* element) const;

  private:
    class TypeNames;  // the texts of the attribute "type"

    /// One tuple of a case expression; nulls when a part of it failed.
    std::pair<std::unique_ptr<TypedVornExpressionTree<VornBool>>, std::unique_ptr<VornExpressionTree>> parseTuple(
        const xercesc::DOMElement* element) const;
    parser::OperatorType parseOperator(const xercesc::DOMElement* element) const;
    void warnOfMismatch(const VornExpressionTree& tree, VornDataTypeTag expected) const;

    std::unique_ptr<TypeNames> mTypeNames;
    mutable parser::OpenElements mOpen;  // empty when no call is in progress
};

}  // namespace vornrun
