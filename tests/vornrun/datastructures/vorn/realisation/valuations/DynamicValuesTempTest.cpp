#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesTemp.h"

#include <gtest/gtest.h>

#include "tests/support/AllocationCounter.h"
#include "tests/vornrun/datastructures/vorn/realisation/valuations/SampleValues.h"

namespace vornrun {
namespace {

using test::sample;

template <class T>
class LayerOfValues : public testing::Test {
  protected:
    LayerOfValues() {
        for (int i = 0; i < 4; ++i) store.addValue(nullptr, sample<T>(0));
    }
    DynamicValuesPermanent<T> store;
    DynamicValuesTemp<T> layer{&store};
};
TYPED_TEST_SUITE(LayerOfValues, test::AllTypes);

TYPED_TEST(LayerOfValues, ReadsThroughWhatItDidNotWrite) {
    EXPECT_EQ(&this->layer.getValue(2), &this->store.getValue(2));
    this->layer.setValue(3, sample<TypeParam>(1));
    EXPECT_EQ(this->layer.getValueDirect(2), sample<TypeParam>(0));
}

TYPED_TEST(LayerOfValues, ShadowsWhatItWrote) {
    this->layer.setValue(2, sample<TypeParam>(1));
    EXPECT_EQ(this->layer.getValueDirect(2), sample<TypeParam>(1));
    EXPECT_EQ(this->layer.getValue(2).value(), sample<TypeParam>(1));
    EXPECT_EQ(this->store.getValueDirect(2), sample<TypeParam>(0));
}

TYPED_TEST(LayerOfValues, KeepsTheFirstWriteToAReference) {
    this->layer.setValue(2, sample<TypeParam>(1));
    this->layer.setValue(2, sample<TypeParam>(0));
    this->layer.setValue(2, TypedVornValue<TypeParam>(sample<TypeParam>(0)));
    EXPECT_EQ(this->layer.getValueDirect(2), sample<TypeParam>(1));
}

TYPED_TEST(LayerOfValues, FindsReferencesWrittenInAnyOrder) {
    for (const ValueRef reference : {4u, 1u, 3u, 2u}) this->layer.setValue(reference, sample<TypeParam>(reference % 2));
    for (ValueRef reference = 1; reference <= 4; ++reference)
        EXPECT_EQ(this->layer.getValueDirect(reference), sample<TypeParam>(reference % 2)) << reference;
}

TYPED_TEST(LayerOfValues, ListsOnlyItsOwnWrites) {
    this->layer.setValue(3, sample<TypeParam>(1));
    this->layer.setValue(1, sample<TypeParam>(0));
    const auto pairs = this->layer.keyValuePairs();
    ASSERT_EQ(pairs.size(), 2u);
    EXPECT_EQ(pairs.at(1).value(), sample<TypeParam>(0));
    EXPECT_EQ(pairs.at(3).value(), sample<TypeParam>(1));
}

TYPED_TEST(LayerOfValues, UpdatesKeepWhatWasWrittenBefore) {
    DynamicValuesTemp<TypeParam> other(&this->store);
    other.setValue(1, sample<TypeParam>(1));
    other.setValue(2, sample<TypeParam>(1));
    this->layer.setValue(1, sample<TypeParam>(0));
    this->layer.updateWith(other);
    EXPECT_EQ(this->layer.getValueDirect(1), sample<TypeParam>(0));
    EXPECT_EQ(this->layer.getValueDirect(2), sample<TypeParam>(1));
    EXPECT_EQ(this->layer.keyValuePairs().size(), 2u);
}

TYPED_TEST(LayerOfValues, OnceClearedHoldsNothing) {
    this->layer.setValue(1, sample<TypeParam>(1));
    this->layer.setValue(2, sample<TypeParam>(1));
    this->layer.clear();
    EXPECT_TRUE(this->layer.keyValuePairs().empty());
    EXPECT_EQ(this->layer.getValueDirect(1), sample<TypeParam>(0));
    this->layer.setValue(2, sample<TypeParam>(2));
    EXPECT_EQ(this->layer.getValueDirect(2), sample<TypeParam>(2));
    EXPECT_EQ(this->layer.getValueDirect(1), sample<TypeParam>(0));
}

TYPED_TEST(LayerOfValues, LeavesValuesThatItHandedOutInPlace) {
    this->layer.setValue(4, sample<TypeParam>(1));
    const TypedVornValue<TypeParam>& handedOut = this->layer.getValue(4);
    for (ValueRef reference = 1; reference <= 3; ++reference) this->layer.setValue(reference, handedOut);
    EXPECT_EQ(&this->layer.getValue(4), &handedOut);
    EXPECT_EQ(handedOut.value(), sample<TypeParam>(1));
    EXPECT_EQ(this->layer.getValueDirect(1), sample<TypeParam>(1));
}

TYPED_TEST(LayerOfValues, AllocatesNothingWhenUsedAgain) {
    const auto payload = sample<TypeParam>(2);
    for (ValueRef reference = 1; reference <= 4; ++reference) this->layer.setValue(reference, payload);
    const test::AllocationCounter allocations;
    this->layer.clear();
    for (ValueRef reference = 1; reference <= 4; ++reference) this->layer.setValue(reference, payload);
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_EQ(this->layer.getValueDirect(4), payload);
}

TYPED_TEST(LayerOfValues, HasAFixedText) {
    this->layer.setValue(1, sample<TypeParam>(1));
    EXPECT_EQ(this->layer.str(), "TODO: Implement string representation of DynamicValuesTemp");
}

TEST(LayerOfModes, KeepsACopyOfAPlaceholderEvenIfTheWriteIsDropped) {
    const TypedVornValue<VornModeVal> literal(new RealisedMode(RealisedMode::DUMMY_ID, "on"));
    DynamicValuesPermanent<VornModeVal> store;
    store.addValue(nullptr);
    DynamicValuesTemp<VornModeVal> layer(&store);
    layer.setValue(1, literal.value());
    layer.setValue(1, literal.value());
    EXPECT_NE(layer.getValueDirect(1), literal.value());
    EXPECT_EQ(layer.getValueDirect(1)->name(), "on");
}

}  // namespace
}  // namespace vornrun
