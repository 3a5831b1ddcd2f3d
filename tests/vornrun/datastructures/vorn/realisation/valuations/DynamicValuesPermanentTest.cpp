#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesPermanent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/realisation/valuations/SampleValues.h"
#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesTemp.h"

namespace vornrun {
namespace {

using test::sample;
using testing::ElementsAre;

template <class T>
class PermanentValues : public testing::Test {
  protected:
    DynamicValuesPermanent<T> store;
};
TYPED_TEST_SUITE(PermanentValues, test::AllTypes);

TYPED_TEST(PermanentValues, NumberTheirReferencesFromOne) {
    EXPECT_EQ(this->store.addValue(nullptr), 1u);
    EXPECT_EQ(this->store.addValue(nullptr, sample<TypeParam>(0)), 2u);
    EXPECT_EQ(this->store.addValue(nullptr, TypedVornValue<TypeParam>(sample<TypeParam>(1))), 3u);
    EXPECT_EQ(this->store.getValueDirect(1), TypeParam::DefaultValue);
    EXPECT_EQ(this->store.getValueDirect(2), sample<TypeParam>(0));
    EXPECT_EQ(this->store.getValueDirect(3), sample<TypeParam>(1));
    EXPECT_EQ(this->store.getValue(3).value(), sample<TypeParam>(1));
}

TYPED_TEST(PermanentValues, ContainTheReferencesHandedOut) {
    EXPECT_FALSE(this->store.contains(1));
    this->store.addValue(nullptr);
    EXPECT_FALSE(this->store.contains(0));
    EXPECT_TRUE(this->store.contains(1));
    EXPECT_FALSE(this->store.contains(2));
    EXPECT_FALSE(this->store.contains(~0ul));
}

TYPED_TEST(PermanentValues, KeepTheLastWrite) {
    const ValueRef reference = this->store.addValue(nullptr);
    this->store.setValue(reference, sample<TypeParam>(0));
    this->store.setValue(reference, TypedVornValue<TypeParam>(sample<TypeParam>(1)));
    EXPECT_EQ(this->store.getValueDirect(reference), sample<TypeParam>(1));
}

TYPED_TEST(PermanentValues, AreListedByReference) {
    this->store.addValue(nullptr, sample<TypeParam>(1));
    this->store.addValue(nullptr, sample<TypeParam>(0));
    const auto pairs = this->store.keyValuePairs();
    ASSERT_EQ(pairs.size(), 2u);
    EXPECT_EQ(pairs.at(1).value(), sample<TypeParam>(1));
    EXPECT_EQ(pairs.at(2).value(), sample<TypeParam>(0));
}

TYPED_TEST(PermanentValues, TakeOverWhatALayerHolds) {
    this->store.addValue(nullptr, sample<TypeParam>(0));
    this->store.addValue(nullptr, sample<TypeParam>(0));
    DynamicValuesTemp<TypeParam> layer(&this->store);
    layer.setValue(2, sample<TypeParam>(1));
    this->store.updateWith(layer);
    EXPECT_EQ(this->store.getValueDirect(1), sample<TypeParam>(0));
    EXPECT_EQ(this->store.getValueDirect(2), sample<TypeParam>(1));
}

TYPED_TEST(PermanentValues, CopiesTakeTheOthersLength) {
    DynamicValuesPermanent<TypeParam> longer;
    longer.addValue(nullptr, sample<TypeParam>(1));
    longer.addValue(nullptr, sample<TypeParam>(2));
    this->store.addValue(nullptr, sample<TypeParam>(0));
    this->store.copy(longer);
    EXPECT_TRUE(this->store.contains(2));
    EXPECT_EQ(this->store.getValueDirect(1), sample<TypeParam>(1));
    longer.copy(DynamicValuesPermanent<TypeParam>());
    EXPECT_FALSE(longer.contains(1));
    EXPECT_EQ(this->store.getValueDirect(2), sample<TypeParam>(2));
}

TYPED_TEST(PermanentValues, TraceEachWrite) {
    this->store.addValue(nullptr);
    this->store.addValue(nullptr);
    const test::CapturedLog log(LogLevel::Trace);
    this->store.setValue(2, sample<TypeParam>(0));
    this->store.getValue(2);
    EXPECT_THAT(log.records(), ElementsAre(test::LogRecord{LogLevel::Trace, "root.val.dvp",
                                                           "Permanent container of type " + std::string(TypeParam::op) +
                                                               ": Updating reference 2"}));
}

TEST(PermanentValuesOfModes, KeepCopiesOfPlaceholders) {
    // The placeholder belongs to the literal; the store must not delete it.
    const TypedVornValue<VornModeVal> literal(new RealisedMode(RealisedMode::DUMMY_ID, "on"));
    DynamicValuesPermanent<VornModeVal> store;
    store.addValue(nullptr, literal);
    store.addValue(nullptr, literal.value());
    store.addValue(nullptr);
    store.setValue(3, literal.value());
    for (ValueRef reference = 1; reference <= 3; ++reference) {
        EXPECT_NE(store.getValueDirect(reference), literal.value());
        EXPECT_EQ(store.getValueDirect(reference)->name(), "on");
    }
    store.setValue(1, store.getValueDirect(1));
    EXPECT_EQ(store.getValueDirect(1)->name(), "on");
}

}  // namespace
}  // namespace vornrun
