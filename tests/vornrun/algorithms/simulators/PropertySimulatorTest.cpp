#include "vornrun/algorithms/simulators/PropertySimulator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stdexcept>

#include "tests/support/CapturedLog.h"
#include "tests/support/DrivenModel.h"
#include "tests/support/ParseModel.h"
#include "tests/support/ProgressRecorder.h"
#include "tests/vornrun/algorithms/simulators/VerdictFormula.h"
#include "vornrun/algorithms/simulators/ChernoffGenerator.h"
#include "vornrun/algorithms/simulators/StaticGenerator.h"
#include "vornrun/algorithms/simulators/strategies/AsapStrat.h"
#include "vornrun/algorithms/simulators/strategies/LocalStrat.h"

namespace vornrun::test {

namespace {

const Var x = var("x", Type::Clock);

ModelWriter ticker() {
    ModelWriter model;
    model.implementation("Ticker.i")
        .data(x)
        .mode("run", invariant(x <= 1.0))
        .transition("run", "run", when(x >= 1.0), set(x, 0.0));
    return model;
}

ModelWriter stuck() {
    ModelWriter model;
    model.implementation("Stuck.i");
    return model;
}

/// Takes note of what is counted, up to a number of results.
class NotingGenerator final : public QuantitativeGenerator {
  public:
    explicit NotingGenerator(std::size_t total) : mTotal(total) {}
    void reset() override { results.clear(); }
    void addResult(bool result) override { results.push_back(result); }
    bool done() override { return results.size() >= mTotal; }
    std::pair<double, double> getRatio() const override { return {0.0, 1.0}; }
    double getConfidence() const override { return 0.0; }

    std::vector<bool> results;

  private:
    std::size_t mTotal;
};

/// Says yes when all results are true.
class UnanimousGenerator final : public QualitativeGenerator {
  public:
    void reset() override {}
    void addResult(bool result) override {
        mUnanimous = mUnanimous && result;
        ++mCount;
    }
    bool done() override { return mCount >= 5; }
    bool getResult() const override { return mUnanimous; }

  private:
    bool mUnanimous = true;
    int mCount = 0;
};

/// Takes note of the seeds that its copies get.
class SeedNotingGenerator final : public RandomGenerator {
  public:
    struct Notes {
        std::mutex mutex;
        std::vector<unsigned long> seeds;
    };
    explicit SeedNotingGenerator(std::shared_ptr<Notes> notes) : RandomGenerator(1), mNotes(std::move(notes)) {}
    double uniform(double low, double) override { return low; }
    double exponential(double) override { return 1.0; }
    unsigned long uniform(unsigned long low, unsigned long) override { return low; }
    SeedNotingGenerator* clone() const override { return new SeedNotingGenerator(mNotes); }
    void reseed(unsigned long seed) override {
        const std::lock_guard lock(mNotes->mutex);
        mNotes->seeds.push_back(seed);
    }

  private:
    std::shared_ptr<Notes> mNotes;
};

class PropertySimulatorTest : public testing::Test {
  protected:
    /// A property simulator over the model under AsapStrat.
    PropertySimulator& over(const ModelWriter& model, unsigned int threads, SimulationStrategy* strategy = nullptr) {
        specification = parseModel(model);
        const VornComponentImplementation* root = *specification->findRootCandidates().begin();
        simulator = std::make_unique<PropertySimulator>(root, strategy != nullptr ? strategy : new AsapStrat, threads);
        simulator->setObserver(&progress);
        return *simulator;
    }
    /// What checkProbability() throws.
    std::string failure(const CSLFormula& formula, QuantitativeGenerator& generator) {
        try {
            simulator->checkProbability(&formula, &generator);
        } catch (const abort_exception& abort) {
            return abort.what();
        }
        return "none";
    }

