// The behaviour of an implementation: modes with invariants and trajectories, transitions with guards and effects.

#include <array>
#include <utility>

#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/algorithms/parser/TypeImplParser.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"

namespace vornrun {

using parser::at;
using parser::castOrDelete;
using parser::parsedFrom;
using parser::released;
using parser::util::getNaturalNumberContent;
using parser::util::getStringContent;
using xercesc::DOMElement;

namespace {

/// The mode type of a number in the file, whose order is not that of the enumeration.
VornModeType modeTypeOf(unsigned int number) {
    using enum VornModeType;
    static constexpr std::array types{initial, activation, error, plain};
    return number < types.size() ? types[number] : error;
}

template <class T>
std::unique_ptr<VornTrajectoryEquation> trajectory(std::unique_ptr<TypedVornVariable<VornContinuous>> variable,
                                                   std::unique_ptr<VornExpressionTree> rate) {
    // A rate is a constant: for any other expression the equation has a null.
    auto constant = castOrDelete<TypedVornValue<T>>(std::move(rate));
    return std::make_unique<TypedVornTrajectoryEquation<T>>(variable.release(), constant.release());
}

}  // namespace

parser::Owned<VornMode> VornXmlParser::TypeImplParser::readModes(const DOMElement* element) const {
    const Elements elements = listChildrenWithTag(element, tags().mode);
    if (elements.empty())
        throw at(element, parser::VornXmlNodeMissingException("", "Mode", parser::util::nodeName(element)));
    return parsedFrom<VornMode>(elements, [&](const DOMElement* mode) { return parseMode(mode); });
}

std::vector<VornMode*> VornXmlParser::TypeImplParser::parseModes(const DOMElement* element) const {
    return released(readModes(element));
}

VornMode* VornXmlParser::TypeImplParser::parseMode(const DOMElement* element) const {
    const std::string name = getNameFromChildNodes(element);
    const DOMElement* typeElement = expectChildNode(element, tags().modeType, "Mode type expected for modes");
    const VornModeType type = modeTypeOf(getNaturalNumberContent(typeElement, "Mode type"));

    // Trajectories belong to an invariant: without one they are not looked at.
    std::unique_ptr<VornLinearExpression> invariant;
    Owned<VornTrajectoryEquation> trajectories;
    if (const DOMElement* plain = findChildWithName(element, tags().modeInvariant)) {
        invariant = parseLinearExpression(plain, "Invariant is not of type BOOL", element,
                                          "Mode invariant was not properly preprocessed");
        if (const DOMElement* list = findChildWithName(element, tags().modeTrajectories))
            trajectories = readTrajectories(list);
    }
    const unsigned int id = VornComponentImplementationConstructor::mModeId++;
    return new VornMode(id, name, invariant.release(), released(std::move(trajectories)), type);
}

parser::Owned<VornTrajectoryEquation> VornXmlParser::TypeImplParser::readTrajectories(const DOMElement* element) const {
    Owned<VornTrajectoryEquation> trajectories;
    for (const DOMElement* equation : listOnlyChildrenWithTag(element, tags().trajectoryEquation))
        if (auto trajectory = parseTrajectory(equation)) trajectories.push_back(std::move(trajectory));
    return trajectories;
}

std::vector<VornTrajectoryEquation*> VornXmlParser::TypeImplParser::parseTrajectories(const DOMElement* element) const {
    return released(readTrajectories(element));
}

std::unique_ptr<VornTrajectoryEquation> VornXmlParser::TypeImplParser::parseTrajectory(
    const DOMElement* element) const {
    std::unique_ptr<VornExpressionTree> left(mExpressionParser->parseSubexpression(
        expectChildNode(element, tags().trajectoryVariable, "Trajectory must have variable")));
    std::unique_ptr<VornExpressionTree> rate(mExpressionParser->parseSubexpression(
        expectChildNode(element, tags().trajectoryExpression, "Trajectory must have expression")));
    auto variable = castOrDelete<TypedVornVariable<VornContinuous>>(std::move(left));
    // A right side with a fault of types becomes a null in an equation. The model is then refused where the rate is
    // needed; without the equation, the fault would go unnoticed.
    const VornDataTypeTag type = rate == nullptr ? VornDataTypeTag::VornReal : rate->type();
    switch (type) {
        case VornDataTypeTag::VornInt:
            return trajectory<VornInt>(std::move(variable), std::move(rate));
        case VornDataTypeTag::VornContinuous:
            return trajectory<VornContinuous>(std::move(variable), std::move(rate));
        case VornDataTypeTag::VornReal:
            return trajectory<VornReal>(std::move(variable), std::move(rate));
        case VornDataTypeTag::VornBool:
        case VornDataTypeTag::VornClock:
        case VornDataTypeTag::VornEnum:
        case VornDataTypeTag::VornInterval:
        case VornDataTypeTag::VornMode:
            break;
    }
    return nullptr;
}

std::unique_ptr<TypedVornExpressionTree<VornBool>> VornXmlParser::TypeImplParser::parseBoolean(
    const DOMElement* element, const char* notBoolean) const {
    std::unique_ptr<VornExpressionTree> tree(mExpressionParser->parseSubexpression(element));
    auto result = castOrDelete<TypedVornExpressionTree<VornBool>>(std::move(tree));
    if (result == nullptr) throw at(element, parser::VornXmlCorruptedVornException(notBoolean));
    return result;
}

std::unique_ptr<VornLinearExpression> VornXmlParser::TypeImplParser::parseLinearExpression(
    const DOMElement* plain, const char* notBoolean, const DOMElement* parent, const char* noClauses) const {
    std::unique_ptr<TypedVornExpressionTree<VornBool>> tree = parseBoolean(plain, notBoolean);
    Owned<Clause> clauses = readClauses(expectChildNode(parent, tags().clauses, noClauses));
    return std::make_unique<VornLinearExpression>(tree.release(), released(std::move(clauses)));
}

parser::Owned<Clause> VornXmlParser::TypeImplParser::readClauses(const DOMElement* element) const {
    return parsedFrom<Clause>(listOnlyChildrenWithTag(element, tags().clause),
                              [&](const DOMElement* clause) { return parseClause(clause); });
}

std::vector<Clause*> VornXmlParser::TypeImplParser::parseClauses(const DOMElement* element) const {
    return released(readClauses(element));
}

Clause* VornXmlParser::TypeImplParser::parseClause(const DOMElement* element) const {
    const DOMElement* condition = findChildWithName(element, tags().clauseCondition);
    std::unique_ptr<TypedVornExpressionTree<VornBool>> tree;
    if (condition != nullptr) tree = parseBoolean(condition, "Clause condition is not of type BOOL");
    auto clause = std::make_unique<Clause>(tree.release());

    const DOMElement* equations = findChildWithName(element, tags().clauseEquations);
    if (equations != nullptr) {
        for (const DOMElement* equation : listChildrenWithTag(equations, tags().linExp))
            clause->addExpr(parseLinExp(equation));
    } else if (condition == nullptr) {
        throw at(element, parser::VornXmlCorruptedVornException(
                              "Invariant clause has no children, needs condition or linear expressions"));
    }
    return clause.release();
}

LinExp* VornXmlParser::TypeImplParser::parseLinExp(const DOMElement* element) const {
    std::unique_ptr<VornExpressionTree> constant(mExpressionParser->parseSubexpression(
        expectChildNode(element, tags().linExpConstant, "LinExp must have constant expression")));
    const parser::OperatorType op = parser::getOperatorContent(
        expectChildNode(element, tags().linExpOperator, "LinExp must have operator"), "Operator must be integer");
    auto comparison = std::make_unique<LinExp>(constant.release(), op);

    const DOMElement* terms = expectChildNode(element, tags().linExpTerms, "LinExp must have terms");
    for (const DOMElement* term : listOnlyChildrenWithTag(terms, tags().term)) {
        const DOMElement* factor = expectChildNode(term, tags().termFactor, "Term must have factor");
        const DOMElement* var = expectChildNode(term, tags().termVariable, "Term must have variable");
        std::unique_ptr<VornExpressionTree> coefficient(mExpressionParser->parseSubexpression(factor));
        std::unique_ptr<VornExpressionTree> variable(mExpressionParser->parseSubexpression(var));
        // The same name means the value and, once variables are resolved, the rate.
        std::unique_ptr<VornExpressionTree> rate(variable == nullptr ? nullptr : variable->clone());
        comparison->addTerm(variable.release(), rate.release(), coefficient.release());
    }
    return comparison.release();
}

parser::Owned<VornTransition> VornXmlParser::TypeImplParser::readTransitions(const DOMElement* element) const {
    return parsedFrom<VornTransition>(listOnlyChildrenWithTag(element, tags().modeTransition),
                                      [&](const DOMElement* transition) { return parseTransition(transition); });
}

std::vector<VornTransition*> VornXmlParser::TypeImplParser::parseTransitions(const DOMElement* element) const {
    return released(readTransitions(element));
}

VornTransition* VornXmlParser::TypeImplParser::parseTransition(const DOMElement* element) const {
    const std::string source =
        getStringContent(expectChildNode(element, tags().sourceMode, "Transition needs a source"));
    const std::string target =
        getStringContent(expectChildNode(element, tags().targetMode, "Transition needs a target"));
    const DOMElement* label = expectChildNode(element, tags().transitionLabel, "Transition needs a label");

    std::unique_ptr<VornTransitionTrigger> trigger;
    if (const DOMElement* event = findChildWithName(label, tags().transitionTrigger))
        trigger = std::make_unique<VornTransitionTrigger>(getStringContent(event));
    std::unique_ptr<VornLinearExpression> guard;
    if (const DOMElement* plain = findChildWithName(label, tags().transitionGuard))
        guard = parseLinearExpression(plain, "Transition guard is not of type BOOL", label,
                                      "Target guard was not properly preprocessed");
    Owned<VornAssignment> effects;
    if (const DOMElement* list = findChildWithName(label, tags().transitionEffects)) effects = readEffects(list);
    const unsigned int id = VornComponentImplementationConstructor::mTransitionId++;
    return new VornTransition(id, source, target, trigger.release(), guard.release(), released(std::move(effects)));
}

parser::Owned<VornAssignment> VornXmlParser::TypeImplParser::readEffects(const DOMElement* element) const {
    return parsedFrom<VornAssignment>(listChildrenWithTag(element, tags().effect),
                                      [&](const DOMElement* effect) { return parseAssignment(effect); });
}

VornAssignment* VornXmlParser::TypeImplParser::parseAssignment(const DOMElement* element) const {
    const DOMElement* left = expectChildNode(element, tags().left, "Assignments require a left hand side.");
    const DOMElement* right = expectChildNode(element, tags().right, "Assignments require a right hand side.");
    std::unique_ptr<VornVariable> variable(mExpressionParser->parseIdentifierNode(left));
    // A right side with a fault of types is null; the fault is logged already.
    std::unique_ptr<VornExpressionTree> value(mExpressionParser->parseSubexpression(right));
    return new VornAssignment(variable.release(), value.release());
}

}  // namespace vornrun
