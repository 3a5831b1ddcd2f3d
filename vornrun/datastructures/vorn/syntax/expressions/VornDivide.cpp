#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"
#include "vornrun/datastructures/vorn/syntax/expressions/IntegerArithmetic.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornDivide> {
    template <class Left, class Right>
    static auto evaluate(const Operand<Left>& left, const Operand<Right>& right) {
        return onBothNumbers(left, right, [](auto l, auto r) {
            if constexpr (std::is_same_v<decltype(l), long>) {
                return hardwareDivision(l, r).quotient;
            } else {
                return l / r;  // a zero divisor gives an infinity or a NaN
            }
        });
    }
};

VORN_NUMERIC_PAIRS(VORN_BINARY_INSTANCE, VornDivide)

}  // namespace vornrun
