#include "vornrun/algorithms/simulators/Simulator.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/support/DrivenModel.h"
#include "tests/support/ProgressRecorder.h"
#include "tests/support/PropertyWriter.h"
#include "tests/support/TempDir.h"
#include "tests/vornrun/algorithms/simulators/VerdictFormula.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/algorithms/simulators/strategies/EventsFirstStrat.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLNextPathFormula.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

/// Ticks once per unit of time, for ever.
ModelWriter ticker() {
    ModelWriter model;
    model.implementation("Ticker.i")
        .data(x)
        .mode("run", invariant(x <= 1.0))
        .transition("run", "run", when(x >= 1.0), set(x, 0.0));
    return model;
}

/// Nothing can ever happen.
ModelWriter stuck() {
    ModelWriter model;
    model.implementation("Stuck.i").data(x).mode("run", invariant(x <= 1.0));
    return model;
}

constexpr PropertyResult T = PropertyTrue;
constexpr PropertyResult F = PropertyFalse;
constexpr PropertyResult U = PropertyUnknown;

template <class Thing>
std::string printed(const Thing& thing) {
    std::ostringstream text;
    text << thing;
    return text.str();
}

struct RunCase {
    const char* name;
    unsigned int stepBound;
    bool ignoreBoundError;
    std::vector<PropertyResult> verdicts;  // of the evaluations in turn; the last one stays
    std::string output;
    std::string outcome;  // "true", "false" or the text of the abort_exception
    std::vector<bool> shallowness;
    std::size_t steps;  // taken by the strategy
};

class SimulatorRun : public testing::TestWithParam<RunCase> {};

const std::string BOUND = "The step bound has been exceeded";

std::string outcomeOf(Simulator& simulator, const CSLFormula& formula) {
    try {
        return simulator.performRun(&formula) ? "true" : "false";
    } catch (const abort_exception& abort) {
        return abort.what();
    }
}

}  // namespace

TEST_P(SimulatorRun, EndsAsItsVerdictsAndItsBoundSay) {
    const RunCase& run = GetParam();
    DrivenModel driven(ticker(), AsapStrat());
    driven.simulator().stepBound = run.stepBound;
    driven.simulator().ignoreBoundError = run.ignoreBoundError;
    const VerdictFormula formula(run.verdicts);
    const CapturedLog log(LogLevel::Fatal);
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    EXPECT_EQ(outcomeOf(driven.simulator(), formula), run.outcome);
    EXPECT_EQ(progress.output(), run.output);
    EXPECT_EQ(formula.shallowness, run.shallowness);
    EXPECT_EQ(driven.simulator().trace().steps().size(), run.steps);
    EXPECT_EQ(driven.simulator().currentTime(), static_cast<double>(run.steps));
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, SimulatorRun,
    testing::Values(
        RunCase{"TrueAtOnce", 2, false, {T}, ".", "true", {true}, 0},
        RunCase{"FalseAtOnce", 2, false, {F}, ".", "false", {true}, 0},
        RunCase{"TheDeepPassDecides", 2, false, {U, T}, ".", "true", {true, false}, 0},
        RunCase{"TheSecondStateDecides", 3, false, {U, U, F}, ".", "false", {true, false, true}, 1},
        RunCase{"BoundOneDecided", 1, false, {T}, "b", BOUND, {true}, 0},
        RunCase{"BoundOneDecidedIgnored", 1, true, {T}, "b.", "true", {true}, 0},
        RunCase{"BoundOneFalseIgnored", 1, true, {F}, "b.", "false", {true}, 0},
        RunCase{"BoundOneUndecided", 1, false, {U}, "b", BOUND, {true, false}, 0},
        RunCase{"BoundOneUndecidedIgnored", 1, true, {U}, "b", "false", {true, false}, 0},
        RunCase{"BoundZero", 0, false, {T}, "b", BOUND, {}, 0},
        RunCase{"BoundZeroIgnored", 0, true, {T}, "b", "false", {}, 0},
        RunCase{"LastPermittedEvaluation", 3, false, {U, U, U, U, T}, "b", BOUND, {true, false, true, false, true}, 2},
        RunCase{"LastPermittedEvaluationIgnored",
                3,
                true,
                {U, U, U, U, T},
                "b.",
                "true",
                {true, false, true, false, true},
                2},
        RunCase{"NeverDecided", 3, false, {U}, "b", BOUND, {true, false, true, false, true, false}, 2},
        RunCase{"NeverDecidedIgnored", 3, true, {U}, "b", "false", {true, false, true, false, true, false}, 2}),
    [](const auto& run) { return std::string(run.param.name); });

