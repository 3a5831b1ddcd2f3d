/// \file
/// What holds for every model and every run: random models take random steps, and after each step the network is
/// compared with answers that are computed from nothing. The first seed and the number of models come from
/// VORNRUN_RANDOM_SEED and VORNRUN_RANDOM_MODELS, when these are set.

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/RunningModel.h"
#include "tests/vornrun/datastructures/eda/PlainNetwork.h"
#include "tests/vornrun/datastructures/eda/RandomModel.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun {
namespace {

using namespace test;

/// How often what the walks are about has happened.
struct Tally {
    unsigned long eventSteps = 0, synchronisations = 0, reactivations = 0, timeSteps = 0, switches = 0, flows = 0,
                  enabledProbes = 0, disabledProbes = 0;
};

std::string text(const QualifiedEvent& event) {
    return event.first->identifier() + " on " + event.second->fullIdentifier();
}
std::string text(const QualifiedTransition& transition) {
    return transition.first->identifier() + " by " + printed(static_cast<const Realisation&>(*transition.second));
}
std::string text(const PlainNetwork::Target& target) {
    const auto& [eda, port, passive] = target;
    return text(QualifiedEvent(eda, port)) + (passive ? " (passive)" : "");
}
std::string text(const ConnectionAsTransitions::value_type& alternatives) {
    std::string result = alternatives.first->identifier() + ":";
    for (const TransitionPtr transition : alternatives.second)
        result += " " + printed(static_cast<const Realisation&>(*transition));
    return result;
}

template <class Element>
std::string list(const std::vector<Element>& elements) {
    std::string result;
    for (const Element& element : elements) result += "\n  " + text(element);
    return result;
}

/// Texts are made for a difference only. `subject` is what the answers are about.
template <class Element, class... Subject>
void expectSame(const char* what, const std::vector<Element>& actual, const std::vector<Element>& expected,
                const Subject&... subject) {
    if (actual == expected) return;
    ADD_FAILURE() << what << (std::string() + ... + (" " + text(subject))) << "\nof the network:" << list(actual)
                  << "\nfrom nothing:" << list(expected);
}

bool contains(const TimeInterval& interval, Time delay) {
    return std::any_of(interval.ranges.begin(), interval.ranges.end(),
                       [delay](const TimeRange& range) { return range.lower <= delay && delay <= range.upper; });
}

bool isMember(const std::vector<const VornComponentRealisation*>& components, const VornComponentRealisation* one) {
    return std::find(components.begin(), components.end(), one) != components.end();
}

class Walk {
  public:
    Walk(const ModelWriter& model, Choices& choices, Tally& tally)
        : mRunning(model), mNetwork(mRunning.network()), mPlain(mNetwork, mRunning.valuation()), mChoices(choices),
          mTally(tally) {
        for (const EDA* eda : mNetwork.edas()) mSwitchedBy.push_back(eda->currentMode());
    }

