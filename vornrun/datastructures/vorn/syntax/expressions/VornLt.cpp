#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornLt> {
    /// Strict order has no tolerance for any types.
    template <class Left, class Right>
    static bool evaluate(const Operand<Left>& left, const Operand<Right>& right) {
        return onBothNumbers(left, right, [](auto l, auto r) { return l < r; });
    }
};

VORN_NUMERIC_PAIRS(VORN_BINARY_INSTANCE, VornLt)

}  // namespace vornrun
