#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"
#include "vornrun/datastructures/vorn/syntax/expressions/IntegerArithmetic.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornMod> {
    template <class Left, class Right>
    static long evaluate(const Operand<Left>& left, const Operand<Right>& right) {
        return onBothValues(left, right, [](long l, long r) { return hardwareDivision(l, r).remainder; });
    }
};

VORN_INTEGER_PAIRS(VORN_BINARY_INSTANCE, VornMod)

}  // namespace vornrun
