#include "vornrun/algorithms/parser/TypeDeclParser.h"

#include <array>
#include <cassert>
#include <memory>
#include <stdexcept>
#include <utility>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"

namespace vornrun {

using parser::at;
using parser::util::elemMatchesTag;
using parser::util::getBooleanContent;
using parser::util::getNaturalNumberContent;
using parser::util::getRealNumberContent;
using xercesc::DOMElement;

VornXmlParser::TypeDeclParser::TypeDeclParser(parser::XmlContext& context, const ExpressionParser* expressionParser)
    : AbstractVornXmlParser(context), mExpressionParser(expressionParser) {
    assert(expressionParser != nullptr);
    shareWith(*expressionParser);
}

void VornXmlParser::TypeDeclParser::parseSubpackageTypes(VornPackageConstructor& constructor,
                                                         const DOMElement* subpackage) const {
    const DOMElement* types = expectChildNode(subpackage, tags().types, "Package needs types defined");
    for (const DOMElement* type : listOnlyChildrenWithTag(types, tags().componentType))
        constructor.addDeclaration(parseTypeDeclaration(type));
}

VornComponentDeclaration* VornXmlParser::TypeDeclParser::parseTypeDeclaration(const DOMElement* element) const {
    struct List {
        const XMLCh* tag;
        PortType type;
        PortDirection direction;
    };
    const std::array lists{List{tags().inDataPorts, PortType::data, PortDirection::in},
                           List{tags().outDataPorts, PortType::data, PortDirection::out},
                           List{tags().inEventPorts, PortType::event, PortDirection::in},
                           List{tags().outEventPorts, PortType::event, PortDirection::out}};

    const std::string name = getNameFromChildNodes(element);
    const VornComponentCategory category = parseCategory(element);
    parser::Owned<VornPort> ports;
    for (const List& list : lists) {
        const DOMElement* found = findChildWithName(element, list.tag);
        if (found == nullptr) continue;
        for (auto& port : readPorts(found->getChildNodes(), list.type, list.direction))
            ports.push_back(std::move(port));
    }
    return new VornComponentDeclaration(name, category, parser::released(std::move(ports)));
}

VornComponentCategory VornXmlParser::TypeDeclParser::parseCategory(const DOMElement* element) const {
    using enum VornComponentCategory;
    // The file numbers the categories in another order than the enumeration.
    static constexpr std::array categories{process, threadGroup, thread, data, processor, memory, device, bus, system};

    const std::string description = "Parsing type category";
    const DOMElement* category = expectChildNode(element, tags().typeCategory, "type declarations need a category");
    const unsigned int number = getNaturalNumberContent(category, description);
    if (number >= categories.size())
        throw at(category, parser::VornXmlUnexpectedValueException(description, "A category number from 0 to 8",
                                                                   std::to_string(number)));
    return categories[number];
}

std::vector<VornPort*> VornXmlParser::TypeDeclParser::parsePorts(const xercesc::DOMNodeList* nodes, PortType type,
                                                                 PortDirection direction) const {
    return parser::released(readPorts(nodes, type, direction));
}

parser::Owned<VornPort> VornXmlParser::TypeDeclParser::readPorts(const xercesc::DOMNodeList* nodes, PortType type,
                                                                 PortDirection direction) const {
    assert(nodes != nullptr);
    parser::Owned<VornPort> ports;
    // From sibling to sibling, since the list counts from its start for every index.
    for (const xercesc::DOMNode* node = nodes->item(0); node != nullptr; node = node->getNextSibling()) {
        if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) continue;
        // In the list, the name of the reference counts; what is read is its target.
        const auto* listed = static_cast<const DOMElement*>(node);
        std::unique_ptr<VornPort> port;
        if (elemMatchesTag(listed, tags().errorEventPort)) {
            port.reset(parseErrorPort(reach(listed), direction));
        } else if (featureTagMatches(listed, type, direction)) {
            const DOMElement* element = reach(listed);
            if (type == PortType::data)
                port.reset(parseDataPort(element, direction));
            else
                port.reset(parseEventPort(element, direction));
        } else {
            VORNRUN_LOG(
                sLogger, Warn,
                "[Incomplete parser warning:] Unknown port tag '" << parser::util::nodeName(listed) << "' ignored.");
            continue;
        }
        ports.push_back(std::move(port));
    }
    return ports;
}

