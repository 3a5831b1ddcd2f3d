#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornImp> {
    /// Looks at the presence of the operands and never evaluates them: an implication between two operands always
    /// holds, and one without its right operand holds only without its left one too.
    static bool evaluate(const Operand<VornBool>& left, const Operand<VornBool>& right) {
        return right.get() != nullptr || left.get() == nullptr;
    }
};

VORN_BOOL_PAIR(VORN_BINARY_INSTANCE, VornImp)

}  // namespace vornrun
