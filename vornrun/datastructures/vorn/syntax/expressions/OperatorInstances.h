#pragma once
/// \file
/// The list of all operator instances, 264 binary and 6 unary ones, and their extern declarations: a source file that
/// makes operator nodes includes this, so that each is compiled once only, in the file of its operator.

#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ResultTypes.h"

// Each list applies M(Op, Left, Right) to the pairs of operand types of a class of operators.
#define VORN_PAIRS_WITH_NUMERIC_RIGHT(M, Op, Left) \
    M(Op, Left, VornInterval)                      \
    M(Op, Left, VornInt) M(Op, Left, VornReal) M(Op, Left, VornClock) M(Op, Left, VornContinuous)
#define VORN_NUMERIC_PAIRS(M, Op)                      \
    VORN_PAIRS_WITH_NUMERIC_RIGHT(M, Op, VornInterval) \
    VORN_PAIRS_WITH_NUMERIC_RIGHT(M, Op, VornInt)      \
    VORN_PAIRS_WITH_NUMERIC_RIGHT(M, Op, VornReal)     \
    VORN_PAIRS_WITH_NUMERIC_RIGHT(M, Op, VornClock)    \
    VORN_PAIRS_WITH_NUMERIC_RIGHT(M, Op, VornContinuous)
#define VORN_INTEGER_PAIRS(M, Op) \
    M(Op, VornInterval, VornInterval) M(Op, VornInterval, VornInt) M(Op, VornInt, VornInterval) M(Op, VornInt, VornInt)
#define VORN_BOOL_PAIR(M, Op) M(Op, VornBool, VornBool)
#define VORN_EQUALITY_PAIRS(M, Op) \
    VORN_NUMERIC_PAIRS(M, Op) M(Op, VornBool, VornBool) M(Op, VornEnum, VornEnum) M(Op, VornModeVal, VornModeVal)

#define VORN_BINARY_INSTANCE(Op, Left, Right) \
    template class TypedBinaryOperator<Op, BinaryResultType<Op, Left, Right>::type, Left, Right>;
#define VORN_UNARY_INSTANCE(Op, Sub) template class TypedUnaryOperator<Op, UnaryResultType<Op, Sub>::type, Sub>;

namespace vornrun {

#define VORN_DECLARE(Op, Left, Right) extern VORN_BINARY_INSTANCE(Op, Left, Right)
VORN_BOOL_PAIR(VORN_DECLARE, VornAnd)
VORN_BOOL_PAIR(VORN_DECLARE, VornOr)
VORN_BOOL_PAIR(VORN_DECLARE, VornImp)
VORN_BOOL_PAIR(VORN_DECLARE, VornIff)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornPlus)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornMinus)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornMultiply)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornDivide)
VORN_INTEGER_PAIRS(VORN_DECLARE, VornMod)
VORN_EQUALITY_PAIRS(VORN_DECLARE, VornEq)
VORN_EQUALITY_PAIRS(VORN_DECLARE, VornNEq)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornLt)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornLEq)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornGt)
VORN_NUMERIC_PAIRS(VORN_DECLARE, VornGEq)
#undef VORN_DECLARE

#define VORN_DECLARE(Op, Sub) extern VORN_UNARY_INSTANCE(Op, Sub)
VORN_DECLARE(VornNot, VornBool)
VORN_DECLARE(VornInvert, VornInterval)
VORN_DECLARE(VornInvert, VornInt)
VORN_DECLARE(VornInvert, VornReal)
VORN_DECLARE(VornInvert, VornClock)
VORN_DECLARE(VornInvert, VornContinuous)
#undef VORN_DECLARE

}  // namespace vornrun