// ---- Deadlocks

TEST(Simulator, ADeadlockedRunIsFalseAndPrintsItsCharacter) {
    DrivenModel driven(stuck(), AsapStrat());
    const VerdictFormula undecided({U});
    const CapturedLog log(LogLevel::Debug);
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    for (int run = 0; run < 3; ++run) EXPECT_FALSE(driven.simulator().performRun(&undecided));
    EXPECT_EQ(progress.output(), "ddd");
    const auto texts = log.texts("root.sim");
    EXPECT_EQ(texts.back(), "Simulator deadlocked: No possible simulation step found: Actionlock");
    EXPECT_TRUE(log.textsFrom(LogLevel::Info).empty());
}

TEST(Simulator, ADisallowedDeadlockIsReportedAndEndsTheProperty) {
    DrivenModel driven(stuck(), AsapStrat());
    driven.simulator().allowDeadlock = false;
    const VerdictFormula undecided({U});
    const CapturedLog log(LogLevel::Info);
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    EXPECT_EQ(outcomeOf(driven.simulator(), undecided), "A deadlock occurred");
    EXPECT_EQ(progress.output(), "d");
    const std::string heading = "Simulator deadlocked: No possible simulation step found: Actionlock";
    EXPECT_EQ(log.records(),
              (std::vector<LogRecord>{{LogLevel::Error, "root.sim", heading},
                                      {LogLevel::Warn, "root.sim", "Simulator trace: "},
                                      {LogLevel::Warn, "root.sim", "Current state:\n" + printed(driven.network())},
                                      {LogLevel::Warn, "root.sim", "Current enabled transitions are:"}}));
}

TEST(Simulator, ADeadlockOutOfTheFormulaPassesThrough) {
    DrivenModel driven(ticker(), AsapStrat());
    VerdictFormula formula({U});
    formula.onEvaluate = [](RunContext*, bool) { throw deadlock_exception("not of a step"); };
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    EXPECT_THROW(driven.simulator().performRun(&formula), deadlock_exception);
    EXPECT_EQ(progress.output(), "");
}

TEST(Simulator, OtherExceptionsPassThroughUnchanged) {
    DrivenModel driven(ticker(), AsapStrat());
    VerdictFormula formula({U});
    formula.onEvaluate = [](RunContext*, bool) { throw std::out_of_range("map::at"); };
    EXPECT_THROW(driven.simulator().performRun(&formula), std::out_of_range);
}

TEST(Simulator, TheStepBoundEndsARunThatNoLongerMoves) {
    DrivenModel driven(stuck(), EventsFirstStrat());
    driven.simulator().stepBound = 50;
    driven.simulator().ignoreBoundError = true;
    const VerdictFormula undecided({U});
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    EXPECT_FALSE(driven.simulator().performRun(&undecided));
    EXPECT_EQ(progress.output(), "b");
    EXPECT_EQ(driven.simulator().trace().steps().size(), 49U);
    EXPECT_EQ(driven.simulator().currentTime(), 1.0);
}

// ---- Outcomes

