#include "vornrun/algorithms/parser/AbstractVornXmlParser.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "vornrun/algorithms/parser/ReferenceGraph.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlName.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::parser {

using xercesc::DOMElement;

const Log AbstractVornXmlParser::sLogger("root.vornxml");

struct AbstractVornXmlParser::AttributeNames {
    XmlName key{"key"};  // known to the format, read by no parser
    XmlName type{"type"};
    XmlName objid{"objid"};
    XmlName objref{"objref"};
};

AbstractVornXmlParser::AbstractVornXmlParser(XmlContext& context)
    : mXercesInitialized(util::initialize()), mContext(context) {
    if (!mXercesInitialized) return;  // no name can be transcoded
    mTags = std::make_unique<VornXmlTags>();
    mAttributes = std::make_unique<AttributeNames>();
}

AbstractVornXmlParser::~AbstractVornXmlParser() {
    mAttributes.reset();
    mTags.reset();
    if (mXercesInitialized) util::clean();
}

void AbstractVornXmlParser::buildContext(const xercesc::DOMDocument* document) {
    ReferenceGraph graph(mContext, mAttributes->objid, mAttributes->objref, tags());
    graph.enter(document->getDocumentElement());
    graph.check();
}

const DOMElement* AbstractVornXmlParser::checkReference(const DOMElement* element) const {
    const xercesc::DOMAttr* reference =
        element->hasAttributes() ? element->getAttributeNode(mAttributes->objref) : nullptr;
    if (reference == nullptr) return element;
    const std::string identifier = util::transcode(reference->getValue());
    const auto target = mContext.find(identifier);
    if (target == mContext.end())
        throw VornXmlParserException("XML references object that has not been parsed yet: " + identifier);
    return target->second;
}

const DOMElement* AbstractVornXmlParser::firstChild(const DOMElement* element) const { return indexChild(element, 0); }

const DOMElement* AbstractVornXmlParser::indexChild(const DOMElement* element, unsigned int i) const {
    unsigned int count = 0;
    for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling(), ++count)
        if (count == i) return checkReference(child);
    throw VornXmlNodeMissingException("", "(index " + std::to_string(i) + " out of " + std::to_string(count) + ")",
                                      util::nodeName(element));
}

const DOMElement* AbstractVornXmlParser::findChildWithName(const DOMElement* element, const XMLCh* tag,
                                                           bool local) const {
    for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        if (util::elemMatchesTag(child, tag, local)) return checkReference(child);
    return nullptr;
}

const DOMElement* AbstractVornXmlParser::expectChildNode(const DOMElement* element, const XMLCh* tag,
                                                         std::string_view description, bool local) const {
    if (const DOMElement* child = findChildWithName(element, tag, local)) return child;
    throw VornXmlNodeMissingException(std::string(description), util::transcode(tag), util::nodeName(element, local));
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listChildren(const DOMElement* element) const {
    Elements children;
    for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        children.push_back(checkReference(child));
    return children;
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listChildrenWithTag(const DOMElement* element, const XMLCh* tag,
                                                                           bool local) const {
    Elements children;
    for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        if (util::elemMatchesTag(child, tag, local)) children.push_back(checkReference(child));
    return children;
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listOnlyChildrenWithTag(const DOMElement* element,
                                                                               const XMLCh* tag) const {
    Elements children;
    for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling()) {
        if (util::elemMatchesTag(child, tag))
            children.push_back(checkReference(child));
        else
            VORNRUN_LOG(sLogger, Warn,
                        "[Incomplete parser warning:] Unknown tag '" << util::nodeName(child) << "' in '"
                                                                     << util::nodeName(element) << "' ignored.");
    }
    return children;
}

std::string AbstractVornXmlParser::getNameFromChildNodes(const DOMElement* element) const {
    return util::getStringContent(expectChildNode(element, tags().name, ""));
}

VornDataTypeTag AbstractVornXmlParser::getDataTypeFromChildNodes(const DOMElement* element) const {
    const std::string type =
        typeAttribute(expectChildNode(element, tags().dataType, "Data type specification is needed for data elements"));
    if (type == "Bool") return VornDataTypeTag::VornBool;
    if (type == "Enum") return VornDataTypeTag::VornEnum;
    if (type == "Real") return VornDataTypeTag::VornReal;
    if (type == "Clock") return VornDataTypeTag::VornClock;
    if (type == "Continuous") return VornDataTypeTag::VornContinuous;
    if (type == "Int") return VornDataTypeTag::VornInt;
    if (type == "IntRange") return VornDataTypeTag::VornInterval;
    throw VornXmlUnexpectedValueException("", "One out of {Bool, Clock, Continuous, Enum, Int, IntRange, Real}", type);
}

std::vector<std::string> AbstractVornXmlParser::inModes(const DOMElement* element) const {
    std::vector<std::string> names;
    const DOMElement* list = findChildWithName(element, tags().inModes);
    if (list == nullptr) return names;
    for (const DOMElement* mode : listChildren(list)) names.push_back(util::getStringContent(mode));
    return names;
}

std::string AbstractVornXmlParser::typeAttribute(const DOMElement* element) const {
    return util::transcode(plainTypeAttribute(element));
}

const XMLCh* AbstractVornXmlParser::plainTypeAttribute(const DOMElement* element) const {
    return element->getAttribute(mAttributes->type);
}

}  // namespace vornrun::parser
