#include "vornrun/algorithms/parser/AbstractVornXmlParser.h"

#include <cassert>
#include <cstdint>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/UnfoldingBound.h"
#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::parser {

using xercesc::DOMElement;

const Log AbstractVornXmlParser::sLogger("root.vornxml");

struct AbstractVornXmlParser::Shared {
    UnfoldingBound bound;
    std::optional<SourcePlace> notedPlace;
};

namespace {

/// The element that follows in document order; null behind the last one below the root.
const DOMElement* nextInDocument(const DOMElement* element, const DOMElement* root) {
    if (const DOMElement* child = element->getFirstElementChild()) return child;
    while (element != root) {
        if (const DOMElement* sibling = element->getNextElementSibling()) return sibling;
        element = static_cast<const DOMElement*>(element->getParentNode());
    }
    return nullptr;
}

}  // namespace

AbstractVornXmlParser::AbstractVornXmlParser(XmlContext& context)
    : mXercesInitialized(util::initialize(mXercesFault)), mContext(context), mShared(std::make_shared<Shared>()) {
    if (!mXercesInitialized) return;  // no name can be transcoded
    mTags = std::make_unique<VornXmlTags>();
    mAttributes = std::make_unique<VornXmlAttributes>();
}

AbstractVornXmlParser::~AbstractVornXmlParser() {
    mAttributes.reset();
    mTags.reset();
    if (mXercesInitialized) util::clean();
}

void AbstractVornXmlParser::buildContext(const xercesc::DOMDocument* document) {
    assert(document != nullptr);
    std::uint64_t count = 0;
    bool hasReferences = false;
    const DOMElement* const root = document->getDocumentElement();
    for (const DOMElement* element = root; element != nullptr; element = nextInDocument(element, root)) {
        ++count;
        if (!element->hasAttributes()) continue;
        if (element->hasAttribute(mAttributes->objref)) hasReferences = true;
        if (element->hasAttribute(mAttributes->objid))
            mContext[util::transcode(element->getAttribute(mAttributes->objid))] = element;
    }
    mShared->bound.startDocument(count, hasReferences);
    mShared->notedPlace.reset();
}

const XMLCh* AbstractVornXmlParser::referenceOf(const DOMElement* element) const {
    assert(element != nullptr);
    const xercesc::DOMAttr* const reference =
        element->hasAttributes() ? element->getAttributeNode(mAttributes->objref) : nullptr;
    return reference == nullptr ? nullptr : reference->getValue();
}

const DOMElement* AbstractVornXmlParser::checkReference(const DOMElement* element) const {
    const XMLCh* const reference = referenceOf(element);
    if (reference == nullptr) return element;
    const std::string identifier = util::transcode(reference);
    const auto target = mContext.find(identifier);
    if (target == mContext.end())
        throw at(element, VornXmlParserException("XML references object that has not been parsed yet: " + identifier));
    return target->second;
}

const DOMElement* AbstractVornXmlParser::referencedOrItself(const DOMElement* element) const {
    const XMLCh* const reference = referenceOf(element);
    if (reference == nullptr) return element;
    const auto target = mContext.find(util::transcode(reference));
    return target == mContext.end() ? element : target->second;
}

template <class Take>
void AbstractVornXmlParser::untilChild(const DOMElement* element, Take&& take) const {
    assert(element != nullptr);
    for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling()) {
        placed(element, [&] { mShared->bound.countLook(); });
        if (take(child)) return;
    }
}

const DOMElement* AbstractVornXmlParser::reach(const DOMElement* element) const {
    placed(element, [&] { mShared->bound.countReached(); });
    return checkReference(element);
}

const DOMElement* AbstractVornXmlParser::lookUp(const DOMElement* element, const XMLCh* tag, bool local) const {
    const DOMElement* found = nullptr;
    untilChild(element, [&](const DOMElement* child) {
        if (util::elemMatchesTag(child, tag, local)) found = child;
        return found != nullptr;
    });
    return found;
}

void AbstractVornXmlParser::refuseWithout(const DOMElement* element, const XMLCh* tag, std::string_view description,
                                          bool local) const {
    throw at(element, VornXmlNodeMissingException(std::string(description), util::transcode(tag),
                                                  util::nodeName(element, local)));
}

const DOMElement* AbstractVornXmlParser::firstChild(const DOMElement* element) const { return indexChild(element, 0); }