TEST(Simulator, ARunTellsHowItEndedAndReportsNothing) {
    DrivenModel driven(ticker(), AsapStrat());
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    const VerdictFormula formula({U, U, U, U, F});
    const CapturedLog log(LogLevel::Info);
    const RunOutcome outcome = driven.simulator().run(&formula);
    EXPECT_EQ(outcome.verdict, PropertyFalse);
    EXPECT_EQ(outcome.ending, RunEnding::decided);
    EXPECT_EQ(outcome.steps, 2U);
    EXPECT_EQ(outcome.time, 2.0);
    EXPECT_EQ(outcome.text, "");
    EXPECT_EQ(progress.output(), "");
    EXPECT_TRUE(log.records().empty());
}

TEST(Simulator, ARunEndsInADeadlockWithItsReasonWhateverTheLimitsAllow) {
    DrivenModel driven(stuck(), AsapStrat());
    driven.simulator().allowDeadlock = false;
    const VerdictFormula undecided({U});
    const CapturedLog log(LogLevel::Info);
    const RunOutcome outcome = driven.simulator().run(&undecided);
    EXPECT_EQ(outcome.verdict, PropertyUnknown);
    EXPECT_EQ(outcome.ending, RunEnding::deadlock);
    EXPECT_EQ(outcome.steps, 0U);
    EXPECT_EQ(outcome.text, "No possible simulation step found: Actionlock");
    EXPECT_TRUE(log.records().empty());
}

TEST(Simulator, ARunAtTheStepBoundKeepsAVerdictOfTheLastEvaluation) {
    DrivenModel driven(ticker(), AsapStrat());
    driven.simulator().stepBound = 3;
    const VerdictFormula late({U, U, U, U, T});
    const RunOutcome outcome = driven.simulator().run(&late);
    EXPECT_EQ(outcome.verdict, PropertyTrue);
    EXPECT_EQ(outcome.ending, RunEnding::stepBound);
    EXPECT_EQ(outcome.steps, 2U);
    const VerdictFormula never({U});
    EXPECT_EQ(driven.simulator().run(&never).verdict, PropertyUnknown);
    EXPECT_EQ(driven.simulator().run(&never).ending, RunEnding::stepBound);
    driven.simulator().stepBound = 0;
    EXPECT_EQ(driven.simulator().run(&never).ending, RunEnding::stepBound);
}

// ---- Observers

namespace {

/// Writes steps as "1@1+1 ", nested ones in parentheses.
class StepNotes final : public RunObserver {
  public:
    void stepTaken(const TakenStep& taken) override {
        text << (taken.nested ? "(" : "") << taken.number << "@" << taken.time << "+" << taken.delay
             << (taken.nested ? ") " : " ");
        told.push_back(tell(taken.step));
    }
    std::ostringstream text;
    std::vector<std::string> told;
};

}  // namespace

TEST(Simulator, AnObserverSeesEachStepWithItsNumberTimeAndDelay) {
    DrivenModel driven(ticker(), AsapStrat());
    StepNotes notes;
    driven.simulator().setObserver(&notes);
    for (int run = 0; run < 2; ++run) {
        const VerdictFormula formula({U, U, U, U, T});
        driven.simulator().performRun(&formula);
    }
    EXPECT_EQ(notes.text.str(), "1@1+1 2@2+1 1@1+1 2@2+1 ");
    EXPECT_EQ(notes.told[0], "1: main: run -> run");
}

TEST(Simulator, AnObserverIsToldWhichStepsAreNested) {
    DrivenModel driven(ticker(), AsapStrat());
    StepNotes notes;
    driven.simulator().setObserver(&notes);
    const VerdictFormula once({U, U, T});
    driven.simulator().evaluate(&once);
    EXPECT_EQ(notes.text.str(), "(1@1+1) ") << "of the first nested run; the others are true at once";
    const VerdictFormula again({U, U, T});
    driven.simulator().performRun(&again);
    EXPECT_EQ(notes.text.str(), "(1@1+1) 1@1+1 ");
}

