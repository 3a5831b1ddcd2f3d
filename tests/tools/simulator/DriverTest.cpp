#include "tools/simulator/Driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/support/ParseModel.h"
#include "tests/support/TempDir.h"
#include "tests/tools/simulator/CapturedStream.h"
#include "tests/tools/simulator/SmallModels.h"
#include "vornrun/algorithms/simulators/ChernoffGenerator.h"
#include "vornrun/algorithms/simulators/PropertySimulator.h"
#include "vornrun/algorithms/simulators/StaticGenerator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/algorithms/simulators/strategies/EventsFirstStrat.h"
#include "vornrun/algorithms/simulators/strategies/InputStrat.h"
#include "vornrun/algorithms/simulators/strategies/LocalStrat.h"
#include "vornrun/algorithms/simulators/strategies/MaxTimeProgressStrat.h"
#include "vornrun/algorithms/simulators/strategies/ProgressiveStrat.h"
#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST(ParseModel, GivesTheModelOfTheFile) {
    const TempDir folder;
    const std::unique_ptr<VornSpecification> specification(
        ::parseModel(folder.write("model.xml", tickingModel().text())));
    ASSERT_NE(specification, nullptr);
    EXPECT_EQ(getRoot(specification.get())->qualifiedName(), "Clock.i");
}

TEST(ParseModel, LogsTheRenderingOfTheModelAtTrace) {
    const TempDir folder;
    const std::string file = folder.write("model.xml", tickingModel().text());
    const CapturedLog log(LogLevel::Trace);
    const std::unique_ptr<VornSpecification> specification(::parseModel(file));
    ASSERT_NE(specification, nullptr);
    std::ostringstream rendering;
    specification->printVorn(rendering);
    EXPECT_THAT(log.records(), testing::Contains(LogRecord{LogLevel::Trace, "root.main", rendering.str()}));
}

TEST(ParseModel, LogsAFaultOfTheFileAndGivesNothing) {
    const CapturedLog log;
    const TempDir folder;
    EXPECT_EQ(::parseModel(folder.write("model.xml", "<other/>")), nullptr);
    const std::vector<LogRecord> records = log.records();
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(records.back().level, LogLevel::Error);
    EXPECT_EQ(records.back().logger, "root.main");
    EXPECT_THAT(records.back().text, StartsWith("Exception during parsing of Vorn: Error while parsing"));
}

TEST(ParseModel, LetsOtherExceptionsPass) {
    ModelWriter model;
    model.type("A").errorPort("fail", -1.0);
    model.implementation("A.i");
    const TempDir folder;
    EXPECT_THROW(::parseModel(folder.write("model.xml", model.text())), std::invalid_argument);
}

TEST(ParseProperty, GivesTheFormulasInFileOrderAndLogsTheFile) {
    const TempDir folder;
    const std::string file =
        folder.write("properties.xml", PropertyWriter().p(trueAtOnce()).p(Bound::AtLeast, 0.5, falseAtOnce()).text());
    const CapturedLog log;
    Formulas formulas;
    for (const CSLFormula* formula : parseProperty(file)) formulas.emplace_back(formula);
    ASSERT_EQ(formulas.size(), 2U);
    std::ostringstream texts;
    texts << *formulas[0] << "; " << *formulas[1];
    EXPECT_THAT(texts.str(), AllOf(StartsWith("P[>0]"), HasSubstr("; P[>=0.5]")));
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Info, "root.main", "Parsing properties from: " + file}));
}

TEST(ParseProperty, LogsAFaultOfTheFileAndGivesNothing) {
    const TempDir folder;
    const std::string file = folder.file("missing.xml");
    const CapturedLog log;
    EXPECT_TRUE(parseProperty(file).empty());
    const std::vector<LogRecord> records = log.records();
    ASSERT_GE(records.size(), 2U);
    EXPECT_EQ(records.front().text, "Parsing properties from: " + file);
    EXPECT_EQ(records.back().level, LogLevel::Error);
    EXPECT_EQ(records.back().logger, "root.main");
    EXPECT_THAT(records.back().text, StartsWith("Exception during parsing of properties: Error while parsing"));
}

template <class Strategy>
bool makes(SimStrategy number) {
    const std::unique_ptr<SimulationStrategy> strategy = makeStrategy(number);
    return dynamic_cast<Strategy*>(strategy.get()) != nullptr;
}

