#include "vornrun/datastructures/property/CSLUnaryStateFormula.h"

#include <gmock/gmock.h>

#include <memory>

#include "tests/vornrun/datastructures/property/FormulaFixtures.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

TEST(CSLNot, SwapsTrueAndFalseAndKeepsUnknown) {
    std::vector<Asked> journal;
    const auto negated = [&journal](PropertyResult verdict, bool shallow) {
        return CSLUnaryStateFormula<CSLNot>(new ScriptedFormula("x", verdict, journal)).evaluate(nullptr, shallow);
    };
    EXPECT_EQ(negated(PropertyTrue, true), PropertyFalse);
    EXPECT_EQ(negated(PropertyFalse, false), PropertyTrue);
    EXPECT_EQ(negated(PropertyUnknown, true), PropertyUnknown);
    EXPECT_THAT(journal, ElementsAre(Asked{"x", nullptr, true}, Asked{"x", nullptr, false}, Asked{"x", nullptr, true}));
}

TEST(CSLNot, NamesAMissingOperand) {
    const CSLUnaryStateFormula<CSLNot> formula(nullptr);
    EXPECT_THAT([&] { formula.evaluate(nullptr, true); },
                ThrowsMessage<missing_operand>("The operand of ! is missing"));
}

TEST(CSLNot, ClonesDeeplyOrWithAnotherOperand) {
    auto original = std::make_unique<CSLUnaryStateFormula<CSLNot>>(proposition("p"));
    const std::unique_ptr<CSLAbstractUnaryStateFormula> copy(original->clone());
    auto* const other = new CSLFalse;
    const std::unique_ptr<CSLAbstractUnaryStateFormula> over(original->clone(other));
    EXPECT_NE(copy->operand(), original->operand());
    EXPECT_EQ(over->operand(), other);
    original.reset();
    EXPECT_EQ(text(*copy), "(! p)");
    EXPECT_EQ(text(*over), "(! false)");
}

}  // namespace
}  // namespace vornrun::test
