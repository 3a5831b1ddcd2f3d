#include <cmath>

#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ComparisonTolerance.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornEq> {
    template <class Left, class Right>
    static bool evaluate(const Operand<Left>& left, const Operand<Right>& right) {
        if constexpr (comparesWithTolerance<Left, Right>) {
            return onBothNumbers(left, right,
                                 [](double l, double r) { return std::abs(l - r) < COMPARISON_TOLERANCE; });
        } else if constexpr (NumericTag<Left>) {
            return onBothNumbers(left, right, [](auto l, auto r) { return l == r; });
        } else {
            return onBothValues(left, right, [](const auto& l, const auto& r) { return l == r; });
        }
    }
};

VORN_EQUALITY_PAIRS(VORN_BINARY_INSTANCE, VornEq)

}  // namespace vornrun
