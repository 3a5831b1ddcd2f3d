#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"

#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"

namespace vornrun::test {
namespace {

constexpr const char* LOGGER = "root.constructors.model";

std::string printed(const Realisation& realisation) {
    std::ostringstream stream;
    realisation.print(stream);
    return stream.str();
}

/// A realised model that is taken apart by name.
class Realised {
  public:
    explicit Realised(const VornComponentImplementation& implementation) {
        VornModelConstructor constructor;
        const auto [realised, values] = constructor.realise(&implementation);
        root.reset(realised);
        valuation = values;
    }

    const VornComponentRealisation& at(const std::string& name) const { return *root->findSubcomponent(name); }
    const RealisedPart* part(const std::string& name) const {
        const VornReference reference(name);
        return dynamic_cast<const RealisedPart*>(root->findIdentifier(&reference));
    }
    template <class T>
    typename T::AssociatedDataType value(const std::string& name) const {
        return valuation->getValueDirect<T>(part(name)->component()->valueRef(part(name)));
    }
    template <class T>
    typename T::AssociatedDataType rateOf(const std::string& name) const {
        return valuation->getValueDirect<T>(part(name)->component()->valueRefTrajectory(part(name)));
    }
    const RealisedMode& mode(const std::string& name) const {
        for (const auto& each : root->modes())
            if (each->name() == name) return *each;
        throw std::invalid_argument("no mode " + name);
    }
    const RealisedTransition& transition(std::size_t position) const { return *root->transitions().at(position); }
    /// What the effects of a transition assign, in order.
    std::string effects(std::size_t position) const {
        std::ostringstream text;
        for (const auto& effect : transition(position).effects()) text << printed(*effect) << ";";
        return text.str();
    }

    std::unique_ptr<VornComponentRealisation> root;
    ValuationPtr valuation;
};

class VornModelConstructorTest : public testing::Test {
  protected:
    SyntaxModel model;
};

TEST_F(VornModelConstructorTest, AnImplementationWithoutAnythingBecomesARootWithADummyMode) {
    const CapturedLog log(LogLevel::Debug);
    const Realised realised(model.component("Empty", ComponentDraft()));
    EXPECT_EQ(realised.root->id(), 0u);
    EXPECT_EQ(realised.root->fullIdentifier(), "main");
    EXPECT_EQ(realised.root->parent(), nullptr);
    ASSERT_EQ(realised.root->modes().size(), 1u);
    EXPECT_EQ(realised.root->modes()[0]->id(), 0u);
    EXPECT_EQ(realised.root->modes()[0]->name(), "dummy");
    EXPECT_EQ(realised.root->modes()[0]->type(), VornModeType::initial);
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{
                                 {LogLevel::Debug, LOGGER, "Realising Empty.i assigning id 0"},
                                 {LogLevel::Warn, LOGGER, "Will make dummy mode for Empty.i"},
                             }));
    EXPECT_EQ(printed(*realised.root),
              "Component: 0 implementing Empty.i\n"
              "\tData:\n"
              "\t\t[0] (mode)\n"
              "\tModes:\n"
              "\t\tdummy: initial mode\n");
    EXPECT_EQ(realised.value<VornModeVal>("mode"), nullptr);
}

TEST_F(VornModelConstructorTest, ARateSlotIsOneForAClockAndTheTypesDefaultForEverythingElse) {
    const Realised realised(
        model.component("A", ComponentDraft()
                                 .mode("m", VornModeType::initial)
                                 .dataPort<VornReal>("port", PortDirection::in, constant<VornReal>(8.0))
                                 .data<VornClock>("clock", constant<VornClock>(5.0))
                                 .data<VornContinuous>("level", constant<VornContinuous>(6.0))
                                 .data<VornInt>("n", constant<VornInt>(7))));
    EXPECT_EQ(realised.rateOf<VornClock>("clock"), 1.0);
    EXPECT_EQ(realised.rateOf<VornContinuous>("level"), 0.0);
    EXPECT_EQ(realised.rateOf<VornReal>("port"), 0.0);
    EXPECT_EQ(realised.rateOf<VornInt>("n"), 0);
    EXPECT_EQ(realised.value<VornClock>("clock"), 5.0);
    EXPECT_EQ(realised.value<VornContinuous>("level"), 6.0);
    EXPECT_EQ(realised.value<VornReal>("port"), 8.0);
    EXPECT_EQ(realised.value<VornInt>("n"), 7);
}

