// What reaches whoever wrote a model or a property when a run cannot be carried out.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/CapturedLog.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/simulators/PropertySimulator.h"
#include "vornrun/algorithms/simulators/StaticGenerator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLPropositionStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun::test {

namespace {

/// The records of the property simulator at error level while the aborted property is evaluated on one worker.
std::vector<std::string> errorsOf(const ModelWriter& model, CSLStateFormula* goal) {
    const auto specification = parseModel(model);
    PropertySimulator simulator(*specification->findRootCandidates().begin(), new AsapStrat, 1);
    const CSLUntilPathFormula formula(new CSLTrue, goal, 0.0, 10.0);
    StaticGenerator generator(5);
    const CapturedLog log(LogLevel::Error);
    EXPECT_THROW(simulator.checkProbability(&formula, &generator), abort_exception);
    return log.texts("root.propsim");
}

TEST(FailureReportTest, ACycleOfEventConnectionsIsToldWithItsComponent) {
    ModelWriter model;
    model.type("Root").outEvent("go").inEvent("heard");
    model.implementation("Root.i")
        .mode("run")
        .transition("run", "run", on("go"))
        .connectEvent("go", "heard")
        .connectEvent("heard", "go");
    EXPECT_EQ(errorsOf(model, new CSLFalse),
              (std::vector<std::string>{
                  "Simulation thread 0: Component main: active event connections form a cycle through the port main.go",
                  "Simulations were aborted"}));
}

TEST(FailureReportTest, AGuardWithoutItsVariableIsTold) {
    ModelWriter model;
    model.implementation("Root.i").mode("run").transition("run", "run", when(var("nothing", Type::Int) > 1));
    const auto errors = errorsOf(model, new CSLFalse);
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].rfind("Simulation thread 0: Left operand of '>'", 0), 0U) << errors[0];
}

TEST(FailureReportTest, APropositionThatNamesNothingIsTold) {
    ModelWriter model;
    model.implementation("Root.i").mode("run");
    auto* goal = new CSLPropositionStateFormula(new TypedVornVariable<VornBool>("nothing"));
    EXPECT_EQ(errorsOf(model, goal),
              (std::vector<std::string>{"Simulation thread 0: The expression of an atomic proposition (did its name "
                                        "resolve, and to a boolean?) is missing",
                                        "Simulations were aborted"}));
}

}  // namespace

}  // namespace vornrun::test
