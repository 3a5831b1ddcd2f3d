#pragma once
/// \file
/// Reads numbers out of expression trees on the step path.

#include <variant>

#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

/// Reads one tree's value as a double, as getDoubleValue() does. But it finds out the type of the tree once, in the
/// constructor, and boxes nothing. Does not own the tree.
class NumberReader {
  public:
    /// \param tree null makes a reader that must not be read
    explicit NumberReader(const VornExpressionTree* tree);

    /// False when there is no tree.
    bool hasTree() const noexcept { return !std::holds_alternative<std::monostate>(mTree); }
    /// \pre hasTree()
    /// \throws std::invalid_argument when the value's type does not convert to real
    double read() const;

  private:
    template <class T>
    using Typed = const TypedVornExpressionTree<T>*;
    // The last alternative is for trees of a type that does not convert to real.
    std::variant<std::monostate, Typed<VornReal>, Typed<VornContinuous>, Typed<VornClock>, Typed<VornInt>,
                 Typed<VornInterval>, const VornExpressionTree*>
        mTree;
};

}  // namespace vornrun