TEST_F(VornModelConstructorTest, WithoutADefaultTheValueIsThatOfTheType) {
    const Realised realised(model.component("A", ComponentDraft()
                                                     .mode("m", VornModeType::initial)
                                                     .dataPort<VornBool>("port", PortDirection::out)
                                                     .data<VornEnum>("colour")
                                                     .data<VornClock>("clock")
                                                     .data<VornModeVal>("other")));
    EXPECT_FALSE(realised.value<VornBool>("port"));
    EXPECT_EQ(realised.value<VornEnum>("colour"), "");
    EXPECT_EQ(realised.value<VornClock>("clock"), 0.0);
    EXPECT_EQ(realised.value<VornModeVal>("other"), nullptr);
}

TEST_F(VornModelConstructorTest, EverySlotOfValuesAndRatesIsItsOwn) {
    const Realised realised(model.component("A", ComponentDraft()
                                                     .mode("m", VornModeType::initial)
                                                     .dataPort<VornInt>("p", PortDirection::in)
                                                     .data<VornInt>("a")
                                                     .data<VornInt>("b")));
    std::set<ValueRef> slots;
    for (const char* name : {"p", "a", "b"}) {
        slots.insert(realised.root->valueRef(realised.part(name)));
        slots.insert(realised.root->valueRefTrajectory(realised.part(name)));
    }
    EXPECT_EQ(slots, (std::set<ValueRef>{1, 2, 3, 4, 5, 6}));
}

class EndingFlow : public VornModelConstructorTest {
  protected:
    /// A component with the modes A and B whose out ports are driven in A only.
    ComponentDraft draft() {
        ComponentDraft result;
        result.mode("A", VornModeType::initial).mode("B").mode("C");
        result.dataPort<VornInt>("set", PortDirection::out, constant<VornInt>(5));
        result.dataPort<VornInt>("unset", PortDirection::out);
        result.dataPort<VornModeVal>("where", PortDirection::out);
        result.dataPort<VornInt>("inPort", PortDirection::in, constant<VornInt>(6));
        result.flow(var<VornInt>("set"), constant<VornInt>(1), {"A", "C"});
        result.flow(var<VornInt>("unset"), constant<VornInt>(1), {"A"});
        result.flow(var<VornModeVal>("where"), var<VornModeVal>("mode"), {"A"});
        result.flow(var<VornInt>("inPort"), constant<VornInt>(1), {"A"});
        return result;
    }
};

