#include "vornrun/datastructures/vorn/syntax/expressions/BinaryOperatorBody.h"

namespace vornrun {

template <>
struct BinaryMeaning<VornIff> {
    static bool evaluate(const Operand<VornBool>& left, const Operand<VornBool>& right) {
        return onBothValues(left, right, [](bool l, bool r) { return l == r; });
    }
};

VORN_BOOL_PAIR(VORN_BINARY_INSTANCE, VornIff)

}  // namespace vornrun
