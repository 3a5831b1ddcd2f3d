// A call of each public operation of the realised model, with its arguments and its result. The build is the test: a
// call that does not compile, or that has another result, breaks it.

#include <concepts>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"

namespace vornrun::test {
namespace {

using std::same_as;
using Slots = std::map<const RealisedPart*, unsigned long>;
using Transitions = std::vector<const RealisedTransition*>;

static_assert(requires(unsigned int id, const RealisedIdentifier* parent, const std::string& name) {
    RealisedIdentifier(id, name);
    RealisedIdentifier(id, parent, name);
    { parent->identifier() } -> same_as<const std::string&>;
    { parent->fullIdentifier() } -> same_as<std::string>;
});

static_assert(requires(unsigned int id, const VornComponentRealisation* component, const VornEventPort* eventPort,
                       const VornDataPort* dataPort, const VornDataSubcomponent* data, const ModeList& modes,
                       const RealisedPart& part, const RealisedPort& port) {
    RealisedEventPort(id, component, eventPort);
    RealisedDataPort(id, component, dataPort);
    RealisedDataSubcomponent(id, data, component, modes);
    { part.type() } -> same_as<VornDataTypeTag>;
    { port.realises() } -> same_as<const VornPort*>;
});

static_assert(requires(unsigned int id, const VornComponentRealisation* component, const VornTransition* declaration,
                       const RealisedMode* mode, const RealisedEventPort* port, VornLinearExpression* guard,
                       const std::vector<RealisedAssignment*>& effects, const RealisedTransition& transition) {
    RealisedTransition(id, component, declaration, mode, mode, port, guard, effects);
    { transition.isTriggeredBy(port) } -> same_as<bool>;
    { transition.hasDirectCommunicationTrigger() } -> same_as<bool>;
    { transition.guardHolds() } -> same_as<bool>;
    { transition.guardHoldsWhile() } -> same_as<TimeInterval>;
    { transition.touchesContinuous() } -> same_as<bool>;
});

static_assert(requires(const RealisedEventPort* port, const VornConnection* declaration, const ModeList& modes,
                       const RealisedConnection& connection) {
    RealisedConnection(port, port, declaration, modes);
    { connection.isPassive() } -> same_as<bool>;
    { connection.direction() } -> same_as<PortDirection>;
    { connection.connectionType() } -> same_as<int>;
});

static_assert(requires(TypedRealisedVariable<VornClock> * clock, TypedVornExpressionTree<VornInt>* expression,
                       const std::vector<RealisedVariable*>& dependencies, ValuationPtr valuation,
                       const ModeList& modes, const RealisedFlow& flow, unsigned long slot,
                       const RealisedIdentifier* part) {
    TypedRealisedVariable<VornClock>(valuation, slot, part);
    { clock->clone() } -> same_as<TypedRealisedVariable<VornClock>*>;
    TypedRealisedAssignment<VornClock, VornInt>(clock, expression, dependencies, valuation);
    TypedRealisedFlow<VornClock, VornInt>(clock, expression, dependencies, valuation, modes);
    TypedRealisedTrajectoryEquation<VornClock, VornInt>(clock, clock, expression, dependencies, valuation);
    { flow.activeIn() } -> same_as<const std::vector<const RealisedMode*>&>;
});

static_assert(requires(VornComponentRealisation & building, RealisedEventPort* eventPort, RealisedDataPort* dataPort,
                       const std::vector<RealisedMode*>& modes, RealisedDataSubcomponent* data,
                       RealisedConnection* connection, RealisedFlow* flow, RealisedTransition* transition,
                       const Slots& slots) {
    building.attachEventPort(eventPort);
    building.attachDataPort(dataPort);
    building.attachModes(modes);
    building.attachData(data);
    building.attachSubcomponent(&building);
    building.attachConnection(connection);
    building.attachFlow(flow);
    building.attachTransition(transition);
    building.attachReactivationTransition(transition);
    building.attachValueReferences(slots);
    building.attachValueTrajectories(slots);
});

static_assert(requires(unsigned int id, const std::string& name, const VornComponentImplementation* implementation,
                       const ModeList& inModes, const VornComponentRealisation* parent,
                       const VornComponentRealisation& component, const RealisedPart* part, const RealisedMode* mode,
                       const VornReference* reference, const Transitions& transitions,
                       const std::function<bool(const RealisedTransition*)>& predicate, const RealisedEventPort* port) {
    VornComponentRealisation(id, name, implementation, inModes, parent);
    { component.implementationName() } -> same_as<std::string>;
    { component.valueRef(part) } -> same_as<unsigned long>;
    { component.valueRefTrajectory(part) } -> same_as<unsigned long>;
    { component.findSubcomponent(name) } -> same_as<const VornComponentRealisation*>;
    { component.findIdentifier(reference) } -> same_as<const RealisedIdentifier*>;
    { component.filterTransitions(transitions, predicate) } -> same_as<Transitions>;
    { component.activeTransitionsOfPort(mode, port) } -> same_as<Transitions>;
    { component.activeTriggers(mode) } -> same_as<std::vector<const RealisedEventPort*>>;
});

using RealisationOperations = RealisationFixture;

TEST_F(RealisationOperations, PlainMapsAndPointersAreTakenAsTheOwningFormsAre) {
    VornComponentRealisation component(0, "c", nullptr, {}, nullptr);
    auto* const mode = new RealisedMode(0, "m", VornModeType::initial);
    component.attachModes(std::vector<RealisedMode*>{mode});
    ASSERT_EQ(component.modes().size(), 1u);
    EXPECT_EQ(component.modes()[0].get(), mode);
    const TypedVornDataSubcomponent<VornInt> declaration("n", nullptr, {}, false);
    auto* const data = new RealisedDataSubcomponent(0, &declaration, &component, {});
    component.attachData(data);
    component.attachValueReferences(Slots{{data, 7}});
    component.attachValueTrajectories(Slots{{data, 8}});
    EXPECT_EQ(component.valueRef(data), 7u);
    EXPECT_EQ(component.valueRefTrajectory(data), 8u);
}

TEST_F(RealisationOperations, ATransitionAdoptsEffectsByPointer) {
    auto* const target = variable<VornClock>("x", 1.0);
    auto* const effect =
        new TypedRealisedAssignment<VornClock, VornReal>(target, new TypedVornValue<VornReal>(2.5), {}, valuation);
    const VornComponentRealisation component(0, "c", nullptr, {}, nullptr);
    const VornEventPort go(0, "go", PortDirection::in, false);
    const RealisedEventPort port(0, &component, &go);
    const RealisedMode mode(0, "m", VornModeType::initial);
    const VornTransition declaration(0, "m", "m", nullptr, nullptr, {});
    const RealisedTransition transition(0, &component, &declaration, &mode, &mode, &port, nullptr,
                                        std::vector<RealisedAssignment*>{effect});
    ASSERT_EQ(transition.effects().size(), 1u);
    EXPECT_EQ(transition.effects()[0].get(), effect);
    EXPECT_TRUE(transition.touchesContinuous());
}

}  // namespace
}  // namespace vornrun::test
