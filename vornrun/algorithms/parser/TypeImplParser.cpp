#include "vornrun/algorithms/parser/TypeImplParser.h"

#include <cassert>
#include <stdexcept>
#include <utility>

#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"

namespace vornrun {

using parser::parsedFrom;
using parser::placed;
using parser::released;
using parser::util::getBooleanContent;
using parser::util::getStringContent;
using xercesc::DOMElement;

namespace {

struct ImplementationName {
    std::string type;
    std::string own;
};

/// The first two of the parts that dots separate.
ImplementationName splitName(const std::string& name) {
    const std::string::size_type dot = name.find('.');
    if (dot == std::string::npos)
        throw parser::VornXmlCorruptedVornException("Implementation name '" + name +
                                                    "' is not of the form type.implementation");
    const std::string::size_type start = dot + 1;
    return {name.substr(0, dot), name.substr(start, name.find('.', start) - start)};
}

const VornComponentDeclaration* declarationOf(const VornPackageConstructor& constructor, const std::string& type) {
    try {
        return constructor.getDeclarationFromCurrentPackage(type);
    } catch (const std::invalid_argument&) {
        throw parser::UnknownTypeException("", type);
    }
}

}  // namespace

VornXmlParser::TypeImplParser::TypeImplParser(parser::XmlContext& context, const ExpressionParser* expressionParser)
    : AbstractVornXmlParser(context), mExpressionParser(expressionParser) {
    assert(expressionParser != nullptr);
    shareWith(*expressionParser);
}

void VornXmlParser::TypeImplParser::parseSubpackageImpls(VornPackageConstructor& constructor,
                                                         const DOMElement* subpackage) const {
    const DOMElement* implementations =
        expectChildNode(subpackage, tags().implementations, "Package needs implementations defined");
    for (const DOMElement* implementation : listOnlyChildrenWithTag(implementations, tags().componentImplementation))
        constructor.addImplementation(parseComponentImplementation(implementation, constructor));
}

VornComponentImplementation* VornXmlParser::TypeImplParser::parseComponentImplementation(
    const DOMElement* element, const VornPackageConstructor& constructor) const {
    const DOMElement* const nameElement = expectChildNode(element, tags().name, "");
    const ImplementationName name = placed(nameElement, [&] { return splitName(getStringContent(nameElement)); });
    const VornComponentDeclaration* declaration =
        placed(nameElement, [&] { return declarationOf(constructor, name.type); });

    // The order of reading is the order in which the parts are numbered.
    Owned<VornMode> modes = readModes(expectChildNode(element, tags().modes, "Implementations require modes"));
    Owned<VornTransition> transitions =
        readTransitions(expectChildNode(element, tags().normalModeTransitions, "We expect a list of transitions"));
    Owned<VornTransition> reactivations;
    if (const DOMElement* list = findChildWithName(element, tags().reactivationModeTransitions))
        reactivations = readTransitions(list);
    Owned<VornConnection> connections = readConnections(
        expectChildNode(element, tags().dataPortConnections, "We expect a list of data connections"), false);
    for (auto& connection : readConnections(
             expectChildNode(element, tags().eventPortConnections, "We expect a list of event connections"), true))
        connections.push_back(std::move(connection));
    Owned<VornFlow> flows = readFlows(expectChildNode(element, tags().flows, "We expect a list of flows"));
    Owned<VornSubComponent> subcomponents = readSubcomponents(
        expectChildNode(element, tags().nonDataSubcomponents, "Expects a dictionary with subcomponents"));
    Owned<VornDataSubcomponent> data = readDataSubcomponents(
        expectChildNode(element, tags().dataSubcomponents, "Expects a dictionary with datasubcomponents"));

    return new VornComponentImplementation(name.own, declaration, released(std::move(subcomponents)),
                                           released(std::move(data)), released(std::move(flows)),
                                           released(std::move(connections)), released(std::move(modes)),
                                           released(std::move(transitions)), released(std::move(reactivations)));
}

parser::Owned<VornConnection> VornXmlParser::TypeImplParser::readConnections(const DOMElement* element,
                                                                             bool isEvent) const {
    return parsedFrom<VornConnection>(
        listOnlyChildrenWithTag(element, tags().portConnection),
        [&](const DOMElement* connection) { return parseConnection(connection, isEvent); });
}

std::vector<VornConnection*> VornXmlParser::TypeImplParser::parseConnections(const DOMElement* element,
                                                                             bool isEvent) const {
    return released(readConnections(element, isEvent));
}

VornConnection* VornXmlParser::TypeImplParser::parseConnection(const DOMElement* element, bool isEvent) const {
    auto source = std::make_unique<VornReference>(
        getStringContent(expectChildNode(element, tags().sourcePort, "Port connection requires a source port")));
    auto target = std::make_unique<VornReference>(
        getStringContent(expectChildNode(element, tags().targetPort, "Port connection requires a target port")));
    std::vector<std::string> modes = inModes(element);
    const DOMElement* passive =
        expectChildNode(element, tags().portConnectionPassive, "Port connection requires passive specifier");
    const bool isPassive = getBooleanContent(passive, "Passive specifier must be boolean");
    return new VornConnection(source.release(), target.release(), isEvent, std::move(modes), isPassive);
}

parser::Owned<VornFlow> VornXmlParser::TypeImplParser::readFlows(const DOMElement* element) const {
    return parsedFrom<VornFlow>(listOnlyChildrenWithTag(element, tags().flow),
                                [&](const DOMElement* flow) { return parseFlow(flow); });
}

std::vector<VornFlow*> VornXmlParser::TypeImplParser::parseFlows(const DOMElement* element) const {
    return released(readFlows(element));
}

VornFlow* VornXmlParser::TypeImplParser::parseFlow(const DOMElement* element) const {
    const DOMElement* expression = expectChildNode(element, tags().expression, "flow requires expression");
    const DOMElement* left = expectChildNode(expression, tags().left, "Flow expressions require a left hand side.");
    const DOMElement* right = expectChildNode(expression, tags().right, "Flow expressions require a right hand side.");
    std::unique_ptr<VornVariable> variable(mExpressionParser->parseIdentifierNode(left));
    std::unique_ptr<VornExpressionTree> value(mExpressionParser->parseSubexpression(right));
    std::vector<std::string> modes = inModes(element);
    return new VornFlow(variable.release(), value.release(), std::move(modes));
}

parser::Owned<VornSubComponent> VornXmlParser::TypeImplParser::readSubcomponents(const DOMElement* element) const {
    return parsedFrom<VornSubComponent>(
        listOnlyChildrenWithTag(element, tags().nonDataSubcomponent),
        [&](const DOMElement* subcomponent) { return parseSubcomponent(subcomponent); });
}

std::vector<VornSubComponent*> VornXmlParser::TypeImplParser::parseSubcomponents(const DOMElement* element) const {
    return released(readSubcomponents(element));
}

VornSubComponent* VornXmlParser::TypeImplParser::parseSubcomponent(const DOMElement* element) const {
    const std::string name = getNameFromChildNodes(element);
    const std::string reference = getStringContent(
        expectChildNode(element, tags().implementationRef, "subcomponent needs a implementation reference"));
    std::vector<VornBinding> bindings = parseSubcomponentBindings(element);
    std::vector<std::string> modes = inModes(element);
    const unsigned int id = VornComponentImplementationConstructor::mSubcompId++;
    return new VornSubComponent(id, name, reference, std::move(bindings), std::move(modes));
}

std::vector<VornBinding> VornXmlParser::TypeImplParser::parseSubcomponentBindings(const DOMElement* element) const {
    const DOMElement* accesses =
        expectChildNode(element, tags().accesses, "subcomponent needs a list of access bindings");
    const DOMElement* runningOn =
        expectChildNode(element, tags().runningOn, "subcomponent needs a list of running on bindings");
    const DOMElement* storedIn =
        expectChildNode(element, tags().storedIn, "subcomponent needs a list of stored in bindings");
    std::vector<VornBinding> bindings;
    const auto addAll = [&](VornBinding::Type type, const DOMElement* targets) {
        for (const DOMElement* target : listChildren(targets)) bindings.emplace_back(type, getStringContent(target));
    };
    addAll(VornBinding::Type::accesses, accesses);
    addAll(VornBinding::Type::runningOn, runningOn);
    addAll(VornBinding::Type::storedIn, storedIn);
    return bindings;
}

parser::Owned<VornDataSubcomponent> VornXmlParser::TypeImplParser::readDataSubcomponents(
    const DOMElement* element) const {
    return parsedFrom<VornDataSubcomponent>(listOnlyChildrenWithTag(element, tags().dataSubcomponent),
                                            [&](const DOMElement* data) { return parseDataSubcomponent(data); });
}

std::vector<VornDataSubcomponent*> VornXmlParser::TypeImplParser::parseDataSubcomponents(
    const DOMElement* element) const {
    return released(readDataSubcomponents(element));
}

VornDataSubcomponent* VornXmlParser::TypeImplParser::parseDataSubcomponent(const DOMElement* element) const {
    const std::string name = getNameFromChildNodes(element);
    const VornDataTypeTag type = getDataTypeFromChildNodes(element);
    std::vector<std::string> modes = inModes(element);
    bool isObservable = false;
    if (const DOMElement* observable = findChildWithName(element, tags().dataSubcomponentObservable))
        isObservable = getBooleanContent(observable, "observable specifier for datasubbcomponent must be boolean");
    std::unique_ptr<VornValue> given;
    if (const DOMElement* value = findChildWithName(element, tags().dataSubcomponentDefaultValue))
        given.reset(mExpressionParser->parseVornValueOfGivenType(value, type));

    return withTagClass(type, [&]<class T>() -> VornDataSubcomponent* {
        // The value has the type that was asked for, so that the cast fails only for a null.
        auto defaultValue = parser::castOrDelete<TypedVornValue<T>>(std::move(given));
        return new TypedVornDataSubcomponent<T>(name, defaultValue.release(), std::move(modes), isObservable);
    });
}

}  // namespace vornrun
