#pragma once
/// \file
/// Elements for tests that call the sub-parsers, and the text of a fault.

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

/// A document parsed from a text, with namespaces on. The XML library stays started for its life.
class XmlDocument {
  public:
    /// \throws std::runtime_error when the text is not well-formed
    explicit XmlDocument(const std::string& text);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;
    ~XmlDocument();  // stops the library after the document's end

    const xercesc::DOMDocument* document() const;
    const xercesc::DOMElement* root() const;
    /// The element whose attribute "id" has the value. \throws std::runtime_error when there is none
    const xercesc::DOMElement* byId(const std::string& id) const;

  private:
    struct State;
    std::unique_ptr<State> mState;
};

/// what() of the fault that the call throws; "no fault" when there is none.
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
