// The step path: evaluateDirect() allocates nothing for the seven types of fixed size.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"

namespace {

thread_local long allocationCount = 0;

void* countedAllocation(std::size_t size) {
    ++allocationCount;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

void* operator new(std::size_t size) { return countedAllocation(size); }
void* operator new[](std::size_t size) { return countedAllocation(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace vornrun::test {
namespace {

template <class T>
class EvaluationOfEachFixedSizeType : public testing::Test {};
using Types = testing::Types<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornInterval, VornModeVal>;
TYPED_TEST_SUITE(EvaluationOfEachFixedSizeType, Types);

template <class T>
long allocationsOfEvaluating(const TypedVornExpressionTree<T>& tree) {
    const long before = allocationCount;
    static_cast<void>(tree.evaluateDirect());
    return allocationCount - before;
}

TYPED_TEST(EvaluationOfEachFixedSizeType, AllocatesNothing) {
    using T = TypeParam;
    const auto value = [] { return constant<T>(T::DefaultValue); };
    EXPECT_EQ(allocationsOfEvaluating(*std::make_unique<TypedVornValue<T>>(T::DefaultValue)), 0);
    const Tree equality = binary("=", value(), value());
    EXPECT_EQ(allocationsOfEvaluating(dynamic_cast<TypedVornExpressionTree<VornBool>&>(*equality)), 0);
    const TypedCaseOperator<T> cases({{constant<VornBool>(false), value()}}, value());
    EXPECT_EQ(allocationsOfEvaluating(cases), 0);
    if constexpr (NumericTag<T>) {
        const Tree sum = binary("+", binary("*", value(), value()).release(), value());
        EXPECT_EQ(allocationsOfEvaluating(dynamic_cast<TypedVornExpressionTree<T>&>(*sum)), 0);
    }
}

TEST(AllocationCount, SeesTheBoxOfABoxedEvaluation) {
    const TypedVornValue<VornInt> value(1);
    const long before = allocationCount;
    const std::unique_ptr<VornValue> box(value.evaluationResult());
    EXPECT_EQ(allocationCount - before, 1);
}

}  // namespace
}  // namespace vornrun::test
