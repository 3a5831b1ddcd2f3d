#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <log4cplus/logger.h>

#include <stdexcept>

#include "tests/support/AllocationCounter.h"
#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/vorn/realisation/valuations/SampleValues.h"

namespace vornrun {
namespace {

using test::sample;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto NO_TYPE = static_cast<VornDataTypeTag>(VORN_DATA_TYPE_COUNT);

template <class T>
class ValuationOf : public testing::Test {
  protected:
    ValueRef add(std::size_t which) { return valuation.addValue<T>(nullptr, sample<T>(which)); }
    void set(ValueRef reference, std::size_t which) { valuation.setValue<T>(reference, sample<T>(which)); }
    typename T::AssociatedDataType read(ValueRef reference) const {
        EXPECT_EQ(valuation.getValue<T>(reference).value(), valuation.getValueDirect<T>(reference));
        return valuation.getValueDirect<T>(reference);
    }

    GlobalValuation valuation;
};
TYPED_TEST_SUITE(ValuationOf, test::AllTypes);

TYPED_TEST(ValuationOf, HandsOutReferencesFromOne) {
    EXPECT_EQ(this->valuation.template addValue<TypeParam>(nullptr), 1u);
    EXPECT_EQ(this->add(1), 2u);
    EXPECT_EQ(this->valuation.template addValue<TypeParam>(nullptr, TypedVornValue<TypeParam>(sample<TypeParam>(1))),
              3u);
    EXPECT_EQ(this->read(1), TypeParam::DefaultValue);
    EXPECT_EQ(this->read(2), sample<TypeParam>(1));
    EXPECT_EQ(this->read(3), sample<TypeParam>(1));
}

TYPED_TEST(ValuationOf, KeepsTheLastPermanentWrite) {
    const ValueRef reference = this->add(0);
    this->set(reference, 1);
    this->set(reference, 2);
    EXPECT_EQ(this->read(reference), sample<TypeParam>(2));
    this->valuation.template setValue<TypeParam>(reference, TypedVornValue<TypeParam>(sample<TypeParam>(1)));
    EXPECT_EQ(this->read(reference), sample<TypeParam>(1));
}

TYPED_TEST(ValuationOf, ReadsRightWhileItGrows) {
    for (std::size_t i = 0; i < 100; ++i) {
        this->add(i % 2);
        for (std::size_t j = 0; j <= i; ++j) ASSERT_EQ(this->read(j + 1), sample<TypeParam>(j % 2));
    }
}

TYPED_TEST(ValuationOf, ShowsAWriteOfALowerLayerUntilAnUpperOneShadowsIt) {
    const ValueRef reference = this->add(0);
    this->valuation.pushTemporaryValuation();
    this->set(reference, 1);
    this->valuation.pushTemporaryValuation();
    EXPECT_EQ(this->read(reference), sample<TypeParam>(1));
    this->set(reference, 2);
    EXPECT_EQ(this->read(reference), sample<TypeParam>(2));
    this->valuation.popTemporaryValuation();
    EXPECT_EQ(this->read(reference), sample<TypeParam>(1));
    this->valuation.popTemporaryValuation();
    EXPECT_EQ(this->read(reference), sample<TypeParam>(0));
}

TYPED_TEST(ValuationOf, KeepsTheFirstWriteInALayer) {
    const ValueRef reference = this->add(0);
    this->valuation.pushTemporaryValuation();
    this->set(reference, 1);
    this->set(reference, 0);
    EXPECT_EQ(this->read(reference), sample<TypeParam>(1));
    this->valuation.popTemporaryValuation();
}

TYPED_TEST(ValuationOf, StartsEachLayerEmpty) {
    const ValueRef reference = this->add(0);
    this->valuation.pushTemporaryValuation();
    this->set(reference, 1);
    this->valuation.popTemporaryValuation();
    this->valuation.pushTemporaryValuation();
    EXPECT_EQ(this->read(reference), sample<TypeParam>(0));
    this->valuation.popTemporaryValuation();
}

TYPED_TEST(ValuationOf, GrowsThePermanentValuesUnderALayer) {
    this->add(0);
    this->valuation.pushTemporaryValuation();
    const ValueRef added = this->add(1);
    EXPECT_EQ(added, 2u);
    EXPECT_EQ(this->read(added), sample<TypeParam>(1));
    this->valuation.popTemporaryValuation();
    EXPECT_EQ(this->read(added), sample<TypeParam>(1));
}

TYPED_TEST(ValuationOf, CopiesThePermanentValuesWithoutTheLayers) {
    const ValueRef reference = this->add(0);
    this->valuation.pushTemporaryValuation();
    this->set(reference, 1);
    const std::unique_ptr<DynamicValuesContainerPermanent> copy(this->valuation.copyValues());
    EXPECT_EQ(copy->getValueDirect<TypeParam>(reference), sample<TypeParam>(0));
    this->valuation.popTemporaryValuation();
}

TYPED_TEST(ValuationOf, RevertsUnderALayerThatKeepsShadowing) {
    const ValueRef shadowed = this->add(0);
    const ValueRef plain = this->add(0);
    const std::unique_ptr<DynamicValuesContainerPermanent> copy(this->valuation.copyValues());
    this->set(shadowed, 2);
    this->set(plain, 2);
    this->valuation.pushTemporaryValuation();
    this->set(shadowed, 1);
    this->valuation.revertTo(copy.get());
    EXPECT_EQ(this->read(shadowed), sample<TypeParam>(1));
    EXPECT_EQ(this->read(plain), sample<TypeParam>(0));
    this->valuation.popTemporaryValuation();
    EXPECT_EQ(this->read(shadowed), sample<TypeParam>(0));
}

TYPED_TEST(ValuationOf, RevertingTakesTheLengthOfTheCopy) {
    const std::unique_ptr<DynamicValuesContainerPermanent> empty(this->valuation.copyValues());
    for (int i = 0; i < 3; ++i) this->add(1);
    const std::unique_ptr<DynamicValuesContainerPermanent> three(this->valuation.copyValues());
    this->valuation.revertTo(empty.get());
    EXPECT_FALSE(this->valuation.contains(TypeParam::tag, 1));
    EXPECT_EQ(this->add(0), 1u);
    this->valuation.revertTo(three.get());
    EXPECT_TRUE(this->valuation.contains(TypeParam::tag, 3));
    EXPECT_EQ(this->read(3), sample<TypeParam>(1));
}

TYPED_TEST(ValuationOf, LeavesACopyAsItWas) {
    const ValueRef reference = this->add(0);
    const std::unique_ptr<DynamicValuesContainerPermanent> copy(this->valuation.copyValues());
    this->valuation.revertTo(copy.get());
    this->set(reference, 1);
    EXPECT_EQ(copy->getValueDirect<TypeParam>(reference), sample<TypeParam>(0));
}

TYPED_TEST(ValuationOf, IsReachedByRunTimeType) {
    const ValueRef reference = this->add(0);
    this->valuation.setValue(TypeParam::tag, reference,
                             &static_cast<const VornValue&>(TypedVornValue<TypeParam>(sample<TypeParam>(1))));
    EXPECT_EQ(this->read(reference), sample<TypeParam>(1));
    const TypedVornValue<TypeParam> other(sample<TypeParam>(2));
    this->valuation.setValue({TypeParam::tag, reference}, &other);
    const auto* const found =
        dynamic_cast<const TypedVornValue<TypeParam>*>(this->valuation.getValue(TypeParam::tag, reference));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->value(), sample<TypeParam>(2));
    EXPECT_EQ(this->valuation.findValue({TypeParam::tag, reference}), found);
}

TYPED_TEST(ValuationOf, IsReachedByRunTimeTypeOnTopOfTheLayers) {
    const ValueRef reference = this->add(0);
    const TypedVornValue<TypeParam> first(sample<TypeParam>(1));
    const TypedVornValue<TypeParam> second(sample<TypeParam>(0));
    const ScopedLayer layer(this->valuation);
    this->valuation.setValue(TypeParam::tag, reference, &first);
    this->valuation.setValue(TypeParam::tag, reference, &second);
    const auto* const found =
        dynamic_cast<const TypedVornValue<TypeParam>*>(this->valuation.getValue(TypeParam::tag, reference));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->value(), sample<TypeParam>(1));
}

