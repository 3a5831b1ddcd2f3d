#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/realisation/valuations/SampleValues.h"
#include "vornrun/datastructures/vorn/realisation/RealisedPart.h"
#include "vornrun/datastructures/vorn/realisation/RealisedVariable.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun {
namespace {

using test::sample;

/// A part of nothing but a type.
class TypedPart final : public RealisedPart {
  public:
    TypedPart(unsigned int id, VornDataTypeTag type) : RealisedPart(id, nullptr, "part"), mType(type) {}
    VornDataTypeTag type() const override { return mType; }

  private:
    VornDataTypeTag mType;
};

template <class T>
class ValuationOfParts : public testing::Test {
  protected:
    const TypedPart part{1, T::tag};
    const ValuationPtr valuation = std::make_shared<GlobalValuation>();

    const typename T::AssociatedDataType& payload(const VornValue* value) {
        return dynamic_cast<const TypedVornValue<T>&>(*value).value();
    }
};
TYPED_TEST_SUITE(ValuationOfParts, test::AllTypes);

TYPED_TEST(ValuationOfParts, AddsTheDefaultOfThePartsType) {
    EXPECT_EQ(this->valuation->addValue(&this->part), 1u);
    EXPECT_EQ(this->valuation->addValue(&this->part), 2u);
    EXPECT_EQ(this->valuation->template getValueDirect<TypeParam>(2), TypeParam::DefaultValue);
}

TYPED_TEST(ValuationOfParts, AddsTheGivenValueEvenUnderALayer) {
    const TypedVornValue<TypeParam> value(sample<TypeParam>(1));
    const ScopedLayer layer(*this->valuation);
    EXPECT_EQ(this->valuation->addValue(&this->part, &value), 1u);
    const std::unique_ptr<DynamicValuesContainerPermanent> permanent(this->valuation->copyValues());
    EXPECT_EQ(permanent->getValueDirect<TypeParam>(1), sample<TypeParam>(1));
}

TYPED_TEST(ValuationOfParts, RefusesToAddAValueOfAnotherTypeOrNone) {
    using Other = std::conditional_t<std::is_same_v<TypeParam, VornBool>, VornInt, VornBool>;
    const TypedVornValue<Other> wrong(Other::DefaultValue);
    EXPECT_THROW(this->valuation->addValue(&this->part, &wrong), std::invalid_argument);
    EXPECT_THROW(this->valuation->addValue(&this->part, nullptr), std::invalid_argument);
    EXPECT_FALSE(this->valuation->contains(TypeParam::tag, 1));
}

TYPED_TEST(ValuationOfParts, FindsAndWritesTheSlotOfAVariable) {
    this->valuation->addValue(&this->part);
    this->valuation->addValue(&this->part);
    const TypedRealisedVariable<TypeParam> variable(this->valuation, 2, &this->part);
    const TypedVornValue<TypeParam> value(sample<TypeParam>(1));
    this->valuation->setValue(&variable, &value);
    EXPECT_EQ(this->payload(this->valuation->findValue(&variable)), sample<TypeParam>(1));
    EXPECT_EQ(this->valuation->template getValueDirect<TypeParam>(1), TypeParam::DefaultValue);
}

TYPED_TEST(ValuationOfParts, FindsAndWritesTheSlotOfAPartInItsRealisation) {
    const TypedPart other(2, TypeParam::tag);
    VornComponentRealisation realisation(1, "component", nullptr, {}, nullptr);
    realisation.attachValueReferences(
        {{&this->part, this->valuation->addValue(&this->part)}, {&other, this->valuation->addValue(&other)}});
    const TypedVornValue<TypeParam> value(sample<TypeParam>(1));
    this->valuation->setValue(&realisation, &other, &value);
    EXPECT_EQ(this->payload(this->valuation->findValue(&realisation, &other)), sample<TypeParam>(1));
    EXPECT_EQ(this->payload(this->valuation->findValue(&realisation, &this->part)), TypeParam::DefaultValue);
}

TEST(ValuationOfParts, AddsNothingForATypeBeyondTheEight) {
    GlobalValuation valuation;
    const TypedPart part(1, static_cast<VornDataTypeTag>(8));
    const TypedVornValue<VornInt> value(1L);
    EXPECT_EQ(valuation.addValue(&part), 0u);
    EXPECT_EQ(valuation.addValue(&part, &value), 0u);
    EXPECT_EQ(valuation.addValue(&part, nullptr), 0u);
}

TEST(ValuationOfParts, SaysThatAPartHasNoSlot) {
    GlobalValuation valuation;
    const TypedPart part(1, VornDataTypeTag::VornInt);
    const TypedVornValue<VornInt> value(1L);
    const VornComponentRealisation realisation(1, "component", nullptr, {}, nullptr);
    EXPECT_THROW(valuation.findValue(&realisation, &part), std::out_of_range);
    EXPECT_THROW(valuation.setValue(&realisation, &part, &value), std::out_of_range);
}

}  // namespace
}  // namespace vornrun
