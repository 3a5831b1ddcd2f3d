#pragma once
/// \file
/// A free list of steps, one per thread. A run makes its steps one by one, and the next run drops all of them at its
/// start. Their memory goes on the free list. So a run allocates memory for steps only if it is longer than all runs
/// before it.

#include <cstddef>

#include "vornrun/datastructures/eda/QualifiedTransition.h"

namespace vornrun::stepmemory {

/// False in a build with a sanitizer that watches the heap and has to see each allocation.
bool isKept();

/// A block of so many bytes, aligned for any object. \throws std::bad_alloc
void* allocate(std::size_t size);
/// Takes back a block of allocate(). `size` is the size given there. Any thread may call this.
void release(void* block, std::size_t size) noexcept;

/// An empty list, with the storage of an earlier one when there is any.
QualifiedTransitions takeList();
/// Keeps the storage of a list that is no longer needed.
void giveBack(QualifiedTransitions&& list) noexcept;

}  // namespace vornrun::stepmemory