bool VornXmlParser::TypeDeclParser::parseNonblocking(const DOMElement* element) const {
    // The text says "error port" for an out event port too.
    const DOMElement* nonblocking =
        expectChildNode(element, tags().nonblocking, "Error port requires nonblocking specifier");
    return getBooleanContent(nonblocking, "Nonblocking specifier must be boolean");
}

VornEventPort* VornXmlParser::TypeDeclParser::parseEventPort(const DOMElement* element, PortDirection direction) const {
    const std::string name = getNameFromChildNodes(element);
    // Only out ports can be nonblocking: the specifier of an in port is ignored.
    const bool nonblocking = direction == PortDirection::out && parseNonblocking(element);
    return VornPartsConstructor::createEventPort(name, direction, nonblocking);
}

VornErrorPort* VornXmlParser::TypeDeclParser::parseErrorPort(const DOMElement* element, PortDirection) const {
    const std::string name = getNameFromChildNodes(element);
    const bool nonblocking = parseNonblocking(element);
    const DOMElement* distribution = findChildWithName(element, tags().portDistribution);
    if (distribution == nullptr) return VornPartsConstructor::createErrorPort(name, PortDirection::out, nonblocking);

    const unsigned int number = getNaturalNumberContent(distribution, "Distribution type");
    if (number != static_cast<unsigned int>(DistributionType::poisson))
        VORNRUN_LOG(
            sLogger, Warn,
            "[Incomplete parser warning:] Errorport - distribution '" << number << "' ignored, assuming poisson.");
    const DOMElement* parameter =
        expectChildNode(element, tags().portParameter, "error port distribution need info about parameter");
    const double rate = getRealNumberContent(parameter, "port parameter should be a Real value");
    try {
        return VornPartsConstructor::createErrorPort(name, PortDirection::out, nonblocking, DistributionType::poisson,
                                                     rate);
    } catch (const std::invalid_argument&) {
        notePlace(parameter);
        throw;
    }
}

VornDataPort* VornXmlParser::TypeDeclParser::parseDataPort(const DOMElement* element, PortDirection direction) const {
    const std::string name = getNameFromChildNodes(element);
    const PortTag tag = direction == PortDirection::out ? parsePortTag(element, name) : PortTag::none;
    const VornDataTypeTag type = getDataTypeFromChildNodes(element);
    const DOMElement* given = findChildWithName(element, tags().portDefaultValue);
    VornValue* defaultValue = given == nullptr ? nullptr : mExpressionParser->parseVornValueOfGivenType(given, type);
    return VornPartsConstructor::createDataPort(name, direction, type, defaultValue, tag);
}

PortTag VornXmlParser::TypeDeclParser::parsePortTag(const DOMElement* element, const std::string& portName) const {
    const bool observable = getBooleanContent(
        expectChildNode(element, tags().portObservable, "data port declarations need info about observability"),
        "port observability should be a Boolean value");
    const bool alarm =
        getBooleanContent(expectChildNode(element, tags().portAlarm, "data port declarations need info about alarm"),
                          "port alarm should be a Boolean value");
    if (observable && alarm)
        throw at(element,
                 parser::MutualExclusiveException("feature " + portName + " declaration", "observable", "alarm"));
    if (alarm) return PortTag::alarm;
    return observable ? PortTag::observable : PortTag::none;
}

const XMLCh* VornXmlParser::TypeDeclParser::getPortTag(PortDirection direction, PortType type) const {
    if (type == PortType::data) return direction == PortDirection::in ? tags().dataPort : tags().outDataPort;
    return direction == PortDirection::in ? tags().inEventPort : tags().outEventPort;
}

bool VornXmlParser::TypeDeclParser::featureTagMatches(const DOMElement* element, PortType type,
                                                      PortDirection direction) const {
    return elemMatchesTag(element, getPortTag(direction, type));
}

}  // namespace vornrun
