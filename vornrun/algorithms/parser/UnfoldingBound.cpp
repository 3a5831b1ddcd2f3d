#include "vornrun/algorithms/parser/UnfoldingBound.h"

#include <algorithm>
#include <string>

#include "vornrun/algorithms/parser/VornXmlException.h"

namespace vornrun::parser {

void UnfoldingBound::startDocument(std::uint64_t elementCount, bool hasReferences) noexcept {
    mElementCount = elementCount;
    mReached = 0;
    mLooks = 0;
    mReachedLimit = hasReferences ? std::max(mElementLimit, ELEMENT_FACTOR * (elementCount + 1) - 1) : UNLIMITED;
    mLookLimit = hasReferences ? mReachedLimit * LOOKS_PER_ELEMENT : UNLIMITED;
}

void UnfoldingBound::refuse() const {
    throw VornXmlCorruptedVornException("XML references multiply the " + std::to_string(mElementCount) +
                                        " elements of the document to more than " + std::to_string(mElementLimit));
}

}  // namespace vornrun::parser