    ProgressRecorder progress;
    std::unique_ptr<VornSpecification> specification;
    std::unique_ptr<PropertySimulator> simulator;
    const VerdictFormula alwaysTrue{{PropertyTrue}};
    const VerdictFormula undecided{{PropertyUnknown}};
};

}  // namespace

TEST_F(PropertySimulatorTest, StartsWithTheDefaultsOfTheTool) {
    const PropertySimulator& checker = over(ticker(), 3);
    EXPECT_EQ(checker.threadCount(), 3U);
    EXPECT_EQ(checker.stepBound, 10000U);
    EXPECT_TRUE(checker.allowDeadlock);
    EXPECT_FALSE(checker.ignoreBoundError);
    EXPECT_EQ(checker.seed, 0U);
}

// ---- Counting

TEST_F(PropertySimulatorTest, OneWorkerStopsExactlyAtTheTotal) {
    NotingGenerator generator(10);
    over(ticker(), 1).checkProbability(&alwaysTrue, &generator);
    EXPECT_EQ(generator.results, std::vector<bool>(10, true));
    EXPECT_EQ(progress.output(), "..........\n") << "no trace is run in vain";
}

TEST_F(PropertySimulatorTest, FourWorkersCountInSweepsOfFour) {
    NotingGenerator generator(10);
    over(ticker(), 4).checkProbability(&alwaysTrue, &generator);
    EXPECT_EQ(generator.results.size(), 12U);
    const std::string output = progress.output();
    EXPECT_EQ(output.back(), '\n');
    EXPECT_GE(std::count(output.begin(), output.end(), '.'), 12);
}

TEST_F(PropertySimulatorTest, ATotalOfZeroIsOneSweep) {
    NotingGenerator generator(0);
    over(ticker(), 3).checkProbability(&alwaysTrue, &generator);
    EXPECT_EQ(generator.results.size(), 3U);
    EXPECT_EQ(progress.output(), "...\n");
}

TEST_F(PropertySimulatorTest, ALaterPropertyGetsOneSweepOnTopOfTheFormerResults) {
    StaticGenerator generator(4);
    const VerdictFormula alwaysFalse({PropertyFalse});
    PropertySimulator& checker = over(ticker(), 1);
    EXPECT_EQ(checker.checkProbability(&alwaysTrue, &generator), std::pair(1.0, 1.0));
    EXPECT_EQ(checker.checkProbability(&alwaysFalse, &generator), std::pair(0.8, 0.8));
    EXPECT_EQ(progress.output(), "....\n.\n");
}

TEST_F(PropertySimulatorTest, WithoutWorkersNothingIsRun) {
    ChernoffGenerator generator(0.05, 0.95);
    EXPECT_EQ(over(ticker(), 0).checkProbability(&alwaysTrue, &generator), std::pair(0.0, 1.0));
    EXPECT_EQ(progress.output(), "\n");
}

TEST_F(PropertySimulatorTest, AFastWorkerDoesNotGetAheadOfASlowOne) {
    // The first copy of the formula, whichever worker's, is slow and false: it waits with its first verdict until the
    // other one has given twenty.
    struct Meeting {
        std::mutex mutex;
        std::condition_variable changed;
        const void* slow = nullptr;
        int fastVerdicts = 0;
    };
    class UnevenFormula final : public CSLFormula {
      public:
        explicit UnevenFormula(Meeting& meeting) : mMeeting(meeting) {}
        PropertyResult evaluate(RunContext* run, bool) const override {
            std::unique_lock lock(mMeeting.mutex);
            if (mMeeting.slow == nullptr) mMeeting.slow = run;
            if (mMeeting.slow == run) {
                mMeeting.changed.wait(lock, [this] { return mMeeting.fastVerdicts >= 20; });
                return PropertyFalse;
            }
            ++mMeeting.fastVerdicts;
            mMeeting.changed.notify_all();
            return PropertyTrue;
        }
        UnevenFormula* clone() const override { return new UnevenFormula(mMeeting); }
        std::ostream& printFormula(std::ostream& stream) const override { return stream << "uneven"; }
        UnevenFormula* accept(PropertyVisitor&) const override { return clone(); }

      private:
        Meeting& mMeeting;
    };
    Meeting meeting;
    const UnevenFormula formula(meeting);
    NotingGenerator generator(6);
    over(ticker(), 2).checkProbability(&formula, &generator);
    ASSERT_EQ(generator.results.size(), 6U);
    for (std::size_t i = 0; i < 6; i += 2) {
        EXPECT_NE(generator.results[i], generator.results[i + 1]) << "one of each worker in sweep " << i / 2;
        EXPECT_EQ(generator.results[i], generator.results[0]) << "in the order of the workers";
    }
    EXPECT_GE(meeting.fastVerdicts, 20);
}

TEST_F(PropertySimulatorTest, LeftOverResultsAreNeverCounted) {
    // Workers that are ahead leave results behind, which the next property must not see.
    PropertySimulator& checker = over(ticker(), 4);
    for (int property = 0; property < 20; ++property) {
        NotingGenerator generator(8);
        const VerdictFormula formula({property % 2 == 0 ? PropertyTrue : PropertyFalse});
        checker.checkProbability(&formula, &generator);
        EXPECT_EQ(generator.results, std::vector<bool>(8, property % 2 == 0)) << "property " << property;
    }
}

TEST_F(PropertySimulatorTest, AModelThatDeadlocksAtOnceHasARatioOfZero) {
    StaticGenerator generator(5);
    EXPECT_EQ(over(stuck(), 1).checkProbability(&undecided, &generator), std::pair(0.0, 0.0));
    EXPECT_EQ(progress.output(), "ddddd\n");
}

TEST_F(PropertySimulatorTest, AQualitativeGeneratorGivesItsVerdict) {
    UnanimousGenerator yes;
    EXPECT_TRUE(over(ticker(), 2).checkProperty(&alwaysTrue, &yes));
    UnanimousGenerator no;
    const VerdictFormula once({PropertyFalse, PropertyTrue});
    EXPECT_FALSE(over(ticker(), 2).checkProperty(&once, &no));
}

// ---- Settings of the workers

TEST_F(PropertySimulatorTest, EachWorkerHasItsOwnSeedAndEachPropertyTheSameOnes) {
    const auto notes = std::make_shared<SeedNotingGenerator::Notes>();
    auto* strategy = new AsapStrat;
    strategy->setRandomGenerator(new SeedNotingGenerator(notes));
    PropertySimulator& checker = over(ticker(), 3, strategy);
    checker.seed = 5;
    for (int property = 0; property < 2; ++property) {
        notes->seeds.clear();
        NotingGenerator generator(3);
        checker.checkProbability(&alwaysTrue, &generator);
        std::sort(notes->seeds.begin(), notes->seeds.end());
        // A copy first seeds itself from the device, whose seed 0 stands for that.
        EXPECT_EQ(notes->seeds, (std::vector<unsigned long>{0, 0, 0, 5, 6, 7}));
    }
}

TEST_F(PropertySimulatorTest, ASeedOfZeroIsNoSeedAtAll) {
    const auto notes = std::make_shared<SeedNotingGenerator::Notes>();
    auto* strategy = new AsapStrat;
    strategy->setRandomGenerator(new SeedNotingGenerator(notes));
    PropertySimulator& checker = over(ticker(), 2, strategy);
    NotingGenerator generator(2);
    checker.checkProbability(&alwaysTrue, &generator);
    EXPECT_EQ(notes->seeds, (std::vector<unsigned long>{0, 0, 0, 0}));
}

TEST_F(PropertySimulatorTest, TheWorkersTakeOverBoundAndFlags) {
    PropertySimulator& checker = over(ticker(), 2);
    checker.stepBound = 3;
    checker.ignoreBoundError = true;
    NotingGenerator generator(0);
    checker.checkProbability(&undecided, &generator);
    EXPECT_EQ(progress.output(), "bb\n");
    EXPECT_EQ(generator.results, (std::vector<bool>{false, false}));
}

TEST_F(PropertySimulatorTest, RealDrawsOfAllWorkersAtOnceDisturbNobody) {
    ModelWriter model;
    model.type("Job").errorPort("fail", 0.5);
    model.implementation("Job.i")
        .data(x)
        .mode("run", invariant(x <= 1.0))
        .mode("down")
        .transition("run", "run", set(x, 0.0))
        .transition("run", "down", on("fail"));
    PropertySimulator& checker = over(model, 4, new LocalStrat);
    checker.stepBound = 20;
    checker.ignoreBoundError = true;
    NotingGenerator generator(200);
    checker.checkProbability(&undecided, &generator);
    EXPECT_EQ(generator.results, std::vector<bool>(200, false));
}

// ---- Failures

TEST_F(PropertySimulatorTest, AStepBoundOnAWorkerEndsTheProperty) {
    PropertySimulator& checker = over(ticker(), 1);
    checker.stepBound = 1;
    NotingGenerator generator(10);
    const CapturedLog log(LogLevel::Info);
    EXPECT_EQ(failure(alwaysTrue, generator), "Exception occurred during simulation");
    EXPECT_EQ(progress.output(), "b\n");
    EXPECT_TRUE(generator.results.empty());
    std::vector<LogRecord> records;
    for (const LogRecord& record : log.records())
        if (record.logger == "root.propsim") records.push_back(record);
    EXPECT_EQ(records, (std::vector<LogRecord>{{LogLevel::Info, "root.propsim", "Starting simulations"},
                                               {LogLevel::Info, "root.propsim", "Starting simulation thread 0"},
                                               {LogLevel::Info, "root.propsim",
                                                "Simulation thread 0 aborted: The step bound has been exceeded"},
                                               {LogLevel::Info, "root.propsim", "Simulations ended"},
                                               {LogLevel::Error, "root.propsim", "Simulations were aborted"}}));
}

TEST_F(PropertySimulatorTest, TheFirstDisallowedDeadlockOnAnyWorkerEndsTheProperty) {
    PropertySimulator& checker = over(stuck(), 4);
    checker.allowDeadlock = false;
    NotingGenerator generator(1000);
    EXPECT_EQ(failure(undecided, generator), "Exception occurred during simulation");
    EXPECT_TRUE(generator.results.empty());
}

TEST_F(PropertySimulatorTest, AnyOtherExceptionOnAWorkerEndsThePropertyInTheSameWay) {
    over(ticker(), 1);
    VerdictFormula formula({PropertyUnknown});
    formula.onEvaluate = [](RunContext*, bool) { throw std::out_of_range("map::at"); };
    NotingGenerator generator(10);
    const CapturedLog log(LogLevel::Info);
    EXPECT_EQ(failure(formula, generator), "Exception occurred during simulation");
    const auto texts = log.texts("root.propsim");
    ASSERT_EQ(texts.size(), 6U);
    EXPECT_EQ(texts[2], "Simulation thread 0 aborted: Unhandled exception");
    EXPECT_EQ(texts[3], "Simulation thread 0: map::at");
}

TEST_F(PropertySimulatorTest, APropertyAfterAnAbortedOneIsChecked) {
    over(ticker(), 2);
    VerdictFormula failing({PropertyUnknown});
    failing.onEvaluate = [](RunContext*, bool) { throw std::out_of_range("map::at"); };
    NotingGenerator generator(6);
    const CapturedLog log(LogLevel::Error);
    EXPECT_EQ(failure(failing, generator), "Exception occurred during simulation");
    EXPECT_EQ(failure(alwaysTrue, generator), "none");
    EXPECT_EQ(generator.results, std::vector<bool>(6, true));
}

TEST_F(PropertySimulatorTest, ASuccessfulPropertyLogsStartAndEnd) {
    over(ticker(), 1);
    NotingGenerator generator(2);
    const CapturedLog log(LogLevel::Info);
    simulator->checkProbability(&alwaysTrue, &generator);
    EXPECT_EQ(log.texts("root.propsim"),
              (std::vector<std::string>{"Starting simulations", "Starting simulation thread 0", "Simulations ended"}));
}

namespace {

/// No mode to start in.
ModelWriter unbuildable() {
    ModelWriter model;
    model.implementation("Lamp.i").mode("on", ModeKind::Plain);
    return model;
}

/// Notes the faults that workers report.
class FaultNotingObserver final : public RunObserver {
  public:
    void workerFailed(const std::exception_ptr& fault) override {
        const std::lock_guard lock(mMutex);
        faults.push_back(fault);
        isCurrent = isCurrent && std::current_exception() == fault;
        onWorker = onWorker && std::this_thread::get_id() != mStarter;
    }

