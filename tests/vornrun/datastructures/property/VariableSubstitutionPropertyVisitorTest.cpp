#include "vornrun/datastructures/property/VariableSubstitutionPropertyVisitor.h"

#include <gmock/gmock.h>

#include <memory>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/datastructures/property/FormulaFixtures.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"
#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {
namespace {

using testing::ElementsAre;

VornDataSubcomponent* makeFlag(const std::string& name, bool value) {
    return new TypedVornDataSubcomponent<VornBool>(name, new TypedVornValue<VornBool>(value), {}, false);
}

/// A realised component with the variables "yes", which is true, and "no", which is false.
class SubstitutionInFormulas : public testing::Test {
  protected:
    SubstitutionInFormulas()
        : mDeclaration(makeDeclaration("S")),
          mImplementation(
              makeImplementation(mDeclaration.get(), "i",
                                 {.data = {makeFlag("yes", true), makeFlag("no", false)}, .modes = {makeMode("m")}})) {
        VornModelConstructor constructor;
        auto [realisation, valuation] = constructor.realise(mImplementation.get());
        mRealisation.reset(realisation);
        mValuation = valuation;
    }

    std::unique_ptr<CSLFormula> bound(const CSLFormula& formula) {
        const VariablesToValueReferences references(mRealisation.get(), mValuation);
        VariableSubstitutionPropertyVisitor visitor(&references);
        return std::unique_ptr<CSLFormula>(formula.accept(visitor));
    }

    const std::unique_ptr<VornComponentDeclaration> mDeclaration;
    const std::unique_ptr<VornComponentImplementation> mImplementation;
    ValuationPtr mValuation;
    std::unique_ptr<VornComponentRealisation> mRealisation;
};

TEST_F(SubstitutionInFormulas, BindsPropositionsInACopyAndLeavesTheOriginalAlone) {
    const std::unique_ptr<CSLFormula> yes(proposition("yes"));
    const std::unique_ptr<CSLFormula> no(proposition("no"));
    EXPECT_EQ(bound(*yes)->evaluate(nullptr, true), PropertyTrue);
    EXPECT_EQ(bound(*no)->evaluate(nullptr, true), PropertyFalse);
    EXPECT_THROW(yes->evaluate(nullptr, true), IdentifierEvaluation);
}

TEST_F(SubstitutionInFormulas, BindsBothOperandsInTheirOrder) {
    const CSLBinaryStateFormula<CSLImp> yesImpliesNo(proposition("yes"), proposition("no"));
    const CSLBinaryStateFormula<CSLImp> noImpliesYes(proposition("no"), proposition("yes"));
    EXPECT_EQ(bound(yesImpliesNo)->evaluate(nullptr, true), PropertyFalse);
    EXPECT_EQ(bound(noImpliesYes)->evaluate(nullptr, true), PropertyTrue);
}

TEST_F(SubstitutionInFormulas, BindsUnderEveryOtherFormula) {
    const CSLUnaryStateFormula<CSLNot> negation(proposition("no"));
    EXPECT_EQ(bound(negation)->evaluate(nullptr, true), PropertyTrue);

    const CSLUntilPathFormula until(proposition("no"), proposition("yes"), 5, 10);
    const auto boundUntil = bound(until);
    const auto& asUntil = dynamic_cast<const CSLUntilPathFormula&>(*boundUntil);
    EXPECT_EQ(asUntil.evaluateAt(0, nullptr, true), PropertyFalse);
    EXPECT_EQ(asUntil.evaluateAt(5, nullptr, true), PropertyTrue);
    EXPECT_EQ(asUntil.lower(), 5);
    EXPECT_EQ(asUntil.upper(), 10);

    const CSLProbabilityStateFormula probability(new CSLNextPathFormula(proposition("yes"), 2, 3), 0.75,
                                                 CSLProbabilityStateFormula::Operator::lessEqual);
    const auto boundProbability = bound(probability);
    const auto& asProbability = dynamic_cast<const CSLProbabilityStateFormula&>(*boundProbability);
    EXPECT_EQ(asProbability.bound(), 0.75);
    EXPECT_EQ(asProbability.op(), CSLProbabilityStateFormula::Operator::lessEqual);
    const auto& asNext = dynamic_cast<const CSLNextPathFormula&>(*asProbability.path());
    EXPECT_EQ(asNext.evaluateAt(2, nullptr, true), PropertyTrue);
}

TEST_F(SubstitutionInFormulas, CopiesConstants) {
    EXPECT_EQ(text(*bound(CSLTrue())), "true");
    EXPECT_EQ(text(*bound(CSLFalse())), "false");
}

TEST_F(SubstitutionInFormulas, LeavesAnUnknownNameMissingUntilItIsEvaluated) {
    const std::unique_ptr<CSLFormula> unknown(proposition("sub.maybe"));
    const CapturedLog log;
    const auto copy = bound(*unknown);
    EXPECT_THAT(log.texts("root.constructors.subst"), ElementsAre("Unable to bind atomic proposition sub.maybe"));
    EXPECT_THROW(copy->evaluate(nullptr, true), missing_operand);
    EXPECT_EQ(text(*copy), "(null)");
}

TEST_F(SubstitutionInFormulas, KeepsMissingPartsMissing) {
    EXPECT_EQ(text(*bound(CSLBinaryStateFormula<CSLOr>(nullptr, proposition("yes")))).substr(0, 10), "((null) ||");
    EXPECT_EQ(text(*bound(CSLUnaryStateFormula<CSLNot>(nullptr))), "(! (null))");
    EXPECT_EQ(text(*bound(CSLUntilPathFormula(nullptr, nullptr, 0, 1))), "(null)U[0,1](null)");
    EXPECT_EQ(text(*bound(CSLNextPathFormula(nullptr, 0, 1))), "X[0,1](null)");
    EXPECT_EQ(text(*bound(CSLProbabilityStateFormula(nullptr, 0.5, CSLProbabilityStateFormula::Operator::greater))),
              "P[>0.5](null)");
    EXPECT_EQ(text(*bound(CSLPropositionStateFormula(nullptr))), "(null)");
}

}  // namespace
}  // namespace vornrun::test
