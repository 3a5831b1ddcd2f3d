#pragma once
/// \file
/// What all parsers of the two input files share: the walk over child elements, with shared elements resolved.
/// Only child elements count; text and comments are passed over. Every element that a helper finds passes through
/// checkReference(), so that no caller ever sees a reference in place of its target.

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "vornrun/Log.h"
#include "vornrun/algorithms/parser/UnfoldingBound.h"
#include "vornrun/algorithms/parser/VornXmlTags.h"
#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser {

/// Elements by object identifier. Made by the parser's caller, filled per document, shared by all sub-parsers.
using XmlContext = std::map<std::string, const xercesc::DOMElement*>;

class AbstractVornXmlParser {
  public:
    explicit AbstractVornXmlParser(XmlContext& context);
    AbstractVornXmlParser(const AbstractVornXmlParser&) = delete;
    AbstractVornXmlParser& operator=(const AbstractVornXmlParser&) = delete;
    virtual ~AbstractVornXmlParser();  // gives the library back after the names that it transcoded

  protected:
    using Elements = std::vector<const xercesc::DOMElement*>;

    /// Stores every element with an "objid" under it; of a repeated identifier the last element counts. Linear in the
    /// document, but for the look-up of identifiers.
    void buildContext(const xercesc::DOMDocument* document);
    /// The element itself, or the target of its "objref", in a single step.
    /// \throws VornXmlParserException when nothing carries the identifier
    const xercesc::DOMElement* checkReference(const xercesc::DOMElement* element) const;

    // All names below are matched on the element as it stands; `local` matches the local name instead of the tag name.
    /// \throws VornXmlNodeMissingException when there is no child element
    const xercesc::DOMElement* firstChild(const xercesc::DOMElement* element) const;
    /// The child element at position i from 0. \throws VornXmlNodeMissingException when there are fewer
    const xercesc::DOMElement* indexChild(const xercesc::DOMElement* element, unsigned int i) const;
    /// Null when there is none.
    const xercesc::DOMElement* findChildWithName(const xercesc::DOMElement* element, const XMLCh* tag,
                                                 bool local = false) const;
    /// \throws VornXmlNodeMissingException with the description when there is none
    const xercesc::DOMElement* expectChildNode(const xercesc::DOMElement* element, const XMLCh* tag,
                                               std::string_view description, bool local = false) const;
    /// All child elements, in document order.
    Elements listChildren(const xercesc::DOMElement* element) const;
    /// Those of that name, in document order.
    Elements listChildrenWithTag(const xercesc::DOMElement* element, const XMLCh* tag, bool local = false) const;
    /// As listChildrenWithTag(); each child element of another name is skipped with a warning.
    Elements listOnlyChildrenWithTag(const xercesc::DOMElement* element, const XMLCh* tag) const;
    std::string getNameFromChildNodes(const xercesc::DOMElement* element) const;
    /// The type that the child `data_type` names in its attribute "type".
    VornDataTypeTag getDataTypeFromChildNodes(const xercesc::DOMElement* element) const;
    /// Mode names in the child `in_modes`; empty without that child, which means all modes.
    std::vector<std::string> inModes(const xercesc::DOMElement* element) const;
    /// The element's attribute "type"; empty when it has none.
    std::string typeAttribute(const xercesc::DOMElement* element) const;
    /// The same in the document's own characters, borrowed from it.
    const XMLCh* plainTypeAttribute(const xercesc::DOMElement* element) const;
    /// As expectChildNode(), for a child that is read several times: it does not count towards the bound.
    const xercesc::DOMElement* expectRereadChild(const xercesc::DOMElement* element, const XMLCh* tag,
                                                 std::string_view description) const;
    /// The child elements as they are in the document, references included.
    Elements listOwnChildren(const xercesc::DOMElement* element) const;
    /// The target of a reference, for a test of its name; the element itself if it is no reference, or if nothing
    /// carries the identifier.
    const xercesc::DOMElement* referencedOrItself(const xercesc::DOMElement* element) const;
    /// checkReference() of a child that the parser goes on to: it counts towards the bound.
    const xercesc::DOMElement* reach(const xercesc::DOMElement* element) const;
    /// The element's "objid", borrowed from the document. Null without one, and in a document without references,
    /// where no element is reached twice.
    const XMLCh* sharedIdentifier(const xercesc::DOMElement* element) const;
    /// From now on, this parser and the other one count towards the same bound.
    void countTogetherWith(const AbstractVornXmlParser& other) noexcept { mBound = other.mBound; }

    const VornXmlTags& tags() const noexcept { return *mTags; }
    bool xercesInitialized() const noexcept { return mXercesInitialized; }
    XmlContext& context() const noexcept { return mContext; }

    static const Log sLogger;  // "root.vornxml", shared by all parsers

  private:
    struct AttributeNames;  // "key", "type", "objid" and "objref", transcoded

    /// Calls `take` with each child element as it is in the document, until `take` returns true.
    template <class Take>
    void untilChild(const xercesc::DOMElement* element, Take&& take) const;
    const xercesc::DOMElement* lookUp(const xercesc::DOMElement* element, const XMLCh* tag, bool local) const;
    /// The value of "objref"; null when the element is no reference.
    const XMLCh* referenceOf(const xercesc::DOMElement* element) const;
    [[noreturn]] void refuseWithout(const xercesc::DOMElement* element, const XMLCh* tag, std::string_view description,
                                    bool local) const;

    bool mXercesInitialized;
    std::unique_ptr<VornXmlTags> mTags;
    std::unique_ptr<AttributeNames> mAttributes;
    XmlContext& mContext;
    std::shared_ptr<UnfoldingBound> mBound;  // one for all parsers of a document
};

}  // namespace vornrun::parser