TEST_F(EndingFlow, ResetsThePortToItsDefaultOrItsTypesInTheOrderOfPorts) {
    const Realised realised(model.component("T", draft().transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "set{=5:int} := 5;unset{=0:int} := 0;where{=(null):mode} := (null);");
    EXPECT_TRUE(realised.transition(0).effects()[0]->refsInAssignment().empty());
    realised.valuation->setValue<VornInt>(realised.root->valueRef(realised.part("set")), 77);
    realised.transition(0).effects()[0]->applyAssignment();
    EXPECT_EQ(realised.value<VornInt>("set"), 5);
}

TEST_F(EndingFlow, IsNoneWhereAFlowOfTheTargetGoesOnDrivingThePort) {
    const Realised realised(model.component("T", draft().transition("A", "C")));
    EXPECT_EQ(realised.effects(0), "unset{=0:int} := 0;where{=(null):mode} := (null);");
}

TEST_F(EndingFlow, IsNoneForAPortThatTheTransitionWritesItself) {
    const Realised realised(
        model.component("T", draft().transition("A", "B", "", nullptr,
                                                {assign(var<VornInt>("set"), constant<VornInt>(9)),
                                                 assign(var<VornModeVal>("where"), var<VornModeVal>("mode"))})));
    EXPECT_EQ(realised.effects(0), "set{=5:int} := 9;where{=(null):mode} := mode{=(null):mode};unset{=0:int} := 0;");
}

TEST_F(EndingFlow, IsNoneWhereTheModeStaysOrTheFlowBegins) {
    const Realised realised(
        model.component("T", draft().transition("A", "A").transition("B", "A").transition("B", "B")));
    for (std::size_t position : {0u, 1u, 2u}) EXPECT_EQ(realised.effects(position), "") << position;
}

TEST_F(EndingFlow, ADataConnectionEndsLikeAFlow) {
    const Realised realised(
        model.component("T", ComponentDraft()
                                 .mode("A", VornModeType::initial)
                                 .mode("B")
                                 .dataPort<VornInt>("from", PortDirection::in)
                                 .dataPort<VornReal>("to", PortDirection::out, constant<VornReal>(2.5))
                                 .connectData("from", "to", {"A"})
                                 .transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "to{=2.5:real} := 2.5;");
}

TEST_F(EndingFlow, LeavesThePortsOfSubcomponentsAlone) {
    const auto& sub = model.component(
        "Sub", ComponentDraft().mode("m", VornModeType::initial).dataPort<VornInt>("in", PortDirection::in));
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .subcomponent("sub", sub)
                                                     .flow(var<VornInt>("sub.in"), constant<VornInt>(1), {"A"})
                                                     .transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "");
}

class ArisingData : public VornModelConstructorTest {
  protected:
    ComponentDraft draft() {
        ComponentDraft result;
        result.mode("A", VornModeType::initial).mode("B");
        result.data<VornInt>("always", constant<VornInt>(1));
        result.data<VornInt>("n", constant<VornInt>(4), {"B"});
        result.data<VornBool>("bare", nullptr, {"B"});
        result.data<VornInt>("both", constant<VornInt>(3), {"A", "B"});
        return result;
    }
};

TEST_F(ArisingData, StartsFromItsDefaultOrItsTypes) {
    const Realised realised(model.component("T", draft().transition("A", "B")));
    EXPECT_EQ(realised.effects(0), "bare{=0:bool} := 0;n{=4:int} := 4;");
    realised.valuation->setValue<VornInt>(realised.root->valueRef(realised.part("n")), 77);
    for (const auto& effect : realised.transition(0).effects()) effect->applyAssignment();
    EXPECT_EQ(realised.value<VornInt>("n"), 4);
}

TEST_F(ArisingData, OnTheWayBackItsValueStaysInTheSlot) {
    const Realised realised(model.component("T", draft().transition("B", "A")));
    EXPECT_EQ(realised.effects(0), "");
}

TEST_F(ArisingData, IsLeftToTheTransitionThatWritesItItself) {
    const Realised realised(model.component(
        "T", draft().transition("A", "B", "", nullptr, {assign(var<VornInt>("n"), constant<VornInt>(8))})));
    EXPECT_EQ(realised.effects(0), "n{=4:int} := 8;bare{=0:bool} := 0;");
}

TEST_F(ArisingData, AnImplicitEffectOnAClockTouchesContinuous) {
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .data<VornClock>("t", nullptr, {"B"})
                                                     .transition("A", "B")
                                                     .transition("B", "A")));
    EXPECT_TRUE(realised.transition(0).touchesContinuous());
    EXPECT_FALSE(realised.transition(1).touchesContinuous());
}

TEST_F(ArisingData, AReactivationHasTheWrittenEffectsOnly) {
    const Realised realised(
        model.component("T", draft()
                                 .dataPort<VornInt>("out", PortDirection::out, constant<VornInt>(5))
                                 .flow(var<VornInt>("out"), constant<VornInt>(1), {"A"})
                                 .reactivation("A", "B", {assign(var<VornInt>("always"), constant<VornInt>(2))})));
    const auto& reactivations = realised.root->reactivationTransitions();
    ASSERT_EQ(reactivations.size(), 1u);
    EXPECT_EQ(printed(*reactivations[0]), "(A)-[(@activation)[6] then always{=1:int} := 2]->1 (B)");
    EXPECT_EQ(reactivations[0]->guard(), nullptr);
    EXPECT_EQ(reactivations[0]->trigger()->direction(), PortDirection::in);
    EXPECT_FALSE(reactivations[0]->trigger()->nonblocking());
    EXPECT_EQ(reactivations[0]->trigger()->realises()->id(), 4294967293u);
}

