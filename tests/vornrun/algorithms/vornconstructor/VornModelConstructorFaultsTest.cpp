// What VornModelConstructor makes of models that have no sound meaning: a message, and never a bad access.

#include <functional>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/CapturedLog.h"
#include "tests/support/SyntaxModel.h"
#include "vornrun/algorithms/vornconstructor/VornModelConstructor.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {
namespace {

using namespace direct;

void realise(const VornComponentImplementation& implementation) {
    VornModelConstructor constructor;
    const std::unique_ptr<VornComponentRealisation> root(constructor.realise(&implementation).first);
}

std::string faultOf(const VornComponentImplementation& implementation) {
    try {
        realise(implementation);
    } catch (const model_exception& fault) {
        return fault.what();
    }
    return "nothing was thrown";
}

struct Fault {
    const char* name;
    /// Adds the fault to a component with the modes A and B, an event port "go", data ports "in" and "out" of type int,
    /// and the data subcomponents n (int), flag (bool) and v (continuous).
    std::function<void(ComponentDraft&)> spoil;
    const char* text;  ///< behind "Component main.faulty: "
};
void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.name; }

class ModelFault : public testing::TestWithParam<Fault> {};

TEST_P(ModelFault, IsRefusedWithTheFullNamesOfComponentAndThing) {
    SyntaxModel model;
    ComponentDraft draft;
    draft.mode("A", VornModeType::initial)
        .eventPort("go", PortDirection::in)
        .dataPort<VornInt>("in", PortDirection::in)
        .dataPort<VornInt>("out", PortDirection::out)
        .data<VornInt>("n")
        .data<VornBool>("flag")
        .data<VornContinuous>("v");
    GetParam().spoil(draft);
    const auto& faulty = model.component("Faulty", draft);
    const auto& top =
        model.component("Top", ComponentDraft().mode("m", VornModeType::initial).subcomponent("faulty", faulty));
    EXPECT_EQ(faultOf(top), std::string("Component main.faulty: ") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    ModeLists, ModelFault,
    testing::Values(
        Fault{"OfData",
              [](ComponentDraft& d) {
                  d.data<VornInt>("x", nullptr, {"A", "nowhere"});
              },
              "the mode list of data subcomponent \"x\": there is no mode \"nowhere\""},
        Fault{"OfAnEventConnection", [](ComponentDraft& d) { d.connectEvent("go", "go", {"nowhere"}); },
              "the mode list of connection \"event port go -> go in modes (nowhere);\": there is no mode \"nowhere\""},
        Fault{"OfADataConnection", [](ComponentDraft& d) { d.connectData("in", "out", {""}); },
              "the mode list of connection \"data port in -> out in modes ();\": there is no mode \"\""},
        Fault{"OfAFlow", [](ComponentDraft& d) { d.flow(var<VornInt>("n"), constant<VornInt>(1), {"nowhere"}); },
              "the mode list of flow \"n :=  1\": there is no mode \"nowhere\""}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Connections, ModelFault,
    testing::Values(Fault{"EventSourceNamesNothing", [](ComponentDraft& d) { d.connectEvent("zz", "go"); },
                          "connection \"event port zz -> go;\": \"zz\" names no event port"},
                    Fault{"EventTargetNamesNothing", [](ComponentDraft& d) { d.connectEvent("go", "sub.zz"); },
                          "connection \"event port go -> sub.zz;\": \"sub.zz\" names no event port"},
                    Fault{"EventConnectionOnADataPort", [](ComponentDraft& d) { d.connectEvent("go", "in"); },
                          "connection \"event port go -> in;\": \"in\" names no event port"},
                    Fault{"EventConnectionOnAVariable", [](ComponentDraft& d) { d.connectEvent("n", "go"); },
                          "connection \"event port n -> go;\": \"n\" names no event port"},
                    Fault{"DataSourceNamesNothing", [](ComponentDraft& d) { d.connectData("zz", "out"); },
                          "connection \"data port zz -> out;\": \"zz\" names no data port"},
                    Fault{"DataTargetNamesNothing", [](ComponentDraft& d) { d.connectData("in", "zz"); },
                          "connection \"data port in -> zz;\": \"zz\" names no data port"},
                    Fault{"DataConnectionOnAnEventPort", [](ComponentDraft& d) { d.connectData("in", "go"); },
                          "connection \"data port in -> go;\": \"go\" names no data port"},
                    Fault{"DataConnectionOfTypesThatDoNotFit", [](ComponentDraft& d) { d.connectData("flag", "out"); },
                          "connection \"data port flag -> out;\": the types of its ends do not fit"}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Assignments, ModelFault,
    testing::Values(
        Fault{"FlowOfTypesThatDoNotFit", [](ComponentDraft& d) { d.flow(var<VornBool>("flag"), constant<VornInt>(1)); },
              "flow \"flag :=  1\": the types of its sides do not fit"},
        Fault{"FlowToNothing", [](ComponentDraft& d) { d.flow(var<VornInt>("zz"), constant<VornInt>(1)); },
              "the left side of an assignment, \"zz\", names nothing with a value"},
        Fault{"FlowToAnEventPort", [](ComponentDraft& d) { d.flow(var<VornBool>("go"), constant<VornBool>(true)); },
              "the left side of an assignment, \"go\", names nothing with a value"},
        Fault{"FlowToNoVariableAtAll", [](ComponentDraft& d) { d.flow(nullptr, constant<VornInt>(1)); },
              "the left side of an assignment is no variable of a type that can be assigned there"},
        Fault{"FlowFromNothing", [](ComponentDraft& d) { d.flow(var<VornInt>("n"), nullptr); },
              "the assignment to \"n\" has no valid right side"},
        Fault{"EffectOfTypesThatDoNotFit",
              [](ComponentDraft& d) {
                  d.transition("A", "A", "go", nullptr, {assign(var<VornInt>("n"), constant<VornEnum>("red"))});
              },
              "transition \"A-[ go  then n :=  red]->A; -- 0\": the types of the sides of effect \"n :=  red\" do not "
              "fit"},
        Fault{"EffectOnNothing",
              [](ComponentDraft& d) {
                  d.transition("A", "A", "go", nullptr, {assign(var<VornInt>("zz"), constant<VornInt>(1))});
              },
              "the left side of an assignment, \"zz\", names nothing with a value"},
        Fault{"EffectWithoutAValue",
              [](ComponentDraft& d) { d.transition("A", "A", "go", nullptr, {assign(var<VornInt>("n"), nullptr)}); },
              "the assignment to \"n\" has no valid right side"},
        Fault{
            "EffectOfAReactivation",
            [](ComponentDraft& d) { d.reactivation("A", "A", {assign(var<VornBool>("flag"), constant<VornInt>(1))}); },
            "transition \"A-[  then flag :=  1]->A; -- 0\": the types of the sides of effect \"flag :=  1\" do not "
            "fit"},
        Fault{"TrajectoryOfNothing",
              [](ComponentDraft& d) { d.mode("B", VornModeType::plain, nullptr, {rate<VornReal>("zz", 1.0)}); },
              "the left side of an assignment, \"zz\", names nothing with a value"},
        Fault{"TrajectoryWithoutAConstant",
              [](ComponentDraft& d) {
                  d.mode(
                      "B", VornModeType::plain, nullptr,
                      {new TypedVornTrajectoryEquation<VornReal>(new TypedVornVariable<VornContinuous>("v"), nullptr)});
              },
              "the assignment to \"v\" has no valid right side"}),
    [](const auto& test) { return std::string(test.param.name); });

VornLinearExpression* comparisonOf(VornExpressionTree* variable) {
    auto* comparison = new LinExp(constant<VornReal>(1.0), parser::OperatorType::Lt);
    comparison->addTerm(variable, variable->clone(), constant<VornReal>(1.0));
    auto* clause = new Clause(nullptr);
    clause->addExpr(comparison);
    return new VornLinearExpression(constant<VornBool>(true), {clause});
}

INSTANTIATE_TEST_SUITE_P(
    Others, ModelFault,
    testing::Values(Fault{"TriggerNamesNothing", [](ComponentDraft& d) { d.transition("A", "A", "zz"); },
                          "transition \"A-[ zz ]->A; -- 0\": its trigger \"zz\" names no event port"},
                    Fault{"TriggerInNoSubcomponent", [](ComponentDraft& d) { d.transition("A", "A", "sub.zz"); },
                          "transition \"A-[ sub.zz ]->A; -- 0\": its trigger \"sub.zz\" names no event port"},
                    Fault{"TriggerIsAVariable", [](ComponentDraft& d) { d.transition("A", "A", "n"); },
                          "transition \"A-[ n ]->A; -- 0\": its trigger \"n\" names no event port"},
                    Fault{"TriggerIsADataPort", [](ComponentDraft& d) { d.transition("A", "A", "in"); },
                          "transition \"A-[ in ]->A; -- 0\": its trigger \"in\" names no event port"},
                    Fault{"GuardComparesNoVariable",
                          [](ComponentDraft& d) { d.transition("A", "A", "go", comparisonOf(constant<VornInt>(7))); },
                          "\"7\" stands for a variable in a linear comparison, but is none"},
                    Fault{
                        "InvariantComparesNoVariable",
                        [](ComponentDraft& d) { d.mode("B", VornModeType::plain, comparisonOf(constant<VornInt>(7))); },
                        "\"7\" stands for a variable in a linear comparison, but is none"}),
    [](const auto& test) { return std::string(test.param.name); });

class ModelFaultTest : public testing::Test {
  protected:
    SyntaxModel model;
};

TEST_F(ModelFaultTest, AModeListOfASubcomponentNamesTheComponentAboveIt) {
    const auto& sub = model.component("Sub", ComponentDraft().mode("m", VornModeType::initial));
    EXPECT_EQ(faultOf(model.component(
                  "Top", ComponentDraft().mode("A", VornModeType::initial).subcomponent("sub", sub, {"m"}))),
              "Component main: the mode list of subcomponent \"sub\": there is no mode \"m\"");
}

TEST_F(ModelFaultTest, TheDummyModeCannotBeNamed) {
    EXPECT_EQ(faultOf(model.component("Top", ComponentDraft().data<VornInt>("n", nullptr, {"dummy"}))),
              "Component main: the mode list of data subcomponent \"n\": there is no mode \"dummy\"");
}

TEST_F(ModelFaultTest, ASubcomponentWithoutAnImplementationIsRefused) {
    const VornComponentDeclaration type("Top", VornComponentCategory::system, {});
    const VornComponentImplementation top("i", &type, {new VornSubComponent(0, "sub", "Nowhere.i", {}, {})}, {}, {}, {},
                                          {}, {}, {});
    EXPECT_EQ(faultOf(top), "Component main: subcomponent \"sub\" has no implementation");
}

class MissingMode : public ModelFaultTest {
  protected:
    void expectOutOfRange(const ComponentDraft& draft, const std::string& record) {
        const auto& sub = model.component("Sub", draft);
        const auto& top =
            model.component("Top", ComponentDraft().mode("m", VornModeType::initial).subcomponent("sub", sub));
        const CapturedLog log(LogLevel::Error);
        try {
            realise(top);
            FAIL() << "a transition needs both of its modes";
        } catch (const std::out_of_range& fault) {
            EXPECT_STREQ(fault.what(), "map::at");
        }
        EXPECT_EQ(log.records(), (std::vector<LogRecord>{{LogLevel::Error, "root.constructors.model", record}}));
    }
};

TEST_F(MissingMode, OfATransitionIsLoggedAndLeavesAsOutOfRange) {
    expectOutOfRange(ComponentDraft().mode("A", VornModeType::initial).transition("A", "zz"),
                     "Component main.sub: transition \"A-[ ]->zz; -- 0\" refers to mode \"zz\", which does not exist");
    expectOutOfRange(ComponentDraft().mode("A", VornModeType::initial).transition("yy", "A"),
                     "Component main.sub: transition \"yy-[ ]->A; -- 1\" refers to mode \"yy\", which does not exist");
}

TEST_F(MissingMode, OfAReactivationIsLoggedAndLeavesAsOutOfRange) {
    expectOutOfRange(ComponentDraft().mode("A", VornModeType::initial).reactivation("zz", "A"),
                     "Component main.sub: transition \"zz-[ ]->A; -- 0\" refers to mode \"zz\", which does not exist");
}

TEST_F(MissingMode, TheDummyModeIsNoTargetEither) {
    expectOutOfRange(ComponentDraft().transition("dummy", "dummy"),
                     "Component main.sub: transition \"dummy-[ ]->dummy; -- 0\" refers to mode \"dummy\", which does "
                     "not exist");
}

/// Lets the subcomponent "next" of an implementation that has one instantiate another implementation.
void redirect(const VornComponentImplementation& implementation, const VornComponentImplementation& next) {
    implementation.subcomponents().at("next")->setImplementation(const_cast<VornComponentImplementation*>(&next));
}

TEST_F(ModelFaultTest, AnImplementationThatContainsItselfIsRefused) {
    const auto& any = model.component("Any", ComponentDraft());
    const auto& self = model.component("Self", ComponentDraft().subcomponent("next", any));
    redirect(self, self);
    EXPECT_EQ(faultOf(self), "Component main.next: its implementation Self.i contains itself");
}

TEST_F(ModelFaultTest, ARootAboveARingOfImplementationsIsRefused) {
    const auto& any = model.component("Any", ComponentDraft());
    const auto& one = model.component("One", ComponentDraft().subcomponent("next", any));
    const auto& two = model.component("Two", ComponentDraft().subcomponent("next", one));
    redirect(one, two);
    EXPECT_EQ(faultOf(model.component("Top", ComponentDraft().subcomponent("ring", one))),
              "Component main.ring.next.next: its implementation One.i contains itself");
}

TEST_F(ModelFaultTest, TheSameImplementationSideBySideAndOnTwoLevelsIsSound) {
    const auto& leaf = model.component("Leaf", ComponentDraft());
    const auto& middle = model.component("Middle", ComponentDraft().subcomponent("a", leaf).subcomponent("b", leaf));
    EXPECT_NO_THROW(realise(model.component(
        "Top", ComponentDraft().subcomponent("leaf", leaf).subcomponent("m", middle).subcomponent("n", middle))));
}

TEST_F(ModelFaultTest, AConstructorThatFailedOnceRealisesTheNextModel) {
    VornModelConstructor constructor;
    const auto& any = model.component("Any", ComponentDraft());
    const auto& self = model.component("Self", ComponentDraft().subcomponent("next", any));
    redirect(self, self);
    EXPECT_THROW(constructor.realise(&self), model_exception);
    redirect(self, any);
    std::unique_ptr<VornComponentRealisation> root;
    EXPECT_NO_THROW(root.reset(constructor.realise(&self).first));
}

/// The outermost of a chain of implementations, each with the one before as its subcomponent.
const VornComponentImplementation& nested(SyntaxModel& model, int depth) {
    const VornComponentImplementation* result = &model.component("Leaf", ComponentDraft());
    for (int i = 1; i < depth; ++i) result = &model.component("Level", ComponentDraft().subcomponent("s", *result));
    return *result;
}

TEST_F(ModelFaultTest, NestingDeeperThanTheStackAllowsIsRefused) {
    const std::string fault = faultOf(nested(model, 50000));
    EXPECT_EQ(fault.substr(0, 20), "Component main.s.s.s");
    EXPECT_NE(fault.find(": components are nested too deeply"), std::string::npos);
}

TEST_F(ModelFaultTest, ADepthOfAThousandIsNoTrouble) { EXPECT_NO_THROW(realise(nested(model, 1000))); }

TEST_F(ModelFaultTest, AVariableUnderAWrongTypeWhoseSlotExistsReadsThatSlot) {
    // Both stores have a first slot, and the name says which part it is, not what type it is read as.
    const auto& component = model.component("T", ComponentDraft()
                                                     .mode("A", VornModeType::initial)
                                                     .data<VornInt>("a", constant<VornInt>(5))
                                                     .data<VornReal>("b", constant<VornReal>(2.5))
                                                     .flow(var<VornReal>("b"), var<VornReal>("a")));
    VornModelConstructor constructor;
    const auto [realised, valuation] = constructor.realise(&component);
    const std::unique_ptr<VornComponentRealisation> root(realised);
    const auto* source = dynamic_cast<const RealisedVariable*>(root->flows()[0]->assignment());
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->type(), VornDataTypeTag::VornReal);
    EXPECT_EQ(source->part()->identifier(), "a");
    const auto* typed = dynamic_cast<const TypedRealisedVariable<VornReal>*>(source);
    ASSERT_NE(typed, nullptr);
    EXPECT_EQ(typed->evaluateDirect(), 2.5);
}

}  // namespace
}  // namespace vornrun::test