TEST(Simulator, WithoutAnObserverARunIsSilent) {
    DrivenModel driven(ticker(), AsapStrat());
    testing::internal::CaptureStdout();
    const VerdictFormula formula({T});
    EXPECT_TRUE(driven.simulator().performRun(&formula));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

// ---- Logging

TEST(Simulator, ConstructionTellsItsStages) {
    const CapturedLog log(LogLevel::Info);
    DrivenModel driven(ticker(), AsapStrat());
    EXPECT_EQ(log.texts("root.sim"),
              (std::vector<std::string>{
                  "Will now construct model realization...", "Will now construct EDA network from realized model...",
                  "Construction of EDA network complete.", "Initialized simulator with strategy AsapStrat"}));
}

TEST(Simulator, ConstructionAtTraceShowsTheRealisation) {
    const CapturedLog log(LogLevel::Trace);
    DrivenModel driven(ticker(), AsapStrat());
    const auto texts = log.texts("root.sim");
    ASSERT_GE(texts.size(), 2U);
    EXPECT_EQ(texts[1], printed(static_cast<const Realisation&>(*driven.eda("main")->component())));
}

TEST(Simulator, ARunAtDebugTellsItsSteps) {
    DrivenModel driven(ticker(), AsapStrat());
    const VerdictFormula formula({U, U, T});
    const CapturedLog log(LogLevel::Debug);
    driven.simulator().performRun(&formula);
    const auto& declaration = *driven.eda("main")->component()->transitions().front()->transition();
    EXPECT_EQ(log.texts("root.sim"),
              (std::vector<std::string>{"Simulator starting new run", "Simulator step 0", "Simulator step 1",
                                        "Simulator step executed Delay: 1\nmain : " + printed(declaration)}));
}

TEST(Simulator, ARunAtTraceShowsStateAndTriggersBeforeEachStep) {
    DrivenModel driven(ticker(), AsapStrat());
    const std::string state = printed(driven.network());
    const std::string triggers = driven.network().reportAllCurrentTransitions();
    const VerdictFormula formula({T});
    const CapturedLog log(LogLevel::Trace);
    driven.simulator().performRun(&formula);
    EXPECT_EQ(
        log.texts("root.sim"),
        (std::vector<std::string>{"Simulator starting new run", "Simulator step 0", "Current global state: " + state,
                                  "Currently active transitions and invariants: \n" + triggers}));
    EXPECT_NE(triggers.find("main (tau)"), std::string::npos) << triggers;
}

TEST(Simulator, AStepBoundIsReportedWithTraceStateAndTransitions) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i")
        .data(x)
        .mode("run", invariant(x <= 9.0))
        .mode("rest")
        .transition("run", "run", when(x >= 1.0), set(x, 0.0))
        .transition("run", "rest", on("fail"));
    DrivenModel driven(model, AsapStrat());
    driven.script({exponentialDraw(5.0), integerDraw(0), integerDraw(0)});
    driven.simulator().stepBound = 2;
    const VerdictFormula undecided({U});
    const CapturedLog log(LogLevel::Info);
    EXPECT_EQ(outcomeOf(driven.simulator(), undecided), BOUND);
    const auto& transitions = driven.eda("main")->component()->transitions();
    const std::string tick = "main : " + printed(*transitions[0]->transition());
    const std::string fail = "main : " + printed(*transitions[1]->transition());
    EXPECT_EQ(log.records(),
              (std::vector<LogRecord>{{LogLevel::Error, "root.sim", "Simulator exceeded step bound"},
                                      {LogLevel::Warn, "root.sim", "Simulator trace: Delay: 1\n" + tick},
                                      {LogLevel::Warn, "root.sim", "Current state:\n" + printed(driven.network())},
                                      {LogLevel::Warn, "root.sim", "Current enabled transitions are:"},
                                      {LogLevel::Warn, "root.sim", "0: " + tick},
                                      // The reset clock counts as standing still, so the invariant sets no end.
                                      {LogLevel::Warn, "root.sim", "    active in: [1, INFTY]"},
                                      {LogLevel::Warn, "root.sim", "1: " + fail},
                                      {LogLevel::Warn, "root.sim", "    probabilistic: [0, INFTY]"}}));
}