TEST_F(VornModelConstructorTest, ATriggerResetBringsItsOwnPortOncePerComponent) {
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .eventPort("go", PortDirection::in)
                                                     .transition("A", "B", "go")
                                                     .transition("B", "A", "reset")
                                                     .transition("A", "A", "reset")));
    ASSERT_EQ(realised.root->eventPorts().size(), 2u);
    const RealisedEventPort& reset = *realised.root->eventPorts()[1];
    EXPECT_EQ(reset.identifier(), "reset");
    EXPECT_EQ(reset.id(), 1u) << "behind the declared port and before the data subcomponent";
    EXPECT_EQ(reset.realises()->id(), 4294967295u);
    EXPECT_EQ(reset.direction(), PortDirection::in);
    EXPECT_FALSE(reset.nonblocking());
    EXPECT_EQ(realised.part("mode")->id(), 2u);
    EXPECT_EQ(realised.transition(1).trigger(), &reset);
    EXPECT_EQ(realised.transition(2).trigger(), &reset);
}

TEST_F(VornModelConstructorTest, ATriggerResetOfASubcomponentOrOfAReactivationBringsNoPort) {
    const auto& sub =
        model.component("Sub", ComponentDraft().mode("m", VornModeType::initial).eventPort("reset", PortDirection::in));
    const Realised realised(model.component(
        "T",
        ComponentDraft().mode("A", VornModeType::initial).subcomponent("sub", sub).transition("A", "A", "sub.reset")));
    EXPECT_TRUE(realised.root->eventPorts().empty());
    EXPECT_EQ(realised.transition(0).trigger(), realised.at("sub").eventPorts()[0].get());
    EXPECT_TRUE(realised.transition(0).hasDirectCommunicationTrigger());
}

TEST_F(VornModelConstructorTest, ADeclaredPortResetIsWhatTheTriggerResolvesTo) {
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .eventPort("reset", PortDirection::in)
                                                     .transition("A", "A", "reset")));
    ASSERT_EQ(realised.root->eventPorts().size(), 2u) << "the implicit port is made whatever is declared";
    EXPECT_EQ(realised.transition(0).trigger(), realised.root->eventPorts()[0].get());
    EXPECT_EQ(realised.transition(0).trigger()->realises()->id(), 10u);
}

TEST_F(VornModelConstructorTest, EachTransitionWithoutATriggerHasAPrivatePortTau) {
    const Realised realised(model.component(
        "T", ComponentDraft().mode("A", VornModeType::initial).transition("A", "A").transition("A", "A")));
    ASSERT_EQ(realised.root->eventPorts().size(), 2u);
    const RealisedEventPort* first = realised.transition(0).trigger();
    const RealisedEventPort* second = realised.transition(1).trigger();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->id(), 1u) << "behind the data subcomponent";
    EXPECT_EQ(second->id(), 2u);
    for (const RealisedEventPort* tau : {first, second}) {
        EXPECT_EQ(tau->identifier(), "tau");
        EXPECT_EQ(tau->direction(), PortDirection::out);
        EXPECT_TRUE(tau->nonblocking());
        EXPECT_EQ(tau->realises()->id(), 4294967294u);
        EXPECT_FALSE(tau->stochastic());
    }
    EXPECT_FALSE(realised.transition(0).hasDirectCommunicationTrigger());
}

TEST_F(VornModelConstructorTest, TwoInstancesShareModeIdsAndNothingElse) {
    const auto& pump = model.component("Pump", ComponentDraft()
                                                   .mode("A", VornModeType::initial)
                                                   .mode("B")
                                                   .eventPort("go", PortDirection::in)
                                                   .dataPort<VornInt>("level", PortDirection::out)
                                                   .data<VornInt>("n")
                                                   .transition("A", "B", "go"));
    const Realised realised(model.component(
        "T",
        ComponentDraft().mode("m", VornModeType::initial).subcomponent("first", pump).subcomponent("second", pump)));
    const VornComponentRealisation& first = realised.at("first");
    const VornComponentRealisation& second = realised.at("second");
    EXPECT_EQ(first.id(), 1u);
    EXPECT_EQ(second.id(), 2u);
    for (const char* name : {"go", "level", "n", "mode"})
        EXPECT_NE(realised.part(std::string("first.") + name)->id(), realised.part(std::string("second.") + name)->id())
            << name;
    EXPECT_NE(first.valueRef(realised.part("first.n")), second.valueRef(realised.part("second.n")));
    EXPECT_NE(first.valueRef(realised.part("first.level")), second.valueRef(realised.part("second.level")));
    EXPECT_NE(first.transitions()[0]->id(), second.transitions()[0]->id());
    ASSERT_EQ(first.modes().size(), second.modes().size());
    for (std::size_t i = 0; i < first.modes().size(); ++i) {
        EXPECT_EQ(first.modes()[i]->id(), second.modes()[i]->id());
        EXPECT_NE(first.modes()[i], second.modes()[i]);
    }
}

