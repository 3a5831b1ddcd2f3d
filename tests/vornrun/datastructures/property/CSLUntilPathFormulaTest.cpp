#include "vornrun/datastructures/property/CSLUntilPathFormula.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/property/FormulaFixtures.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

constexpr PropertyResult T = PropertyTrue;
constexpr PropertyResult F = PropertyFalse;
constexpr PropertyResult U = PropertyUnknown;

/// One visited state of a run.
struct StateCase {
    const char* name;
    double lower, upper, now;
    PropertyResult left, right;
    PropertyResult verdict;
    std::vector<std::string> asked;
};

class UntilInAState : public testing::TestWithParam<StateCase> {};

TEST_P(UntilInAState, AsksOnlyTheOperandThatCounts) {
    const StateCase& state = GetParam();
    for (const bool shallow : {true, false}) {
        std::vector<Asked> journal;
        const CSLUntilPathFormula formula(new ScriptedFormula("left", state.left, journal),
                                          new ScriptedFormula("right", state.right, journal), state.lower, state.upper);
        EXPECT_EQ(formula.evaluateAt(state.now, nullptr, shallow), state.verdict);
        std::vector<Asked> expected;
        for (const std::string& operand : state.asked) expected.push_back({operand, nullptr, shallow});
        EXPECT_EQ(journal, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    States, UntilInAState,
    testing::Values(StateCase{"RightTrueAtTimeZero", 0, 10, 0, F, T, T, {"right"}},
                    StateCase{"LeftFalseBeforeTheInterval", 5, 10, 0, F, T, F, {"left"}},
                    StateCase{"LeftTrueBeforeTheInterval", 5, 10, 0, T, T, U, {"left"}},
                    StateCase{"LeftUnknownBeforeTheIntervalIsFinal", 5, 10, 4.999, U, T, F, {"left"}},
                    StateCase{"LowerBoundBelongsToTheInterval", 5, 10, 5, F, T, T, {"right"}},
                    StateCase{"LeftFalseWithinTheInterval", 5, 10, 6, F, F, U, {"right"}},
                    StateCase{"RightUnknownWithinTheInterval", 5, 10, 6, T, U, U, {"right"}},
                    StateCase{"UpperBoundBelongsToTheInterval", 5, 10, 10, F, T, T, {"right"}},
                    StateCase{"RightFalseAtTheUpperBound", 5, 10, 10, T, F, U, {"right"}},
                    StateCase{"BehindTheInterval", 5, 10, 10.001, T, T, F, {}},
                    StateCase{"EmptyIntervalBeforeIt", 10, 5, 7, T, T, F, {}},
                    StateCase{"NoUpperBound", 0, std::numeric_limits<double>::infinity(), 1e9, T, F, U, {"right"}}),
    CaseName());

TEST(CSLUntilPathFormula, IsUndecidedUntilTheIntervalIsOverWhenLeftTurnsFalseWithinIt) {
    std::vector<Asked> journal;
    const CSLUntilPathFormula withLeft(new CSLTrue, new CSLFalse, 5, 10);
    EXPECT_EQ(withLeft.evaluateAt(0, nullptr, true), PropertyUnknown);
    EXPECT_EQ(withLeft.evaluateAt(4, nullptr, true), PropertyUnknown);
    const CSLUntilPathFormula withoutLeft(new CSLFalse, new CSLFalse, 5, 10);
    EXPECT_EQ(withoutLeft.evaluateAt(6, nullptr, true), PropertyUnknown);
    EXPECT_EQ(withoutLeft.evaluateAt(10, nullptr, true), PropertyUnknown);
    EXPECT_EQ(withoutLeft.evaluateAt(11, nullptr, true), PropertyFalse);
}

TEST(CSLUntilPathFormula, WithANestedFormulaOnTheLeftIsFalseInTheShallowPassBeforeTheInterval) {
    auto* const nested = new CSLProbabilityStateFormula(new CSLNextPathFormula(new CSLTrue, 0, 1), 0.5,
                                                        CSLProbabilityStateFormula::Operator::greaterEqual);
    const CSLUntilPathFormula formula(nested, new CSLTrue, 5, 10);
    EXPECT_EQ(formula.evaluateAt(0, nullptr, true), PropertyFalse);
}

TEST(CSLUntilPathFormula, NamesTheOperandThatIsMissing) {
    const CSLUntilPathFormula formula(nullptr, nullptr, 5, 10);
    EXPECT_THAT([&] { formula.evaluateAt(0, nullptr, true); },
                ThrowsMessage<missing_operand>("The left operand of an until formula is missing"));
    EXPECT_THAT([&] { formula.evaluateAt(5, nullptr, true); },
                ThrowsMessage<missing_operand>("The right operand of an until formula is missing"));
    EXPECT_EQ(formula.evaluateAt(11, nullptr, true), PropertyFalse);
}

TEST(CSLUntilPathFormula, ClonesDeeplyOrWithOtherOperandsAndKeepsItsInterval) {
    auto original = std::make_unique<CSLUntilPathFormula>(proposition("p"), proposition("q"), 0.5, 7);
    const std::unique_ptr<CSLUntilPathFormula> copy(original->clone());
    const std::unique_ptr<CSLUntilPathFormula> over(original->clone(new CSLTrue, new CSLFalse));
    EXPECT_NE(copy->left(), original->left());
    EXPECT_NE(copy->right(), original->right());
    original.reset();
    EXPECT_EQ(text(*copy), "pU[0.5,7]q");
    EXPECT_EQ(text(*over), "trueU[0.5,7]false");
    EXPECT_EQ(copy->lower(), 0.5);
    EXPECT_EQ(copy->upper(), 7);
}

}  // namespace
}  // namespace vornrun::test
