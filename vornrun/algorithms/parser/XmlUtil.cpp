#include "vornrun/algorithms/parser/XmlUtil.h"

#include <boost/lexical_cast/try_lexical_convert.hpp>
#include <cassert>
#include <cstdint>
#include <mutex>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>

#include "vornrun/algorithms/parser/ElementPlaces.h"
#include "vornrun/algorithms/parser/VornXmlException.h"

namespace vornrun::parser::util {

int initCount = 0;
bool xercesInitialized = false;
XMLCh* tagBoolTrue = nullptr;
XMLCh* tagBoolFalse = nullptr;

namespace {

using xercesc::DOMElement;
using xercesc::DOMNode;
using xercesc::XMLString;

/// The library's own start and stop must not run at the same time as each other.
std::mutex startAndStop;

void appendUtf8(std::string& out, std::uint32_t code) {
    const auto byte = [&out](std::uint32_t value) { out.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | code >> 6);
        byte(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        byte(0xE0 | code >> 12);
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    } else {
        byte(0xF0 | code >> 18);
        byte(0x80 | (code >> 12 & 0x3F));
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    }
}

/// Appends a text of UTF-16. The library's own transcoder follows the locale, and loses the characters that the
/// locale does not have.
void appendText(std::string& out, const XMLCh* text) {
    constexpr std::uint32_t REPLACEMENT = 0xFFFD;
    for (; *text != 0; ++text) {
        const std::uint32_t unit = *text;
        if (unit < 0xD800 || unit > 0xDFFF) {
            appendUtf8(out, unit);
        } else if (unit < 0xDC00 && text[1] >= 0xDC00 && text[1] <= 0xDFFF) {
            appendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (std::uint32_t{text[1]} - 0xDC00));
            ++text;
        } else {
            appendUtf8(out, REPLACEMENT);
        }
    }
}

bool isText(const DOMNode* node) {
    return node->getNodeType() == DOMNode::TEXT_NODE || node->getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

const XMLCh* plainName(const DOMElement* element, bool local) {
    assert(element != nullptr);
    return local ? element->getLocalName() : element->getTagName();
}

/// The element's only text, or null when its content is made of several nodes.
const XMLCh* singleText(const DOMElement* element) {
    assert(element != nullptr);
    const DOMNode* child = element->getFirstChild();
    return child != nullptr && child->getNextSibling() == nullptr && isText(child) ? child->getNodeValue() : nullptr;
}

template <class Number>
Number numberContent(const DOMElement* element, std::string_view description, bool allowMinus, const char* expected) {
    const std::string text = getStringContent(element);
    Number number{};
    const bool refused = !allowMinus && text.find('-') != std::string::npos;
    if (refused || !boost::conversion::try_lexical_convert(text, number))
        throw at(element, VornXmlUnexpectedValueException(std::string(description), expected, text));
    return number;
}

}  // namespace

bool initialize() {
    std::string unheard;
    return initialize(unheard);
}

bool initialize(std::string& fault) {
    const std::lock_guard lock(startAndStop);
    if (initCount == 0) {
        try {
            xercesc::XMLPlatformUtils::Initialize();
        } catch (const xercesc::XMLException& exception) {
            fault = "Error during initialization of Xerces! :\n" + transcode(exception.getMessage()) + "\n";
            return false;
        }
        tagBoolTrue = XMLString::transcode("True");
        tagBoolFalse = XMLString::transcode("False");
        xercesInitialized = true;
    }
    ++initCount;
    return true;
}

void clean() {
    const std::lock_guard lock(startAndStop);
    if (!xercesInitialized || --initCount > 0) return;
    XMLString::release(&tagBoolTrue);
    XMLString::release(&tagBoolFalse);
    xercesInitialized = false;
    xercesc::XMLPlatformUtils::Terminate();
}

std::string transcode(const XMLCh* text) {
    std::string result;
    if (text != nullptr) appendText(result, text);
    return result;
}

std::string nodeName(const DOMElement* element, bool local) { return transcode(plainName(element, local)); }

bool elemMatchesTag(const DOMElement* element, const XMLCh* tag, bool local) {
    return XMLString::equals(plainName(element, local), tag);
}

std::string getStringContent(const DOMElement* element) {
    std::string result;
    if (const XMLCh* text = singleText(element)) {
        appendText(result, text);
        return result;
    }
    // Without recursion, since the file decides how deep the content is nested.
    const DOMNode* node = element->getFirstChild();
    while (node != nullptr) {
        if (isText(node)) appendText(result, node->getNodeValue());
        if (const DOMNode* child = node->getFirstChild()) {
            node = child;
            continue;
        }
        while (node != element && node->getNextSibling() == nullptr) node = node->getParentNode();
        node = node == element ? nullptr : node->getNextSibling();
    }
    return result;
}

bool getBooleanContent(const DOMElement* element, std::string_view description) {
    if (const XMLCh* text = singleText(element)) {
        if (XMLString::equals(text, tagBoolTrue)) return true;
        if (XMLString::equals(text, tagBoolFalse)) return false;
    }
    const std::string text = getStringContent(element);
    if (text == "True") return true;
    if (text == "False") return false;
    throw at(element, VornXmlUnexpectedValueException(std::string(description), "Either True or False", text));
}

unsigned int getNaturalNumberContent(const DOMElement* element, std::string_view description) {
    return numberContent<unsigned int>(element, description, false, "An integer number larger than or equal 0");
}

int getIntegerNumberContent(const DOMElement* element, std::string_view description) {
    return numberContent<int>(element, description, true, "Any integer number.");
}

double getRealNumberContent(const DOMElement* element, std::string_view description) {
    return numberContent<double>(element, description, true, "Any number.");
}

}  // namespace vornrun::parser::util
