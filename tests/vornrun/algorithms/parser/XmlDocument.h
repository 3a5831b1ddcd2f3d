#pragma once
/// \file
/// Elements for tests of the parsers below the doors, and the text of a fault.

#include <memory>
#include <string>
#include <utility>

#include <xercesc/util/XercesDefs.hpp>

#include "vornrun/algorithms/parser/VornXmlException.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::test {

/// A document parsed from a text, with namespaces on. Keeps the XML library up for its life.
class XmlDocument {
  public:
    /// \throws std::runtime_error when the text is not well-formed
    explicit XmlDocument(const std::string& text);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;
    ~XmlDocument();  // gives the library back after the document

    const xercesc::DOMDocument* document() const;
    const xercesc::DOMElement* root() const;
    /// The element that carries the value in the attribute "id". \throws std::runtime_error when none does
    const xercesc::DOMElement* byId(const std::string& id) const;

  private:
    struct State;
    std::unique_ptr<State> mState;
};

/// what() of the fault that the call ends in; "no fault" when there is none.
template <class Call>
std::string faultOf(Call&& call) {
    try {
        std::forward<Call>(call)();
    } catch (const VornXmlException& fault) {
        return fault.what();
    }
    return "no fault";
}

}  // namespace vornrun::test