TEST(MakeStrategy, BuildsTheClassOfEachNumber) {
    EXPECT_TRUE(makes<AsapStrat>(SimStrategy::asap));
    EXPECT_TRUE(makes<EventsFirstStrat>(SimStrategy::event));
    EXPECT_TRUE(makes<InputStrat>(SimStrategy::input));
    EXPECT_TRUE(makes<LocalStrat>(SimStrategy::local));
    EXPECT_TRUE(makes<MaxTimeProgressStrat>(SimStrategy::maxtime));
    EXPECT_TRUE(makes<ProgressiveStrat>(SimStrategy::progressive));
}

TEST(MakeStrategy, BuildsTheDefaultForANumberThatNamesNone) {
    EXPECT_TRUE(makes<AsapStrat>(static_cast<SimStrategy>(6)));
    EXPECT_TRUE(makes<AsapStrat>(static_cast<SimStrategy>(-1)));
}

TEST(WorkerCount, IsTheNumberAskedFor) {
    const CapturedLog log;
    EXPECT_EQ(workerCount(7, 2), 7U);
    EXPECT_THAT(log.records(), ElementsAre(LogRecord{LogLevel::Info, "root.main", "Number of cores set to 7"}));
}

TEST(WorkerCount, HasNoLimit) { EXPECT_EQ(workerCount(4294967295U, 2), 4294967295U); }

TEST(WorkerCount, IsTheDetectedNumberOfCoresWhenZeroIsAskedFor) {
    const CapturedLog log;
    EXPECT_EQ(workerCount(0, 4), 4U);
    EXPECT_THAT(log.records(),
                ElementsAre(LogRecord{LogLevel::Info, "root.main", "Number of cores determined to be 4"}));
}

TEST(WorkerCount, IsOneWithAWarningWhenDetectionFails) {
    const CapturedLog log;
    EXPECT_EQ(workerCount(0, 0), 1U);
    EXPECT_THAT(log.records(),
                ElementsAre(LogRecord{LogLevel::Warn, "root.main",
                                      "Unable to determine the number of cores available, defaulting to 1"}));
}

TEST(SimulatorOfTheTool, TakesTheSettings) {
    const std::unique_ptr<VornSpecification> specification = parseModel(tickingModel());
    Settings settings;
    settings.threads = 3;
    settings.stepBound = 77;
    settings.seed = 0x123456789ABCDEFU;
    settings.ignoreBoundError = true;
    settings.disallowDeadlock = true;
    std::unique_ptr<PropertySimulator> result(simulator(getRoot(specification.get()), settings));
    EXPECT_EQ(result->threadCount(), 3U);
    EXPECT_EQ(result->stepBound, 77U);
    EXPECT_EQ(result->seed, 0x123456789ABCDEFU);
    EXPECT_TRUE(result->ignoreBoundError);
    EXPECT_FALSE(result->allowDeadlock);

    settings.ignoreBoundError = false;
    settings.disallowDeadlock = false;
    result.reset(simulator(getRoot(specification.get()), settings));
    EXPECT_FALSE(result->ignoreBoundError);
    EXPECT_TRUE(result->allowDeadlock);
}

TEST(MakeGenerator, IsTheFixedCountUnlessThatIsZero) {
    Settings settings;
    settings.numTraces = 2;
    const std::unique_ptr<QuantitativeGenerator> generator = makeGenerator(settings);
    ASSERT_NE(dynamic_cast<StaticGenerator*>(generator.get()), nullptr);
    generator->addResult(true);
    EXPECT_FALSE(generator->done());
    generator->addResult(false);
    EXPECT_TRUE(generator->done());
}

TEST(MakeGenerator, IsTheChernoffBoundForZeroWithTheArgumentsInTheirOrder) {
    Settings settings;
    const std::unique_ptr<QuantitativeGenerator> byDefault = makeGenerator(settings);
    ASSERT_NE(dynamic_cast<ChernoffGenerator*>(byDefault.get()), nullptr);
    EXPECT_EQ(dynamic_cast<ChernoffGenerator&>(*byDefault).total(), 1191U);

    settings.errorBound = 0.5;
    settings.confidence = 0.25;
    const std::unique_ptr<QuantitativeGenerator> generator = makeGenerator(settings);
    EXPECT_EQ(dynamic_cast<ChernoffGenerator&>(*generator).total(), 33U);  // 4 ln 8 / 0.25 = 33.3
    EXPECT_EQ(generator->getConfidence(), 0.25);
}

