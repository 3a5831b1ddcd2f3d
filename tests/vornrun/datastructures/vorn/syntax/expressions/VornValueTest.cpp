#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ios>
#include <new>
#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"

namespace vornrun::test {
namespace {

RealisedMode* placeholder(const char* name) { return new RealisedMode(RealisedMode::DUMMY_ID, name); }

TEST(VornValue, PrintsInTheDefaultFormatOfItsRepresentation) {
    EXPECT_EQ(printed(TypedVornValue<VornBool>(true)), "1");
    EXPECT_EQ(printed(TypedVornValue<VornBool>(false)), "0");
    EXPECT_EQ(printed(TypedVornValue<VornReal>(1.5)), "1.5");
    EXPECT_EQ(printed(TypedVornValue<VornReal>(0.1234567891)), "0.123457");
    EXPECT_EQ(printed(TypedVornValue<VornInt>(-12)), "-12");
    EXPECT_EQ(printed(TypedVornValue<VornContinuous>(1e10)), "1e+10");
    EXPECT_EQ(printed(TypedVornValue<VornClock>(2)), "2");
    EXPECT_EQ(printed(TypedVornValue<VornEnum>("a b")), "a b");
    EXPECT_EQ(printed(TypedVornValue<VornInterval>(3)), "3");
}

TEST(VornValue, ABoolIsNeverPrintedAsAWord) {
    std::ostringstream stream;
    stream << std::boolalpha << TypedVornValue<VornBool>(true);
    EXPECT_EQ(stream.str(), "1");
}

TEST(VornValue, HoldsItsTypeAndConstant) {
    const TypedVornValue<VornEnum> value("red");
    EXPECT_EQ(value.value(), "red");
    EXPECT_EQ(value.evaluateDirect(), "red");
    EXPECT_EQ(value.type(), VornDataTypeTag::VornEnum);
}

TEST(VornValue, EvaluatesToANewValueOfTheSameType) {
    const TypedVornValue<VornInterval> value(5);
    const std::unique_ptr<VornValue> result(value.evaluationResult());
    EXPECT_NE(result.get(), static_cast<const VornValue*>(&value));
    EXPECT_EQ(result->type(), VornDataTypeTag::VornInterval);
    EXPECT_EQ(valueOf<VornInterval>(*result), 5);
    const std::unique_ptr<TypedVornValue<VornInterval>> typed(value.evaluationResultTyped());
    EXPECT_EQ(typed->value(), 5);
}

TEST(VornValue, CloneIsEqualAndIgnoresReplacementChildren) {
    const TypedVornValue<VornInt> value(5);
    TypedVornValue<VornInt> ignored(9);
    const std::unique_ptr<TypedVornValue<VornInt>> copy(value.clone());
    const std::unique_ptr<VornValue> rewritten(value.clone({&ignored}));
    EXPECT_EQ(copy->value(), 5);
    EXPECT_EQ(valueOf<VornInt>(*rewritten), 5);
}

TEST(VornValue, IsVisitedAsAValue) {
    const TypedVornValue<VornReal> real(1);
    const TypedVornValue<VornModeVal> mode(nullptr);
    LastVisited visitor;
    EXPECT_EQ(real.accept(&visitor), nullptr);
    EXPECT_EQ(visitor.kind, "value");
    EXPECT_EQ(visitor.lastNode, static_cast<const VornExpressionTree*>(&real));
    EXPECT_EQ(mode.accept(&visitor), nullptr);
    EXPECT_EQ(visitor.lastNode, static_cast<const VornExpressionTree*>(&mode));
}

TEST(VornValue, AssignmentAndSetValueReplaceTheConstant) {
    TypedVornValue<VornEnum> value("red");
    value = TypedVornValue<VornEnum>("green");
    EXPECT_EQ(value.value(), "green");
    value.setValue("blue");
    EXPECT_EQ(value.value(), "blue");
}

TEST(ModeValue, AroundNullPrintsNullAndOwnsNothing) {
    const TypedVornValue<VornModeVal> value(nullptr);
    EXPECT_EQ(printed(value), "(null)");
    EXPECT_FALSE(value.owned());
    const std::unique_ptr<TypedVornValue<VornModeVal>> copy(value.clone());
    EXPECT_EQ(copy->value(), nullptr);
    EXPECT_FALSE(copy->owned());
}

TEST(ModeValue, PrintsTheNameOfItsMode) {
    const RealisedMode mode(3, "running");
    EXPECT_EQ(printed(TypedVornValue<VornModeVal>(&mode)), "running");
}

TEST(ModeValue, AdoptsAPlaceholderAndNoOtherMode) {
    EXPECT_TRUE(TypedVornValue<VornModeVal>(placeholder("on")).owned());
    const RealisedMode mode(0, "on");
    EXPECT_FALSE(TypedVornValue<VornModeVal>(&mode).owned());
}

TEST(ModeValue, CloneOfAPlaceholderIsASecondIndependentPlaceholder) {
    auto original = std::make_unique<TypedVornValue<VornModeVal>>(placeholder("root:on"));
    const std::unique_ptr<TypedVornValue<VornModeVal>> copy(original->clone());
    EXPECT_NE(copy->value(), original->value());
    EXPECT_TRUE(original->owned());
    EXPECT_TRUE(copy->owned());
    original.reset();
    EXPECT_EQ(copy->value()->id(), RealisedMode::DUMMY_ID);
    EXPECT_EQ(copy->value()->name(), "root:on");
}

TEST(ModeValue, CloneOfARealModeSharesThePointerAndFreesNothing) {
    const RealisedMode mode(7, "on");
    const TypedVornValue<VornModeVal> original(&mode);
    {
        const std::unique_ptr<VornValue> copy(original.clone(std::list<VornExpressionTree*>()));
        EXPECT_EQ(valueOf<VornModeVal>(*copy), &mode);
    }
    EXPECT_EQ(mode.name(), "on");
}

TEST(ModeValue, AssignmentFreesItsPlaceholderAndDuplicatesTheOther) {
    TypedVornValue<VornModeVal> target(placeholder("old"));
    const TypedVornValue<VornModeVal> source(placeholder("new"));
    target = source;
    EXPECT_EQ(target.value()->name(), "new");
    EXPECT_NE(target.value(), source.value());
    EXPECT_TRUE(target.owned());

    const RealisedMode mode(1, "real");
    target = TypedVornValue<VornModeVal>(&mode);
    EXPECT_EQ(target.value(), &mode);
    EXPECT_FALSE(target.owned());
    target = source;
    EXPECT_TRUE(target.owned());
}

TEST(ModeValue, SelfAssignmentChangesNothing) {
    TypedVornValue<VornModeVal> value(placeholder("on"));
    const RealisedMode* const before = value.value();
    const TypedVornValue<VornModeVal>& itself = value;
    value = itself;
    EXPECT_EQ(value.value(), before);
    EXPECT_EQ(value.value()->name(), "on");
    EXPECT_TRUE(value.owned());
}

TEST(ModeValue, SettingItsOwnModeAgainChangesNothing) {
    TypedVornValue<VornModeVal> value(placeholder("on"));
    value.setValue(value.value());
    EXPECT_EQ(value.value()->name(), "on");
    EXPECT_TRUE(value.owned());
}

TEST(ModeValue, ConversionToModeClaimsTheSamePlaceholder) {
    // Both claim the placeholder, so that only one may be destroyed: the other lives in storage that is let go.
    alignas(TypedVornValue<VornModeVal>) std::byte storage[sizeof(TypedVornValue<VornModeVal>)];
    const auto* const original = ::new (storage) TypedVornValue<VornModeVal>(placeholder("on"));
    const std::unique_ptr<VornValue> result(original->convertToType(VornDataTypeTag::VornMode));
    const auto& converted = dynamic_cast<const TypedVornValue<VornModeVal>&>(*result);
    EXPECT_EQ(converted.value(), original->value());
    EXPECT_TRUE(converted.owned());
    EXPECT_TRUE(original->owned());
}

TEST(ModeValue, EvaluationBoxesAPlaceholderOfItsOwn) {
    const TypedVornValue<VornModeVal> value(placeholder("on"));
    {
        const std::unique_ptr<TypedVornValue<VornModeVal>> box(value.evaluationResultTyped());
        EXPECT_NE(box->value(), value.value());
        EXPECT_EQ(box->value()->name(), "on");
    }
    EXPECT_EQ(printed(value), "on");
}

TEST(GetDoubleValue, ReadsEveryNumericType) {
    const TypedVornValue<VornReal> real(1.5);
    const TypedVornValue<VornInt> integer(-2);
    const TypedVornValue<VornContinuous> continuous(2.5);
    const TypedVornValue<VornClock> clock(0.5);
    const TypedVornValue<VornInterval> interval(3);
    EXPECT_EQ(getDoubleValue(&real), 1.5);
    EXPECT_EQ(getDoubleValue(&integer), -2.0);
    EXPECT_EQ(getDoubleValue(&continuous), 2.5);
    EXPECT_EQ(getDoubleValue(&clock), 0.5);
    EXPECT_EQ(getDoubleValue(&interval), 3.0);
}

TEST(GetDoubleValue, RefusesEveryOtherType) {
    const TypedVornValue<VornBool> truth(true);
    const TypedVornValue<VornEnum> literal("red");
    const TypedVornValue<VornModeVal> mode(placeholder("on"));
    EXPECT_THROW(getDoubleValue(&truth), std::invalid_argument);
    EXPECT_THROW(getDoubleValue(&literal), std::invalid_argument);
    EXPECT_THROW(getDoubleValue(&mode), std::invalid_argument);
}

TEST(GetDoubleValue, EvaluatesTheTree) {
    const Tree sum = binary("+", constant<VornInt>(2), constant<VornInterval>(3));
    EXPECT_EQ(getDoubleValue(sum.get()), 5.0);
}

}  // namespace
}  // namespace vornrun::test