    void run(int steps) {
        checkAll();
        for (int i = 0; i < steps && !testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i + 1) + " of" + mHistory);
            checkSnapshots();
            step();
            checkAll();
        }
    }

  private:
    // ---- Steps

    void step() {
        const std::vector<bool> before = activity();
        mParticipants.clear();
        mWithEffects = false;
        if (!reactivate() && !takeEvent()) takeTime();
        const std::vector<bool> after = activity();
        if (before != after) ++mTally.switches;
        // Who has acted, or has been woken, has switched its subcomponents by the mode that it is in now.
        for (EDA* eda : mNetwork.edas()) {
            const bool acted = std::find(mParticipants.begin(), mParticipants.end(), eda) != mParticipants.end();
            if (after[eda->index()] && (acted || !before[eda->index()]))
                mSwitchedBy[eda->index()] = eda->currentMode();
        }
        if (mWithEffects) checkFlows();
    }

    std::vector<bool> activity() const {
        std::vector<bool> result;
        for (const EDA* eda : mNetwork.edas()) result.push_back(eda->active());
        return result;
    }

    QualifiedTransitions resolve(const ConnectionAsTransitions& alternatives) {
        QualifiedTransitions result;
        for (const auto& [eda, transitions] : alternatives) result.emplace_back(eda, mChoices.oneOf(transitions));
        return result;
    }

    /// Sometimes other steps come first, though something waits: no answer may depend on it.
    bool reactivate() {
        const ConnectionAsTransitions waiting = mNetwork.enabledReactivationTransitions();
        EXPECT_EQ(waiting.empty(), !mNetwork.reactivationPending());
        // Another's event can move a waiting automaton to a mode that offers nothing to take.
        const bool stuck = std::any_of(waiting.begin(), waiting.end(), [](const auto& one) { return one.second.empty(); });
        if (waiting.empty() || stuck || mChoices.chance(15)) return false;
        mHistory += "\n  reactivation";
        ++mTally.reactivations;
        mNetwork.takeReactivationTransition(resolve(waiting));
        return true;
    }

    bool takeEvent() {
        const QualifiedTransitions enabled = mNetwork.enabledTransitions();
        if (enabled.empty() || mChoices.chance(30)) return false;
        const QualifiedTransition initiating = mChoices.oneOf(enabled);
        const QualifiedTransitions taken = resolve(mNetwork.enabledTransitions(initiating));
        mHistory += "\n  " + text(initiating);
        ++mTally.eventSteps;
        if (taken.size() > 1) ++mTally.synchronisations;
        mNetwork.takeEventTransition(taken);
        for (const auto& [eda, transition] : taken) {
            mParticipants.push_back(eda);
            mWithEffects = mWithEffects || !transition->effects().empty();
        }
        return true;
    }

    void takeTime() {
        const TimeInterval allowed = mNetwork.invariantsRemainValidFor();
        std::vector<Time> delays;
        for (int i = 1; i <= 6; ++i)
            if (contains(allowed, 0.5 * i)) delays.push_back(0.5 * i);
        // Where the invariants leave no delay, one that breaks them now and then is a state to answer for, too.
        if (delays.empty()) delays = {0.0, 0.0, 0.5};
        const Time delay = mChoices.oneOf(delays);
        mNetwork.takeTimedTransition(delay);
        ++mTally.timeSteps;
        mHistory += "\n  delay " + std::to_string(delay);
    }

    // ---- Checks

    void checkAll() {
        checkActiveSet();
        checkAnswers();
        checkDelays();
    }

    void checkActiveSet() {
        std::vector<EDA*> active;
        bool pending = false;
        for (EDA* eda : mNetwork.edas()) {
            const VornComponentRealisation* component = eda->component();
            const EDA* parent = mNetwork.edaOfComponent(component->parentComponent());
            const bool expected =
                parent == nullptr ||
                (parent->active() &&
                 isMember(parent->component()->activeSubcomponents(mSwitchedBy[parent->index()]), component));
            EXPECT_EQ(eda->active(), expected) << eda->identifier();
            if (!eda->active()) continue;
            active.push_back(eda);
            pending = pending || eda->reactivating();
        }
        EXPECT_EQ(mNetwork.activeEDAs(), active);
        EXPECT_EQ(mNetwork.reactivationPending(), pending);
    }

    void checkAnswers() {
        const EC& connections = mNetwork.eventConnections();
        expectSame("triggers", connections.getTriggers(), mPlain.triggers());
        expectSame("source transitions", connections.getSourceTransitions(), mPlain.sourceTransitions());
        for (const QualifiedEvent& event : connections.getTriggers()) {
            expectSame("targets of", connections.getTargets(event.second), mPlain.targets(event.second), event);
            expectSame("firing on", mNetwork.enabledTransitions(event), mPlain.firingWith(event), event);
        }
        for (const QualifiedTransition& transition : connections.getSourceTransitions())
            expectSame("firing with", mNetwork.enabledTransitions(transition), mPlain.firingWith(transition),
                       transition);
        expectSame("active triggers", mNetwork.activeTriggers(), mPlain.activeTriggers());
        expectSame("enabled triggers", mNetwork.enabledTriggers(), mPlain.enabledTriggers());
        expectSame("active transitions", mNetwork.activeTransitions(), mPlain.activeTransitions());
        expectSame("enabled transitions", mNetwork.enabledTransitions(), mPlain.enabledTransitions());
    }

    /// Every flow that is on has carried its value. Holds after a step with effects, which refreshes the flows.
    void checkFlows() {
        for (const RealisedFlow* flow : mNetwork.dataDependencies().evaluationOrder()) {
            const EDA& eda = ownerOf(flow);
            const ModeList& modes = flow->activeIn();
            if (!eda.active() ||
                (!modes.empty() && std::find(modes.begin(), modes.end(), eda.currentMode()) == modes.end()))
                continue;
            ++mTally.flows;
            const std::unique_ptr<VornValue> value(flow->assignment()->evaluationResult());
            EXPECT_EQ(printed(*mRunning.valuation().findValue(flow->target())), printed(*value))
                << printed(static_cast<const Realisation&>(*flow));
        }
    }

    const EDA& ownerOf(const RealisedFlow* wanted) const {
        for (const EDA* eda : mNetwork.edas())
            for (const auto& flow : eda->component()->flows())
                if (flow.get() == wanted) return *eda;
        throw std::logic_error("A flow of no component");
    }

    /// Whatever happens after a snapshot, restoring it gives back the printed network and its answers.
    void checkSnapshots() {
        const std::string before = printed(mNetwork);
        const QualifiedTransitions enabled = mNetwork.enabledTransitions();
        const auto switchedBy = mSwitchedBy;
        const std::string history = mHistory;
        const std::unique_ptr<GlobalConfigurationSnapshot> snapshot(mNetwork.getState());
        for (std::size_t i = mChoices.between(1, 2); i > 0; --i) step();
        mNetwork.pushState();
        const std::string between = printed(mNetwork);
        step();
        mNetwork.popState();
        EXPECT_EQ(printed(mNetwork), between);
        mNetwork.setState(snapshot.get());
        mSwitchedBy = switchedBy;
        mHistory = history;
        EXPECT_EQ(printed(mNetwork), before);
        expectSame("enabled transitions after restoring", mNetwork.enabledTransitions(), enabled);
        checkActiveSet();
        checkAnswers();
    }

    /// The delays that the network predicts are those after which letting time pass gives the same answer.
    void checkDelays() {
        const auto transitions = predictable(mNetwork.activeTransitions());
        const auto events = predictable(mNetwork.activeTriggers());
        const TimeInterval invariants = mNetwork.invariantsRemainValidFor();
        std::vector<TimeInterval> transitionDelays, eventDelays;
        for (const QualifiedTransition& transition : transitions)
            transitionDelays.push_back(mNetwork.transitionRemainsEnabledFor(transition));
        for (const QualifiedEvent& event : events) eventDelays.push_back(mNetwork.triggerRemainsEnabledFor(event));
        for (const Time delay : probeDelays(mChoices)) {
            mNetwork.pushState();
            mNetwork.takeTimedTransition(delay);
            EXPECT_EQ(contains(invariants, delay), !mPlain.someActiveInvariantFails()) << invariants << " at " << delay;
            for (std::size_t i = 0; i < transitions.size(); ++i)
                checkProbe(transitions[i], transitionDelays[i], delay);
            for (std::size_t i = 0; i < events.size(); ++i)
                checkProbe(events[i], eventDelays[i], delay);
            mNetwork.popState();
        }
    }

    static const RealisedEventPort* portOf(const RealisedEventPort* port) { return port; }
    static const RealisedEventPort* portOf(TransitionPtr transition) { return transition->trigger(); }

    /// A sleeping listener may count as a partner; its clocks stand still, while the prediction lets them run.
    template <class Event>
    std::vector<Event> predictable(std::vector<Event> events) const {
        events.erase(std::remove_if(events.begin(), events.end(),
                                    [this](const Event& event) {
                                        return mPlain.someListenerSleeps(portOf(event.second));
                                    }),
                     events.end());
        return events;
    }

    template <class Event>
    void checkProbe(const Event& event, const TimeInterval& predicted, Time delay) {
        const bool enabled = mNetwork.isEnabled(event);
        ++(enabled ? mTally.enabledProbes : mTally.disabledProbes);
        EXPECT_EQ(contains(predicted, delay), enabled) << text(event) << ": " << predicted << " at " << delay;
    }

    RunningModel mRunning;
    EDANetwork& mNetwork;
    PlainNetwork mPlain;
    Choices& mChoices;
    Tally& mTally;
    std::vector<const RealisedMode*> mSwitchedBy;    // by EDA::index(): the mode that the subcomponents follow
    std::vector<EDA*> mParticipants;
    bool mWithEffects = false;
    std::string mHistory;
};

