#include "vornrun/datastructures/property/CSLNextPathFormula.h"

#include <gmock/gmock.h>

#include <memory>

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/property/FormulaFixtures.h"

namespace vornrun::test {
namespace {

using testing::ThrowsMessage;

struct StateCase {
    const char* name;
    double lower, upper, now;
    PropertyResult operand;
    PropertyResult verdict;
    bool asked;
};

class NextInAState : public testing::TestWithParam<StateCase> {};

TEST_P(NextInAState, AsksItsOperandWithinTheIntervalOnly) {
    const StateCase& state = GetParam();
    for (const bool shallow : {true, false}) {
        std::vector<Asked> journal;
        const CSLNextPathFormula formula(new ScriptedFormula("x", state.operand, journal), state.lower, state.upper);
        EXPECT_EQ(formula.evaluateAt(state.now, nullptr, shallow), state.verdict);
        const std::vector<Asked> once{{"x", nullptr, shallow}};
        EXPECT_EQ(journal, state.asked ? once : std::vector<Asked>{});
    }
}

INSTANTIATE_TEST_SUITE_P(
    States, NextInAState,
    testing::Values(StateCase{"TrueInTheInitialState", 0, 1, 0, PropertyTrue, PropertyTrue, true},
                    StateCase{"FalseInTheInitialState", 0, 1, 0, PropertyFalse, PropertyUnknown, true},
                    StateCase{"UnknownWithinTheInterval", 0, 1, 0.5, PropertyUnknown, PropertyUnknown, true},
                    StateCase{"BeforeTheInterval", 2, 3, 1, PropertyTrue, PropertyUnknown, false},
                    StateCase{"AtTheLowerBound", 2, 3, 2, PropertyTrue, PropertyTrue, true},
                    StateCase{"AtTheUpperBound", 2, 3, 3, PropertyTrue, PropertyTrue, true},
                    StateCase{"BehindTheInterval", 2, 3, 3.5, PropertyTrue, PropertyFalse, false}),
    CaseName());

TEST(CSLNextPathFormula, NamesAMissingOperand) {
    const CSLNextPathFormula formula(nullptr, 0, 1);
    EXPECT_THAT([&] { formula.evaluateAt(0, nullptr, true); },
                ThrowsMessage<missing_operand>("The operand of a next formula is missing"));
}

TEST(CSLNextPathFormula, ClonesDeeplyOrWithAnotherOperandAndKeepsItsInterval) {
    auto original = std::make_unique<CSLNextPathFormula>(proposition("p"), 0.5, 7);
    const std::unique_ptr<CSLNextPathFormula> copy(original->clone());
    const std::unique_ptr<CSLNextPathFormula> over(original->clone(new CSLTrue));
    EXPECT_NE(copy->operand(), original->operand());
    original.reset();
    EXPECT_EQ(text(*copy), "X[0.5,7]p");
    EXPECT_EQ(text(*over), "X[0.5,7]true");
}

}  // namespace
}  // namespace vornrun::test
