#include "vornrun/algorithms/parser/ElementPlaces.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <limits>
#include <map>
#include <mutex>
#include <xercesc/dom/DOMElement.hpp>

namespace vornrun::parser {

using xercesc::DOMElement;

namespace {

/// The places of all documents that were read and still exist. The library's own user data would make the end of every
/// node slower. A lock is taken once for a document and once for a fault.
class Registry {
  public:
    static Registry& instance() {
        static Registry registry;
        return registry;
    }

    void add(const xercesc::DOMDocument* document, const ElementPlaces* places) {
        const std::lock_guard lock(mMutex);
        mPlaces[document] = places;
    }
    void remove(const xercesc::DOMDocument* document) {
        const std::lock_guard lock(mMutex);
        mPlaces.erase(document);
    }
    /// Null for a document of another reader.
    const ElementPlaces* of(const xercesc::DOMDocument* document) {
        const std::lock_guard lock(mMutex);
        const auto found = mPlaces.find(document);
        return found == mPlaces.end() ? nullptr : found->second;
    }

  private:
    std::mutex mMutex;
    std::map<const xercesc::DOMDocument*, const ElementPlaces*> mPlaces;
};

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

ElementPlaces::~ElementPlaces() {
    if (mDocument != nullptr) Registry::instance().remove(mDocument);
}

void ElementPlaces::attachTo(const xercesc::DOMDocument* document) {
    assert(document != nullptr && mDocument == nullptr);
    Registry::instance().add(document, this);
    mDocument = document;
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
    const ElementPlaces* const places = document == nullptr ? nullptr : Registry::instance().of(document);
    return places == nullptr ? std::nullopt : places->find(element);
}

}  // namespace vornrun::parser
