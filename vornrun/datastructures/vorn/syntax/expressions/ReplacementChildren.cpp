#include "vornrun/datastructures/vorn/syntax/expressions/ReplacementChildren.h"

#include <utility>

namespace vornrun {

ReplacementChildren::ReplacementChildren(const std::list<VornExpressionTree*>& children) {
    mChildren.reserve(children.size());
    for (VornExpressionTree* const child : children) mChildren.emplace_back(child);
}

std::unique_ptr<VornExpressionTree> ReplacementChildren::take(std::size_t index) {
    return index < mChildren.size() ? std::move(mChildren[index]) : nullptr;
}

}  // namespace vornrun
