#include "vornrun/algorithms/parser/ExpressionParser.h"

#include <boost/spirit/home/support/detail/hold_any.hpp>
#include <optional>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/XMLString.hpp>

#include "vornrun/StackGuard.h"
#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/Owned.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlNameTable.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"
#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {

using parser::at;
using parser::OperatorType;
using parser::VornXmlCorruptedVornException;
using parser::VornXmlUnexpectedValueException;
using xercesc::DOMElement;
namespace util = parser::util;

namespace parser {

OperatorType parsedIntToOperatorType(int number) {
    // 0 is an operator in spite of the words.
    if (number < 0 || number > 19)
        throw VornXmlUnexpectedValueException("", "A value for an operatortype, i.e., anything between 1 and 19.",
                                              std::to_string(number));
    return static_cast<OperatorType>(number);
}

OperatorType getOperatorContent(const DOMElement* element, std::string_view description) {
    const int number = util::getIntegerNumberContent(element, description);
    return placed(element, [&] { return parsedIntToOperatorType(number); });
}

}  // namespace parser

namespace {

using Tree = std::unique_ptr<VornExpressionTree>;

// Numbers in `node_type` with a meaning of their own; all others only mean a data type.
constexpr int ENUM_CONSTANT = 4;
constexpr int MODE_CONSTANT = 13;
constexpr int ERROR_STATE = 14;
constexpr int OTHER_MODE_CONSTANT = 15;
constexpr int LAST_NODE_TYPE = 20;

std::optional<VornDataTypeTag> dataTypeOf(int nodeType) {
    switch (nodeType) {
        case 0:
        case 7:
        case 8:
            return VornDataTypeTag::VornBool;
        case 1:
        case 19:
            return VornDataTypeTag::VornInt;
        case 2:
        case 20:
            return VornDataTypeTag::VornReal;
        case 3:
        case ENUM_CONSTANT:
            return VornDataTypeTag::VornEnum;
        case 5:
            return VornDataTypeTag::VornClock;
        case 6:
            return VornDataTypeTag::VornContinuous;
        case 12:
        case MODE_CONSTANT:
        case ERROR_STATE:
        case OTHER_MODE_CONSTANT:
            return VornDataTypeTag::VornMode;
        case 16:
            return VornDataTypeTag::VornInterval;
        default:
            return std::nullopt;
    }
}

/// \param element where the number is from
VornDataTypeTag expectDataTypeOf(int nodeType, const DOMElement* element) {
    if (const std::optional<VornDataTypeTag> type = dataTypeOf(nodeType)) return *type;
    throw at(element, VornXmlUnexpectedValueException("", "A nodetype encoding a datatype",
                                                      "Another nodetype: " + std::to_string(nodeType)));
}

/// The value has exactly the representation of the type.
template <class Value>
VornValue* constant(VornDataTypeTag tag, const Value& value) {
    return dynamic_cast<VornValue*>(VornExpressionConstructor::expressionTree(tag, boost::spirit::hold_any(value)));
}

VornValue* modeConstant(const std::string& name) {
    auto placeholder = std::make_unique<RealisedMode>(RealisedMode::DUMMY_ID, name);
    const RealisedMode* const mode = placeholder.get();
    VornValue* const value = new TypedVornValue<VornModeVal>(mode);  // adopts it
    static_cast<void>(placeholder.release());
    return value;
}

/// If the operator does not accept the operands, they stay with the caller, which deletes them.
template <class Op>
VornExpressionTree* binaryNode(Tree& left, Tree& right) {
    VornExpressionTree* const node = VornExpressionConstructor::expressionTree<Op>(left.get(), right.get());
    if (node == nullptr) return nullptr;
    static_cast<void>(left.release());
    static_cast<void>(right.release());
    return node;
}

template <class Op>
VornExpressionTree* unaryNode(Tree& operand) {
    VornExpressionTree* const node = VornExpressionConstructor::expressionTree<Op>(operand.get());
    if (node != nullptr) static_cast<void>(operand.release());
    return node;
}

VornExpressionTree* binaryNode(OperatorType op, Tree& left, Tree& right) {
    switch (op) {
        case OperatorType::Lt:
            return binaryNode<VornLt>(left, right);
        case OperatorType::LEq:
            return binaryNode<VornLEq>(left, right);
        case OperatorType::Gt:
            return binaryNode<VornGt>(left, right);
        case OperatorType::GEq:
            return binaryNode<VornGEq>(left, right);
        case OperatorType::Eq:
            return binaryNode<VornEq>(left, right);
        case OperatorType::NEq:
            return binaryNode<VornNEq>(left, right);
        case OperatorType::Plus:
            return binaryNode<VornPlus>(left, right);
        case OperatorType::Minus:
            return binaryNode<VornMinus>(left, right);
        case OperatorType::Multiply:
            return binaryNode<VornMultiply>(left, right);
        case OperatorType::Divide:
            return binaryNode<VornDivide>(left, right);
        case OperatorType::And:
            return binaryNode<VornAnd>(left, right);
        case OperatorType::Or:
            return binaryNode<VornOr>(left, right);
        case OperatorType::Iff:
            return binaryNode<VornIff>(left, right);
        case OperatorType::Imp:
            return binaryNode<VornImp>(left, right);
        case OperatorType::Mod:
            return binaryNode<VornMod>(left, right);
        case OperatorType::Not:
        case OperatorType::Invert:
            return nullptr;
    }
    return nullptr;  // 11, 13 and 14 name no operator
}

}  // namespace