TYPED_TEST(ValuationOf, RefusesAValueOfAnotherTypeAndNone) {
    using Other = std::conditional_t<std::is_same_v<TypeParam, VornBool>, VornInt, VornBool>;
    const ValueRef reference = this->add(0);
    const TypedVornValue<Other> wrong(Other::DefaultValue);
    const std::string slot = "A slot of type " + std::string(TypeParam::op) + " cannot hold ";
    try {
        this->valuation.setValue(TypeParam::tag, reference, &wrong);
        FAIL() << "took a value of another type";
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(error.what(), slot + "a value of type " + toString(Other::tag));
    }
    try {
        this->valuation.setValue(TypeParam::tag, reference, nullptr);
        FAIL() << "took no value";
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(error.what(), slot + "a missing value");
    }
    EXPECT_EQ(this->read(reference), sample<TypeParam>(0));
}

TYPED_TEST(ValuationOf, TracesLookupsByRunTimeTypeOnly) {
    const ValueRef reference = this->add(0);
    const test::CapturedLog log(LogLevel::Trace);
    this->read(reference);
    EXPECT_THAT(log.records(), IsEmpty());
    this->valuation.findValue({TypeParam::tag, reference});
    EXPECT_THAT(log.records(), ElementsAre(test::LogRecord{LogLevel::Trace, "root.val",
                                                           "Looking up value of " + toString(TypeParam::tag) + " 1"}));
}

