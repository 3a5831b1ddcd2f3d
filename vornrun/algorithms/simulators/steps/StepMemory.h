#pragma once
/// \file
/// Memory that the steps of one thread hand on to each other. A run makes a step at a time and drops all of them when
/// the next one begins; what they stood in serves the steps of that one, so that a run allocates nothing for steps
/// unless it is longer than those before it.

#include <cstddef>

#include "vornrun/datastructures/eda/QualifiedTransition.h"

namespace vornrun::stepmemory {

/// False in a build whose sanitizer watches the heap, and has to see each step come and go.
bool isKept();

/// A block of so many bytes, aligned for any object. \throws std::bad_alloc
void* allocate(std::size_t size);
/// Takes back a block of allocate(), with the size that it was asked for. Any thread may do so.
void release(void* block, std::size_t size) noexcept;

/// An empty list, with the storage of an earlier one when there is any.
QualifiedTransitions takeList();
/// Keeps the storage of a list that is no longer needed.
void giveBack(QualifiedTransitions&& list) noexcept;

}  // namespace vornrun::stepmemory