class VornXmlParser::ExpressionParser::TypeNames final : public parser::XmlNameTable {
  public:
    const XMLCh* const binary = own("BinaryOperatorTreeNode");
    const XMLCh* const unary = own("UnaryOperatorTreeNode");
    const XMLCh* const caseExpression = own("CaseExpressionTreeNode");
    const XMLCh* const boolean = own("BooleanTreeNode");
    const XMLCh* const number = own("NumberTreeNode");
    const XMLCh* const identifier = own("IdentifierTreeNode");
    const XMLCh* const trajectory = own("TrajectoryEquationTreeNode");
};

VornXmlParser::ExpressionParser::ExpressionParser(parser::XmlContext& context)
    : AbstractVornXmlParser(context), mTypeNames(std::make_unique<TypeNames>()) {}

VornXmlParser::ExpressionParser::~ExpressionParser() = default;

VornExpressionTree* VornXmlParser::ExpressionParser::parseSubexpression(const DOMElement* element) const {
    if (stackNearlyExhausted()) throw at(element, VornXmlCorruptedVornException("Expression is nested too deeply"));
    parser::OpenElements::Entry entry(mOpen);
    entry.enter(element, sharedIdentifier(element));
    const XMLCh* const type = plainTypeAttribute(element);
    const auto is = [type](const XMLCh* name) { return xercesc::XMLString::equals(type, name); };
    if (is(mTypeNames->binary)) return parseBinaryExpression(element);
    if (is(mTypeNames->unary)) return parseUnaryExpression(element);
    if (is(mTypeNames->caseExpression)) return parseCaseExpression(element);
    if (is(mTypeNames->number) || is(mTypeNames->boolean)) return parseVornValue(element);
    if (is(mTypeNames->trajectory)) return parseTrajectoryNode(element);
    if (is(mTypeNames->identifier)) {
        const int nodeType = getNodeTypeForExpressionNode(element);
        if (nodeType == ENUM_CONSTANT || nodeType == MODE_CONSTANT || nodeType == OTHER_MODE_CONSTANT)
            return parseVornValue(element);
        return parseIdentifierNode(element);
    }
    throw at(element, VornXmlUnexpectedValueException("Unexpected node in epxression tree", "An expression type",
                                                      util::transcode(type)));
}

VornVariable* VornXmlParser::ExpressionParser::parseIdentifierNode(const DOMElement* element) const {
    std::string name = getNameFromChildNodes(element);
    const int nodeType = getNodeTypeForExpressionNode(element);
    const VornDataTypeTag type = expectDataTypeOf(nodeType, element);
    if (nodeType == ERROR_STATE) {
        // The error state of a component is its mode: the model has no variable of its own for it.
        const std::size_t suffix = name.find(".error");
        if (suffix == std::string::npos)
            throw at(element, VornXmlCorruptedVornException("Error field did not contain expected .error specified"));
        name.replace(suffix, std::string::npos, ".mode");
    }
    return VornExpressionConstructor::expressionVariable(type, name);
}

