#include <gtest/gtest.h>

#include <iomanip>
#include <memory>

#include "tests/support/CaseName.h"
#include "tests/vornrun/datastructures/property/FormulaFixtures.h"
#include "vornrun/datastructures/property/CSLFormula.h"

namespace vornrun::test {
namespace {

using Operator = CSLProbabilityStateFormula::Operator;

template <class Op>
CSLStateFormula* binary(CSLStateFormula* left, CSLStateFormula* right) {
    return new CSLBinaryStateFormula<Op>(left, right);
}

CSLStateFormula* probability(Operator op, double bound) {
    return new CSLProbabilityStateFormula(new CSLUntilPathFormula(new CSLTrue, proposition("p"), 0, 10), bound, op);
}

struct TextCase {
    const char* name;
    CSLFormula* (*make)();
    const char* text;
};

class FormulaText : public testing::TestWithParam<TextCase> {};

TEST_P(FormulaText, IsExactlyThis) {
    const std::unique_ptr<CSLFormula> formula(GetParam().make());
    EXPECT_EQ(text(*formula), GetParam().text);
}

using Made = CSLFormula*;

INSTANTIATE_TEST_SUITE_P(
    Formulas, FormulaText,
    testing::Values(
        TextCase{"True", []() -> Made { return new CSLTrue; }, "true"},
        TextCase{"False", []() -> Made { return new CSLFalse; }, "false"},
        TextCase{"Proposition", []() -> Made { return proposition("sub.p"); }, "sub.p"},
        TextCase{"And", []() -> Made { return binary<CSLAnd>(proposition("p"), proposition("q")); }, "(p && q)"},
        TextCase{"Or", []() -> Made { return binary<CSLOr>(proposition("p"), proposition("q")); }, "(p || q)"},
        TextCase{"Imp", []() -> Made { return binary<CSLImp>(proposition("p"), proposition("q")); }, "(p -> q)"},
        TextCase{"Iff", []() -> Made { return binary<CSLIff>(proposition("p"), proposition("q")); }, "(p <-> q)"},
        TextCase{"Not", []() -> Made { return new CSLUnaryStateFormula<CSLNot>(proposition("p")); }, "(! p)"},
        TextCase{"Until", []() -> Made { return new CSLUntilPathFormula(proposition("p"), new CSLFalse, 0.5, 1e9); },
                 "pU[0.5,1e+09]false"},
        TextCase{"Next", []() -> Made { return new CSLNextPathFormula(proposition("p"), 2, 3); }, "X[2,3]p"},
        TextCase{"Less", []() -> Made { return probability(Operator::less, 0.5); }, "P[<0.5]trueU[0,10]p"},
        TextCase{"LessEqual", []() -> Made { return probability(Operator::lessEqual, 0.5); }, "P[<=0.5]trueU[0,10]p"},
        TextCase{"Greater", []() -> Made { return probability(Operator::greater, 0.5); }, "P[>0.5]trueU[0,10]p"},
        TextCase{"GreaterEqual", []() -> Made { return probability(Operator::greaterEqual, 1); }, "P[>=1]trueU[0,10]p"},
        TextCase{"OperatorBeyondTheFour", []() -> Made { return probability(static_cast<Operator>(9), 0); },
                 "P[??0]trueU[0,10]p"},
        TextCase{"BoundOfTwoDigits", []() -> Made { return probability(Operator::greater, 0.98765); },
                 "P[>0.99]trueU[0,10]p"},
        TextCase{"MissingParts",
                 []() -> Made {
                     return binary<CSLAnd>(
                         new CSLPropositionStateFormula(nullptr),
                         new CSLUnaryStateFormula<CSLNot>(new CSLProbabilityStateFormula(
                             new CSLUntilPathFormula(nullptr, nullptr, 0, 1), 0.5, Operator::greater)));
                 },
                 "((null) && (! P[>0.5](null)U[0,1](null)))"}),
    CaseName());

TEST(CSLProbabilityStateFormula, RestoresThePrecisionOfTheStreamBehindItsBound) {
    const std::unique_ptr<CSLStateFormula> formula(
        new CSLProbabilityStateFormula(new CSLNextPathFormula(new CSLTrue, 0.125, 3.14159), 0.125, Operator::greater));
    std::ostringstream stream;
    stream << std::setprecision(4) << *formula;
    EXPECT_EQ(stream.str(), "P[>0.12]X[0.125,3.142]true");
    EXPECT_EQ(stream.precision(), 4);
}

TEST(CSLFormula, WritesNumbersInTheFormatOfTheStream) {
    const std::unique_ptr<CSLStateFormula> formula(
        new CSLProbabilityStateFormula(new CSLNextPathFormula(new CSLTrue, 0, 2.5), 0.5, Operator::greater));
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(3) << *formula;
    EXPECT_EQ(stream.str(), "P[>0.50]X[0.000,2.500]true");
}

}  // namespace
}  // namespace vornrun::test
