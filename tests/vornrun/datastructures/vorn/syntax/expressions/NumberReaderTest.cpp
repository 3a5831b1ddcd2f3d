#include "vornrun/datastructures/vorn/syntax/expressions/NumberReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/AllocationCounter.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/LinearFixtures.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {
namespace {

template <class T>
double readingOf(typename T::AssociatedDataType value) {
    const TypedVornValue<T> tree(value);
    const NumberReader reader(&tree);
    EXPECT_TRUE(reader.hasTree());
    EXPECT_EQ(reader.read(), getDoubleValue(&tree));
    return reader.read();
}

TEST(NumberReader, ReadsEveryNumericType) {
    EXPECT_EQ(readingOf<VornReal>(1.5), 1.5);
    EXPECT_EQ(readingOf<VornContinuous>(-2.5), -2.5);
    EXPECT_EQ(readingOf<VornClock>(3.25), 3.25);
    EXPECT_EQ(readingOf<VornInt>(-4), -4.0);
    EXPECT_EQ(readingOf<VornInterval>(5), 5.0);
}

TEST(NumberReader, ReadsThePresentValueEachTime) {
    test::Probe<VornClock>::State state;
    const test::Probe<VornClock> tree(state);
    const NumberReader reader(&tree);
    EXPECT_EQ(state.evaluations, 0);
    state.value = 1.0;
    EXPECT_EQ(reader.read(), 1.0);
    state.value = 2.0;
    EXPECT_EQ(reader.read(), 2.0);
    EXPECT_EQ(state.evaluations, 2);
}

TEST(NumberReader, RefusesAValueThatDoesNotConvertToReal) {
    const TypedVornValue<VornBool> tree(true);
    const NumberReader reader(&tree);
    try {
        reader.read();
        FAIL() << "a bool was read as a number";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Requested invalid conversion from bool to real (value=1)");
    }
}

TEST(NumberReader, PassesOnThatAVariableIsOnlyAName) {
    const TypedVornVariable<VornClock> tree("x");
    EXPECT_THROW(NumberReader(&tree).read(), IdentifierEvaluation);
}

TEST(NumberReader, WithoutATreeSaysSo) { EXPECT_FALSE(NumberReader(nullptr).hasTree()); }

TEST(NumberReader, AllocatesNothing) {
    const TypedVornValue<VornInt> integer(3);
    const NumberReader reader(&integer);
    const test::AllocationCounter allocations;
    EXPECT_EQ(reader.read(), 3.0);
    EXPECT_EQ(allocations.count(), 0u);
}

}  // namespace
}  // namespace vornrun
