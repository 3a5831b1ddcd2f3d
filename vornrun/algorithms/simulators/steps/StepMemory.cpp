#include "vornrun/algorithms/simulators/steps/StepMemory.h"

#include <array>
#include <new>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define VORNRUN_KEEPS_STEP_MEMORY 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VORNRUN_KEEPS_STEP_MEMORY 0
#endif
#endif
#ifndef VORNRUN_KEEPS_STEP_MEMORY
#define VORNRUN_KEEPS_STEP_MEMORY 1
#endif

namespace vornrun::stepmemory {

namespace {

constexpr bool KEEPS = VORNRUN_KEEPS_STEP_MEMORY != 0;

// Blocks are kept by size, in steps of the grain, up to the largest kind of step.
constexpr std::size_t GRAIN = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t LARGEST = 128;
// Enough for a run up to the default step bound; blocks beyond that are freed.
constexpr std::size_t MOST = 16384;
// Longer lists are freed too: few steps have so many participants, and many such lists take much memory.
constexpr std::size_t LONGEST_LIST = 64;

struct FreeBlock {
    FreeBlock* next;
};

struct Shelf {
    FreeBlock* first = nullptr;
    std::size_t count = 0;
};

// Set when the free list of the thread is gone. A step may be dropped after that.
thread_local bool sparesAreGone = false;

struct Spares {
    Spares() = default;
    Spares(const Spares&) = delete;
    Spares& operator=(const Spares&) = delete;
    ~Spares() {  // the blocks are raw memory
        sparesAreGone = true;
        for (Shelf& shelf : shelves)
            while (shelf.first != nullptr) ::operator delete(std::exchange(shelf.first, shelf.first->next));
    }

    std::array<Shelf, LARGEST / GRAIN> shelves;
    std::vector<QualifiedTransitions> lists;
};

Spares* spares() {
    thread_local Spares instance;
    return sparesAreGone ? nullptr : &instance;
}

std::size_t roundedUp(std::size_t size) { return (size + GRAIN - 1) / GRAIN * GRAIN; }

/// Where blocks of that size are kept; null when they are not.
Shelf* shelfFor(std::size_t size) {
    if (!KEEPS || size == 0 || size > LARGEST) return nullptr;
    Spares* const own = spares();
    return own == nullptr ? nullptr : &own->shelves[(size - 1) / GRAIN];
}

}  // namespace

bool isKept() { return KEEPS; }

void* allocate(std::size_t size) {
    Shelf* const shelf = shelfFor(size);
    if (shelf == nullptr || shelf->first == nullptr) return ::operator new(roundedUp(size));
    --shelf->count;
    return std::exchange(shelf->first, shelf->first->next);
}

void release(void* block, std::size_t size) noexcept {
    Shelf* const shelf = shelfFor(size);
    if (shelf == nullptr || shelf->count == MOST) return ::operator delete(block);
    shelf->first = new (block) FreeBlock{shelf->first};
    ++shelf->count;
}

QualifiedTransitions takeList() {
    Spares* const own = spares();
    if (!KEEPS || own == nullptr || own->lists.empty()) return {};
    QualifiedTransitions list = std::move(own->lists.back());
    own->lists.pop_back();
    return list;
}

void giveBack(QualifiedTransitions&& list) noexcept {
    Spares* const own = spares();
    if (!KEEPS || own == nullptr || list.capacity() > LONGEST_LIST || own->lists.size() == MOST) return;
    list.clear();
    try {
        own->lists.push_back(std::move(list));
    } catch (const std::bad_alloc&) {
        // Then its owner drops it.
    }
}

}  // namespace vornrun::stepmemory
