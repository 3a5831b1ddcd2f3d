#include "vornrun/algorithms/parser/BoundedMemory.h"

#include <cstdlib>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace vornrun::parser {

BoundedMemory::~BoundedMemory() {
    while (mBlocks.next != &mBlocks) deallocate(mBlocks.next + 1);
}

void* BoundedMemory::allocate(XMLSize_t size) {
    mTotal += size;
    const bool isTooMuch = mInUse + size > IN_USE_BASE + IN_USE_PER_BYTE * mDocumentBytes ||
                           mTotal > TOTAL_BASE + TOTAL_PER_BYTE * mDocumentBytes;
    if (isTooMuch && !mExceeded) {
        mExceeded = true;
        throw xercesc::OutOfMemoryException();
    }
    auto* const header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (header == nullptr) throw xercesc::OutOfMemoryException();
    *header = {mBlocks.next, &mBlocks, size};
    header->next->previous = header;
    mBlocks.next = header;
    mInUse += size;
    return header + 1;
}

void BoundedMemory::deallocate(void* block) {
    if (block == nullptr) return;
    Header* const header = static_cast<Header*>(block) - 1;
    // The analyzer does not see that a freed block is out of the ring.
    header->next->previous = header->previous;  // NOLINT(clang-analyzer-unix.Malloc)
    header->previous->next = header->next;
    mInUse -= header->size;
    std::free(header);
}

xercesc::MemoryManager* BoundedMemory::getExceptionMemoryManager() {
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}

}  // namespace vornrun::parser