TYPED_TEST(ValuationOf, AllocatesNothingForReadsWritesAndLayersInSteadyState) {
    const ValueRef reference = this->add(2);
    const auto payload = sample<TypeParam>(2);
    const auto use = [&] {
        this->valuation.template setValue<TypeParam>(reference, payload);
        const ScopedLayer outer(this->valuation);
        this->valuation.template setValue<TypeParam>(reference, payload);
        const ScopedLayer inner(this->valuation);
        this->valuation.template setValue<TypeParam>(reference, payload);
        return this->valuation.template getValueDirect<TypeParam>(reference) == payload;
    };
    use();
    const test::AllocationCounter allocations;
    const bool same = use();
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_TRUE(same);
}

TEST(GlobalValuation, CountsReferencesOfEachTypeIndependently) {
    GlobalValuation valuation;
    EXPECT_EQ(valuation.addValue<VornBool>(nullptr), 1u);
    EXPECT_EQ(valuation.addValue<VornBool>(nullptr), 2u);
#define VORN_ADD_OTHERS(T) EXPECT_EQ(valuation.addValue<T>(nullptr), (std::is_same_v<T, VornBool> ? 3u : 1u));
    VORN_FOR_EACH_TYPE(VORN_ADD_OTHERS)
#undef VORN_ADD_OTHERS
    EXPECT_EQ(valuation.addValue<VornReal>(nullptr), 2u);
}

TEST(GlobalValuation, KeepsTypesOfTheSameRepresentationApart) {
    GlobalValuation valuation;
    valuation.addValue<VornReal>(nullptr, 1.0);
    valuation.addValue<VornClock>(nullptr, 2.0);
    valuation.addValue<VornContinuous>(nullptr, 3.0);
    const ScopedLayer layer(valuation);
    valuation.setValue<VornClock>(1, 20.0);
    EXPECT_EQ(valuation.getValueDirect<VornReal>(1), 1.0);
    EXPECT_EQ(valuation.getValueDirect<VornClock>(1), 20.0);
    EXPECT_EQ(valuation.getValueDirect<VornContinuous>(1), 3.0);
}