TEST_F(VornModelConstructorTest, AClockStandsStillWhereItIsNotPartOfTheModeAndRunsOnWhereItIs) {
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .data<VornClock>("t", constant<VornClock>(2.0), {"A"})));
    EXPECT_TRUE(realised.mode("A").trajectories().empty());
    const auto& stopped = realised.mode("B").trajectories();
    ASSERT_EQ(stopped.size(), 1u);
    EXPECT_EQ(stopped[0]->variable()->part(), realised.part("t"));
    EXPECT_EQ(stopped[0]->variable()->reference(), realised.root->valueRef(realised.part("t")));
    EXPECT_EQ(stopped[0]->target()->reference(), realised.root->valueRefTrajectory(realised.part("t")));
    EXPECT_TRUE(stopped[0]->refsInAssignment().empty());
    stopped[0]->applyTime(10.0);
    EXPECT_EQ(realised.value<VornClock>("t"), 2.0);
    EXPECT_EQ(realised.rateOf<VornClock>("t"), 1.0);
    stopped[0]->applyAssignment();
    EXPECT_EQ(realised.rateOf<VornClock>("t"), 0.0);
}

TEST_F(VornModelConstructorTest, AContinuousVariableWithoutAnEquationIsFrozenEvenWhereItExists) {
    const Realised realised(
        model.component("T", ComponentDraft()
                                 .mode("A", VornModeType::initial, nullptr, {rate<VornReal>("v", 1.5)})
                                 .mode("B")
                                 .mode("C", VornModeType::plain, nullptr, {rate<VornBool>("v", true)})
                                 .data<VornContinuous>("v")
                                 .data<VornContinuous>("w", nullptr, {"B"})));
    EXPECT_EQ(printed(realised.mode("A")), "A: initial mode while v{=0:continuous}' = 1.5 and w{=0:continuous}' = 0");
    EXPECT_EQ(printed(realised.mode("B")), "B: mode while v{=0:continuous}' = 0 and w{=0:continuous}' = 0");
    EXPECT_EQ(printed(realised.mode("C")), "C: mode while v{=0:continuous}' = 0 and w{=0:continuous}' = 0")
        << "an equation whose rate is no number is none";
}

TEST_F(VornModelConstructorTest, ModeListsPutElementsIntoTheBucketsOfTheirModes) {
    const auto& sub = model.component("Sub", ComponentDraft().mode("m", VornModeType::initial));
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .mode("B")
                                                     .mode("C")
                                                     .eventPort("p", PortDirection::in)
                                                     .data<VornInt>("x", nullptr, {"B", "C"})
                                                     .subcomponent("sub", sub, {"B"})
                                                     .connectEvent("p", "p", {"C"})
                                                     .flow(var<VornInt>("x"), constant<VornInt>(1), {"C", "A"})));
    const auto counts = [&](const std::string& name) {
        const RealisedMode* mode = &realised.mode(name);
        return std::vector<std::size_t>{
            realised.root->activeData(mode).size(), realised.root->activeSubcomponents(mode).size(),
            realised.root->activeConnections(mode).size(), realised.root->activeFlows(mode).size()};
    };
    EXPECT_EQ(counts("A"), (std::vector<std::size_t>{1, 0, 0, 1})) << "the variable \"mode\" exists everywhere";
    EXPECT_EQ(counts("B"), (std::vector<std::size_t>{2, 1, 0, 0}));
    EXPECT_EQ(counts("C"), (std::vector<std::size_t>{2, 0, 1, 1}));
    EXPECT_EQ(realised.at("sub").inModes(), ModeList{&realised.mode("B")});
    EXPECT_EQ(realised.root->connections()[0]->modes(), ModeList{&realised.mode("C")});
}

