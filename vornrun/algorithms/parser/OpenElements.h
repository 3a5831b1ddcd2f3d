#pragma once
/// \file
/// The guard against circles of references. An operation that recurses over elements does not end exactly if it enters
/// an element again that it has not left.

#include <cstddef>
#include <unordered_set>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser {

/// The elements that one recursive operation has entered and not left. Each such operation has an object of its own:
/// two operations may be in the same element without a circle.
class OpenElements {
  public:
    /// Leaves at its end, also by an exception, the elements that were entered through it.
    class Entry {
      public:
        explicit Entry(OpenElements& open) noexcept : mOpen(open), mStart(open.mPath.size()) {}
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        ~Entry();  // takes them off the path

        /// \param identifier the element's "objid". Without one (null) nothing is noted: only its own parent reaches
        /// the
        ///                   element, so that every circle has another element with an identifier.
        /// \throws VornXmlCorruptedVornException with the identifier when the element is open already
        void enter(const xercesc::DOMElement* element, const XMLCh* identifier);

      private:
        OpenElements& mOpen;
        std::size_t mStart;
    };

  private:
    std::vector<const xercesc::DOMElement*> mPath;
    std::unordered_set<const xercesc::DOMElement*> mOpen;  // the elements of the path
};

}  // namespace vornrun::parser
