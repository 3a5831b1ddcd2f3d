#pragma once
/// \file
/// Which elements of a document the parsers can come to. What stands elsewhere is passed over, whatever it holds: the
/// compiler may have written down objects of its own there, with references back to their owners.

#include <string_view>
#include <unordered_set>

#include <xercesc/util/XercesDefs.hpp>

#include "vornrun/algorithms/parser/PropertyXmlTags.h"
#include "vornrun/algorithms/parser/VornXmlTags.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser {

/// Goes by local names.
class ReadElements {
  public:
    /// \param tags names of the model file, which must outlive this object
    explicit ReadElements(const VornXmlTags& tags);

    /// False for a name that no parser goes on to from an element whose children are found by name. A reference counts
    /// by its own name.
    bool isReadByName(const xercesc::DOMElement* child) const;
    /// True where children may have any name: some are found by position, and of some lists it is the target whose name
    /// counts.
    /// \param element as it stands in its parent, perhaps a reference
    /// \param target what it refers to, or else the element itself
    bool readsAnyChild(const xercesc::DOMElement* element, const xercesc::DOMElement* target) const;

  private:
    using Names = std::unordered_set<std::basic_string_view<XMLCh>>;

    PropertyXmlTags mPropertyTags;
    Names mNames;
    Names mListsByOwnName;
    Names mFormulas;  // whatever the name of the reference to one is
};

}  // namespace vornrun::parser