TEST(Simulator, AnIgnoredStepBoundIsADebugRecord) {
    DrivenModel driven(ticker(), AsapStrat());
    driven.simulator().stepBound = 0;
    driven.simulator().ignoreBoundError = true;
    const VerdictFormula formula({T});
    const CapturedLog log(LogLevel::Debug);
    driven.simulator().performRun(&formula);
    EXPECT_EQ(log.texts("root.sim"),
              (std::vector<std::string>{"Simulator starting new run", "Simulator exceeded step bound"}));
    EXPECT_TRUE(log.textsFrom(LogLevel::Info).empty());
}

// ---- Runs one after another

TEST(Simulator, EachRunStartsFromTheInitialState) {
    DrivenModel driven(ticker(), AsapStrat());
    const VerdictFormula formula({U, U, U, U, U, U, T});
    EXPECT_TRUE(driven.simulator().performRun(&formula));
    EXPECT_EQ(driven.simulator().currentTime(), 3.0);
    EXPECT_TRUE(driven.simulator().performRun(&formula));
    EXPECT_EQ(driven.simulator().currentTime(), 0.0) << "true at once, and the former trace is gone";
    EXPECT_EQ(driven.data(), "x = 0");
}

TEST(Simulator, ResetTakesNetworkStrategyAndTraceBack) {
    DrivenModel driven(ticker(), AsapStrat());
    driven.network().takeTimedTransition(0.5);
    driven.simulator().reset();
    EXPECT_EQ(driven.data(), "x = 0");
    EXPECT_EQ(driven.simulator().currentTime(), 0.0);
}

TEST(Simulator, PushAndPopSaveTheNetworkAlone) {
    DrivenModel driven(ticker(), AsapStrat());
    const CapturedLog log(LogLevel::Info);
    driven.simulator().pushState();
    driven.network().takeTimedTransition(0.5);
    driven.simulator().popState();
    EXPECT_EQ(driven.data(), "x = 0");
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Info, "root.sim", "Pushing simulator state"},
                                                     {LogLevel::Info, "root.sim", "Popping simulator state"}}));
}

// ---- Nested estimates

TEST(Simulator, ANestedEstimateIsTheShareOfTenThousandRuns) {
    DrivenModel driven(ticker(), AsapStrat());
    std::vector<PropertyResult> verdicts(2500, T);
    verdicts.push_back(F);
    const VerdictFormula formula(verdicts);
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    const CapturedLog log(LogLevel::Info);
    EXPECT_EQ(driven.simulator().evaluate(&formula), 0.25);
    EXPECT_EQ(progress.output(), std::string(10000, '.'));
    EXPECT_EQ(progress.nestedOutput(), progress.output());
    EXPECT_EQ(
        log.records(),
        (std::vector<LogRecord>{{LogLevel::Error, "root.sim", "Statistical uncertainty ignored for nested formula"}}));
}

