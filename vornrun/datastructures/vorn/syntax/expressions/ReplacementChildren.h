#pragma once
/// \file
/// The children that a rewrite hands to clone(list): adopted together, taken one by one.

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

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
    /// The same for an operand of type T; a child of another type is deleted, and null comes in its place.
    template <class T>
    std::unique_ptr<TypedVornExpressionTree<T>> takeTyped(std::size_t index) {
        auto child = take(index);
        auto* const typed = dynamic_cast<TypedVornExpressionTree<T>*>(child.get());
        if (typed != nullptr) static_cast<void>(child.release());
        return std::unique_ptr<TypedVornExpressionTree<T>>(typed);
    }

  private:
    std::vector<std::unique_ptr<VornExpressionTree>> mChildren;
};

}  // namespace vornrun
