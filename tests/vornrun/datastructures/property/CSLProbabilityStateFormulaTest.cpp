#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "tests/support/CapturedLog.h"
#include "tests/support/CaseName.h"
#include "tests/support/ProgressRecorder.h"
#include "tests/vornrun/datastructures/property/FormulaFixtures.h"
#include "tests/vornrun/datastructures/vorn/syntax/SyntaxFixtures.h"
#include "vornrun/algorithms/simulators/Simulator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"

namespace vornrun::test {
namespace {

using Operator = CSLProbabilityStateFormula::Operator;
using testing::ElementsAre;
using testing::ThrowsMessage;

constexpr auto BEYOND = static_cast<Operator>(4);

struct BoundCase {
    Operator op;
    double bound;
    double estimate;
    bool holds;
};

void PrintTo(const BoundCase& bound, std::ostream* stream) {
    *stream << bound.estimate << " against " << bound.op << bound.bound;
}

class ProbabilityBound : public testing::TestWithParam<BoundCase> {};

TEST_P(ProbabilityBound, IsComparedWithTheEstimate) {
    const CSLProbabilityStateFormula formula(nullptr, GetParam().bound, GetParam().op);
    EXPECT_EQ(formula.verdictOn(GetParam().estimate), GetParam().holds ? PropertyTrue : PropertyFalse);
}

// The tolerance of 5e-7 makes the strict operators stricter and the others laxer.
INSTANTIATE_TEST_SUITE_P(EqualEstimates, ProbabilityBound,
                         testing::Values(BoundCase{Operator::greaterEqual, 0.5, 0.5, true},
                                         BoundCase{Operator::greater, 0.5, 0.5, false},
                                         BoundCase{Operator::less, 0.5, 0.5, false},
                                         BoundCase{Operator::lessEqual, 0.5, 0.5, true}),
                         NamesInOrder({"GreaterEqual", "Greater", "Less", "LessEqual"}));
INSTANTIATE_TEST_SUITE_P(WithinTheTolerance, ProbabilityBound,
                         testing::Values(BoundCase{Operator::less, 0.5, 0.4999996, false},
                                         BoundCase{Operator::lessEqual, 0.5, 0.5000004, true},
                                         BoundCase{Operator::greater, 0.5, 0.5000004, false},
                                         BoundCase{Operator::greaterEqual, 0.5, 0.4999996, true}),
                         NamesInOrder({"Less", "LessEqual", "Greater", "GreaterEqual"}));
INSTANTIATE_TEST_SUITE_P(BeyondTheTolerance, ProbabilityBound,
                         testing::Values(BoundCase{Operator::less, 0.5, 0.4999994, true},
                                         BoundCase{Operator::lessEqual, 0.5, 0.5000006, false},
                                         BoundCase{Operator::greater, 0.5, 0.5000006, true},
                                         BoundCase{Operator::greaterEqual, 0.5, 0.4999994, false}),
                         NamesInOrder({"Less", "LessEqual", "Greater", "GreaterEqual"}));
INSTANTIATE_TEST_SUITE_P(OperatorsBeyondTheFourNeverHold, ProbabilityBound,
                         testing::Values(BoundCase{BEYOND, 0.5, 0, false}, BoundCase{BEYOND, 0.5, 0.5, false},
                                         BoundCase{BEYOND, 0.5, 1, false}),
                         NamesInOrder({"EstimateZero", "EstimateOfTheBound", "EstimateOne"}));
INSTANTIATE_TEST_SUITE_P(BoundsThatAreNoNumbersNeverHold, ProbabilityBound,
                         testing::Values(BoundCase{Operator::less, std::nan(""), 0.5, false},
                                         BoundCase{Operator::lessEqual, std::nan(""), 0.5, false},
                                         BoundCase{Operator::greater, std::nan(""), 0.5, false},
                                         BoundCase{Operator::greaterEqual, std::nan(""), 0.5, false}),
                         NamesInOrder({"Less", "LessEqual", "Greater", "GreaterEqual"}));

TEST(CSLProbabilityStateFormula, IsUnknownInTheShallowPassWithoutSimulating) {
    std::vector<Asked> journal;
    const CSLProbabilityStateFormula formula(
        new CSLNextPathFormula(new ScriptedFormula("x", PropertyTrue, journal), 0, 1), 0.5, Operator::greater);
    EXPECT_EQ(formula.evaluate(nullptr, true), PropertyUnknown);
    EXPECT_TRUE(journal.empty());
}

TEST(CSLProbabilityStateFormula, NamesAMissingPathFormula) {
    const CSLProbabilityStateFormula formula(nullptr, 0.5, Operator::greater);
    EXPECT_EQ(formula.evaluate(nullptr, true), PropertyUnknown);
    EXPECT_THAT([&] { formula.evaluate(nullptr, false); },
                ThrowsMessage<missing_operand>("The path formula of a probability formula is missing"));
}

TEST(CSLProbabilityStateFormula, ClonesDeeplyOrWithAnotherPath) {
    auto original = std::make_unique<CSLProbabilityStateFormula>(new CSLNextPathFormula(new CSLTrue, 0, 1), 0.25,
                                                                 Operator::lessEqual);
    const std::unique_ptr<CSLProbabilityStateFormula> copy(original->clone());
    const std::unique_ptr<CSLProbabilityStateFormula> over(original->clone(new CSLNextPathFormula(new CSLFalse, 2, 3)));
    EXPECT_NE(copy->path(), original->path());
    original.reset();
    EXPECT_EQ(text(*copy), "P[<=0.25]X[0,1]true");
    EXPECT_EQ(text(*over), "P[<=0.25]X[2,3]false");
}

TEST(CSLProbabilityStateFormula, EstimatesBetweenSavingAndRestoringTheState) {
    const std::unique_ptr<VornComponentDeclaration> declaration(makeDeclaration("S"));
    const std::unique_ptr<VornComponentImplementation> implementation(
        makeImplementation(declaration.get(), "i", {.modes = {makeMode("only", VornModeType::initial)}}));
    const AsapStrat strategy;
    Simulator simulator(implementation.get(), &strategy);
    simulator.reset();
    const CSLProbabilityStateFormula formula(new CSLUntilPathFormula(new CSLTrue, new CSLTrue, 0, 10), 1,
                                             Operator::greaterEqual);

    const CapturedLog log;
    ProgressRecorder progress;
    simulator.setObserver(&progress);
    EXPECT_EQ(formula.evaluate(&simulator, false), PropertyTrue);
    EXPECT_EQ(progress.nestedOutput(), std::string(10000, '.'));
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Info, "root.sim", "Pushing simulator state"},
                                           LogRecord{LogLevel::Error, "root.sim",
                                                     "Statistical uncertainty ignored for nested formula"},
                                           LogRecord{LogLevel::Info, "root.sim", "Popping simulator state"}));
}

