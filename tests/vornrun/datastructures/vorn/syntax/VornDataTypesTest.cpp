#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

#include <gtest/gtest.h>

#include <sstream>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"

namespace vornrun::test {
namespace {

struct TypeRow {
    unsigned int number;
    const char* text;
    const char* op;
    bool isDouble;
};

class DataTypes : public testing::TestWithParam<TypeRow> {};

TEST_P(DataTypes, HaveTheirNumberTextAndName) {
    const TypeRow& row = GetParam();
    const auto tag = static_cast<VornDataTypeTag>(row.number);
    EXPECT_EQ(toString(tag), row.text);
    EXPECT_EQ(hasDoubleAsAssociatedDataType(tag), row.isDouble);
    EXPECT_EQ(withTagClass(tag, []<class T>() { return std::string(T::op); }), row.op);
    EXPECT_EQ(withTagClass(tag, []<class T>() { return T::tag; }), tag);
}

INSTANTIATE_TEST_SUITE_P(All, DataTypes,
                         testing::Values(TypeRow{0, "VornBool", "bool", false}, TypeRow{1, "VornReal", "real", true},
                                         TypeRow{2, "VornInt", "int", false},
                                         TypeRow{3, "VornContinuous", "continuous", true},
                                         TypeRow{4, "VornClock", "clock", true}, TypeRow{5, "VornEnum", "enum", false},
                                         TypeRow{6, "VornInterval", "interval", false},
                                         TypeRow{7, "VornMode", "mode", false}),
                         [](const auto& tested) { return std::string(tested.param.text); });

TEST(DataTypes, Tag7PrintsAsVornModeWhileItsTypeIsNamedMode) {
    EXPECT_EQ(toString(VornModeVal::tag), "VornMode");
    EXPECT_EQ(VornModeVal::op, "mode");
}

TEST(DataTypes, ATagBeyondTheEightWritesNothing) {
    std::ostringstream stream;
    stream << "<" << static_cast<VornDataTypeTag>(8) << static_cast<VornDataTypeTag>(99) << ">";
    EXPECT_EQ(stream.str(), "<>");
    EXPECT_EQ(toString(static_cast<VornDataTypeTag>(8)), "");
    EXPECT_FALSE(hasDoubleAsAssociatedDataType(static_cast<VornDataTypeTag>(8)));
}

TEST(DataTypes, AnIntervalIsNoDouble) { EXPECT_FALSE(hasDoubleAsAssociatedDataType(VornDataTypeTag::VornInterval)); }

TEST(DataTypes, DefaultsAreFalseZeroEmptyAndNull) {
    EXPECT_FALSE(VornBool::DefaultValue);
    EXPECT_EQ(VornReal::DefaultValue, 0.0);
    EXPECT_EQ(VornInt::DefaultValue, 0);
    EXPECT_EQ(VornContinuous::DefaultValue, 0.0);
    EXPECT_EQ(VornClock::DefaultValue, 0.0);
    EXPECT_EQ(VornEnum::DefaultValue, "");
    EXPECT_EQ(VornInterval::DefaultValue, 0);
    EXPECT_EQ(VornModeVal::DefaultValue, nullptr);
}

class Printing final : public Vorn {
  public:
    void printVorn(std::ostream& stream) const override { stream << "printed"; }
};

TEST(Vorn, IsWrittenToStreamsByPrintVorn) {
    std::ostringstream stream;
    stream << Printing() << "!";
    EXPECT_EQ(stream.str(), "printed!");
}

}  // namespace
}  // namespace vornrun::test
