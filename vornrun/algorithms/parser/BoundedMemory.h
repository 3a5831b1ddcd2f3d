#pragma once
/// \file
/// The memory of the XML library while it reads documents, with bounds on it. A few lines of declarations can expand to
/// gigabytes of text or to years of work: entities within entities, in contents, in attributes, in the declarations
/// themselves. The library's own limit counts only some of them, but all of them make the library allocate memory.

#include <cstddef>
#include <cstdint>

#include <xercesc/framework/MemoryManager.hpp>

namespace vornrun::parser {

/// Refuses an allocation beyond its bounds with the library's OutOfMemoryException, which the library can handle. After
/// the first refusal it refuses nothing more, so that the library can clean up. Its destructor frees the blocks that
/// the library has lost because of a fault. Belongs to one thread.
class BoundedMemory final : public xercesc::MemoryManager {
  public:
    /// Bytes in use at any time: a part for the library's tables, and a part for every byte of the documents. An
    /// element of the shortest kind takes 4 bytes of a file and about 200 in memory.
    static constexpr std::uint64_t IN_USE_BASE = std::uint64_t{64} << 20;
    static constexpr std::uint64_t IN_USE_PER_BYTE = 128;
    /// Bytes allocated in all, as the measure of work: each expansion of an entity allocates a reader of about 200 KiB.
    static constexpr std::uint64_t TOTAL_BASE = std::uint64_t{32} << 30;
    static constexpr std::uint64_t TOTAL_PER_BYTE = 4096;

    BoundedMemory() = default;
    BoundedMemory(const BoundedMemory&) = delete;
    BoundedMemory& operator=(const BoundedMemory&) = delete;
    ~BoundedMemory() override;  // frees all blocks

    /// Raises the bounds: so many more bytes of a document have been read.
    void addDocumentBytes(std::size_t count) noexcept { mDocumentBytes += count; }
    /// True after an allocation has been refused.
    bool exceeded() const noexcept { return mExceeded; }

    void* allocate(XMLSize_t size) override;
    void deallocate(void* block) override;
    /// The library's default manager: exceptions, with their texts, outlive this object.
    xercesc::MemoryManager* getExceptionMemoryManager() override;

  private:
    /// The bytes before each block.
    struct alignas(std::max_align_t) Header {
        Header* next;
        Header* previous;
        std::size_t size;
    };

    Header mBlocks{&mBlocks, &mBlocks, 0};  // a ring
    std::uint64_t mDocumentBytes = 0;
    std::uint64_t mInUse = 0;
    std::uint64_t mTotal = 0;
    bool mExceeded = false;
};

}  // namespace vornrun::parser
