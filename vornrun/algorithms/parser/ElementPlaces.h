#pragma once
/// \file
/// Where the elements of a document are in its file, for faults and warnings.

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "vornrun/algorithms/parser/SourcePlace.h"
#include "vornrun/algorithms/parser/VornXmlException.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser {

/// The start tags of one document: 16 bytes for each element. Belongs to one thread, as its document does.
class ElementPlaces {
  public:
    explicit ElementPlaces(std::string file) : mFile(std::move(file)) {}
    ElementPlaces(const ElementPlaces&) = delete;
    ElementPlaces& operator=(const ElementPlaces&) = delete;
    ~ElementPlaces();  // placeOf() finds them no more

    /// A place in the file. Numbers from 1; what is too large for a SourcePlace is cut down to its largest number.
    SourcePlace place(std::uint64_t line, std::uint64_t column) const;
    /// Notes where the element starts.
    void add(const xercesc::DOMElement* element, std::uint64_t line, std::uint64_t column);
    /// Makes placeOf() find these places for as long as this object lives, which must not be longer than the document.
    /// \pre the document is not null, and this is the first call
    void attachTo(const xercesc::DOMDocument* document);
    /// Nothing for an element that was not added.
    /// \note the first call sorts the places
    std::optional<SourcePlace> find(const xercesc::DOMElement* element) const;

  private:
    struct Start {
        const xercesc::DOMElement* element;
        std::uint32_t line;
        std::uint32_t column;
    };

    std::string mFile;
    const xercesc::DOMDocument* mDocument = nullptr;
    mutable std::vector<Start> mStarts;  // by element once find() has been called
    mutable bool mSorted = false;
};

/// Where the element's start tag begins. Nothing for null and for a document that DocumentReader has not read.
std::optional<SourcePlace> placeOf(const xercesc::DOMElement* element);

/// The fault with its place.
template <class Fault>
Fault at(std::optional<SourcePlace> place, Fault fault) {
    fault.setPlace(std::move(place));
    return fault;
}

/// The fault with the place of the element at which it is.
template <class Fault>
Fault at(const xercesc::DOMElement* element, Fault fault) {
    return at(placeOf(element), std::move(fault));
}

/// The result of the call. A fault that it throws without a place gets that of the element.
template <class Call>
decltype(auto) placed(const xercesc::DOMElement* element, Call&& call) {
    try {
        return std::forward<Call>(call)();
    } catch (VornXmlException& fault) {
        if (!fault.place()) fault.setPlace(placeOf(element));
        throw;
    }
}

}  // namespace vornrun::parser
