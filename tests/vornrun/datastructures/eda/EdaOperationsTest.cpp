// Calls each operation of automata, network and topologies, with the parameters and results that its users rely on.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/RunningModel.h"
#include "tests/support/TempDir.h"
#include "vornrun/datastructures/vorn/realisation/valuations/DynamicValuesContainer.h"

namespace vornrun::test {
namespace {

/// A root that ticks by itself, and a part that hears it, which exists in one mode only.
ModelWriter model() {
    const Var x = var("x", Type::Clock), n = var("n", Type::Int), level = var("level", Type::Int);
    ModelWriter result;
    result.type("Part").inEvent("heard").inData(level, 0);
    result.implementation("Part.i")
        .mode("a")
        .mode("b")
        .transition("a", "b", on("heard"))
        .reactivation("a", "b")
        .reactivation("a", "a");
    result.type("Root").outEvent("tick", nonblocking);
    result.implementation("Root.i")
        .data(x)
        .data(n, 3)
        .mode("on", invariant(x <= 2.0))
        .mode("off")
        .transition("on", "off", on("tick"), set(n, n + 1))
        .transition("off", "on")
        .subcomponent("part", "Part.i", inModes("on"))
        .connectEvent("tick", "part.heard")
        .flow(var("part.level", Type::Int), n);
    return result;
}

class EdaOperations : public testing::Test {
  protected:
    EDANetwork& network() { return running.network(); }
    EDA& root() { return running.eda("main"); }
    EDA& part() { return running.eda("main.part"); }
    QualifiedTransition tick() { return running.qualified("main", "on", "off"); }
    QualifiedEvent event() { return {&root(), running.port("main.tick")}; }

