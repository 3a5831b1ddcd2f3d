#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"

#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/algorithms/vornconstructor/RealisedModel.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun::test {
namespace {

using namespace direct;

constexpr const char* LOGGER = "root.constructors.model";

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

TEST_F(VornModelConstructorTest, AVariableUnderAWrongTypeIsRealisedAndFailsWhenItIsEvaluated) {
    const CapturedLog log(LogLevel::Warn);
    const Realised realised(
        model.component("T", ComponentDraft()
                                 .mode("A", VornModeType::initial)
                                 .data<VornInt>("n")
                                 .transition("A", "A", "", nullptr, {assign(var<VornEnum>("n"), var<VornEnum>("n"))})));
    EXPECT_EQ(log.texts("root.realisation.valref"), std::vector<std::string>());
    EXPECT_THAT([&] { realised.transition(0).effects()[0]->applyAssignment(); },
                testing::ThrowsMessage<model_exception>("Component main: variable \"n\" is used as VornEnum, which is "
                                                        "not the type that it was declared with"));
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

}  // namespace
}  // namespace vornrun::test
