#include "vornrun/algorithms/parser/ReferenceGraph.h"

#include <limits>
#include <xercesc/dom/DOMElement.hpp>

#include "vornrun/algorithms/parser/VornXmlException.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace vornrun::parser {

using xercesc::DOMElement;

namespace {

std::uint64_t saturatingSum(std::uint64_t a, std::uint64_t b) {
    return a > std::numeric_limits<std::uint64_t>::max() - b ? std::numeric_limits<std::uint64_t>::max() : a + b;
}

/// The element that follows in document order; null behind the last one below the root.
const DOMElement* nextInDocument(const DOMElement* element, const DOMElement* root) {
    if (const DOMElement* child = element->getFirstElementChild()) return child;
    while (element != root) {
        if (const DOMElement* sibling = element->getNextElementSibling()) return sibling;
        element = static_cast<const DOMElement*>(element->getParentNode());
    }
    return nullptr;
}

}  // namespace

ReferenceGraph::ReferenceGraph(XmlContext& context, const XMLCh* objid, const XMLCh* objref, const VornXmlTags& tags)
    : mContext(context), mObjid(objid), mObjref(objref), mRead(tags) {}

void ReferenceGraph::enter(const DOMElement* root) {
    mRoot = root;
    for (const DOMElement* element = root; element != nullptr; element = nextInDocument(element, root)) {
        ++mElementCount;
        if (!element->hasAttributes()) continue;
        if (element->hasAttribute(mObjref)) mHasReferences = true;
        if (element->hasAttribute(mObjid)) mContext[attribute(element, mObjid)] = element;
    }
}

void ReferenceGraph::check() {
    if (!mHasReferences) return;
    const std::uint64_t unfolded = unfold(mRoot);
    if (unfolded <= UNFOLDED_LIMIT || unfolded / UNFOLDED_FACTOR <= mElementCount) return;
    throw VornXmlCorruptedVornException("XML references multiply the " + std::to_string(mElementCount) +
                                        " elements of the document to more than " + std::to_string(UNFOLDED_LIMIT));
}

std::uint64_t ReferenceGraph::unfold(const DOMElement* start) {
    // The first frame only collects the sum.
    mPath.assign(1, Frame{nullptr, 0, nullptr, false});
    visit(start, mRead.readsAnyChild(start, start));
    while (mPath.size() > 1) {
        Frame& top = mPath.back();
        if (top.nextChild != nullptr) {
            const DOMElement* child = top.nextChild;
            top.nextChild = child->getNextElementSibling();
            if (!top.readsAnyChild && !mRead.isReadByName(child)) continue;
            if (const DOMElement* target = resolve(child)) visit(target, mRead.readsAnyChild(child, target));
            continue;
        }
        if (top.shared != nullptr) *top.shared = Shared{false, top.unfolded};
        const std::uint64_t unfolded = top.unfolded;
        mPath.pop_back();
        mPath.back().unfolded = saturatingSum(mPath.back().unfolded, unfolded);
    }
    return mPath.back().unfolded;
}

void ReferenceGraph::visit(const DOMElement* element, bool readsAnyChild) {
    Shared* const shared = sharedState(element, readsAnyChild);
    if (shared != nullptr && shared->isOpen)
        throw VornXmlCorruptedVornException("XML references lead from an object back to itself: " +
                                            attribute(element, mObjid));
    if (shared != nullptr && shared->unfolded != 0) {
        mPath.back().unfolded = saturatingSum(mPath.back().unfolded, shared->unfolded);
        return;
    }
    if (shared != nullptr) shared->isOpen = true;
    mPath.push_back({element->getFirstElementChild(), 1, shared, readsAnyChild});
}

const DOMElement* ReferenceGraph::resolve(const DOMElement* element) const {
    if (!element->hasAttributes() || !element->hasAttribute(mObjref)) return element;
    const auto target = mContext.find(attribute(element, mObjref));
    return target == mContext.end() ? nullptr : target->second;
}

ReferenceGraph::Shared* ReferenceGraph::sharedState(const DOMElement* element, bool readsAnyChild) {
    // Only an element with an identifier can be met twice, so that every cycle leads through one.
    if (!element->hasAttributes() || !element->hasAttribute(mObjid)) return nullptr;
    return &mShared[element][readsAnyChild ? 1 : 0];  // stays in place when the map grows
}

std::string ReferenceGraph::attribute(const DOMElement* element, const XMLCh* name) const {
    return util::transcode(element->getAttribute(name));
}

}  // namespace vornrun::parser