    RunningModel running{model()};
};

TEST_F(EdaOperations, OfStepsOfAnAutomaton) {
    const EDA::TopologyEffect left = root().setMode(running.mode("main", "off"));
    EXPECT_EQ(left, EDA::NoEffect);
    root().setInitial();
    const TransitionPtr transition = tick().second;
    const bool takeable = root().canLocallyTakeEventTransition(transition);
    EXPECT_TRUE(takeable);
    const bool allowed = root().targetInvariantHolds(transition);
    EXPECT_TRUE(allowed);
    const TimeInterval when = root().transitionRemainsValidFor(transition);
    EXPECT_EQ(when.lower, 0.0);
    const TimeInterval bound = static_cast<const EDA&>(root()).invariantsRemainValidFor();
    EXPECT_EQ(bound.upper, 2.0);
    root().applyEffects(transition);
    EXPECT_EQ(running.value<VornInt>("main.n"), 4);
    root().takeTimedTransition(0.5);
    root().increaseTime(0.5);
    root().invalidateInvariantCache(0.5);
    EXPECT_EQ(running.value<VornClock>("main.x"), 1.0);
    const EDA::TopologyEffect taken = root().takeEventTransition(transition);
    EXPECT_EQ(taken, EDA::DataEffect);
}

TEST_F(EdaOperations, OfTheActivityOfAnAutomaton) {
    const EDA::TopologyEffect asleep = part().deactivate();
    EXPECT_EQ(asleep, EDA::ActivationEffect);
    const EDA::TopologyEffect awake = part().activate();
    EXPECT_TRUE(holds(awake, EDA::ActivationEffect));
    EXPECT_TRUE(part().reactivating());
    const TransitionPtr reactivation = part().component()->reactivationTransitionsOfMode(part().currentMode()).front();
    part().takeReactivationTransition(reactivation);
    EXPECT_FALSE(part().reactivating());
    const EDA::TopologyEffect switched = root().updateSubcomponentTopology();
    EXPECT_EQ(switched, EDA::NoEffect);
    const EDA::TopologyEffect same = root().setSubcomponentEDAs({&part()});
    EXPECT_EQ(same, EDA::NoEffect);
}

TEST_F(EdaOperations, OfTheStateOfAnAutomaton) {
    const std::tuple<const RealisedMode*, bool, bool> state = root().getState();
    root().setState(std::make_tuple(running.mode("main", "off"), true, false));
    EXPECT_EQ(running.modeOf("main"), "off");
    root().setState(state);
    const std::vector<const RealisedEventPort*> triggers = root().activeSubcomponentTriggers();
    EXPECT_TRUE(triggers.empty());
    const std::string values = root().valuationStr();
    EXPECT_NE(values.find("n = 3"), std::string::npos);
    EXPECT_EQ(root().identifier(), "main");
    EXPECT_NE(printed(root()).find("main\n"), std::string::npos);
}

TEST_F(EdaOperations, OfAnAutomatonMadeAlone) {
    EDA eda(running.eda("main").component(), running.valuationPtr());
    EXPECT_EQ(eda.currentMode(), eda.initialMode());
    EXPECT_TRUE(eda.allSubcomponentEDAs().empty());
}

TEST_F(EdaOperations, OfStepsOfTheNetwork) {
    const QualifiedTransitions transitions{tick()};
    const bool possible = network().canTakeEventTransition(transitions);
    EXPECT_TRUE(possible);
    const bool canWait = network().canTakeTimedTransition(1.0);
    EXPECT_TRUE(canWait);
    network().takeTimedTransition(1.0);
    network().takeEventTransition(transitions);
    EXPECT_FALSE(part().active());
    running.take("main", "off", "on");
    const ConnectionAsTransitions waiting = network().enabledReactivationTransitions();
    ASSERT_EQ(waiting.size(), 1U);
    EXPECT_TRUE(network().reactivationPending());
    network().takeReactivationTransition({{waiting[0].first, waiting[0].second[0]}});
    EXPECT_FALSE(network().reactivationPending());
}

TEST_F(EdaOperations, OfQuestionsToTheNetwork) {
    const EDANetwork& asked = network();
    EXPECT_TRUE(asked.isActive(event()));
    EXPECT_TRUE(asked.isActive(tick()));
    EXPECT_TRUE(asked.isEnabled(event()));
    EXPECT_TRUE(asked.isEnabled(tick()));
    const std::vector<QualifiedEvent> triggers = asked.activeTriggers();
    const std::vector<QualifiedEvent> enabled = asked.enabledTriggers();
    EXPECT_EQ(triggers, enabled);
    const QualifiedTransitions active = asked.activeTransitions();
    const QualifiedTransitions now = asked.enabledTransitions();
    EXPECT_EQ(active, now);
    const ConnectionAsTransitions ofEvent = asked.enabledTransitions(event());
    const ConnectionAsTransitions ofTransition = asked.enabledTransitions(tick());
    EXPECT_EQ(ofEvent, ofTransition);
    EXPECT_TRUE(network().allInvariantsHold());
    const TimeInterval bound = network().invariantsRemainValidFor();
    EXPECT_EQ(bound.upper, 2.0);
    const TimeInterval transition = asked.transitionRemainsEnabledFor(tick());
    const TimeInterval trigger = asked.triggerRemainsEnabledFor(event());
    EXPECT_EQ(transition.upper, trigger.upper);
}

TEST_F(EdaOperations, OfTheStructureOfTheNetwork) {
    EDA* found = network().edaOfComponent(root().component());
    EXPECT_EQ(found, &root());
    const std::vector<EDA*> list = network().edasOfComponents({part().component(), nullptr});
    EXPECT_EQ(list, (std::vector<EDA*>{&part(), nullptr}));
    EXPECT_EQ(network().eventNames().count("tick"), 1U);
    EXPECT_EQ(network().edas().size(), 2U);
    EXPECT_EQ(network().activeEDAs().size(), 2U);
    const EDANetwork again(&running.realisation(), running.valuationPtr());
    EXPECT_EQ(again.edas().size(), 2U);
}

TEST_F(EdaOperations, OfSnapshots) {
    const std::unique_ptr<GlobalConfigurationSnapshot> saved(network().getState());
    network().pushState();
    running.take("main", "on", "off");
    network().popState();
    EXPECT_EQ(running.modeOf("main"), "on");
    running.take("main", "on", "off");
    GlobalConfigurationSnapshot* borrowed = saved.get();
    network().setState(borrowed);
    EXPECT_EQ(running.modeOf("main"), "on");
    network().pushState();
    network().applyState();
    EXPECT_THROW(network().popState(), std::logic_error);
    network().reset();
    network().restart();
    const GlobalConfigurationSnapshot copy(saved->edaStates(), running.valuation().copyValues());
    EXPECT_EQ(copy.edaStates().size(), 2U);
}

TEST_F(EdaOperations, OfTopologiesAndReports) {
    network().computeActiveEDAs();
    network().computeDynamicAttributes(EDA::EventEffect);
    network().computeEventConnections();
    network().computeDataDependencies();
    network().propagateValuesThroughDataPorts();
    const std::string report = network().reportAllCurrentTransitions();
    EXPECT_EQ(report.rfind("Active triggers:\n", 0), 0U);
    EXPECT_EQ(printed(network()).rfind("EDANetwork(\n", 0), 0U);

    EC connections(&network());
    connections.updateTopology();
    const std::vector<std::tuple<EDA*, const RealisedEventPort*, bool>> targets =
        connections.getTargets(event().second);
    EXPECT_EQ(targets.size(), 2U);
    const std::vector<QualifiedEvent>& triggers = connections.getTriggers();
    const QualifiedTransitions& sources = connections.getSourceTransitions();
    EXPECT_FALSE(triggers.empty());
    EXPECT_FALSE(sources.empty());
    const EC::ConnPath& node = *connections.paths().front();
    EXPECT_EQ(node.eda, &root());

    DD flows(&network());
    flows.updateTopology();
    flows.propagateValuesAlongDependencies();
    const DD::EDAFlow& flow = *flows.flows().front();
    EXPECT_TRUE(flow.active);
    EXPECT_EQ(flow.eda, &root());
}

TEST_F(EdaOperations, OfDumps) {
    const TempDir folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    network().eventConnections().saveTopology();
    network().dataDependencies().saveTopology();
    network().dumpTopologies();
    std::filesystem::current_path(before);
    std::ostringstream connections;
    network().eventConnections().writeTopology(connections);
    EXPECT_EQ(connections.str(), readFile(folder.file("EC_output.txt")));
}

}  // namespace
}  // namespace vornrun::test
