#include "vornrun/algorithms/parser/ElementPlaces.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

namespace vornrun::parser {

using xercesc::DOMElement;

namespace {

constexpr const XMLCh* KEY = u"places of elements";

std::uint32_t cutDown(std::uint64_t number) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(number, std::numeric_limits<std::uint32_t>::max()));
}

}  // namespace

SourcePlace ElementPlaces::place(std::uint64_t line, std::uint64_t column) const {
    return {mFile, cutDown(line), cutDown(column)};
}

void ElementPlaces::add(const DOMElement* element, std::uint64_t line, std::uint64_t column) {
    mStarts.push_back({element, cutDown(line), cutDown(column)});
    mSorted = false;
}

void ElementPlaces::attachTo(xercesc::DOMDocument* document) const {
    // The library keeps an untyped pointer; placeOf() only reads through it.
    document->setUserData(KEY, const_cast<ElementPlaces*>(this), nullptr);
}

std::optional<SourcePlace> ElementPlaces::find(const DOMElement* element) const {
    constexpr std::less<const DOMElement*> before;
    if (!mSorted) {
        std::sort(mStarts.begin(), mStarts.end(),
                  [&](const Start& a, const Start& b) { return before(a.element, b.element); });
        mSorted = true;
    }
    const auto found = std::lower_bound(mStarts.begin(), mStarts.end(), element,
                                        [&](const Start& start, const auto* e) { return before(start.element, e); });
    if (found == mStarts.end() || found->element != element) return std::nullopt;
    return place(found->line, found->column);
}

std::optional<SourcePlace> placeOf(const DOMElement* element) {
    const xercesc::DOMDocument* const document = element == nullptr ? nullptr : element->getOwnerDocument();
    const void* const places = document == nullptr ? nullptr : document->getUserData(KEY);
    return places == nullptr ? std::nullopt : static_cast<const ElementPlaces*>(places)->find(element);
}

}  // namespace vornrun::parser
