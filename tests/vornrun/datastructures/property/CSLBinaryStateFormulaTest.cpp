#include "vornrun/datastructures/property/CSLBinaryStateFormula.h"

#include <gmock/gmock.h>

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

using Factory = CSLAbstractBinaryStateFormula* (*)(CSLStateFormula*, CSLStateFormula*);

template <class Op>
CSLAbstractBinaryStateFormula* make(CSLStateFormula* left, CSLStateFormula* right) {
    return new CSLBinaryStateFormula<Op>(left, right);
}

/// Rows are the left verdict, columns the right one, in the order true, false, unknown.
struct OperatorCase {
    const char* name;
    Factory factory;
    PropertyResult table[3][3];
};

class BinaryOperatorOnVerdicts : public testing::TestWithParam<OperatorCase> {};

TEST_P(BinaryOperatorOnVerdicts, FollowsItsTableAndAlwaysAsksLeftAndThenRight) {
    for (const PropertyResult left : {T, F, U}) {
        for (const PropertyResult right : {T, F, U}) {
            SCOPED_TRACE(testing::Message() << "left " << left << ", right " << right);
            std::vector<Asked> journal;
            const std::unique_ptr<CSLFormula> formula(GetParam().factory(new ScriptedFormula("left", left, journal),
                                                                         new ScriptedFormula("right", right, journal)));
            EXPECT_EQ(formula->evaluate(nullptr, true), GetParam().table[left][right]);
            EXPECT_THAT(journal, ElementsAre(Asked{"left", nullptr, true}, Asked{"right", nullptr, true}));
        }
    }
}

TEST_P(BinaryOperatorOnVerdicts, PassesOnThatThePassIsDeep) {
    std::vector<Asked> journal;
    const std::unique_ptr<CSLFormula> formula(
        GetParam().factory(new ScriptedFormula("left", T, journal), new ScriptedFormula("right", T, journal)));
    formula->evaluate(nullptr, false);
    EXPECT_THAT(journal, ElementsAre(Asked{"left", nullptr, false}, Asked{"right", nullptr, false}));
}

INSTANTIATE_TEST_SUITE_P(
    AllFour, BinaryOperatorOnVerdicts,
    testing::Values(OperatorCase{"And", make<CSLAnd>, {{T, F, U}, {F, F, F}, {U, F, U}}},
                    OperatorCase{"Or", make<CSLOr>, {{T, T, T}, {T, F, U}, {T, U, U}}},
                    OperatorCase{"Imp", make<CSLImp>, {{T, F, U}, {T, T, T}, {T, U, U}}},
                    OperatorCase{"IffIsTrueOfTwoUnknowns", make<CSLIff>, {{T, F, U}, {F, T, U}, {U, U, T}}}),
    CaseName());

TEST(CSLIff, OfTwoNestedProbabilityFormulasIsTrueInTheShallowPassWithoutSimulating) {
    const auto nested = [] {
        return new CSLProbabilityStateFormula(new CSLNextPathFormula(new CSLTrue, 0, 1), 0.5,
                                              CSLProbabilityStateFormula::Operator::greater);
    };
    const CSLBinaryStateFormula<CSLIff> formula(nested(), nested());
    EXPECT_EQ(formula.evaluate(nullptr, true), PropertyTrue);
}

TEST(CSLBinaryStateFormula, NamesTheOperandThatIsMissing) {
    const CSLBinaryStateFormula<CSLAnd> withoutLeft(nullptr, new CSLTrue);
    EXPECT_THAT([&] { withoutLeft.evaluate(nullptr, true); },
                ThrowsMessage<missing_operand>("The left operand of && is missing"));
    const CSLBinaryStateFormula<CSLIff> withoutRight(new CSLTrue, nullptr);
    EXPECT_THAT([&] { withoutRight.evaluate(nullptr, true); },
                ThrowsMessage<missing_operand>("The right operand of <-> is missing"));
}

TEST(CSLBinaryStateFormula, ClonesDeeply) {
    auto original = std::make_unique<CSLBinaryStateFormula<CSLImp>>(proposition("p"), proposition("q"));
    const std::unique_ptr<CSLAbstractBinaryStateFormula> copy(original->clone());
    EXPECT_NE(copy->left(), original->left());
    EXPECT_NE(copy->right(), original->right());
    original.reset();
    EXPECT_EQ(text(*copy), "(p -> q)");
}

TEST(CSLBinaryStateFormula, ClonesWithOtherOperands) {
    const CSLBinaryStateFormula<CSLOr> original(proposition("p"), proposition("q"));
    auto* const left = new CSLTrue;
    auto* const right = new CSLFalse;
    const std::unique_ptr<CSLAbstractBinaryStateFormula> copy(original.clone(left, right));
    EXPECT_EQ(copy->left(), left);
    EXPECT_EQ(copy->right(), right);
    EXPECT_EQ(text(*copy), "(true || false)");
}

TEST(CSLBinaryStateFormula, ClonesAMissingOperandAsMissing) {
    const CSLBinaryStateFormula<CSLOr> original(nullptr, nullptr);
    const std::unique_ptr<CSLAbstractBinaryStateFormula> copy(original.clone());
    EXPECT_EQ(copy->left(), nullptr);
    EXPECT_EQ(copy->right(), nullptr);
}

}  // namespace
}  // namespace vornrun::test
