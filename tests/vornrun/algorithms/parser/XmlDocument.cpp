#include "tests/vornrun/algorithms/parser/XmlDocument.h"

#include <stdexcept>
#include <vector>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::test {

using xercesc::DOMElement;

struct XmlDocument::State {
    xercesc::HandlerBase errorHandler;
    xercesc::XercesDOMParser parser;
};

XmlDocument::XmlDocument(const std::string& text) {
    if (!parser::util::initialize()) throw std::runtime_error("the XML library does not start");
    mState = std::make_unique<State>();
    mState->parser.setDoNamespaces(true);
    mState->parser.setErrorHandler(&mState->errorHandler);
    try {
        mState->parser.parse(
            xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "test"));
    } catch (const xercesc::SAXParseException& fault) {
        throw std::runtime_error("not well-formed: " + parser::util::transcode(fault.getMessage()) + ": " + text);
    }
}

XmlDocument::~XmlDocument() {
    mState.reset();
    parser::util::clean();
}

const xercesc::DOMDocument* XmlDocument::document() const { return mState->parser.getDocument(); }

const DOMElement* XmlDocument::root() const { return document()->getDocumentElement(); }

const DOMElement* XmlDocument::byId(const std::string& id) const {
    std::vector<const DOMElement*> open{root()};
    while (!open.empty()) {
        const DOMElement* element = open.back();
        open.pop_back();
        if (parser::util::transcode(element->getAttribute(u"id")) == id) return element;
        for (const DOMElement* child = element->getFirstElementChild(); child != nullptr;
             child = child->getNextElementSibling())
            open.push_back(child);
    }
    throw std::runtime_error("no element with the id " + id);
}

}  // namespace vornrun::test
