// Calls each operation of formulas and of their visitors, with the parameters and results that their users rely on.
#include <gtest/gtest.h>

#include <memory>

#include "tests/vornrun/datastructures/property/FormulaFixtures.h"
#include "vornrun/datastructures/property/RunContext.h"
#include "vornrun/datastructures/property/VariableSubstitutionPropertyVisitor.h"

namespace vornrun::test {
namespace {

using Operator = CSLProbabilityStateFormula::Operator;

/// A run at a fixed time whose estimates are fixed too.
class FixedRun final : public RunContext {
  public:
    Time currentTime() const override { return 3.0; }
    double evaluate(const CSLFormula*) override { return 0.75; }
    void pushState() override { ++pushes; }
    void popState() override { ++pops; }

    int pushes = 0;
    int pops = 0;
};

template <class Op>
void useBinary() {
    const CSLBinaryStateFormula<Op> formula(new CSLTrue(), new CSLFalse());
    const CSLAbstractBinaryStateFormula& base = formula;
    const std::unique_ptr<CSLAbstractBinaryStateFormula> other(base.clone(new CSLFalse(), new CSLTrue()));
    FixedRun run;
    const PropertyResult verdict = base.evaluate(&run, false);
    EXPECT_EQ(verdict, combine<Op>(PropertyTrue, PropertyFalse));
    EXPECT_EQ(text(*other), "(false " + std::string(Op::op) + " true)");
}

TEST(PropertyOperations, OfFormulasWithTwoOperands) {
    useBinary<CSLAnd>();
    useBinary<CSLOr>();
    useBinary<CSLImp>();
    useBinary<CSLIff>();
}

TEST(PropertyOperations, OfFormulasWithOneOperand) {
    const CSLUnaryStateFormula<CSLNot> formula(new CSLTrue());
    const CSLAbstractUnaryStateFormula& base = formula;
    const std::unique_ptr<CSLAbstractUnaryStateFormula> other(base.clone(new CSLFalse()));
    FixedRun run;
    EXPECT_EQ(base.evaluate(&run, true), PropertyFalse);
    EXPECT_EQ(other->evaluate(&run, true), PropertyTrue);
    EXPECT_EQ(text(*other), "(" + std::string(CSLNot::op) + " false)");
}

TEST(PropertyOperations, OfPropositions) {
    const std::unique_ptr<CSLPropositionStateFormula> formula(proposition("p"));
    const std::unique_ptr<CSLPropositionStateFormula> other(formula->clone(new TypedVornVariable<VornBool>("q")));
    EXPECT_EQ(text(*other), "q");
}

TEST(PropertyOperations, OfPathFormulas) {
    FixedRun run;
    const CSLUntilPathFormula until(new CSLTrue(), new CSLTrue(), 0.0, 10.0);
    const std::unique_ptr<CSLUntilPathFormula> otherUntil(until.clone(new CSLTrue(), new CSLFalse()));
    EXPECT_EQ(until.evaluate(&run, true), PropertyTrue);
    EXPECT_EQ(otherUntil->evaluate(&run, true), PropertyUnknown);
    const CSLNextPathFormula next(new CSLTrue(), 0.0, 2.0);
    const std::unique_ptr<CSLNextPathFormula> otherNext(next.clone(new CSLFalse()));
    EXPECT_EQ(next.evaluate(&run, false), PropertyFalse);
    EXPECT_EQ(text(*otherNext), "X[0,2]false");
}

TEST(PropertyOperations, OfProbabilitiesAskTheRunBetweenSavingAndRestoring) {
    FixedRun run;
    const CSLProbabilityStateFormula formula(new CSLNextPathFormula(new CSLTrue(), 0.0, 1.0), 0.5, Operator::greater);
    const std::unique_ptr<CSLProbabilityStateFormula> other(
        formula.clone(new CSLNextPathFormula(new CSLFalse(), 0.0, 1.0)));
    EXPECT_EQ(formula.evaluate(&run, true), PropertyUnknown);
    EXPECT_EQ(run.pushes, 0);
    EXPECT_EQ(formula.evaluate(&run, false), PropertyTrue);
    EXPECT_EQ(run.pushes, 1);
    EXPECT_EQ(run.pops, 1);
    EXPECT_EQ(text(*other), "P[>0.5]X[0,1]false");
}

TEST(PropertyOperations, OfEveryFormula) {
    const CSLTrue formula;
    const CSLFormula& base = formula;
    const std::unique_ptr<CSLFormula> copy(base.clone());
    std::ostringstream stream;
    std::ostream& same = base.printFormula(stream);
    EXPECT_EQ(&same, &stream);
    stream << *copy;
    EXPECT_EQ(stream.str(), "truetrue");
}

/// Each operation of a visitor, by its exact type.
template <class F>
void usesVisit() {
    EXPECT_NE(static_cast<CSLFormula* (PropertyVisitor::*)(const F*)>(&PropertyVisitor::visit), nullptr);
    EXPECT_NE(static_cast<CSLFormula* (VariableSubstitutionPropertyVisitor::*)(const F*)>(
                  &VariableSubstitutionPropertyVisitor::visit),
              nullptr);
}

TEST(PropertyOperations, OfVisitors) {
    usesVisit<CSLAbstractBinaryStateFormula>();
    usesVisit<CSLAbstractUnaryStateFormula>();
    usesVisit<CSLPropositionStateFormula>();
    usesVisit<CSLProbabilityStateFormula>();
    usesVisit<CSLTrue>();
    usesVisit<CSLFalse>();
    usesVisit<CSLUntilPathFormula>();
    usesVisit<CSLNextPathFormula>();
}

}  // namespace
}  // namespace vornrun::test