TEST(Simulator, ANestedFormulaIsEstimatedInEveryStateAndLeavesItsOwnTimeBehind) {
    DrivenModel driven(ticker(), AsapStrat());
    driven.simulator().stepBound = 3;
    driven.simulator().ignoreBoundError = true;
    // Each nested run is false after its first step, at time 1.
    auto* nested = new CSLProbabilityStateFormula(new CSLNextPathFormula(new CSLFalse, 0.0, 0.5), 0.5,
                                                  CSLProbabilityStateFormula::Operator::greater);
    const CSLUntilPathFormula formula(new CSLTrue, nested, 0.0, 2.5);
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    const CapturedLog log(LogLevel::Info);
    EXPECT_FALSE(driven.simulator().performRun(&formula));
    // The outer run sees the times 0, 1 + 1 and 1 + 1: never its own time, which the nested runs' has replaced.
    EXPECT_EQ(progress.output(), std::string(30000, '.') + "b");
    EXPECT_EQ(progress.nestedOutput(), std::string(30000, '.'));
    std::vector<std::string> expected;
    for (int state = 0; state < 3; ++state) {
        expected.emplace_back("Pushing simulator state");
        expected.emplace_back("Statistical uncertainty ignored for nested formula");
        expected.emplace_back("Popping simulator state");
    }
    EXPECT_EQ(log.texts("root.sim"), expected);
    EXPECT_EQ(driven.simulator().currentTime(), 1.0) << "of the last nested run";
    EXPECT_EQ(driven.simulator().trace().steps().size(), 1U);
}

// ---- Properties

namespace {

/// The first formula of the property file, bound to the simulator.
void setProperty(Simulator& simulator, const PathFormula& path) {
    PropertyWriter properties;
    properties.p(path);
    const TempDir folder;
    parser::XmlContext context;
    VornXmlParser parser(context);
    const auto formulas = parser.parseProperties(folder.write("properties.xml", properties.text()));
    ASSERT_EQ(formulas.size(), 1U);
    const std::unique_ptr<CSLFormula> formula(formulas.front());
    const auto* probability = dynamic_cast<const CSLProbabilityStateFormula*>(formula.get());
    ASSERT_NE(probability, nullptr);
    simulator.setProperty(probability->path());
}

ModelWriter counter() {
    const Var n = var("n", Type::Int);
    ModelWriter model;
    model.implementation("Counter.i")
        .data(x)
        .data(n, 0)
        .mode("run", invariant(x <= 1.0))
        .transition("run", "run", when(x >= 1.0), set(x, 0.0), set(n, n + 1));
    return model;
}

}  // namespace

TEST(Simulator, HasNoPropertyBeforeItIsSet) {
    DrivenModel driven(ticker(), AsapStrat());
    EXPECT_EQ(driven.simulator().property(), nullptr);
}

TEST(Simulator, APropertyIsBoundToTheValuesOfTheSimulator) {
    DrivenModel driven(counter(), AsapStrat());
    setProperty(driven.simulator(), eventually(var("n", Type::Int) == 4, 0, 10));
    ProgressRecorder progress;
    driven.simulator().setObserver(&progress);
    EXPECT_TRUE(driven.simulator().performRun(driven.simulator().property()));
    EXPECT_EQ(driven.simulator().currentTime(), 4.0);
    EXPECT_EQ(driven.simulator().trace().steps().size(), 4U);
    EXPECT_EQ(progress.output(), ".");
}

TEST(Simulator, ALaterPropertyReplacesTheFormerOne) {
    DrivenModel driven(counter(), AsapStrat());
    setProperty(driven.simulator(), eventually(var("n", Type::Int) == 4, 0, 10));
    setProperty(driven.simulator(), eventually(var("n", Type::Int) == 4, 0, 3));
    EXPECT_FALSE(driven.simulator().performRun(driven.simulator().property()));
    EXPECT_EQ(driven.simulator().currentTime(), 4.0) << "the first state behind the interval";
}

TEST(Simulator, APropertyOverAVariableOfAnotherTypeThanTheModelsFailsWhenItIsEvaluated) {
    DrivenModel driven(counter(), AsapStrat());
    setProperty(driven.simulator(), eventually(var("n", Type::Real) >= 4.0, 0, 10));
    try {
        driven.simulator().performRun(driven.simulator().property());
        FAIL() << "no exception";
    } catch (const model_exception& fault) {
        EXPECT_STREQ(fault.what(),
                     "Component main: variable \"n\" is used as VornReal, which is not the type that it "
                     "was declared with");
    }
}

}  // namespace vornrun::test
