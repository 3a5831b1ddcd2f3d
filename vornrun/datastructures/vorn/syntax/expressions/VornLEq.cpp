#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ComparisonTolerance.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornLEq> {
    template <class Left, class Right>
    static bool evaluate(const Operand<Left>& left, const Operand<Right>& right) {
        if constexpr (comparesWithTolerance<Left, Right>) {
            return onBothNumbers(left, right, [](double l, double r) { return r >= l - COMPARISON_TOLERANCE; });
        } else {
            return onBothNumbers(left, right, [](auto l, auto r) { return l <= r; });
        }
    }
};

VORN_NUMERIC_PAIRS(VORN_BINARY_INSTANCE, VornLEq)

}  // namespace vornrun