    std::vector<std::exception_ptr> faults;
    bool isCurrent = true;  // the fault is the exception being handled
    bool onWorker = true;   // not on the thread that has made the observer

  private:
    std::mutex mMutex;
    std::thread::id mStarter = std::this_thread::get_id();
};

}  // namespace

TEST_F(PropertySimulatorTest, AModelThatCannotBeBuiltIsTheCallersException) {
    over(unbuildable(), 2);
    NotingGenerator generator(1);
    const CapturedLog log(LogLevel::Fatal);
    EXPECT_THROW(simulator->checkProbability(&alwaysTrue, &generator), eda_model_exception);
    EXPECT_TRUE(generator.results.empty());
    EXPECT_EQ(progress.output(), "\n");
}

TEST_F(PropertySimulatorTest, TheObserverSeesAFaultOnTheWorkerBeforeTheCallerDoes) {
    FaultNotingObserver observer;
    over(unbuildable(), 1).setObserver(&observer);
    NotingGenerator generator(1);
    const CapturedLog log(LogLevel::Fatal);
    EXPECT_THROW(simulator->checkProbability(&alwaysTrue, &generator), eda_model_exception);
    ASSERT_EQ(observer.faults.size(), 1U);
    EXPECT_THROW(std::rethrow_exception(observer.faults.front()), eda_model_exception);
    EXPECT_TRUE(observer.isCurrent);
    EXPECT_TRUE(observer.onWorker);
}

TEST_F(PropertySimulatorTest, AWorkerCanRunOnTheCallersThread) {
    PropertySimulator& checker = over(ticker(), 1);
    NotingGenerator generator(3);
    checker.doWork(0, &alwaysTrue, &generator);
    EXPECT_EQ(generator.results, std::vector<bool>(3, true));
    EXPECT_EQ(progress.output(), "...");
    EXPECT_TRUE(checker.checkDone(&generator));
}

TEST(Autothread, JoinsWhenItGoesOutOfScope) {
    bool done = false;
    {
        const autothread worker(std::thread([&done] { done = true; }));
    }
    EXPECT_TRUE(done);
}

TEST(Autothread, JoinsTheOnesStartedWhenAnExceptionPasses) {
    bool done = false;
    try {
        std::vector<autothread> workers;
        workers.emplace_back(std::thread([&done] { done = true; }));
        throw std::runtime_error("no further thread");
    } catch (const std::runtime_error&) {
    }
    EXPECT_TRUE(done);
}

}  // namespace vornrun::test
