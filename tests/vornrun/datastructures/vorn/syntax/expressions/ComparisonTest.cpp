// What =, !=, <, <=, > and >= answer, with and without tolerance.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"
#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"

namespace vornrun::test {
namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();

/// The answers of the six comparisons as text, in the order = != < <= > >=, with a dot for false.
std::string answers(const VornExpressionTree& left, const VornExpressionTree& right) {
    std::string result;
    for (const auto& [text, letter] :
         {std::pair{"=", 'E'}, {"!=", 'N'}, {"<", 'l'}, {"<=", 'L'}, {">", 'g'}, {">=", 'G'}}) {
        result += valueOf<VornBool>(binary(text, left.clone(), right.clone())) ? letter : '.';
    }
    return result;
}

constexpr const char* EQUAL = "E..L.G";
constexpr const char* EQUAL_BUT_LESS = "E.lL.G";
constexpr const char* EQUAL_BUT_GREATER = "E..LgG";
constexpr const char* LESS = ".NlL..";
constexpr const char* GREATER = ".N..gG";
constexpr const char* NOTHING_HOLDS = "......";
constexpr const char* UNEQUAL_ONLY = ".N....";

/// A constant of any numeric type.
Tree number(VornDataTypeTag type, double value) {
    return Tree(withTagClass(type, [value]<class T>() -> VornExpressionTree* {
        if constexpr (NumericTag<T>) {
            return constant<T>(static_cast<typename T::AssociatedDataType>(value));
        } else {
            return nullptr;
        }
    }));
}

constexpr VornDataTypeTag NUMERIC[] = {VornDataTypeTag::VornInterval, VornDataTypeTag::VornInt,
                                       VornDataTypeTag::VornReal, VornDataTypeTag::VornClock,
                                       VornDataTypeTag::VornContinuous};
/// Left down, right across, in the order of NUMERIC: both integer, tolerant, or exact on doubles.
constexpr const char* REGIMES[] = {"IIXXX", "IITTT", "XTTTT", "XTTTT", "XTTTT"};

class NumericPairs : public testing::TestWithParam<int> {
  protected:
    std::size_t leftIndex() const { return static_cast<std::size_t>(GetParam()) / 5; }
    std::size_t rightIndex() const { return static_cast<std::size_t>(GetParam()) % 5; }
    char regime() const { return REGIMES[leftIndex()][rightIndex()]; }
    std::string compare(double left, double right) const {
        return answers(*number(NUMERIC[leftIndex()], left), *number(NUMERIC[rightIndex()], right));
    }
};

TEST_P(NumericPairs, OrderWholeNumbersAlike) {
    EXPECT_EQ(compare(2, 2), EQUAL);
    EXPECT_EQ(compare(1, 2), LESS);
    EXPECT_EQ(compare(2, 1), GREATER);
    EXPECT_EQ(compare(-2, 1), LESS);
}

TEST_P(NumericPairs, UseTheToleranceByTheirTypes) {
    if (regime() == 'I') return;  // no two integers are that close
    const bool tolerant = regime() == 'T';
    if (hasDoubleAsAssociatedDataType(NUMERIC[leftIndex()])) {
        EXPECT_EQ(compare(2.0000001, 2), tolerant ? EQUAL_BUT_GREATER : GREATER);
        EXPECT_EQ(compare(1.9999999, 2), tolerant ? EQUAL_BUT_LESS : LESS);
        EXPECT_EQ(compare(2.00001, 2), GREATER);
        EXPECT_EQ(compare(1.99999, 2), LESS);
    }
    if (hasDoubleAsAssociatedDataType(NUMERIC[rightIndex()])) {
        EXPECT_EQ(compare(2, 2.0000001), tolerant ? EQUAL_BUT_LESS : LESS);
        EXPECT_EQ(compare(2, 1.9999999), tolerant ? EQUAL_BUT_GREATER : GREATER);
        EXPECT_EQ(compare(2, 2.00001), LESS);
        EXPECT_EQ(compare(2, 1.99999), GREATER);
    }
}

TEST_P(NumericPairs, CompareNoNumberByTheirRegime) {
    if (regime() == 'I') return;  // integers are always numbers
    const char* const expected = regime() == 'T' ? NOTHING_HOLDS : UNEQUAL_ONLY;
    if (hasDoubleAsAssociatedDataType(NUMERIC[leftIndex()])) {
        EXPECT_EQ(compare(NO_NUMBER, 2), expected);
    }
    if (hasDoubleAsAssociatedDataType(NUMERIC[rightIndex()])) {
        EXPECT_EQ(compare(2, NO_NUMBER), expected);
    }
}

TEST_P(NumericPairs, OrderInfinitiesBeyondAllNumbers) {
    if (hasDoubleAsAssociatedDataType(NUMERIC[leftIndex()])) {
        EXPECT_EQ(compare(INFINITE, 2), GREATER);
        EXPECT_EQ(compare(-INFINITE, 2), LESS);
    }
    if (hasDoubleAsAssociatedDataType(NUMERIC[rightIndex()])) {
        EXPECT_EQ(compare(2, INFINITE), LESS);
        EXPECT_EQ(compare(2, -INFINITE), GREATER);
    }
}

INSTANTIATE_TEST_SUITE_P(All25, NumericPairs, testing::Range(0, 25), [](const auto& tested) {
    const auto index = static_cast<std::size_t>(tested.param);
    return toString(NUMERIC[index / 5]) + "With" + toString(NUMERIC[index % 5]);
});

std::string reals(double left, double right) {
    return answers(TypedVornValue<VornReal>(left), TypedVornValue<VornReal>(right));
}

TEST(RealComparison, OfNearlyEqualNumbersFindsThemEqualAndGreater) {
    EXPECT_EQ(reals(1.0000001, 1.0), EQUAL_BUT_GREATER);
}

TEST(RealComparison, CountsADifferenceOfTheToleranceItselfAsUnequalYetNotStrictlyBeyond) {
    EXPECT_EQ(reals(1e-06, 0), ".N.LgG");
    EXPECT_EQ(reals(0, 1e-06), ".NlL.G");
}

TEST(RealComparison, FindsInfinityNeitherEqualNorUnequalToItself) {
    // Their difference is no number, while the sums of the order forms stay infinite.
    EXPECT_EQ(reals(INFINITE, INFINITE), "...L.G");
    EXPECT_EQ(reals(-INFINITE, -INFINITE), "...L.G");
    EXPECT_EQ(reals(-INFINITE, INFINITE), LESS);
}

TEST(ClockComparison, OfABitMoreThan2IsEqualToTheInt2ButNotToTheInterval2) {
    const TypedVornValue<VornClock> clock(2.0000001);
    EXPECT_TRUE(valueOf<VornBool>(binary("=", clock.clone(), constant<VornInt>(2))));
    EXPECT_FALSE(valueOf<VornBool>(binary("=", clock.clone(), constant<VornInterval>(2))));
}

TEST(LessOrEqual, HasToleranceBetweenRealsAndNoneAgainstAnInterval) {
    EXPECT_TRUE(valueOf<VornBool>(binary("<=", constant<VornReal>(2.0000001), constant<VornReal>(2))));
    EXPECT_FALSE(valueOf<VornBool>(binary("<=", constant<VornReal>(2.0000001), constant<VornInterval>(2))));
}

TEST(IntegerComparison, IsExactWhereDoublesWouldRound) {
    const TypedVornValue<VornInt> odd(9007199254740993);  // 2^53 + 1, not a double
    EXPECT_EQ(answers(odd, TypedVornValue<VornInt>(9007199254740992)), GREATER);
    EXPECT_EQ(answers(odd, TypedVornValue<VornInterval>(9007199254740992)), GREATER);
    EXPECT_EQ(answers(TypedVornValue<VornInterval>(9007199254740993), TypedVornValue<VornReal>(9007199254740992.0)),
              EQUAL);
    EXPECT_EQ(answers(TypedVornValue<VornInt>(std::numeric_limits<long>::min()),
                      TypedVornValue<VornInt>(std::numeric_limits<long>::max())),
              LESS);
}

bool equal(VornExpressionTree* left, VornExpressionTree* right) {
    const Tree same = binary("=", left, right);
    const std::list<VornExpressionTree*> operands = {left->clone(), right->clone()};
    const Tree different = binary("!=", operands.front(), operands.back());
    EXPECT_NE(valueOf<VornBool>(same), valueOf<VornBool>(different)) << "= and != contradict each other";
    return valueOf<VornBool>(same);
}

TEST(BoolComparison, IsExact) {
    EXPECT_TRUE(equal(constant<VornBool>(true), constant<VornBool>(true)));
    EXPECT_TRUE(equal(constant<VornBool>(false), constant<VornBool>(false)));
    EXPECT_FALSE(equal(constant<VornBool>(true), constant<VornBool>(false)));
}

TEST(EnumComparison, IsByLengthAndBytes) {
    EXPECT_TRUE(equal(constant<VornEnum>("red"), constant<VornEnum>("red")));
    EXPECT_TRUE(equal(constant<VornEnum>(""), constant<VornEnum>("")));
    EXPECT_FALSE(equal(constant<VornEnum>("red"), constant<VornEnum>("Red")));
    EXPECT_FALSE(equal(constant<VornEnum>("red"), constant<VornEnum>("redd")));
    EXPECT_FALSE(equal(constant<VornEnum>(std::string("a\0b", 3)), constant<VornEnum>(std::string("a\0c", 3))));
}

TEST(ModeComparison, IsByPointerAndNotByName) {
    const RealisedMode on(1, "on");
    const RealisedMode otherOn(1, "on");
    EXPECT_TRUE(equal(constant<VornModeVal>(&on), constant<VornModeVal>(&on)));
    EXPECT_FALSE(equal(constant<VornModeVal>(&on), constant<VornModeVal>(&otherOn)));
    EXPECT_TRUE(equal(constant<VornModeVal>(nullptr), constant<VornModeVal>(nullptr)));
    EXPECT_FALSE(equal(constant<VornModeVal>(&on), constant<VornModeVal>(nullptr)));
}

TEST(Comparison, EvaluatesTheLeftOperandFirst) {
    std::vector<std::string> events;
    for (const char* const op : {"=", "!=", "<", "<=", ">", ">=", "+", "-", "*", "/"}) {
        const Tree tree = binary(op, new Probe<VornReal>("left", 1, events), new Probe<VornInt>("right", 2, events));
        events.clear();
        const std::unique_ptr<VornValue> value(tree->evaluationResult());
        EXPECT_EQ(events, (std::vector<std::string>{"left evaluated", "right evaluated"})) << op;
    }
}

}  // namespace
}  // namespace vornrun::test
