// A call of each public operation of the syntax classes, with its arguments and its result. The build is the test: a
// call that does not compile, or that has another result, breaks it.

#include <concepts>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "vornrun/datastructures/vorn/syntax/RealisedAssignment.h"
#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {
namespace {

using std::same_as;
using Names = std::vector<std::string>;

static_assert(requires(std::ostream & stream, const Vorn& vorn, const Realisation& realisation, VornDataTypeTag tag) {
    vorn.printVorn(stream);
    { stream << vorn } -> same_as<std::ostream&>;
    realisation.print(stream);
    { stream << tag } -> same_as<std::ostream&>;
    { toString(tag) } -> same_as<std::string>;
    { hasDoubleAsAssociatedDataType(tag) } -> same_as<bool>;
});

static_assert(requires(std::ostream & stream, const std::string& text, VornComponentCategory category,
                       PortDirection direction, PortTag tag) {
    { stream << category } -> same_as<std::ostream&>;
    { VornComponentCategoryNames.at(text) } -> std::convertible_to<VornComponentCategory>;
    { componentCategory(text) } -> same_as<VornComponentCategory>;
    { stream << direction } -> same_as<std::ostream&>;
    { portDirection(text) } -> same_as<PortDirection>;
    { stream << tag } -> same_as<std::ostream&>;
    { distrTypeToVornDistributionType(1u) } -> same_as<DistributionType>;
});

static_assert(requires(const VornPort& port, const VornEventPort& event, const VornErrorPort& error,
                       const VornDataPort& data, const TypedVornDataPort<VornInt>& integers) {
    { port.event() } -> same_as<bool>;
    { event.nonblocking() } -> same_as<bool>;
    { error.distribution() } -> same_as<DistributionType>;
    { error.parameter() } -> same_as<double>;
    { data.type() } -> same_as<VornDataTypeTag>;
    { data.tag() } -> same_as<PortTag>;
    { integers.defaultValue() } -> same_as<const TypedVornValue<VornInt>*>;
});

static_assert(requires(VornSpecification & mutableModel, const VornSpecification& model, VornPackage& package,
                       const std::vector<VornPackage*>& packages, const std::string& name,
                       VornComponentDeclaration* declaration, VornComponentImplementation* implementation) {
    VornSpecification(packages);
    mutableModel.resolveSubcomponents();
    { model.findRootCandidates() } -> same_as<RootCandidates>;
    { package.declarations() } -> same_as<std::vector<VornComponentDeclaration*>>;
    { package.implementations() } -> same_as<std::vector<VornComponentImplementation*>>;
    { package.findDeclaration(name) } -> same_as<VornComponentDeclaration*>;
    { package.findImplementation(name) } -> same_as<VornComponentImplementation*>;
    { package.findImplementationByType(name) } -> same_as<VornComponentImplementation*>;
    package.addPublicDeclaration(declaration);
    package.addPrivateDeclaration(declaration);
    package.addPublicImplementation(implementation);
    package.addPrivateImplementation(implementation);
    { declaration->featureByName(name) } -> same_as<VornPort*>;
});

static_assert(requires(std::ostream & stream, VornModeType type, const VornTrajectoryEquation& equation,
                       const TypedVornTrajectoryEquation<VornInt>& integers, const VornTransition& transition,
                       const VornSubComponent& subcomponent, const VornDataSubcomponent& data,
                       const std::string& name) {
    { stream << type } -> same_as<std::ostream&>;
    { equation.variable() } -> same_as<const TypedVornVariable<VornContinuous>*>;
    { equation.rhs() } -> same_as<const VornValue*>;
    { integers.rhs() } -> same_as<const TypedVornValue<VornInt>*>;
    { equation.type() } -> same_as<VornDataTypeTag>;
    { VornTransitionTrigger::ResetTrigger() } -> same_as<VornTransitionTrigger*>;
    { transition.hasTrigger(name) } -> same_as<bool>;
    { subcomponent.compSpecifier() } -> same_as<std::tuple<std::string, std::string, std::string>>;
    { data.defaultValue() } -> same_as<const VornValue*>;
    { data.isClock() } -> same_as<bool>;
    { data.type() } -> same_as<VornDataTypeTag>;
});

static_assert(requires(const std::string& name, const VornComponentDeclaration* declaration,
                       const std::vector<VornSubComponent*>& subcomponents,
                       const std::vector<VornDataSubcomponent*>& data, const std::vector<VornFlow*>& flows,
                       const std::vector<VornConnection*>& connections, const std::vector<VornMode*>& modes,
                       const std::vector<VornTransition*>& transitions,
                       const VornComponentImplementation& implementation, const VornReference* reference) {
    VornComponentImplementation(name, declaration, subcomponents, data, flows, connections, modes, transitions,
                                transitions);
    { implementation.qualifiedName() } -> same_as<std::string>;
    { implementation.category() } -> same_as<VornComponentCategory>;
    { implementation.findMode(name) } -> same_as<const VornMode*>;
    { implementation.modePointers() } -> same_as<std::vector<VornMode*>>;
    { implementation.findIdentifier(reference) } -> same_as<VornIdentifier*>;
});

static_assert(requires(std::ostream & stream, const RealisedMode& mode, const ModeList& modes, unsigned int id,
                       const std::string& name, VornModeType type, const RealisedAssignment& assignment,
                       const RealisedTrajectoryEquation& equation) {
    RealisedMode(id, name, type);
    RealisedMode(id, name);
    { mode.invariantHolds() } -> same_as<bool>;
    { mode.invariantHoldsWhile() } -> same_as<TimeInterval>;
    mode.printInvariants(stream);
    { stream << modes } -> same_as<std::ostream&>;
    { assignment.target() } -> same_as<const RealisedVariable*>;
    { assignment.assignment() } -> same_as<const VornExpressionTree*>;
    { assignment.refsInAssignment() } -> same_as<const std::set<TypedValueRef>&>;
    assignment.applyAssignment();
    { equation.variable() } -> same_as<const RealisedVariable*>;
    equation.applyTime(Time(1.0));
});
static_assert(RealisedMode::DUMMY_ID == 4294967295u);

TEST(VornSpecification, ResolvesItsSubcomponentsAgainWithTheSameResult) {
    auto* const package = new VornPackage("p");
    auto* const type = new VornComponentDeclaration("T", VornComponentCategory::system, {});
    package->addPublicDeclaration(type);
    auto* const inner = new VornComponentImplementation("inner", type, {}, {}, {}, {}, {}, {}, {});
    auto* const sub = new VornSubComponent(0, "sub", "p::T.inner", {}, {});
    package->addPublicImplementation(inner);
    package->addPublicImplementation(new VornComponentImplementation("outer", type, {sub}, {}, {}, {}, {}, {}, {}));
    VornSpecification model({package});
    sub->setImplementation(nullptr);
    model.resolveSubcomponents();
    EXPECT_EQ(sub->implementation(), inner);
}

}  // namespace
}  // namespace vornrun::test
