#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornAnd> {
    /// The right operand is not evaluated when the left one is false.
    static bool evaluate(const Operand<VornBool>& left, const Operand<VornBool>& right) {
        return left.evaluate() && right.evaluate();
    }
};

VORN_BOOL_PAIR(VORN_BINARY_INSTANCE, VornAnd)

}  // namespace vornrun
