#include "vornrun/datastructures/property/CSLPropositionStateFormula.h"

#include <gmock/gmock.h>

#include <memory>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/property/FormulaFixtures.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

std::unique_ptr<CSLPropositionStateFormula> constant(bool value) {
    return std::make_unique<CSLPropositionStateFormula>(new TypedVornValue<VornBool>(value));
}

TEST(CSLPropositionStateFormula, IsWhatItsExpressionIs) {
    for (const bool shallow : {true, false}) {
        EXPECT_EQ(constant(true)->evaluate(nullptr, shallow), PropertyTrue);
        EXPECT_EQ(constant(false)->evaluate(nullptr, shallow), PropertyFalse);
    }
}

TEST(CSLPropositionStateFormula, LogsWhatItCheckedWhenDebugIsOn) {
    const CapturedLog log(LogLevel::Debug);
    constant(true)->evaluate(nullptr, true);
    constant(false)->evaluate(nullptr, true);
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Debug, "root.formula", "Checking AP 1: 1"},
                                           LogRecord{LogLevel::Debug, "root.formula", "Checking AP 0: 0"}));
}

TEST(CSLPropositionStateFormula, LogsNothingAtInfo) {
    const CapturedLog log(LogLevel::Info);
    constant(true)->evaluate(nullptr, true);
    EXPECT_TRUE(log.records().empty());
}

TEST(CSLPropositionStateFormula, LetsTheExceptionOfItsExpressionPass) {
    const std::unique_ptr<CSLPropositionStateFormula> formula(proposition("p"));
    EXPECT_THROW(formula->evaluate(nullptr, true), IdentifierEvaluation);
}

TEST(CSLPropositionStateFormula, SaysThatItsExpressionIsMissing) {
    const CSLPropositionStateFormula formula(nullptr);
    EXPECT_THAT([&] { formula.evaluate(nullptr, true); },
                ThrowsMessage<missing_operand>("The expression of an atomic proposition (did its name resolve, and to "
                                               "a boolean?) is missing"));
}

TEST(CSLPropositionStateFormula, ClonesDeeplyOrWithAnotherExpression) {
    std::unique_ptr<CSLPropositionStateFormula> original(proposition("p"));
    const std::unique_ptr<CSLPropositionStateFormula> copy(original->clone());
    const std::unique_ptr<CSLPropositionStateFormula> over(original->clone(new TypedVornVariable<VornBool>("q")));
    const std::unique_ptr<CSLPropositionStateFormula> none(original->clone(nullptr));
    EXPECT_NE(copy->expression(), original->expression());
    original.reset();
    EXPECT_EQ(text(*copy), "p");
    EXPECT_EQ(text(*over), "q");
    EXPECT_EQ(none->expression(), nullptr);
}

}  // namespace
}  // namespace vornrun::test