/// Properties about the ticking model, evaluated by one worker.
class EvaluateProperties : public testing::Test {
  protected:
    EvaluateProperties() : mSpecification(parseModel(tickingModel())) {
        mSettings.stepBound = 20;
        mSimulator.reset(simulator(getRoot(mSpecification.get()), mSettings));
    }
    std::string outputOf(const PropertyWriter& properties, QuantitativeGenerator& generator) {
        const TempDir folder;
        Formulas formulas;
        for (const CSLFormula* formula : parseProperty(folder.write("properties.xml", properties.text())))
            formulas.emplace_back(formula);
        mLog.clear();
        const CapturedStream output(std::cout);
        evaluateProperties(formulas, *mSimulator, generator);
        return output.text();
    }
    std::vector<std::string> logTexts() const { return mLog.texts("root.main"); }

  private:
    Settings mSettings;
    std::unique_ptr<VornSpecification> mSpecification;
    std::unique_ptr<PropertySimulator> mSimulator;
    CapturedLog mLog;
};

TEST_F(EvaluateProperties, PrintsProgressAndTheIntervalWithTenDecimals) {
    StaticGenerator generator(3);
    EXPECT_EQ(outputOf(PropertyWriter().p(trueAtOnce()), generator),
              "...\nProperty holds with probability [1.0000000000,1.0000000000]\n");
    const std::vector<std::string> texts = logTexts();
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_THAT(texts[0], StartsWith("Evaluating property P[>0]"));
    EXPECT_EQ(texts[1], "Property evaluated to [1, 1]");
}

TEST_F(EvaluateProperties, PrintsEqualBoundsWhenTwoOfThreeResultsAreTrue) {
    StaticGenerator generator(3);
    generator.addResult(true);
    generator.addResult(false);
    EXPECT_EQ(outputOf(PropertyWriter().p(trueAtOnce()), generator),
              ".\nProperty holds with probability [0.6666666667,0.6666666667]\n");
    EXPECT_EQ(logTexts().back(), "Property evaluated to [0.666667, 0.666667]") << "default format, blank at the comma";
}

TEST_F(EvaluateProperties, PrintsTheIntervalOfTheBoundAndNoVerdict) {
    ChernoffGenerator generator(0.5, 0.95);  // 11 traces
    EXPECT_EQ(outputOf(PropertyWriter().p(Bound::Below, 0.1, trueAtOnce()), generator),
              "...........\nProperty holds with probability [0.5000000000,1.0000000000]\n");
}

TEST_F(EvaluateProperties, GivesALaterPropertyOneSweepAddedToTheEarlierCounts) {
    StaticGenerator generator(3);
    EXPECT_EQ(outputOf(PropertyWriter().p(trueAtOnce()).p(falseAtOnce()), generator),
              "...\nProperty holds with probability [1.0000000000,1.0000000000]\n"
              ".\nProperty holds with probability [0.7500000000,0.7500000000]\n");
}

TEST_F(EvaluateProperties, WarnsWhenThereAreNone) {
    StaticGenerator generator(3);
    EXPECT_EQ(outputOf(PropertyWriter(), generator), "");
    EXPECT_THAT(logTexts(), ElementsAre("No properties were loaded, no simulation performed"));
}

TEST_F(EvaluateProperties, KeepsTheResultBeforeAnAbortAndSkipsThePropertiesBehindIt) {
    StaticGenerator generator(1);
    const std::string output = outputOf(PropertyWriter().p(trueAtOnce()).p(openForLong()).p(trueAtOnce()), generator);
    EXPECT_THAT(output, StartsWith(".\nProperty holds with probability [1.0000000000,1.0000000000]\nb"));
    EXPECT_THAT(output.substr(output.find('b')), testing::Not(HasSubstr("Property")));
    const std::vector<std::string> texts = logTexts();
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_THAT(texts[2], StartsWith("Evaluating property "));
    EXPECT_EQ(texts[3], "Simulation aborted: Exception occurred during simulation");
}

}  // namespace
}  // namespace vornrun::test
