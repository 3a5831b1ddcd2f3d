// What +, -, *, /, mod and the unary operators compute.

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <limits>

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/vorn/syntax/expressions/ExpressionTestSupport.h"

namespace vornrun::test {
namespace {

constexpr long LOWEST = std::numeric_limits<long>::min();
constexpr long HIGHEST = std::numeric_limits<long>::max();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

struct IntegerCase {
    const char* name;
    long left;
    const char* op;
    long right;
    long expected;
};

class IntegerArithmetic : public testing::TestWithParam<IntegerCase> {};

TEST_P(IntegerArithmetic, IsThatOfTheProcessorForIntsAndIntervals) {
    const auto& [name, left, op, right, expected] = GetParam();
    EXPECT_EQ(valueOf<VornInt>(binary(op, constant<VornInt>(left), constant<VornInt>(right))), expected);
    EXPECT_EQ(valueOf<VornInt>(binary(op, constant<VornInterval>(left), constant<VornInt>(right))), expected);
    EXPECT_EQ(valueOf<VornInt>(binary(op, constant<VornInt>(left), constant<VornInterval>(right))), expected);
    EXPECT_EQ(valueOf<VornInterval>(binary(op, constant<VornInterval>(left), constant<VornInterval>(right))), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Operators, IntegerArithmetic,
    testing::Values(IntegerCase{"Sum", 2, "+", 3, 5}, IntegerCase{"SumWraps", HIGHEST, "+", 1, LOWEST},
                    IntegerCase{"SumWrapsDownwards", LOWEST, "+", -1, HIGHEST},
                    IntegerCase{"Difference", 2, "-", 3, -1}, IntegerCase{"DifferenceWraps", LOWEST, "-", 1, HIGHEST},
                    IntegerCase{"DifferenceFromZeroWraps", 0, "-", LOWEST, LOWEST},
                    IntegerCase{"Product", -4, "*", 3, -12}, IntegerCase{"ProductWraps", HIGHEST, "*", 2, -2},
                    IntegerCase{"ProductOfTheLowestByMinus1Wraps", LOWEST, "*", -1, LOWEST},
                    IntegerCase{"QuotientTruncates", 7, "/", 2, 3},
                    IntegerCase{"NegativeQuotientTruncatesTowardsZero", -7, "/", 2, -3},
                    IntegerCase{"NegativeDivisorTruncatesTowardsZero", 7, "/", -2, -3},
                    IntegerCase{"BothNegative", -7, "/", -2, 3}, IntegerCase{"OneHalfIsZero", 1, "/", 2, 0},
                    IntegerCase{"LowestBy1", LOWEST, "/", 1, LOWEST},
                    IntegerCase{"LowestByItself", LOWEST, "/", LOWEST, 1},
                    IntegerCase{"HighestByMinus1", HIGHEST, "/", -1, -HIGHEST},
                    IntegerCase{"Remainder", 7, "mod", 2, 1},
                    IntegerCase{"RemainderTakesTheSignOfTheDividend", -7, "mod", 2, -1},
                    IntegerCase{"RemainderIgnoresTheSignOfTheDivisor", 7, "mod", -2, 1},
                    IntegerCase{"RemainderOfTheLowest", LOWEST, "mod", 10, -8},
                    IntegerCase{"RemainderWithoutRest", 6, "mod", 3, 0}),
    CaseName());

struct TrapCase {
    const char* name;
    long left;
    const char* op;
    long right;
};

class IntegerDivisionDeathTest : public testing::TestWithParam<TrapCase> {};

/// Dies in a process of its own, since the logging library has threads. Sanitizers take the signal for themselves
/// unless its action is the default one.
template <class T>
void expectArithmeticSignal(const Tree& tree) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto evaluate = [&tree] {
        std::signal(SIGFPE, SIG_DFL);
        static_cast<void>(valueOf<T>(tree));
    };
    EXPECT_EXIT(evaluate(), testing::KilledBySignal(SIGFPE), "") << *tree;
}

TEST_P(IntegerDivisionDeathTest, WithoutAResultEndsTheProcessWithTheArithmeticSignal) {
    const auto& [name, left, op, right] = GetParam();
    const Tree ints = binary(op, constant<VornInt>(left), constant<VornInt>(right));
    const Tree intervals = binary(op, constant<VornInterval>(left), constant<VornInterval>(right));
    const Tree mixed = binary(op, constant<VornInterval>(left), constant<VornInt>(right));
    expectArithmeticSignal<VornInt>(ints);
    expectArithmeticSignal<VornInterval>(intervals);
    expectArithmeticSignal<VornInt>(mixed);
}

INSTANTIATE_TEST_SUITE_P(, IntegerDivisionDeathTest,
                         testing::Values(TrapCase{"DividedByZero", 1, "/", 0}, TrapCase{"ZeroByZero", 0, "/", 0},
                                         TrapCase{"ModuloZero", 1, "mod", 0},
                                         TrapCase{"LowestDividedByMinus1", LOWEST, "/", -1},
                                         TrapCase{"LowestModuloMinus1", LOWEST, "mod", -1}),
                         CaseName());

Tree oneByZeroIsOne() {
    return binary("=", binary("/", constant<VornInt>(1), constant<VornInt>(0)).release(), constant<VornInt>(1));
}

TEST(IffDeathTest, EvaluatesBothSides) {
    const Tree onTheLeft = binary("iff", oneByZeroIsOne().release(), constant<VornBool>(true));
    const Tree onTheRight = binary("iff", constant<VornBool>(true), oneByZeroIsOne().release());
    expectArithmeticSignal<VornBool>(onTheLeft);
    expectArithmeticSignal<VornBool>(onTheRight);
}

TEST(ShortCircuit, FalseAndAnythingDoesNotTrapNorDoesTrueOrAnything) {
    EXPECT_FALSE(valueOf<VornBool>(binary("and", constant<VornBool>(false), oneByZeroIsOne().release())));
    EXPECT_TRUE(valueOf<VornBool>(binary("or", constant<VornBool>(true), oneByZeroIsOne().release())));
}

struct DoubleCase {
    const char* name;
    double left;
    const char* op;
    double right;
    double expected;
};

class DoubleArithmetic : public testing::TestWithParam<DoubleCase> {};

TEST_P(DoubleArithmetic, FollowsIeee) {
    const auto& [name, left, op, right, expected] = GetParam();
    const double reals = valueOf<VornReal>(binary(op, constant<VornReal>(left), constant<VornReal>(right)));
    const double mixed =
        valueOf<VornContinuous>(binary(op, constant<VornClock>(left), constant<VornContinuous>(right)));
    if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(reals));
        EXPECT_TRUE(std::isnan(mixed));
    } else {
        EXPECT_EQ(reals, expected);
        EXPECT_EQ(mixed, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Operators, DoubleArithmetic,
    testing::Values(DoubleCase{"Sum", 1.5, "+", 2.25, 3.75}, DoubleCase{"Difference", 1.5, "-", 2.25, -0.75},
                    DoubleCase{"Product", 1.5, "*", -2, -3}, DoubleCase{"Quotient", 1, "/", 4, 0.25},
                    DoubleCase{"OneByZeroIsInfinite", 1, "/", 0.0, INFINITE},
                    DoubleCase{"MinusOneByZeroIsMinusInfinite", -1, "/", 0.0, -INFINITE},
                    DoubleCase{"ZeroByZeroIsNoNumber", 0, "/", 0.0, std::nan("")},
                    DoubleCase{"InfinityMinusItselfIsNoNumber", INFINITE, "-", INFINITE, std::nan("")},
                    DoubleCase{"OverflowIsInfinite", 1e308, "*", 10, INFINITE}),
    CaseName());

TEST(MixedArithmetic, ConvertsTheIntegerToDoubleFirst) {
    EXPECT_EQ(valueOf<VornReal>(binary("/", constant<VornInt>(1), constant<VornReal>(2))), 0.5);
    EXPECT_EQ(valueOf<VornReal>(binary("/", constant<VornReal>(1), constant<VornInt>(2))), 0.5);
    EXPECT_EQ(valueOf<VornClock>(binary("*", constant<VornInterval>(3), constant<VornClock>(0.5))), 1.5);
    EXPECT_EQ(valueOf<VornContinuous>(binary("-", constant<VornContinuous>(0.5), constant<VornInterval>(2))), -1.5);
    // 2^63 - 1 becomes 2^63 as a double, and a sum with it does not wrap.
    EXPECT_EQ(valueOf<VornReal>(binary("+", constant<VornInt>(HIGHEST), constant<VornReal>(0))), 9223372036854775808.0);
    EXPECT_EQ(valueOf<VornReal>(binary("/", constant<VornInt>(1), constant<VornReal>(0))), INFINITE);
    EXPECT_EQ(valueOf<VornReal>(binary("/", constant<VornReal>(1), constant<VornInt>(0))), INFINITE);
}

TEST(Invert, NegatesIntegersInTwosComplement) {
    const auto inverted = [](long value) {
        const Tree tree(VornExpressionConstructor::expressionTree<VornInvert>(constant<VornInt>(value)));
        return valueOf<VornInt>(tree);
    };
    EXPECT_EQ(inverted(5), -5);
    EXPECT_EQ(inverted(0), 0);
    EXPECT_EQ(inverted(LOWEST), LOWEST);
    const Tree interval(VornExpressionConstructor::expressionTree<VornInvert>(constant<VornInterval>(LOWEST)));
    EXPECT_EQ(valueOf<VornInterval>(interval), LOWEST);
}

TEST(Invert, OfTheReal0IsMinus0WhichEquals0) {
    Tree negative(VornExpressionConstructor::expressionTree<VornInvert>(constant<VornReal>(0.0)));
    EXPECT_EQ(valueOf<VornReal>(negative), 0.0);
    EXPECT_TRUE(std::signbit(valueOf<VornReal>(negative)));
    EXPECT_TRUE(valueOf<VornBool>(binary("=", negative.release(), constant<VornReal>(0.0))));
}

TEST(Invert, FlipsTheSignBitOfEveryDoubleType) {
    const Tree clock(VornExpressionConstructor::expressionTree<VornInvert>(constant<VornClock>(2.5)));
    EXPECT_EQ(valueOf<VornClock>(clock), -2.5);
    const Tree continuous(VornExpressionConstructor::expressionTree<VornInvert>(constant<VornContinuous>(INFINITE)));
    EXPECT_EQ(valueOf<VornContinuous>(continuous), -INFINITE);
}

TEST(Not, NegatesABool) {
    const Tree notTrue(VornExpressionConstructor::expressionTree<VornNot>(constant<VornBool>(true)));
    const Tree notFalse(VornExpressionConstructor::expressionTree<VornNot>(constant<VornBool>(false)));
    EXPECT_FALSE(valueOf<VornBool>(notTrue));
    EXPECT_TRUE(valueOf<VornBool>(notFalse));
}

}  // namespace
}  // namespace vornrun::test