unsigned int setting(const char* name, unsigned int usual) {
    const char* text = std::getenv(name);
    return text == nullptr ? usual : static_cast<unsigned int>(std::stoul(text));
}

TEST(RandomNetwork, AnswersInEveryStateAsIfComputedFromNothingAndPredictsDelaysThatSteppingTimeConfirms) {
    const unsigned int firstSeed = setting("VORNRUN_RANDOM_SEED", 1);
    const unsigned int models = setting("VORNRUN_RANDOM_MODELS", 200);
    Tally tally;
    for (unsigned int i = 0; i < models && !HasFailure(); ++i) {
        const std::string seed = std::to_string(firstSeed + i);
        SCOPED_TRACE("repeat with VORNRUN_RANDOM_SEED=" + seed + " VORNRUN_RANDOM_MODELS=1");
        Choices choices(firstSeed + i);
        Walk(randomModel(choices), choices, tally).run(20);
    }
    std::ostringstream summary;
    summary << "event steps " << tally.eventSteps << ", of several automata " << tally.synchronisations
            << ", reactivations " << tally.reactivations << ", time steps " << tally.timeSteps
            << ", steps that wake or put to sleep " << tally.switches << ", flows " << tally.flows
            << ", probes enabled " << tally.enabledProbes << ", not enabled " << tally.disabledProbes;
    RecordProperty("summary", summary.str());
    if (models < 200) return;
    // Walks that never come by what they are about would show nothing.
    for (const unsigned long count :
         {tally.eventSteps, tally.synchronisations, tally.reactivations, tally.timeSteps, tally.switches, tally.flows,
          tally.enabledProbes, tally.disabledProbes})
        EXPECT_GT(count, 100u) << summary.str();
}

}  // namespace
}  // namespace vornrun
