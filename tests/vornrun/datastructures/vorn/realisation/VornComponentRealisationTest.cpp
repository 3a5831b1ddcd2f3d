#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"

#include <stdexcept>

#include "tests/vornrun/datastructures/vorn/realisation/RealisationFixture.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornReference.h"

namespace vornrun::test {
namespace {

using VornComponentRealisationTest = RealisationFixture;
using Transitions = std::vector<TransitionPtr>;

template <class Call>
std::string outOfRange(const Call& call) {
    try {
        call();
    } catch (const std::out_of_range& fault) {
        return fault.what();
    }
    return "nothing was thrown";
}

TEST_F(VornComponentRealisationTest, WithAnEmptyModeListAnElementStandsInTheBucketOfEveryMode) {
    const RealisedDataSubcomponent* x = data<VornInt>(1, "x");
    const VornComponentRealisation* sub = component(1, "sub").release();
    root->attachSubcomponent(const_cast<VornComponentRealisation*>(sub));
    const RealisedEventPort* port = eventPort(*root, 2, "p", PortDirection::in);
    auto* realised = new RealisedConnection(port, port, &link, {});
    root->attachConnection(realised);
    auto* flow = new TypedRealisedFlow<VornInt, VornInt>(new TypedRealisedVariable<VornInt>(valuation, 1, x),
                                                         constant<VornInt>(1), {}, valuation, {});
    root->attachFlow(flow);
    for (const RealisedMode* mode : {a, b, c}) {
        EXPECT_EQ(root->activeData(mode), (std::vector<const RealisedDataSubcomponent*>{x})) << mode->name();
        EXPECT_EQ(root->activeSubcomponents(mode), (std::vector<const VornComponentRealisation*>{sub}));
        EXPECT_EQ(root->activeConnections(mode), (std::vector<const RealisedConnection*>{realised}));
        EXPECT_EQ(root->activeFlows(mode), (std::vector<const RealisedFlow*>{flow}));
    }
}

TEST_F(VornComponentRealisationTest, WithAListOfTwoModesAnElementStandsInExactlyThoseTwo) {
    const RealisedDataSubcomponent* x = data<VornInt>(1, "x", {c, a});
    VornComponentRealisation* sub = component(1, "sub", {a, c}).release();
    root->attachSubcomponent(sub);
    const RealisedEventPort* port = eventPort(*root, 2, "p", PortDirection::in);
    auto* realised = new RealisedConnection(port, port, &link, {a, c});
    root->attachConnection(realised);
    auto* flow = new TypedRealisedFlow<VornInt, VornInt>(new TypedRealisedVariable<VornInt>(valuation, 1, x),
                                                         constant<VornInt>(1), {}, valuation, {a, c});
    root->attachFlow(flow);
    for (const RealisedMode* mode : {a, c}) {
        EXPECT_EQ(root->activeData(mode).size(), 1u) << mode->name();
        EXPECT_EQ(root->activeSubcomponents(mode).size(), 1u);
        EXPECT_EQ(root->activeConnections(mode).size(), 1u);
        EXPECT_EQ(root->activeFlows(mode).size(), 1u);
    }
    EXPECT_TRUE(root->activeData(b).empty());
    EXPECT_TRUE(root->activeSubcomponents(b).empty());
    EXPECT_TRUE(root->activeConnections(b).empty());
    EXPECT_TRUE(root->activeFlows(b).empty());
}

TEST_F(VornComponentRealisationTest, TransitionsAttachedInDescendingOrderEndInAscendingOrder) {
    const RealisedEventPort* port = eventPort(*root, 1, "p", PortDirection::in);
    RealisedTransition* later = transition(8, a, b, port).release();
    RealisedTransition* earlier = transition(3, a, c, port).release();
    RealisedTransition* elsewhere = transition(5, b, a, port).release();
    for (RealisedTransition* each : {later, elsewhere, earlier}) root->attachTransition(each);
    EXPECT_EQ(borrowed(root->transitions()), (Transitions{earlier, elsewhere, later}));
    EXPECT_EQ(root->transitionsOfMode(a), (Transitions{earlier, later}));
    EXPECT_EQ(root->transitionsOfMode(b), (Transitions{elsewhere}));
    EXPECT_TRUE(root->transitionsOfMode(c).empty());
    EXPECT_EQ(root->activeTransitionsOfPort(a, port), (Transitions{earlier, later}));
    ASSERT_NE(root->transitionsOfPort(port), nullptr);
    EXPECT_EQ(root->transitionsOfPort(port)->in(a), (Transitions{earlier, later}));
}

TEST_F(VornComponentRealisationTest, ReactivationTransitionsAreKeptApartAndSortedToo) {
    const RealisedEventPort* port = eventPort(*root, 1, "@activation", PortDirection::in);
    RealisedTransition* later = transition(8, a, b, port).release();
    RealisedTransition* earlier = transition(3, a, c, port).release();
    root->attachReactivationTransition(later);
    root->attachReactivationTransition(earlier);
    EXPECT_EQ(borrowed(root->reactivationTransitions()), (Transitions{earlier, later}));
    EXPECT_EQ(root->reactivationTransitionsOfMode(a), (Transitions{earlier, later}));
    EXPECT_TRUE(root->reactivationTransitionsOfMode(b).empty());
    EXPECT_TRUE(root->transitions().empty());
    EXPECT_TRUE(root->transitionsOfMode(a).empty());
    EXPECT_EQ(root->transitionsOfPort(port), nullptr) << "reactivations are not offered as answers to a port";
}

TEST_F(VornComponentRealisationTest, AComponentWithoutModesHasNoBucketsAndPrintsNoModes) {
    VornComponentRealisation modeless(4, "modeless", &implementation, {}, nullptr);
    EXPECT_EQ(outOfRange([&] { modeless.activeData(a); }), "map::at");
    EXPECT_EQ(printed(modeless), "Component: 4 implementing Root.i\n");
    modeless.attachDataPort(new RealisedDataPort(
        5, &modeless,
        static_cast<const VornDataPort*>(portDeclarations
                                             .emplace_back(std::make_unique<TypedVornDataPort<VornInt>>(
                                                 12, "d", PortDirection::in, nullptr, PortTag::none))
                                             .get())));
    EXPECT_EQ(printed(modeless), "Component: 4 implementing Root.i\n\tData ports:\n\t\t[5] (from feature [12]) (d)\n");
}

TEST_F(VornComponentRealisationTest, AForeignModeHasNoBucket) {
    const RealisedEventPort* port = eventPort(*root, 1, "p", PortDirection::in);
    const RealisedMode foreign(10, "a", VornModeType::initial);
    EXPECT_EQ(outOfRange([&] { root->activeTriggers(&foreign); }), "map::at");
    EXPECT_EQ(outOfRange([&] { root->activeTransitionsOfPort(&foreign, port); }), "map::at");
    EXPECT_EQ(outOfRange([&] { root->activeFlows(nullptr); }), "map::at");
    EXPECT_EQ(outOfRange([&] { root->attachTransition(transition(0, &foreign, a, port).release()); }), "map::at");
    EXPECT_TRUE(root->transitions().empty());
}

TEST_F(VornComponentRealisationTest, AttachingModesAgainEmptiesAllBuckets) {
    const RealisedEventPort* port = eventPort(*root, 1, "p", PortDirection::in);
    data<VornInt>(2, "x");
    VornComponentRealisation::Owned<RealisedMode> modes;
    modes.push_back(std::make_unique<RealisedMode>(20, "only", VornModeType::initial));
    const RealisedMode* only = modes[0].get();
    root->attachModes(std::move(modes));
    EXPECT_EQ(root->modes().size(), 1u);
    EXPECT_TRUE(root->activeData(only).empty());
    EXPECT_TRUE(root->transitionsOfMode(only).empty());
    EXPECT_EQ(root->transitionsOfPort(port), nullptr);
}

TEST_F(VornComponentRealisationTest, ActiveTriggersAreOwnOutPortsAndInPortsBelowOncePerTransition) {
    auto sub = component(1, "sub");
    const RealisedEventPort* ownIn = eventPort(*root, 1, "ownIn", PortDirection::in);
    const RealisedEventPort* ownOut = eventPort(*root, 2, "ownOut", PortDirection::out);
    const RealisedEventPort* subIn = eventPort(*sub, 3, "subIn", PortDirection::in);
    const RealisedEventPort* subOut = eventPort(*sub, 4, "subOut", PortDirection::out);
    root->attachSubcomponent(sub.release());
    unsigned int id = 0;
    for (const RealisedEventPort* port : {subIn, ownIn, ownOut, subOut, ownOut})
        root->attachTransition(transition(id++, a, b, port).release());
    root->attachTransition(transition(id++, b, a, ownOut).release());
    EXPECT_EQ(root->activeTriggers(a), (std::vector<const RealisedEventPort*>{subIn, ownOut, ownOut}));
    EXPECT_EQ(root->activeTriggers(b), (std::vector<const RealisedEventPort*>{ownOut}));
    EXPECT_TRUE(root->activeTriggers(c).empty());
}

TEST_F(VornComponentRealisationTest, TransitionsOfAPortAreThoseOfTheModeThatListenOnIt) {
    const RealisedEventPort* first = eventPort(*root, 1, "first", PortDirection::in);
    const RealisedEventPort* second = eventPort(*root, 2, "second", PortDirection::in);
    const RealisedEventPort* unused = eventPort(*root, 3, "unused", PortDirection::in);
    RealisedTransition* one = transition(1, a, b, first).release();
    RealisedTransition* two = transition(2, a, b, second).release();
    RealisedTransition* three = transition(3, b, a, first).release();
    for (RealisedTransition* each : {one, two, three}) root->attachTransition(each);
    EXPECT_EQ(root->activeTransitionsOfPort(a, first), (Transitions{one}));
    EXPECT_EQ(root->activeTransitionsOfPort(a, second), (Transitions{two}));
    EXPECT_EQ(root->activeTransitionsOfPort(b, first), (Transitions{three}));
    EXPECT_TRUE(root->activeTransitionsOfPort(b, second).empty());
    EXPECT_TRUE(root->activeTransitionsOfPort(a, unused).empty());
    for (const RealisedEventPort* port : {first, second})
        for (const RealisedMode* mode : {a, b, c})
            EXPECT_EQ(root->transitionsOfPort(port)->in(mode), root->activeTransitionsOfPort(mode, port))
                << port->identifier() << " in " << mode->name();
    EXPECT_EQ(root->transitionsOfPort(unused), nullptr);
}

TEST_F(VornComponentRealisationTest, FilteringKeepsTheOrder) {
    const RealisedEventPort* port = eventPort(*root, 1, "p", PortDirection::in);
    std::vector<std::unique_ptr<RealisedTransition>> owned;
    for (const unsigned int id : {4u, 1u, 3u, 2u}) owned.push_back(transition(id, a, b, port));
    const Transitions all = borrowed(owned);
    EXPECT_EQ(root->filterTransitions(all, [](TransitionPtr each) { return each->id() % 2 == 0; }),
              (Transitions{all[0], all[3]}));
    EXPECT_TRUE(root->filterTransitions({}, [](TransitionPtr) { return true; }).empty());
}

class FindIdentifier : public RealisationFixture {
  protected:
    FindIdentifier() {
        auto sub = component(1, "sub");
        auto leaf = component(2, "leaf", {}, sub.get());
        deep = eventPort(*leaf, 1, "deep", PortDirection::in);
        sub->attachSubcomponent(leaf.release());
        root->attachSubcomponent(sub.release());
    }
    const RealisedIdentifier* find(const std::string& text) const {
        const VornReference reference(text);
        return root->findIdentifier(&reference);
    }
    const RealisedDataPort* dataPort(unsigned int id, const std::string& name) {
        portDeclarations.push_back(
            std::make_unique<TypedVornDataPort<VornInt>>(30 + id, name, PortDirection::in, nullptr, PortTag::none));
        auto* port =
            new RealisedDataPort(id, root.get(), static_cast<const VornDataPort*>(portDeclarations.back().get()));
        root->attachDataPort(port);
        return port;
    }
    const RealisedEventPort* deep;
};

TEST_F(FindIdentifier, FollowsAReferenceThroughSubcomponents) {
    EXPECT_EQ(find("sub.leaf.deep"), deep);
    EXPECT_EQ(find("leaf.deep"), nullptr);
    EXPECT_EQ(find("sub.deep"), nullptr);
    EXPECT_EQ(find("sub.leaf.shallow"), nullptr);
    EXPECT_EQ(find("sub.leaf.deep.deeper"), nullptr);
}

TEST_F(FindIdentifier, GivesNullForWhatIsAbsentAndForASubcomponentItself) {
    for (const char* text : {"nothing", "sub", "sub.leaf", "", ".", "sub.", ".deep", "sub..deep"})
        EXPECT_EQ(find(text), nullptr) << '"' << text << '"';
}

TEST_F(FindIdentifier, PrefersDataToDataPortsAndDataPortsToEventPorts) {
    const RealisedIdentifier* event = eventPort(*root, 5, "n", PortDirection::in);
    EXPECT_EQ(find("n"), event);
    const RealisedIdentifier* port = dataPort(6, "n");
    EXPECT_EQ(find("n"), port);
    const RealisedIdentifier* element = data<VornInt>(7, "n");
    EXPECT_EQ(find("n"), element);
}

TEST_F(FindIdentifier, TakesTheFirstOfTwoThingsOfOneNameAndKind) {
    const RealisedIdentifier* first = eventPort(*root, 5, "tau", PortDirection::out);
    eventPort(*root, 6, "tau", PortDirection::out);
    EXPECT_EQ(find("tau"), first);
}

TEST_F(FindIdentifier, SubcomponentsAreFoundByLocalName) {
    ASSERT_NE(root->findSubcomponent("sub"), nullptr);
    EXPECT_EQ(root->findSubcomponent("sub")->id(), 1u);
    EXPECT_EQ(root->findSubcomponent("leaf"), nullptr);
    EXPECT_EQ(root->findSubcomponent("root.sub"), nullptr);
}

TEST_F(VornComponentRealisationTest, SlotsAreThoseAttachedAndReplacedAsAWhole) {
    const RealisedPart* x = data<VornInt>(1, "x");
    const RealisedPart* y = data<VornInt>(2, "y");
    root->attachValueReferences({{x, 4}, {y, 5}});
    root->attachValueTrajectories({{x, 6}});
    EXPECT_EQ(root->valueRef(x), 4u);
    EXPECT_EQ(root->valueRef(y), 5u);
    EXPECT_EQ(root->valueRefTrajectory(x), 6u);
    EXPECT_THROW(root->valueRefTrajectory(y), std::out_of_range);
    root->attachValueReferences({{y, 9}});
    EXPECT_EQ(root->valueRef(y), 9u);
    EXPECT_EQ(outOfRange([&] { root->valueRef(x); }), "root.x has no value");
}

TEST_F(VornComponentRealisationTest, KnowsItsImplementationParentAndModes) {
    const auto sub = component(3, "sub", {a});
    EXPECT_EQ(sub->implementationName(), "Root.i");
    EXPECT_EQ(sub->implementation(), &implementation);
    EXPECT_EQ(sub->parentComponent(), root.get());
    EXPECT_EQ(sub->inModes(), (ModeList{a}));
    EXPECT_EQ(root->parentComponent(), nullptr);
    EXPECT_EQ(borrowed(root->modes()), (ModeList{a, b, c}));
}

TEST_F(VornComponentRealisationTest, PrintsEverySectionThatIsNotEmptyAndThenItsSubcomponents) {
    const RealisedEventPort* go = eventPort(*root, 1, "go", PortDirection::in);
    data<VornBool>(2, "flag");
    root->attachConnection(new RealisedConnection(go, go, &link, {}));
    const RealisedDataSubcomponent* n = data<VornInt>(3, "n");
    root->attachFlow(new TypedRealisedFlow<VornInt, VornInt>(
        new TypedRealisedVariable<VornInt>(valuation, valuation->addValue<VornInt>(n, 7), n), constant<VornInt>(1), {},
        valuation, {b}));
    root->attachTransition(transition(0, a, b, go).release());
    root->attachReactivationTransition(transition(1, b, a, go).release());
    auto sub = component(1, "sub");
    sub->attachSubcomponent(component(2, "leaf", {}, sub.get()).release());
    root->attachSubcomponent(sub.release());
    root->attachSubcomponent(component(3, "other").release());
    EXPECT_EQ(printed(*root),
              "Component: 0 implementing Root.i\n"
              "\tEvent ports:\n"
              "\t\t(go)[1]\n"
              "\tData:\n"
              "\t\t[2] (flag)\n"
              "\t\t[3] (n)\n"
              "\tEvent connections:\n"
              "\t\t[1] -> [1] (event port p -> q;)\n"
              "\tFlows:\n"
              "\t\tn{=7:int} := 1 in modes (b)\n"
              "\tModes:\n"
              "\t\ta: initial mode\n"
              "\t\tb: mode\n"
              "\t\tc: error mode\n"
              "\tTransitions:\n"
              "\t\t(a)-[(go)[1]]->11 (b)\n"
              "\tReactivation Transitions:\n"
              "\t\t(b)-[(go)[1]]->10 (a)\n"
              "\n"
              "Component: 1 implementing Root.i\n"
              "\n"
              "Component: 2 implementing Root.i\n"
              "Component: 3 implementing Root.i\n");
}

}  // namespace
}  // namespace vornrun::test