const DOMElement* AbstractVornXmlParser::indexChild(const DOMElement* element, unsigned int i) const {
    const DOMElement* found = nullptr;
    unsigned int count = 0;
    untilChild(element, [&](const DOMElement* child) {
        if (count == i) found = child;
        ++count;
        return found != nullptr;
    });
    if (found != nullptr) return reach(found);
    throw at(element,
             VornXmlNodeMissingException("", "(index " + std::to_string(i) + " out of " + std::to_string(count) + ")",
                                         util::nodeName(element)));
}

const DOMElement* AbstractVornXmlParser::findChildWithName(const DOMElement* element, const XMLCh* tag,
                                                           bool local) const {
    const DOMElement* const child = lookUp(element, tag, local);
    return child == nullptr ? nullptr : reach(child);
}

const DOMElement* AbstractVornXmlParser::expectChildNode(const DOMElement* element, const XMLCh* tag,
                                                         std::string_view description, bool local) const {
    if (const DOMElement* child = lookUp(element, tag, local)) return reach(child);
    refuseWithout(element, tag, description, local);
}

const DOMElement* AbstractVornXmlParser::expectRereadChild(const DOMElement* element, const XMLCh* tag,
                                                           std::string_view description) const {
    if (const DOMElement* child = lookUp(element, tag, false)) return checkReference(child);
    refuseWithout(element, tag, description, false);
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listOwnChildren(const DOMElement* element) const {
    Elements children;
    untilChild(element, [&](const DOMElement* child) {
        children.push_back(child);
        return false;
    });
    return children;
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listChildren(const DOMElement* element) const {
    Elements children;
    untilChild(element, [&](const DOMElement* child) {
        children.push_back(reach(child));
        return false;
    });
    return children;
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listChildrenWithTag(const DOMElement* element, const XMLCh* tag,
                                                                           bool local) const {
    Elements children;
    untilChild(element, [&](const DOMElement* child) {
        if (util::elemMatchesTag(child, tag, local)) children.push_back(reach(child));
        return false;
    });
    return children;
}

AbstractVornXmlParser::Elements AbstractVornXmlParser::listOnlyChildrenWithTag(const DOMElement* element,
                                                                               const XMLCh* tag) const {
    Elements children;
    untilChild(element, [&](const DOMElement* child) {
        if (util::elemMatchesTag(child, tag))
            children.push_back(reach(child));
        else
            VORNRUN_LOG(sLogger, Warn,
                        "[Incomplete parser warning:] Unknown tag '" << util::nodeName(child) << "' in '"
                                                                     << util::nodeName(element) << "' ignored.");
        return false;
    });
    return children;
}

std::string AbstractVornXmlParser::getNameFromChildNodes(const DOMElement* element) const {
    return util::getStringContent(expectChildNode(element, tags().name, ""));
}

VornDataTypeTag AbstractVornXmlParser::getDataTypeFromChildNodes(const DOMElement* element) const {
    const DOMElement* const declared =
        expectChildNode(element, tags().dataType, "Data type specification is needed for data elements");
    const std::string type = typeAttribute(declared);
    if (type == "Bool") return VornDataTypeTag::VornBool;
    if (type == "Enum") return VornDataTypeTag::VornEnum;
    if (type == "Real") return VornDataTypeTag::VornReal;
    if (type == "Clock") return VornDataTypeTag::VornClock;
    if (type == "Continuous") return VornDataTypeTag::VornContinuous;
    if (type == "Int") return VornDataTypeTag::VornInt;
    if (type == "IntRange") return VornDataTypeTag::VornInterval;
    throw at(declared, VornXmlUnexpectedValueException(
                           "", "One out of {Bool, Clock, Continuous, Enum, Int, IntRange, Real}", type));
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

const XMLCh* AbstractVornXmlParser::sharedIdentifier(const DOMElement* element) const {
    if (!mShared->bound.hasReferences() || !element->hasAttributes()) return nullptr;
    const xercesc::DOMAttr* const identifier = element->getAttributeNode(mAttributes->objid);
    return identifier == nullptr ? nullptr : identifier->getValue();
}

void AbstractVornXmlParser::notePlace(const DOMElement* element) const { mShared->notedPlace = placeOf(element); }

const std::optional<SourcePlace>& AbstractVornXmlParser::notedPlace() const noexcept { return mShared->notedPlace; }

}  // namespace vornrun::parser
