// Which mode a mode literal "path:mode" means.

#include <gtest/gtest.h>

#include "tests/vornrun/algorithms/vornconstructor/SubstitutionFixture.h"

namespace vornrun::test {
namespace {

using ModeLiteralTest = SubstitutionFixture;

TEST_F(ModeLiteralTest, ALiteralWithThreeElementsDropsTheLastAndFollowsTheOthers) {
    EXPECT_EQ(modeOf("s1.s2.v:high"), modeNamed(s2(), "high"));
    EXPECT_NE(modeOf("s1.s2.v:high"), nullptr);
    EXPECT_EQ(modeOf("s1.anything at all:only"), modeNamed(s1(), "only"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(ModeLiteralTest, ALiteralWithOneElementStaysInTheComponent) {
    EXPECT_EQ(modeOf("s1:up"), modeNamed(main.get(), "up"));
    EXPECT_EQ(modeOf("mode:down"), modeNamed(main.get(), "down"));
    EXPECT_EQ(modeOf(":up"), modeNamed(main.get(), "up"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(ModeLiteralTest, ALiteralWithoutColonAndDotIsAModeOfTheComponent) {
    EXPECT_EQ(modeOf("up"), modeNamed(main.get(), "up"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(ModeLiteralTest, OnlyTheFirstColonSplits) {
    EXPECT_EQ(modeOf("v:a:b"), modeNamed(main.get(), "a:b"));
    EXPECT_NE(modeOf("v:a:b"), nullptr);
}

struct BadLiteral {
    const char* name;
    const char* text;
    const char* record;
};
void PrintTo(const BadLiteral& literal, std::ostream* stream) { *stream << literal.text; }

class UnresolvedLiteral : public ModeLiteralTest, public testing::WithParamInterface<BadLiteral> {};

TEST_P(UnresolvedLiteral, IsAnErrorRecordAndNull) {
    EXPECT_EQ(modeOf(GetParam().text), nullptr);
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Error, VALREF, GetParam().record}}));
}

INSTANTIATE_TEST_SUITE_P(
    Literals, UnresolvedLiteral,
    testing::Values(BadLiteral{"UnknownSubcomponent", "s1.zz.v:high",
                               "Unable to find subcomponent zz for mode path s1.zz.v:high"},
                    BadLiteral{"UnknownFirstSubcomponent", "zz.s2.v:high",
                               "Unable to find subcomponent zz for mode path zz.s2.v:high"},
                    BadLiteral{"EmptyElement", "s1..v:high", "Unable to find subcomponent  for mode path s1..v:high"},
                    BadLiteral{"LeadingDot", ".v:up", "Unable to find subcomponent  for mode path .v:up"},
                    BadLiteral{"UnknownMode", "s1.v:high", "Unable to find mode high for mode path s1.v:high"},
                    BadLiteral{"ModeNamesAreExact", "v:Up", "Unable to find mode Up for mode path v:Up"},
                    BadLiteral{"EmptyModeName", "v:", "Unable to find mode  for mode path v:"},
                    BadLiteral{"EmptyText", "", "Unable to find mode  for mode path "},
                    BadLiteral{"DotWithoutColon", "s1.only", "Unable to find mode s1.only for mode path s1.only"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(ModeLiteralTest, APlaceholderInTheSyntaxTreeIsReplacedAndNotChanged) {
    const std::unique_ptr<TypedVornValue<VornModeVal>> literal(modeLiteral("v:up"));
    const RealisedMode* placeholder = literal->value();
    const Value value(subject().substituteValue(literal.get()));
    EXPECT_EQ(literal->value(), placeholder);
    EXPECT_EQ(placeholder->id(), RealisedMode::DUMMY_ID);
    EXPECT_EQ(placeholder->name(), "v:up");
}

TEST_F(ModeLiteralTest, ValuesOfOtherTypesAndTheNullModeAreCopied) {
    const TypedVornValue<VornInt> number(5);
    const TypedVornValue<VornEnum> colour("v:up");
    const TypedVornValue<VornModeVal> none(nullptr);
    const Value numberCopy(subject().substituteValue(&number));
    const Value colourCopy(subject().substituteValue(&colour));
    const Value noneCopy(subject().substituteValue(&none));
    EXPECT_EQ(printed(*numberCopy), "5");
    EXPECT_EQ(printed(*colourCopy), "v:up");
    EXPECT_EQ(printed(*noneCopy), "(null)");
    EXPECT_NE(numberCopy.get(), &number);
    EXPECT_TRUE(log.records().empty());
}

}  // namespace
}  // namespace vornrun::test
