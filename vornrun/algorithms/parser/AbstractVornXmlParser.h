#pragma once
/// \file
/// What all parsers of the two input files share: the walk over child elements, with references resolved. Only child
/// elements count; text and comments are passed over. Every element that a helper finds passes through
/// checkReference(), so that no caller ever sees a reference in place of its target.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "vornrun/Log.h"
#include "vornrun/algorithms/parser/SourcePlace.h"
#include "vornrun/algorithms/parser/VornXmlTags.h"
#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser {

/// Elements by object identifier. Made by the parser's caller, filled per document, shared by all sub-parsers.
using XmlContext = std::map<std::string, const xercesc::DOMElement*>;

/// A parser and all its operations belong to one thread; several threads may have a parser each. Operations that take
/// an element need one that is not null, and return elements that the document owns.
class AbstractVornXmlParser {
  public:
    using Elements = std::vector<const xercesc::DOMElement*>;

    /// \param context not owned, outlives this object
    explicit AbstractVornXmlParser(XmlContext& context);
    AbstractVornXmlParser(const AbstractVornXmlParser&) = delete;
    AbstractVornXmlParser& operator=(const AbstractVornXmlParser&) = delete;
    virtual ~AbstractVornXmlParser();  // calls clean(), after the names are released

    /// Stores every element with an "objid" under it; of a repeated identifier the last element counts. Linear in the
    /// document, but for the look-up of identifiers.
    void buildContext(const xercesc::DOMDocument* document);
    /// The element itself, or the target of its "objref", in a single step.
    /// \throws VornXmlParserException when nothing has the identifier
    const xercesc::DOMElement* checkReference(const xercesc::DOMElement* element) const;

    // All names below are those of the children themselves, references included; `local` compares the local name
    // instead of the tag name. Each operation may throw VornXmlCorruptedVornException, when references multiply the
    // document beyond its bound (UnfoldingBound), and what checkReference() throws.

    /// \throws VornXmlNodeMissingException when there is no child element
    const xercesc::DOMElement* firstChild(const xercesc::DOMElement* element) const;
    /// The child element at position i from 0. \throws VornXmlNodeMissingException when there are fewer
    const xercesc::DOMElement* indexChild(const xercesc::DOMElement* element, unsigned int i) const;
    /// The first of that name; null when there is none.
    const xercesc::DOMElement* findChildWithName(const xercesc::DOMElement* element, const XMLCh* tag,
                                                 bool local = false) const;
    /// The first of that name. \throws VornXmlNodeMissingException with the description when there is none
    const xercesc::DOMElement* expectChildNode(const xercesc::DOMElement* element, const XMLCh* tag,
                                               std::string_view description, bool local = false) const;
    /// All child elements, in document order.
    Elements listChildren(const xercesc::DOMElement* element) const;
    /// Those of that name, in document order.
    Elements listChildrenWithTag(const xercesc::DOMElement* element, const XMLCh* tag, bool local = false) const;
    /// The text of the child `name`. \throws VornXmlNodeMissingException when there is none
    std::string getNameFromChildNodes(const xercesc::DOMElement* element) const;
    /// The type that the child `data_type` names in its attribute "type".
    /// \throws VornXmlNodeMissingException when there is no such child
    /// \throws VornXmlUnexpectedValueException for another name
    VornDataTypeTag getDataTypeFromChildNodes(const xercesc::DOMElement* element) const;
    /// The names of modes in the child `in_modes`; empty without that child, which means all modes.
    std::vector<std::string> inModes(const xercesc::DOMElement* element) const;

  protected:
    /// As listChildrenWithTag(); each child element of another name is skipped with a warning.
    Elements listOnlyChildrenWithTag(const xercesc::DOMElement* element, const XMLCh* tag) const;
    /// The child elements as they are in the document, references included.
    Elements listOwnChildren(const xercesc::DOMElement* element) const;
    /// As expectChildNode(), for a child that is read several times: it does not count towards the bound.
    const xercesc::DOMElement* expectRereadChild(const xercesc::DOMElement* element, const XMLCh* tag,
                                                 std::string_view description) const;
    /// The target of a reference, for a test of its name; the element itself if it is no reference, or if nothing has
    /// the identifier.
    const xercesc::DOMElement* referencedOrItself(const xercesc::DOMElement* element) const;
    /// checkReference() of a child that the parser reads: it counts towards the bound.
    const xercesc::DOMElement* reach(const xercesc::DOMElement* element) const;
    /// The element's attribute "type"; empty when it has none.
    std::string typeAttribute(const xercesc::DOMElement* element) const;
    /// The same in the document's own characters, owned by the document.
    const XMLCh* plainTypeAttribute(const xercesc::DOMElement* element) const;
    /// The element's "objid", owned by the document. Null without one, and in a document without references, where no
    /// element is reached twice.
    const XMLCh* sharedIdentifier(const xercesc::DOMElement* element) const;

    /// From now on, this parser and the other one share the bound and the noted place.
    void shareWith(const AbstractVornXmlParser& other) noexcept { mShared = other.mShared; }
    /// Keeps the place of an element for an exception that cannot hold a place itself.
    void notePlace(const xercesc::DOMElement* element) const;
    /// What notePlace() kept since the last buildContext().
    const std::optional<SourcePlace>& notedPlace() const noexcept;

    const VornXmlTags& tags() const noexcept { return *mTags; }
    bool xercesInitialized() const noexcept { return mXercesInitialized; }
    /// Why the library did not start, in its own words; empty if it did.
    const std::string& xercesFault() const noexcept { return mXercesFault; }

    static const Log sLogger;  // "root.vornxml", shared by all parsers

  private:
    struct Shared;  // what all parsers of one document have in common beside the context

    /// Calls `take` with each child element as it is in the document, until `take` returns true.
    template <class Take>
    void untilChild(const xercesc::DOMElement* element, Take&& take) const;
    const xercesc::DOMElement* lookUp(const xercesc::DOMElement* element, const XMLCh* tag, bool local) const;
    [[noreturn]] void refuseWithout(const xercesc::DOMElement* element, const XMLCh* tag, std::string_view description,
                                    bool local) const;
    /// The value of "objref"; null when the element is no reference.
    const XMLCh* referenceOf(const xercesc::DOMElement* element) const;

    std::string mXercesFault;
    bool mXercesInitialized;
    std::unique_ptr<VornXmlTags> mTags;
    std::unique_ptr<VornXmlAttributes> mAttributes;
    XmlContext& mContext;
    std::shared_ptr<Shared> mShared;
};

}  // namespace vornrun::parser
