#include "vornrun/datastructures/vorn/syntax/expressions/Converter.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/TypeRuleTables.h"
#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"

namespace vornrun::test {
namespace {

/// From down, to across, in tag order: y converts, a dash does not.
constexpr TypeMatrix CONVERSIONS = {"y-------", "-y-yy---", "-yyyy-y-", "-y-yy---",
                                    "-y-yy---", "-----y--", "-yyyy-y-", "-------y"};

/// A constant of each type, and how it prints in the message.
struct Sample {
    Tree value;
    const char* text;
};
std::vector<Sample> samples() {
    std::vector<Sample> all;
    all.push_back({Tree(constant<VornBool>(true)), "1"});
    all.push_back({Tree(constant<VornReal>(1.5)), "1.5"});
    all.push_back({Tree(constant<VornInt>(-3)), "-3"});
    all.push_back({Tree(constant<VornContinuous>(2.5)), "2.5"});
    all.push_back({Tree(constant<VornClock>(0.25)), "0.25"});
    all.push_back({Tree(constant<VornEnum>("red")), "red"});
    all.push_back({Tree(constant<VornInterval>(7)), "7"});
    all.push_back({Tree(constant<VornModeVal>(nullptr)), "0"});
    return all;
}

constexpr std::array<const char*, 8> NAMES = {"bool", "real", "int", "continuous", "clock", "enum", "interval", "mode"};

TEST(Converter, ConvertsExactlyThePairsOfTheMatrixAndNamesTheOthers) {
    const auto from = samples();
    int illegal = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        const auto& value = dynamic_cast<const VornValue&>(*from[i].value);
        for (unsigned int j = 0; j < VORN_DATA_TYPE_COUNT; ++j) {
            SCOPED_TRACE(std::string(NAMES[i]) + " to " + NAMES[j]);
            const auto to = static_cast<VornDataTypeTag>(j);
            if (CONVERSIONS[i][j] == 'y') {
                const Tree converted(value.convertToType(to));
                EXPECT_EQ(converted->type(), to);
                continue;
            }
            ++illegal;
            try {
                const Tree converted(value.convertToType(to));
                ADD_FAILURE() << "converted to " << printed(*converted);
            } catch (const std::invalid_argument& error) {
                EXPECT_EQ(error.what(), std::string("Requested invalid conversion from ") + NAMES[i] + " to " +
                                            NAMES[j] + " (value=" + from[i].text + ")");
            }
        }
    }
    EXPECT_EQ(illegal, 42);
}

TEST(Converter, ATagBeyondTheEightGivesNull) {
    for (const Sample& sample : samples()) {
        const auto& value = dynamic_cast<const VornValue&>(*sample.value);
        EXPECT_EQ(value.convertToType(static_cast<VornDataTypeTag>(8)), nullptr);
        EXPECT_EQ(value.convertToType(static_cast<VornDataTypeTag>(4294967295u)), nullptr);
    }
}

TEST(Converter, BoolToRealNamesTheBoolAsANumber) {
    try {
        Converter<VornBool, VornReal>::convert(true);
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Requested invalid conversion from bool to real (value=1)");
    }
}

TEST(Converter, RealToIntThrowsAndDoesNotTruncate) {
    const TypedVornValue<VornReal> value(1.5);
    try {
        const Tree converted(value.convertToType(VornDataTypeTag::VornInt));
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Requested invalid conversion from real to int (value=1.5)");
    }
}

TEST(Converter, IntConvertsToIntervalWhileRealDoesNot) {
    const TypedVornValue<VornReal> real(3.0);
    EXPECT_THROW(real.convertToType(VornDataTypeTag::VornInterval), std::invalid_argument);
    const TypedVornValue<VornInt> integer(3);
    const Tree interval(integer.convertToType(VornDataTypeTag::VornInterval));
    EXPECT_EQ(valueOf<VornInterval>(interval), 3);
}

TEST(Converter, AnIntervalOf3ConvertsToTheReal3AndTheClock3) {
    const TypedVornValue<VornInterval> interval(3);
    const Tree real(interval.convertToType(VornDataTypeTag::VornReal));
    const Tree clock(interval.convertToType(VornDataTypeTag::VornClock));
    EXPECT_EQ(valueOf<VornReal>(real), 3.0);
    EXPECT_EQ(valueOf<VornClock>(clock), 3.0);
}

TEST(Converter, ALargeIntegerRoundsAsTheOrdinaryConversionToDoubleDoes) {
    // 2^53 + 1 is halfway between two doubles and is rounded to the even one.
    EXPECT_EQ((Converter<VornInt, VornReal>::convert(9007199254740993)), 9007199254740992.0);
    EXPECT_EQ((Converter<VornInt, VornReal>::convert(std::numeric_limits<long>::min())), -9223372036854775808.0);
}

TEST(Converter, AnEnumIsNamedByItsString) {
    try {
        Converter<VornEnum, VornInt>::convert("green");
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Requested invalid conversion from enum to int (value=green)");
    }
}

TEST(Converter, AModeIsNamedByTheNumericFormOfItsPointer) {
    const RealisedMode mode(4, "on");
    std::ostringstream pointer;
    pointer << static_cast<const void*>(&mode);
    try {
        Converter<VornModeVal, VornBool>::convert(&mode);
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(error.what(), "Requested invalid conversion from mode to bool (value=" + pointer.str() + ")");
    }
}

}  // namespace
}  // namespace vornrun::test