VornValue* VornXmlParser::ExpressionParser::parseVornValue(const DOMElement* element) const {
    return parseVornValueOfGivenType(element, getDataTypeForExpressionLeaves(element));
}

VornValue* VornXmlParser::ExpressionParser::parseVornValueOfGivenType(const DOMElement* element,
                                                                      VornDataTypeTag tag) const {
    const auto nameText = [&] {
        return util::getStringContent(
            expectChildNode(element, tags().name, "Enum type " + toString(tag) + " needs a name as value."));
    };
    const auto number = [&] {
        return expectChildNode(element, tags().number, "Data type " + toString(tag) + " needs a number as value.");
    };
    switch (tag) {
        case VornDataTypeTag::VornEnum:
            return constant(tag, nameText());
        case VornDataTypeTag::VornMode:
            return modeConstant(nameText());
        case VornDataTypeTag::VornBool: {
            const DOMElement* value =
                expectChildNode(element, tags().value, "Default value for VornBool needs a Boolean value.");
            return constant(tag, util::getBooleanContent(value, "Could not parse value type as Boolean."));
        }
        case VornDataTypeTag::VornInt:
            return constant(tag, long{util::getIntegerNumberContent(number(), "Could not parse value type as int.")});
        case VornDataTypeTag::VornReal:
        case VornDataTypeTag::VornContinuous:
        case VornDataTypeTag::VornClock:
            return constant(tag, util::getRealNumberContent(number(), "Could not parse value type as real number."));
        case VornDataTypeTag::VornInterval:
            break;
    }
    VORNRUN_LOG(sLogger, Error, "Unable to parse Vorn value of type " << tag);
    return nullptr;
}

int VornXmlParser::ExpressionParser::getNodeTypeForExpressionNode(const DOMElement* element) const {
    const DOMElement* const child =
        expectRereadChild(element, tags().nodeType, "Expression nodes need a node type to determine their data type.");
    const int number = util::getIntegerNumberContent(child, "Node types are encoded as integers.");
    if (number < 0 || number > LAST_NODE_TYPE || number == 17 || number == 18)
        throw at(child,
                 VornXmlUnexpectedValueException("", "A nodetype integer: {0,..16, 19, 20}", std::to_string(number)));
    return number;
}

VornDataTypeTag VornXmlParser::ExpressionParser::getDataTypeForExpressionLeaves(const DOMElement* element) const {
    return expectDataTypeOf(getNodeTypeForExpressionNode(element), element);
}

VornExpressionTree* VornXmlParser::ExpressionParser::parseBinaryExpression(const DOMElement* element) const {
    const DOMElement* leftElement =
        expectChildNode(element, tags().left, "Binary subexpression require a left hand side.");
    const DOMElement* rightElement =
        expectChildNode(element, tags().right, "Binary subexpressions require a right hand side.");
    const VornDataTypeTag leftType = getDataTypeForExpressionLeaves(leftElement);
    const VornDataTypeTag rightType = getDataTypeForExpressionLeaves(rightElement);
    Tree left(parseSubexpression(leftElement));
    Tree right(parseSubexpression(rightElement));
    const OperatorType op = parseOperator(element);
    if (left == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Parsing binary left subtree incomplete!");
        return nullptr;
    }
    if (right == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Parsing binary right subtree incomplete!");
        return nullptr;
    }
    warnOfMismatch(*left, leftType);
    warnOfMismatch(*right, rightType);
    return binaryNode(op, left, right);
}