TEST_F(VornModelConstructorTest, AModeListKeepsTheOrderOfItsNames) {
    RealisedMode a(0, "a");
    RealisedMode b(1, "b");
    const std::map<std::string, RealisedMode*> modes{{"a", &a}, {"b", &b}};
    EXPECT_EQ(realisedModelist({"b", "a", "b"}, modes), (ModeList{&b, &a, &b}));
    EXPECT_TRUE(realisedModelist({}, modes).empty());
    EXPECT_THROW(realisedModelist({"a", "c"}, modes), model_exception);
}

TEST_F(VornModelConstructorTest, ADataConnectionIsAFlowThatReadsItsSource) {
    const auto& sub = model.component("Sub", ComponentDraft()
                                                 .mode("m", VornModeType::initial)
                                                 .dataPort<VornInt>("out", PortDirection::out, constant<VornInt>(3)));
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .dataPort<VornReal>("to", PortDirection::out)
                                                     .subcomponent("sub", sub)
                                                     .connectData("sub.out", "to")));
    ASSERT_EQ(realised.root->flows().size(), 1u);
    EXPECT_TRUE(realised.root->connections().empty());
    const RealisedFlow& flow = *realised.root->flows()[0];
    EXPECT_EQ(
        flow.refsInAssignment(),
        (std::set<TypedValueRef>{{VornDataTypeTag::VornInt, realised.at("sub").valueRef(realised.part("sub.out"))}}));
    flow.applyAssignment();
    EXPECT_EQ(realised.value<VornReal>("to"), 3.0);
}

TEST_F(VornModelConstructorTest, ALiteralOfASubcomponentsModeBecomesTheRealMode) {
    const auto& sub = model.component("Sub", ComponentDraft().mode("off", VornModeType::initial).mode("on"));
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .subcomponent("sub", sub)
                                                     .data<VornModeVal>("seen")
                                                     .flow(var<VornModeVal>("seen"), modeLiteral("sub.mode:on"))));
    realised.root->flows()[0]->applyAssignment();
    ASSERT_NE(realised.value<VornModeVal>("seen"), nullptr);
    EXPECT_EQ(realised.value<VornModeVal>("seen"), realised.at("sub").modes()[1].get());
    EXPECT_EQ(realised.value<VornModeVal>("seen")->name(), "on");
}

TEST_F(VornModelConstructorTest, AnUnresolvedNameIsLoggedAndTheModelIsRealisedAllTheSame) {
    const CapturedLog log(LogLevel::Warn);
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial, plainly(var<VornBool>("lost")))
                                                     .data<VornInt>("n")
                                                     .transition("A", "A", "", plainly(var<VornBool>("gone")),
                                                                 {assign(var<VornInt>("n"), var<VornInt>("away"))})));
    EXPECT_EQ(log.texts("root.realisation.valref"),
              (std::vector<std::string>{"Unable to find id linked to variable lost",
                                        "Unable to find id linked to variable gone",
                                        "Unable to find id linked to variable away"}));
    EXPECT_THROW(realised.mode("A").invariantHolds(), missing_operand);
    EXPECT_THROW(realised.transition(0).guardHolds(), missing_operand);
    EXPECT_THROW(realised.transition(0).effects()[0]->applyAssignment(), missing_operand);
    EXPECT_EQ(printed(realised.mode("A")), "A: initial mode while (null)");
}

TEST_F(VornModelConstructorTest, AnInvariantCannotNameWhatIsBelow) {
    const CapturedLog log(LogLevel::Warn);
    const auto& sub = model.component("Sub", ComponentDraft().mode("m", VornModeType::initial).data<VornBool>("b"));
    const Realised realised(model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial, plainly(var<VornBool>("sub.b")))
                                                     .subcomponent("sub", sub)
                                                     .transition("A", "A", "", plainly(var<VornBool>("sub.b")))));
    EXPECT_EQ(log.texts("root.realisation.valref"),
              std::vector<std::string>{"Unable to find id linked to variable sub.b"});
    EXPECT_THROW(realised.mode("A").invariantHolds(), missing_operand);
    EXPECT_FALSE(realised.transition(0).guardHolds());
}

