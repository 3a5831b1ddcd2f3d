// A call of each public operation of this folder, with its arguments and its result. Where the build alone is the test,
// a call that does not compile, or that has another result, breaks it.

#include <concepts>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/Printed.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VariableSubstitutionExpressionVisitor.h"
#include "vornrun/algorithms/vornconstructor/VornComponentImplementationConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornExpressionConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"

namespace vornrun::test {
namespace {

using namespace direct;
using std::same_as;

static_assert(requires(const std::string& name, PortDirection direction, VornDataTypeTag tag, VornValue* value,
                       TypedVornValue<VornInt>* integer, const PortTag& portTag) {
    { VornPartsConstructor::createEventPort(name, direction, true) } -> same_as<VornEventPort*>;
    { VornPartsConstructor::createErrorPort(name, direction, true) } -> same_as<VornErrorPort*>;
    {
        VornPartsConstructor::createErrorPort(name, direction, true, DistributionType::poisson, 0.5)
        } -> same_as<VornErrorPort*>;
    { VornPartsConstructor::createDataPort(name, direction, tag, value, portTag) } -> same_as<VornDataPort*>;
    {
        VornPartsConstructor::createDataPort<VornInt>(name, direction, integer, portTag)
        } -> same_as<TypedVornDataPort<VornInt>*>;
    { VornPartsConstructor::portIdCounter } -> std::convertible_to<std::uint32_t>;
    { VornComponentImplementationConstructor::mSubcompId } -> std::convertible_to<unsigned int>;
    { VornComponentImplementationConstructor::mModeId } -> std::convertible_to<unsigned int>;
    { VornComponentImplementationConstructor::mTransitionId } -> std::convertible_to<unsigned int>;
});

static_assert(requires(const std::string& name, VornPackageConstructor& package, const VornPackageConstructor& read,
                       VornComponentDeclaration* declaration, VornComponentImplementation* implementation) {
    {VornPackageConstructor(name)};
    package.addDeclaration(declaration);
    package.addImplementation(implementation);
    { read.getDeclarationFromCurrentPackage(name) } -> same_as<VornComponentDeclaration*>;
});

static_assert(requires(VornExpressionTree * tree, VornDataTypeTag tag, const boost::spirit::hold_any& value,
                       const std::string& name, TypedVornExpressionTree<VornInt>* integer) {
    VornExpressionConstructor();
    { VornExpressionConstructor::expressionTree<VornPlus>(tree, tree) } -> same_as<VornExpressionTree*>;
    { VornExpressionConstructor::expressionTree<VornPlus, VornInt>(integer, tree) } -> same_as<VornExpressionTree*>;
    { VornExpressionConstructor::expressionTree<VornNot>(tree) } -> same_as<VornExpressionTree*>;
    { VornExpressionConstructor::expressionTree(tag, value) } -> same_as<VornExpressionTree*>;
    { VornExpressionConstructor::expressionVariable(tag, name) } -> same_as<VornVariable*>;
});

static_assert(requires(const VornComponentRealisation* component, ValuationPtr valuation,
                       const VariablesToValueReferences& substitute, const VornExpressionTree* tree,
                       const VornAssignment* assignment, const VornFlow* flow, const ModeList& modes,
                       const VornTrajectoryEquation* equation, const VornLinearExpression* expression,
                       const VornMode* mode, RealisedMode* realised, const VornVariable* variable,
                       const VornValue* value, const VariableSubstitutionExpressionVisitor& visitor) {
    VariablesToValueReferences(component, valuation);
    { substitute(tree) } -> same_as<VornExpressionTree*>;
    { substitute(assignment) } -> same_as<RealisedAssignment*>;
    { substitute(flow, modes) } -> same_as<RealisedFlow*>;
    { substitute(equation) } -> same_as<RealisedTrajectoryEquation*>;
    { substitute(expression) } -> same_as<VornLinearExpression*>;
    { substitute(mode, realised) } -> same_as<void>;
    { substitute.substituteVariable(variable) } -> same_as<RealisedVariable*>;
    { substitute.substituteTrajVariable(variable) } -> same_as<RealisedVariable*>;
    { substitute.substituteValue(value) } -> same_as<VornValue*>;
    {VariableSubstitutionExpressionVisitor(&substitute)};
    { visitor.getReferences() } -> same_as<std::vector<RealisedVariable*>>;
});

static_assert(requires(VornDataTypeTag tag, ValuationPtr valuation, unsigned long slot, const RealisedIdentifier* part,
                       RealisedVariable* any, TypedRealisedVariable<VornClock>* clock, VornExpressionTree* tree,
                       std::vector<RealisedVariable*> dependencies, ModeList modes) {
    { makeValueReference(tag, valuation, slot, part) } -> same_as<RealisedVariable*>;
    { makeAssignment(any, tree, dependencies, valuation) } -> same_as<RealisedAssignment*>;
    { makeAssignment<VornClock>(clock, tree, dependencies, valuation) } -> same_as<RealisedAssignment*>;
    { makeFlow(any, tree, dependencies, valuation, modes) } -> same_as<RealisedFlow*>;
    { makeFlow<VornClock>(clock, tree, dependencies, valuation, modes) } -> same_as<RealisedFlow*>;
    { makeTrajectory(any, any, tree, dependencies, valuation) } -> same_as<RealisedTrajectoryEquation*>;
    { makeTrajectory<VornClock>(clock, any, tree, dependencies, valuation) } -> same_as<RealisedTrajectoryEquation*>;
});

static_assert(requires(VornModelConstructor & constructor, const VornComponentImplementation* implementation,
                       VornComponentRealisation* component, const VornReference* reference, const ModeList& modes,
                       const std::vector<std::string>& names, const std::map<std::string, RealisedMode*>& byName) {
    VornModelConstructor();
    { constructor.realise(implementation) } -> same_as<std::pair<VornComponentRealisation*, ValuationPtr>>;
    { constructor.findIdentifier(component, reference) } -> same_as<const RealisedIdentifier*>;
    {
        constructor.realise_recursive(implementation, SubComponentName("a"), modes, component)
        } -> same_as<VornComponentRealisation*>;
    { realisedModelist(names, byName) } -> same_as<ModeList>;
});

TEST(ConstructionOperations, ABinaryNodeIsMadeForOperandsOfKnownTypes) {
    using Sum = BinaryResultType<VornPlus, VornInt, VornReal>;
    const std::unique_ptr<TypedVornExpressionTree<VornReal>> node(
        VornExpressionConstructor::makeOperator<VornPlus, Sum, VornInt, VornReal>(constant<VornInt>(1),
                                                                                  constant<VornReal>(2.5)));
    EXPECT_EQ(node->evaluateDirect(), 3.5);
}

TEST(ConstructionOperations, ABinaryNodeThatIsNotLegalIsLoggedAndNull) {
    const CapturedLog log;
    using Sum = BinaryResultType<VornPlus, VornBool, VornReal>;
    TypedVornValue<VornBool> left(true);
    TypedVornValue<VornReal> right(2.5);
    EXPECT_EQ((VornExpressionConstructor::makeOperator<VornPlus, Sum, VornBool, VornReal>(&left, &right)), nullptr);
    EXPECT_EQ(log.texts("root.exprconstr"), std::vector<std::string>{"Unsupported operator types: bool + real"});
}

/// A component of each kind of part, and its instance made step by step.
class StepwiseConstruction : public testing::Test {
  protected:
    StepwiseConstruction()
        : below(model.component("Sub", ComponentDraft().mode("m", VornModeType::initial).eventPort("go", in))),
          top(model.component("Top", ComponentDraft()
                                         .mode("A", VornModeType::initial, plainly(var<VornBool>("ok")))
                                         .mode("B")
                                         .data<VornBool>("ok", constant<VornBool>(true))
                                         .data<VornClock>("t", nullptr, {"B"})
                                         .eventPort("start", in)
                                         .dataPort<VornInt>("out", PortDirection::out)
                                         .subcomponent("sub", below)
                                         .connectEvent("start", "sub.go")
                                         .flow(var<VornInt>("out"), constant<VornInt>(1), {"A"})
                                         .transition("A", "B")
                                         .reactivation("B", "A"))) {}

