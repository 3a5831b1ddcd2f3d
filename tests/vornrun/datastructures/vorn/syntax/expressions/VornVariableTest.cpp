#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

#include <gtest/gtest.h>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"

namespace vornrun::test {
namespace {

template <class T>
class VornVariableOfEachType : public testing::Test {};
using Types =
    testing::Types<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornEnum, VornInterval, VornModeVal>;
TYPED_TEST_SUITE(VornVariableOfEachType, Types);

TYPED_TEST(VornVariableOfEachType, CannotBeEvaluated) {
    const TypedVornVariable<TypeParam> variable("sub.x");
    EXPECT_EQ(variable.type(), TypeParam::tag);
    try {
        static_cast<void>(variable.evaluateDirect());
        FAIL() << "a name has no value";
    } catch (const IdentifierEvaluation& error) {
        EXPECT_STREQ(error.what(), "Identifiers cannot be evaluated");
    }
    EXPECT_THROW(variable.evaluationResult(), IdentifierEvaluation);
}

TYPED_TEST(VornVariableOfEachType, PrintsItsReference) {
    EXPECT_EQ(printed(TypedVornVariable<TypeParam>("sub.x.y")), "sub.x.y");
    EXPECT_EQ(printed(TypedVornVariable<TypeParam>("x")), "x");
}

TYPED_TEST(VornVariableOfEachType, ClonesItsReferenceAndIgnoresReplacements) {
    const TypedVornVariable<TypeParam> variable("sub.x");
    const std::unique_ptr<TypedVornVariable<TypeParam>> copy(variable.clone());
    EXPECT_EQ(copy->subComponent(), "sub");
    EXPECT_EQ(copy->name(), "x");
    TypedVornValue<VornInt> replacement(1);
    const std::unique_ptr<VornVariable> rewritten(variable.clone({&replacement}));
    EXPECT_EQ(rewritten->text(), "sub.x");
}

TYPED_TEST(VornVariableOfEachType, IsVisitedAsAVariable) {
    const TypedVornVariable<TypeParam> variable("x");
    LastVisited visitor;
    EXPECT_EQ(variable.accept(&visitor), nullptr);
    EXPECT_EQ(visitor.kind, "variable");
    EXPECT_EQ(visitor.lastNode, static_cast<const VornExpressionTree*>(&variable));
}

}  // namespace
}  // namespace vornrun::test