TEST(CSLPathFormula, IsEvaluatedAtTheTimeOfTheRun) {
    const std::unique_ptr<VornComponentDeclaration> declaration(makeDeclaration("S"));
    const std::unique_ptr<VornComponentImplementation> implementation(
        makeImplementation(declaration.get(), "i", {.modes = {makeMode("only", VornModeType::initial)}}));
    const AsapStrat strategy;
    Simulator simulator(implementation.get(), &strategy);
    simulator.reset();
    EXPECT_EQ(CSLUntilPathFormula(new CSLTrue, new CSLTrue, 0, 10).evaluate(&simulator, true), PropertyTrue);
    EXPECT_EQ(CSLUntilPathFormula(new CSLTrue, new CSLTrue, 5, 10).evaluate(&simulator, true), PropertyUnknown);
    EXPECT_EQ(CSLUntilPathFormula(new CSLFalse, new CSLTrue, 5, 10).evaluate(&simulator, true), PropertyFalse);
    EXPECT_EQ(CSLNextPathFormula(new CSLTrue, 0, 1).evaluate(&simulator, true), PropertyTrue);
    EXPECT_EQ(CSLNextPathFormula(new CSLTrue, 0.5, 1).evaluate(&simulator, true), PropertyUnknown);
    EXPECT_EQ(CSLNextPathFormula(new CSLTrue, -2, -1).evaluate(&simulator, true), PropertyFalse);

    simulator.setProperty(std::make_unique<CSLTrue>().get());
    EXPECT_EQ(text(*simulator.property()), "true");
}

}  // namespace
}  // namespace vornrun::test
