#include "vornrun/datastructures/vorn/syntax/expressions/NumberReader.h"

#include <cassert>
#include <type_traits>

namespace vornrun {

NumberReader::NumberReader(const VornExpressionTree* tree) {
    if (tree == nullptr) return;
    mTree = tree;
    withTagClass(tree->type(), [&]<class T>() {
        if constexpr (NumericTag<T>)
            if (const auto* typed = dynamic_cast<const TypedVornExpressionTree<T>*>(tree)) mTree = typed;
    });
}

double NumberReader::read() const {
    assert(hasTree());
    return std::visit(
        [](const auto& tree) -> double {
            using Tree = std::remove_cvref_t<decltype(tree)>;
            if constexpr (std::is_same_v<Tree, std::monostate>)
                return 0.0;
            else if constexpr (std::is_same_v<Tree, const VornExpressionTree*>)
                return getDoubleValue(tree);
            else
                return static_cast<double>(tree->evaluateDirect());
        },
        mTree);
}

}  // namespace vornrun