TEST(GlobalValuation, KnowsNothingOfATypeBeyondTheEight) {
    GlobalValuation valuation;
    valuation.addValue<VornBool>(nullptr);
    const TypedVornValue<VornBool> value(true);
    EXPECT_EQ(valuation.getValue(NO_TYPE, 1), nullptr);
    EXPECT_EQ(valuation.findValue({NO_TYPE, 1}), nullptr);
    EXPECT_FALSE(valuation.contains(NO_TYPE, 1));
    valuation.setValue(NO_TYPE, 1, &value);
    EXPECT_FALSE(valuation.getValueDirect<VornBool>(1));
}

TEST(GlobalValuation, ContainsTheSlotsOfEachType) {
    GlobalValuation valuation;
    valuation.addValue<VornInt>(nullptr);
    EXPECT_TRUE(valuation.contains(VornDataTypeTag::VornInt, 1));
    EXPECT_FALSE(valuation.contains(VornDataTypeTag::VornInt, 0));
    EXPECT_FALSE(valuation.contains(VornDataTypeTag::VornInt, 2));
    EXPECT_FALSE(valuation.contains(VornDataTypeTag::VornBool, 1));
}

TEST(GlobalValuation, RefusesToPopWithoutALayer) {
    GlobalValuation valuation;
    valuation.addValue<VornInt>(nullptr, 5L);
    EXPECT_THROW(valuation.popTemporaryValuation(), std::logic_error);
    valuation.pushTemporaryValuation();
    valuation.popTemporaryValuation();
    EXPECT_THROW(valuation.popTemporaryValuation(), std::logic_error);
    EXPECT_EQ(valuation.getValueDirect<VornInt>(1), 5);
}

TEST(GlobalValuation, MayBeDestroyedWithLayersStanding) {
    GlobalValuation valuation;
    valuation.addValue<VornEnum>(nullptr);
    valuation.pushTemporaryValuation();
    valuation.pushTemporaryValuation();
    valuation.setValue<VornEnum>(1, std::string(100, 'x'));
    EXPECT_EQ(valuation.getValueDirect<VornEnum>(1).size(), 100u);
}

TEST(GlobalValuation, WritesACopiedContainerBackByUpdate) {
    GlobalValuation valuation;
    valuation.addValue<VornInt>(nullptr, 1L);
    valuation.addValue<VornEnum>(nullptr, std::string("a"));
    const std::unique_ptr<DynamicValuesContainerPermanent> first(valuation.copyValues());
    valuation.setValue<VornInt>(1, 2L);
    valuation.setValue<VornEnum>(1, std::string("b"));
    const std::unique_ptr<DynamicValuesContainerPermanent> second(valuation.copyValues());
    first->updateWith(second.get());
    EXPECT_EQ(first->getValueDirect<VornInt>(1), 2);
    EXPECT_EQ(first->getValueDirect<VornEnum>(1), "b");
}

TEST(ScopedLayer, PopsItsLayerOnTheWayOut) {
    GlobalValuation valuation;
    valuation.addValue<VornInt>(nullptr, 1L);
    {
        const ScopedLayer layer(valuation);
        valuation.setValue<VornInt>(1, 2L);
        EXPECT_EQ(valuation.getValueDirect<VornInt>(1), 2);
    }
    EXPECT_EQ(valuation.getValueDirect<VornInt>(1), 1);
}

TEST(ScopedLayer, PopsItsLayerWhenAnExceptionPasses) {
    GlobalValuation valuation;
    valuation.addValue<VornInt>(nullptr, 1L);
    try {
        const ScopedLayer layer(valuation);
        valuation.setValue<VornInt>(1, 2L);
        throw std::runtime_error("on the way");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(valuation.getValueDirect<VornInt>(1), 1);
        EXPECT_THROW(valuation.popTemporaryValuation(), std::logic_error);
    }
}

TEST(GlobalValuation, HasALoggerForEachOfItsLevels) {
    for (const char* name : {"root.val", "root.val.cont", "root.val.dvp"})
        EXPECT_TRUE(log4cplus::Logger::exists(name)) << name;
}

}  // namespace
}  // namespace vornrun