TEST_F(VornModelConstructorTest, ASecondRealisationContinuesTheNumbersWithAStoreOfItsOwn) {
    const auto& component =
        model.component("T", ComponentDraft().mode("A", VornModeType::initial).data<VornInt>("n").transition("A", "A"));
    VornModelConstructor constructor;
    const auto [first, firstValues] = constructor.realise(&component);
    const auto [second, secondValues] = constructor.realise(&component);
    const std::unique_ptr<VornComponentRealisation> one(first);
    const std::unique_ptr<VornComponentRealisation> two(second);
    EXPECT_EQ(one->id(), 0u);
    EXPECT_EQ(two->id(), 1u);
    EXPECT_EQ(two->data()[0]->id(), 3u);
    EXPECT_EQ(two->transitions()[0]->id(), 1u);
    EXPECT_NE(firstValues, secondValues);
    EXPECT_EQ(one->valueRef(one->data()[1].get()), two->valueRef(two->data()[1].get()));
}

TEST_F(VornModelConstructorTest, ThreadsRealiseOneSyntaxTreeSideBySide) {
    const auto& sub = model.component("Sub", ComponentDraft()
                                                 .mode("off", VornModeType::initial)
                                                 .mode("on")
                                                 .data<VornClock>("t", nullptr, {"on"})
                                                 .transition("off", "on", "reset"));
    const auto& top = model.component("T", ComponentDraft()
                                               .mode("A", VornModeType::initial)
                                               .subcomponent("x", sub)
                                               .subcomponent("y", sub)
                                               .data<VornModeVal>("seen")
                                               .flow(var<VornModeVal>("seen"), modeLiteral("x.mode:on")));
    std::vector<std::string> texts(4);
    std::vector<std::thread> threads;
    for (std::string& text : texts) threads.emplace_back([&text, &top] { text = printed(*Realised(top).root); });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& text : texts) EXPECT_EQ(text, texts[0]);
    EXPECT_NE(texts[0], "");
}

/// `variable <= bound`, as a plain condition.
VornLinearExpression* atMost(const std::string& variable, double bound) {
    return plainly(new TypedBinaryOperator<VornLEq, VornBool, VornClock, VornReal>(
        new TypedVornVariable<VornClock>(variable), constant<VornReal>(bound)));
}
VornLinearExpression* above(const std::string& variable, long bound) {
    return plainly(new TypedBinaryOperator<VornGt, VornBool, VornInt, VornInt>(new TypedVornVariable<VornInt>(variable),
                                                                               constant<VornInt>(bound)));
}

