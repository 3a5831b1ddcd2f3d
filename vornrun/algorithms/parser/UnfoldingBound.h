#pragma once
/// \file
/// A bound on how references multiply a document. A shared element is parsed once for every reference to it, so that a
/// chain of n elements, each with two references to the next, means 2^n elements.

#include <cstdint>
#include <limits>

namespace vornrun::parser {

/// Counts what the parsers of one document do. Only a document with references can exceed the bound: without them the
/// work is linear in the document.
class UnfoldingBound {
  public:
    /// The parsers may reach this many elements, counting an element once for each parse of its parent ...
    static constexpr std::uint64_t ELEMENT_LIMIT = 10'000'000;
    /// ... and also this many times the elements of the document.
    static constexpr std::uint64_t ELEMENT_FACTOR = 100;
    /// A parser looks at the children of an element at most some fifteen times in search of a name. More looks than
    /// this for each allowed element thus mean that there are too many elements, though most are never reached.
    static constexpr std::uint64_t LOOKS_PER_ELEMENT = 100;

    explicit UnfoldingBound(std::uint64_t elementLimit = ELEMENT_LIMIT) noexcept
        : mElementLimit(elementLimit), mReachedLimit(elementLimit), mLookLimit(elementLimit * LOOKS_PER_ELEMENT) {}

    /// Counts from 0 for the next document.
    /// \param elementCount number of elements in the document
    /// \param hasReferences whether any of them refers to another one
    void startDocument(std::uint64_t elementCount, bool hasReferences) noexcept;
    /// False only if the present document has no references.
    bool hasReferences() const noexcept { return mReachedLimit != UNLIMITED; }

    /// A parser is about to read an element.
    /// \throws VornXmlCorruptedVornException with both numbers, beyond the bound
    void countReached() {
        if (++mReached > mReachedLimit) refuse();
    }
    /// A parser looks at the name of a child. \throws as above
    void countLook() {
        if (++mLooks > mLookLimit) refuse();
    }

  private:
    static constexpr std::uint64_t UNLIMITED = std::numeric_limits<std::uint64_t>::max();

    [[noreturn]] void refuse() const;

    std::uint64_t mElementLimit;
    std::uint64_t mElementCount = 0;
    std::uint64_t mReached = 0;
    std::uint64_t mReachedLimit;
    std::uint64_t mLooks = 0;
    std::uint64_t mLookLimit;
};

}  // namespace vornrun::parser