VornExpressionTree* VornXmlParser::ExpressionParser::parseUnaryExpression(const DOMElement* element) const {
    const DOMElement* operandElement =
        expectChildNode(element, tags().subexpression, "Unary subexpression require a subexpression.");
    const VornDataTypeTag type = getDataTypeForExpressionLeaves(operandElement);
    Tree operand(parseSubexpression(operandElement));
    const OperatorType op = parseOperator(element);
    if (operand == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Parsing unary subtree incomplete!");
        return nullptr;
    }
    warnOfMismatch(*operand, type);
    if (op == OperatorType::Not) return unaryNode<VornNot>(operand);
    if (op == OperatorType::Invert) return unaryNode<VornInvert>(operand);
    return nullptr;
}

VornExpressionTree* VornXmlParser::ExpressionParser::parseCaseExpression(const DOMElement* element) const {
    const VornDataTypeTag type = getDataTypeForExpressionLeaves(element);
    const DOMElement* list = expectChildNode(element, tags().cases, "Case expressions require case tuples");
    std::vector<std::pair<std::unique_ptr<TypedVornExpressionTree<VornBool>>, Tree>> cases;
    for (const DOMElement* tuple : listChildrenWithTag(list, tags().caseTuple)) {
        cases.push_back(parseTuple(tuple));
        if (cases.back().second == nullptr) return nullptr;
    }
    const DOMElement* defaultElement =
        expectChildNode(element, tags().caseDefaultExpression, "Case expressions require default expression");
    const VornDataTypeTag defaultType = getDataTypeForExpressionLeaves(defaultElement);
    Tree defaultTree(parseSubexpression(defaultElement));
    if (defaultTree == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Parsing case subtree incomplete!");
        return nullptr;
    }
    warnOfMismatch(*defaultTree, defaultType);
    // The branches need not be of the declared type: they are converted at evaluation.
    return withTagClass(type, [&]<class T>() -> VornExpressionTree* {
        std::vector<CasePair> adopted;
        adopted.reserve(cases.size());
        for (auto& [condition, value] : cases) adopted.emplace_back(condition.release(), value.release());
        return new TypedCaseOperator<T>(adopted, defaultTree.release());
    });
}

std::pair<std::unique_ptr<TypedVornExpressionTree<VornBool>>, std::unique_ptr<VornExpressionTree>>
VornXmlParser::ExpressionParser::parseTuple(const DOMElement* element) const {
    const DOMElement* conditionElement = indexChild(element, 0);
    const DOMElement* valueElement = indexChild(element, 1);
    const VornDataTypeTag conditionType = getDataTypeForExpressionLeaves(conditionElement);
    const VornDataTypeTag valueType = getDataTypeForExpressionLeaves(valueElement);
    Tree condition(parseSubexpression(conditionElement));
    Tree value(parseSubexpression(valueElement));
    if (condition == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Parsing case condition incomplete!");
        return {};
    }
    auto* const boolean = dynamic_cast<TypedVornExpressionTree<VornBool>*>(condition.get());
    if (boolean == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Case condition not boolean!");
        return {};
    }
    warnOfMismatch(*condition, conditionType);
    if (value == nullptr) {
        VORNRUN_LOG(sLogger, Error, "Parsing case condition incomplete!");
        return {};
    }
    warnOfMismatch(*value, valueType);
    static_cast<void>(condition.release());
    return {std::unique_ptr<TypedVornExpressionTree<VornBool>>(boolean), std::move(value)};
}

VornExpressionTree* VornXmlParser::ExpressionParser::parseTrajectoryNode(const DOMElement*) const {
    // A trajectory within an expression does not restrict the present state: it is a term that is true.
    return constant(VornDataTypeTag::VornBool, true);
}

OperatorType VornXmlParser::ExpressionParser::parseOperator(const DOMElement* element) const {
    return parser::getOperatorContent(
        expectChildNode(element, tags().expressionOperator, "Operator type has to be specified."),
        "Operator types are encoded as integers");
}

void VornXmlParser::ExpressionParser::warnOfMismatch(const VornExpressionTree& tree, VornDataTypeTag expected) const {
    if (tree.type() != expected)
        VORNRUN_LOG(sLogger, Warn,
                    "Calculated expression tree type " << tree.type() << " does not match expect value " << expected);
}

}  // namespace vornrun
