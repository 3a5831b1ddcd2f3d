#include "vornrun/api/Runner.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <new>
#include <utility>

#include "vornrun/algorithms/simulators/Simulator.h"
#include "vornrun/algorithms/simulators/strategies/StrategyTable.h"
#include "vornrun/api/FaultCollector.h"
#include "vornrun/api/StepReport.h"
#include "vornrun/datastructures/property/CSLPathFormula.h"

namespace vornrun {

namespace {

/// The one strategy that cannot run here: it asks a person at a terminal.
constexpr std::string_view INTERACTIVE = "input";

std::unique_ptr<SimulationStrategy> strategyOf(const std::string& word) {
    if (word != INTERACTIVE)
        if (auto strategy = makeStrategy(std::string_view(word))) return strategy;
    std::string text = word == INTERACTIVE ? "The strategy \"input\" asks a person and cannot run here; there are"
                                           : "There is no strategy \"" + word + "\"; there are";
    const char* separator = " ";
    for (const std::string& known : Runner::strategies()) text += std::exchange(separator, ", ") + known;
    throw FaultException({{Severity::error, text, {}, 0, 0}});
}

/// As many evaluations of the formula as leave room for that many steps.
unsigned int evaluationsFor(unsigned long steps) {
    constexpr unsigned long MOST = std::numeric_limits<unsigned int>::max();
    return static_cast<unsigned int>(std::min(steps, MOST - 1) + 1);
}

Record recordOf(RunOutcome outcome) {
    Record record;
    record.steps = outcome.steps;
    record.time = outcome.time;
    record.text = std::move(outcome.text);
    if (outcome.verdict != PropertyUnknown) {
        record.verdict = outcome.verdict == PropertyTrue ? Verdict::yes : Verdict::no;
    } else {
        record.ending = outcome.ending == RunEnding::deadlock ? Ending::deadlock : Ending::stepBound;
    }
    return record;
}

}  // namespace

const char* word(Verdict verdict) noexcept {
    switch (verdict) {
        case Verdict::yes:
            return "true";
        case Verdict::no:
            return "false";
        case Verdict::undecided:
            break;
    }
    return "undecided";
}

const char* word(Ending ending) noexcept {
    switch (ending) {
        case Ending::decided:
            return "decided";
        case Ending::deadlock:
            return "deadlock";
        case Ending::stepBound:
            return "step bound";
        case Ending::fault:
            break;
    }
    return "fault";
}

class Runner::State final : private RunObserver {
  public:
    State(const Model& model, const Question& question, const std::string& strategy, Limits limits)
        : mModel(model), mQuestion(question), mPrototype(strategyOf(strategy)), mLimits(limits) {
        api::FaultCollector faults(model.file());
        api::collectingFaults(faults, [this] { build(); });
        // What the model itself is warned of is known from its reading.
        for (Fault& fault : faults.takeFaults())
            if (!isKnown(fault)) mWarnings.push_back(std::move(fault));
    }

    void setObserver(Observer* observer) {
        mObserver = observer;
        mSimulator->setObserver(observer == nullptr ? nullptr : this);
    }
    const std::vector<Fault>& warnings() const noexcept { return mWarnings; }

    Record run(RandomGenerator& stream) {
        if (mNeedsBuilding) rebuild();
        Record record;
        try {
            record = recordOf(mSimulator->runPristine(mSimulator->property(), stream));
        } catch (...) {
            // Nobody knows in which state the run was left.
            mNeedsBuilding = true;
            record = recordOfFault();
        }
        if (mObserver != nullptr) mObserver->end(record);
        return record;
    }

  private:
    void build() {
        mReport.reset();
        mSimulator =
            std::make_unique<Simulator>(mModel.root(), mPrototype.get(), ModelOptions{.checkedArithmetic = true});
        mSimulator->stepBound = evaluationsFor(mLimits.steps);
        mSimulator->setProperty(&mQuestion.path());
        mReport = std::make_unique<api::StepReport>(*mSimulator->network(), mSimulator->valuation());
        mNeedsBuilding = false;
    }

    void rebuild() {
        const api::FaultCollector alreadyKnown;
        build();
        setObserver(mObserver);
    }

    /// \pre runs inside a catch clause. What is no fault of the model goes on to the caller.
    Record recordOfFault() {
        if (mObserverFault != nullptr) std::rethrow_exception(std::exchange(mObserverFault, nullptr));
        try {
            throw;
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& fault) {
            return {Verdict::undecided, Ending::fault, mSimulator->trace().steps().size(), mSimulator->currentTime(),
                    fault.what()};
        }
    }

    bool isKnown(const Fault& fault) const {
        const auto sameText = [&fault](const Fault& known) { return known.text == fault.text; };
        return std::any_of(mModel.warnings().begin(), mModel.warnings().end(), sameText);
    }

    void runStarted(bool nested) override {
        if (!nested) observed([this] { mReport->start(*mObserver); });
    }
    void stepTaken(const TakenStep& taken) override {
        if (!taken.nested) observed([&, this] { mReport->step(*mObserver, taken.number, taken.time, taken.step); });
    }
    /// Tells what an observer throws apart from a fault of the model.
    template <class Call>
    void observed(Call&& call) {
        try {
            call();
        } catch (...) {
            mObserverFault = std::current_exception();
            throw;
        }
    }

    const Model mModel;
    const Question mQuestion;
    const std::unique_ptr<SimulationStrategy> mPrototype;
    const Limits mLimits;
    std::unique_ptr<Simulator> mSimulator;
    std::unique_ptr<api::StepReport> mReport;  // points into the simulator
    std::vector<Fault> mWarnings;
    Observer* mObserver = nullptr;
    std::exception_ptr mObserverFault;
    bool mNeedsBuilding = true;
};

Runner::Runner(const Model& model, const Question& question, const std::string& strategy, Limits limits)
    : mState(std::make_unique<State>(model, question, strategy, limits)) {}

Runner::Runner(Runner&&) noexcept = default;
Runner& Runner::operator=(Runner&&) noexcept = default;
Runner::~Runner() = default;

Record Runner::run(RandomGenerator& stream) { return mState->run(stream); }

void Runner::setObserver(Observer* observer) noexcept { mState->setObserver(observer); }

const std::vector<Fault>& Runner::warnings() const noexcept { return mState->warnings(); }

std::vector<std::string> Runner::strategies() {
    std::vector<std::string> words;
    for (const StrategyEntry& entry : strategyTable())
        if (entry.word != INTERACTIVE) words.emplace_back(entry.word);
    return words;
}

}  // namespace vornrun
