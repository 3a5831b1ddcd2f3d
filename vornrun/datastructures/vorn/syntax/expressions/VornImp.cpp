#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornImp> {
    /// Checks whether the operands are there and never evaluates them. An implication between two operands always
    /// holds. One without a right operand holds only if it has no left one either.
    static bool evaluate(const Operand<VornBool>& left, const Operand<VornBool>& right) {
        return right.get() != nullptr || left.get() == nullptr;
    }
};

VORN_BOOL_PAIR(VORN_BINARY_INSTANCE, VornImp)

}  // namespace vornrun
