// The step path: evaluateDirect() allocates nothing for the seven types of fixed size.

#include <gtest/gtest.h>

#include "tests/support/AllocationCounter.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"

namespace vornrun::test {
namespace {

template <class T>
class EvaluationOfEachFixedSizeType : public testing::Test {};
using Types = testing::Types<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornInterval, VornModeVal>;
TYPED_TEST_SUITE(EvaluationOfEachFixedSizeType, Types);

template <class T>
std::size_t allocationsOfEvaluating(const TypedVornExpressionTree<T>& tree) {
    const AllocationCounter allocations;
    static_cast<void>(tree.evaluateDirect());
    return allocations.count();
}

TYPED_TEST(EvaluationOfEachFixedSizeType, AllocatesNothing) {
    using T = TypeParam;
    const auto value = [] { return constant<T>(T::DefaultValue); };
    EXPECT_EQ(allocationsOfEvaluating(*std::make_unique<TypedVornValue<T>>(T::DefaultValue)), 0U);
    const Tree equality = binary("=", value(), value());
    EXPECT_EQ(allocationsOfEvaluating(dynamic_cast<TypedVornExpressionTree<VornBool>&>(*equality)), 0U);
    const TypedCaseOperator<T> cases({{constant<VornBool>(false), value()}}, value());
    EXPECT_EQ(allocationsOfEvaluating(cases), 0U);
    if constexpr (NumericTag<T>) {
        const Tree sum = binary("+", binary("*", value(), value()).release(), value());
        EXPECT_EQ(allocationsOfEvaluating(dynamic_cast<TypedVornExpressionTree<T>&>(*sum)), 0U);
    }
}

TEST(BoxedEvaluation, AllocatesItsBoxAlone) {
    const TypedVornValue<VornInt> value(1);
    const AllocationCounter allocations;
    const std::unique_ptr<VornValue> box(value.evaluationResult());
    EXPECT_EQ(allocations.count(), 1U);
}

}  // namespace
}  // namespace vornrun::test