// Two levels. Numbers of declarations count in the order of the drafts (ports from 10: start 10, fail 11, flowOut 12,
// speed 13, go 14, result 15; modes from 0: idle 0, on 1, dead 2, work 3, stop 4). Numbers of parts count depth first,
// ports before data, each by name: go 0, result 1, age 2, mode 3, total 4; in the pump fail 5, flowOut 6, speed 7,
// start 8, its implicit reset 9, count 10, level 11, mode 12, spare 13, t 14, two tau 15 and 16, @activation 17; and at
// last the plant's tau 18.
TEST_F(VornModelConstructorTest, AModelOfTwoLevelsPrintsAsDerivedByHand) {
    const auto& pump = model.component(
        "Pump", ComponentDraft()
                    .eventPort("start", PortDirection::in)
                    .errorPort("fail", 0.5)
                    .dataPort<VornInt>("flowOut", PortDirection::out, constant<VornInt>(3))
                    .dataPort<VornReal>("speed", PortDirection::in)
                    .data<VornClock>("t", constant<VornClock>(1.5), {"on"})
                    .data<VornContinuous>("level", constant<VornContinuous>(10.0))
                    .data<VornInt>("count", constant<VornInt>(5), {"on"})
                    .data<VornBool>("spare", nullptr, {"on"})
                    .mode("idle", VornModeType::initial)
                    .mode("on", VornModeType::plain, atMost("t", 5.0), {rate<VornReal>("level", -2.0)})
                    .mode("dead", VornModeType::error)
                    .flow(var<VornInt>("flowOut"), constant<VornInt>(42), {"on"})
                    .transition("idle", "on", "start")
                    .transition("on", "idle")
                    .transition("on", "idle", "", nullptr, {assign(var<VornInt>("flowOut"), constant<VornInt>(0))})
                    .transition("idle", "on", "reset", nullptr, {assign(var<VornClock>("t"), constant<VornInt>(0))})
                    .reactivation("idle", "on", {assign(var<VornContinuous>("level"), constant<VornReal>(1.0))}));
    const Realised realised(model.component(
        "Plant",
        ComponentDraft()
            .eventPort("go", PortDirection::in)
            .dataPort<VornInt>("result", PortDirection::out)
            .data<VornInt>("total", constant<VornInt>(4))
            .data<VornClock>("age")
            .mode("work", VornModeType::initial)
            .mode("stop")
            .subcomponent("pump", pump, {"work"})
            .connectEvent("go", "pump.start", {"work"})
            .connectData("pump.flowOut", "result", {"work"})
            .flow(var<VornInt>("total"), new TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>(
                                             new TypedVornVariable<VornInt>("result"), constant<VornInt>(1)))
            .transition("work", "stop", "pump.fail")
            .transition("stop", "work", "", above("total", 3), {assign(var<VornInt>("total"), constant<VornInt>(0))})));
    EXPECT_EQ(printed(*realised.root),
              "Component: 0 implementing Plant.i\n"
              "\tData ports:\n"
              "\t\t[1] (from feature [15]) (result)\n"
              "\tEvent ports:\n"
              "\t\t(go)[0]\n"
              "\t\t(tau)[18]\n"
              "\tData:\n"
              "\t\t[2] (age)\n"
              "\t\t[3] (mode)\n"
              "\t\t[4] (total)\n"
              "\tEvent connections:\n"
              "\t\t[0] -> [8] (event port go -> pump.start in modes (work);)\n"
              "\tFlows:\n"
              "\t\tresult{=0:int} := flowOut{=3:int} in modes (work)\n"
              "\t\ttotal{=4:int} := result{=0:int} + 1\n"
              "\tModes:\n"
              "\t\tstop: mode\n"
              "\t\twork: initial mode\n"
              "\tTransitions:\n"
              "\t\t(work)-[(fail)[5] then result{=0:int} := 0]->4 (stop)\n"
              "\t\t(stop)-[(tau)[18] when total{=4:int} > 3 then total{=4:int} := 0]->3 (work)\n"
              "\n"
              "Component: 1 implementing Pump.i\n"
              "\tData ports:\n"
              "\t\t[6] (from feature [12]) (flowOut)\n"
              "\t\t[7] (from feature [13]) (speed)\n"
              "\tEvent ports:\n"
              "\t\t(fail)[5]\n"
              "\t\t(start)[8]\n"
              "\t\t(reset)[9]\n"
              "\t\t(tau)[15]\n"
              "\t\t(tau)[16]\n"
              "\t\t(@activation)[17]\n"
              "\tData:\n"
              "\t\t[10] (count)\n"
              "\t\t[11] (level)\n"
              "\t\t[12] (mode)\n"
              "\t\t[13] (spare)\n"
              "\t\t[14] (t)\n"
              "\tFlows:\n"
              "\t\tflowOut{=3:int} := 42 in modes (on)\n"
              "\tModes:\n"
              "\t\tdead: error mode while t{=1.5:clock}' = 0 and level{=10:continuous}' = 0\n"
              "\t\tidle: initial mode while t{=1.5:clock}' = 0 and level{=10:continuous}' = 0\n"
              "\t\ton: mode while t{=1.5:clock} <= 5 and level{=10:continuous}' = -2\n"
              "\tTransitions:\n"
              "\t\t(idle)-[(start)[8] then count{=5:int} := 5; spare{=0:bool} := 0; t{=1.5:clock} := 1.5]->1 (on)\n"
              "\t\t(on)-[(tau)[15] then flowOut{=3:int} := 3]->0 (idle)\n"
              "\t\t(on)-[(tau)[16] then flowOut{=3:int} := 0]->0 (idle)\n"
              "\t\t(idle)-[(reset)[9] then t{=1.5:clock} := 0; count{=5:int} := 5; spare{=0:bool} := 0]->1 (on)\n"
              "\tReactivation Transitions:\n"
              "\t\t(idle)-[(@activation)[17] then level{=10:continuous} := 1]->1 (on)\n");
    std::vector<unsigned int> ids;
    for (const auto& each : realised.at("pump").transitions()) ids.push_back(each->id());
    for (const auto& each : realised.at("pump").reactivationTransitions()) ids.push_back(each->id());
    for (const auto& each : realised.root->transitions()) ids.push_back(each->id());
    EXPECT_EQ(ids, (std::vector<unsigned int>{0, 1, 2, 3, 4, 5, 6})) << "those below come first";
}

}  // namespace
}  // namespace vornrun::test