    static constexpr PortDirection in = PortDirection::in;
    SyntaxModel model;
    const VornComponentImplementation& below;
    const VornComponentImplementation& top;
};

TEST_F(StepwiseConstruction, TheStepsOneByOneMakeWhatTheWholeMakes) {
    VornModelConstructor constructor;
    const std::unique_ptr<VornComponentRealisation> whole(constructor.realise(&top).first);
    // A store and numbers of its own, as the whole had.
    VornModelConstructor again;
    const std::unique_ptr<VornComponentRealisation> discarded(
        again.realise(&model.component("Empty", ComponentDraft().mode("m"))).first);
    VornComponentRealisation component(1, "main", &top, {}, nullptr);
    VornModelConstructor::ModesByDeclaration modesByDeclaration;
    VornModelConstructor::ModesByName modesByName;
    VornModelConstructor::ValueSlots values;
    VornModelConstructor::ValueSlots rates;
    again.realise_modes(&top, &component, modesByDeclaration, modesByName);
    EXPECT_EQ(component.modes().size(), 2u);
    EXPECT_EQ(modesByName.size(), 2u);
    EXPECT_EQ(modesByDeclaration.size(), 2u);
    again.realise_ports(&top, &component, values, rates);
    EXPECT_EQ(component.eventPorts().size(), 1u);
    EXPECT_EQ(component.dataPorts().size(), 1u);
    again.realise_data(&top, &component, modesByName, values, rates);
    EXPECT_EQ(component.data().size(), 3u);
    EXPECT_EQ(values.size(), 4u);
    EXPECT_EQ(rates.size(), 4u);
    component.attachValueReferences(values);
    component.attachValueTrajectories(rates);
    again.realise_modes2(&component, modesByDeclaration);
    EXPECT_TRUE(modesByName.at("A")->invariantHolds());
    EXPECT_EQ(modesByName.at("A")->trajectories().size(), 1u) << "the clock that is not in this mode keeps its value";
    again.realise_subcomponents(&top, &component, modesByName);
    ASSERT_NE(component.findSubcomponent("sub"), nullptr);
    again.realise_connections(&top, &component, modesByName);
    EXPECT_EQ(component.connections().size(), 1u);
    again.realise_flows(&top, &component, modesByName);
    EXPECT_EQ(component.flows().size(), 1u);
    again.realise_transitions(&top, &component, modesByName);
    ASSERT_EQ(component.transitions().size(), 1u);
    EXPECT_EQ(component.transitions()[0]->effects().size(), 2u) << "the port and the clock start from their defaults";
    again.realise_reactivations(&top, &component, modesByName);
    EXPECT_EQ(component.reactivationTransitions().size(), 1u);
    for (std::size_t i = 0; i < 2; ++i) EXPECT_EQ(printed(*component.modes()[i]), printed(*whole->modes()[i]));
    EXPECT_EQ(printed(*component.flows()[0]), printed(*whole->flows()[0]));
    EXPECT_EQ(component.transitions()[0]->effects().size(), whole->transitions()[0]->effects().size());
}

TEST_F(StepwiseConstruction, ASingleComponentIsMadeBelowAParentWithItsModes) {
    VornModelConstructor constructor;
    const std::unique_ptr<VornComponentRealisation> parent(constructor.realise(&top).first);
    const ModeList modes{parent->modes()[1].get()};
    const std::unique_ptr<VornComponentRealisation> child(
        constructor.realise_recursive(&below, "another", modes, parent.get()));
    EXPECT_EQ(child->fullIdentifier(), "main.another");
    EXPECT_EQ(child->inModes(), modes);
    EXPECT_EQ(child->id(), 2u) << "the numbers go on";
    EXPECT_EQ(parent->findSubcomponent("another"), nullptr);
}

}  // namespace
}  // namespace vornrun::test
