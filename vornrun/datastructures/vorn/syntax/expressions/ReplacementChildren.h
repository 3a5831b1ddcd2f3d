#pragma once
/// \file
/// The children that a rewrite passes to clone(list): adopted together, taken one by one.

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "vornrun/Ownership.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

/// Owns the children of a list and deletes those that nobody takes.
class ReplacementChildren {
  public:
    /// Adopts all entries; an entry may be null.
    explicit ReplacementChildren(const std::list<VornExpressionTree*>& children);

    std::size_t size() const noexcept { return mChildren.size(); }
    /// The child at a position, from now on the caller's; null beyond the end or when it was taken before.
    std::unique_ptr<VornExpressionTree> take(std::size_t index);
    /// The same for an operand of type T; a child of another type is deleted, and the result is null.
    template <class T>
    std::unique_ptr<TypedVornExpressionTree<T>> takeTyped(std::size_t index) {
        return castOwned<TypedVornExpressionTree<T>>(take(index));
    }

  private:
    std::vector<std::unique_ptr<VornExpressionTree>> mChildren;
};

}  // namespace vornrun
