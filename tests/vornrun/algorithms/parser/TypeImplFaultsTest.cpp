// Every structural fault of an implementation, with its whole text.

#include <gtest/gtest.h>

#include "tests/support/CaseName.h"
#include "tests/support/ParseModel.h"
#include "vornrun/algorithms/parser/TypeImplParser.h"
#include "vornrun/algorithms/parser/VornXmlException.h"

namespace vornrun::test {
namespace {

/// A model that has each element of an implementation exactly once, or first.
Xml soundDocument() {
    const Var x = var("x", Type::Clock), y = var("y", Type::Continuous), b = var("b", Type::Bool);
    ModelWriter model;
    model.implementation("T.i")
        .mode("m", invariant(x <= 5.0 && b), rate(y, 2.0))
        .transition("m", "m", on("go"), when(x >= 2.0 && b), set(b, true))
        .reactivation("m", "m", when(b))
        .connectData("p", "q", inModes("m"))
        .connectEvent("e", "f")
        .flow(b, !b)
        .subcomponent("s", "U.i")
        .data(b, false, observable);
    model.implementation("U.i");
    return model.document();
}

struct Fault {
    const char* name;
    void (*spoil)(Xml& document);
    const char* what;  // without the start that all have in common
};

class ImplementationFaults : public testing::TestWithParam<Fault> {};

TEST_P(ImplementationFaults, AreReportedInFull) {
    Xml document = soundDocument();
    GetParam().spoil(document);
    try {
        parseModel(document);
        FAIL() << "accepted";
    } catch (const VornXmlException& fault) {
        EXPECT_EQ(fault.what(), std::string("Error while parsing: ") + GetParam().what);
    }
}

TEST(ImplementationFaults, AreNoneInTheModelThatTheyStartFrom) { EXPECT_NO_THROW(parseModel(soundDocument())); }

#define MISSING(child, parent) " (Expected child node '" child "' missing from '" parent "')"
#define VALUE(expected, found) " (Unexpected value:\n\tExpected: " expected " .\n\tFound: " found ")"
#define NATURAL "An integer number larger than or equal 0"
#define CORRUPTED " (Xml encoded invalid vorn.)"

INSTANTIATE_TEST_SUITE_P(
    Implementation, ImplementationFaults,
    testing::Values(
        Fault{"NoImplementations", [](Xml& d) { d.remove("implementations"); },
              "Package needs implementations defined" MISSING("implementations", "public_subpackage")},
        Fault{"NoName", [](Xml& d) { d.first("ComponentImplementation").remove("name"); },
              MISSING("name", "ComponentImplementation")},
        Fault{"NameWithoutDot", [](Xml& d) { d.first("ComponentImplementation").first("name").text("T"); },
              "Implementation name 'T' is not of the form type.implementation" CORRUPTED},
        Fault{"EmptyName", [](Xml& d) { d.first("ComponentImplementation").first("name").text(""); },
              "Implementation name '' is not of the form type.implementation" CORRUPTED},
        Fault{"UnknownType", [](Xml& d) { d.first("ComponentImplementation").first("name").text("V.i"); },
              " (Xml encoded invalid vorn.Unknown type V not found in package.)"},
        Fault{"EmptyType", [](Xml& d) { d.first("ComponentImplementation").first("name").text(".i"); },
              " (Xml encoded invalid vorn.Unknown type  not found in package.)"},
        Fault{"NoModes", [](Xml& d) { d.remove("modes"); },
              "Implementations require modes" MISSING("modes", "ComponentImplementation")},
        Fault{"NoTransitions", [](Xml& d) { d.remove("normal_mode_transitions"); },
              "We expect a list of transitions" MISSING("normal_mode_transitions", "ComponentImplementation")},
        Fault{"NoDataConnections", [](Xml& d) { d.remove("data_port_connections"); },
              "We expect a list of data connections" MISSING("data_port_connections", "ComponentImplementation")},
        Fault{"NoEventConnections", [](Xml& d) { d.remove("event_port_connections"); },
              "We expect a list of event connections" MISSING("event_port_connections", "ComponentImplementation")},
        Fault{"NoFlowsEvenWithNothingToSay", [](Xml& d) { d.nth("ComponentImplementation", 1).remove("flows"); },
              "We expect a list of flows" MISSING("flows", "ComponentImplementation")},
        Fault{"NoSubcomponents", [](Xml& d) { d.remove("non_data_subcomponents"); },
              "Expects a dictionary with subcomponents" MISSING("non_data_subcomponents", "ComponentImplementation")},
        Fault{"NoData", [](Xml& d) { d.remove("data_subcomponents"); },
              "Expects a dictionary with datasubcomponents" MISSING("data_subcomponents", "ComponentImplementation")}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Modes, ImplementationFaults,
    testing::Values(
        Fault{"NoMode", [](Xml& d) { d.remove("Mode"); }, MISSING("Mode", "modes")},
        Fault{"NoModeButOtherElements", [](Xml& d) { d.first("Mode").rename("Odd"); }, MISSING("Mode", "modes")},
        Fault{"NoName", [](Xml& d) { d.first("Mode").remove("name"); }, MISSING("name", "Mode")},
        Fault{"NoType", [](Xml& d) { d.first("Mode").remove("type"); },
              "Mode type expected for modes" MISSING("type", "Mode")},
        Fault{"TypeNotANumber", [](Xml& d) { d.first("Mode").first("type").text("initial"); },
              "Mode type" VALUE(NATURAL, "initial")},
        Fault{"InvariantNotBoolean", [](Xml& d) { d.first("invariant") = Expr(1).xml("invariant"); },
              "Invariant is not of type BOOL" CORRUPTED},
        Fault{"InvariantNull", [](Xml& d) { d.first("invariant") = (Expr(1) && 2).xml("invariant"); },
              "Invariant is not of type BOOL" CORRUPTED},
        Fault{"InvariantWithoutClauses", [](Xml& d) { d.first("Mode").remove("clauses"); },
              "Mode invariant was not properly preprocessed" MISSING("clauses", "Mode")},
        Fault{"TrajectoryWithoutVariable", [](Xml& d) { d.remove("variable"); },
              "Trajectory must have variable" MISSING("variable", "TrajectoryEquationTreeNode")},
        Fault{"TrajectoryWithoutExpression", [](Xml& d) { d.remove("trajectory_expression"); },
              "Trajectory must have expression" MISSING("trajectory_expression", "TrajectoryEquationTreeNode")}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Clauses, ImplementationFaults,
    testing::Values(
        Fault{"EmptyClause", [](Xml& d) { d.first("Clause") = Xml("Clause"); },
              "Invariant clause has no children, needs condition or linear expressions" CORRUPTED},
        Fault{"ClauseOfOtherElements", [](Xml& d) { d.first("Clause") = Xml("Clause", {Xml("Odd")}); },
              "Invariant clause has no children, needs condition or linear expressions" CORRUPTED},
        Fault{"ConditionNotBoolean", [](Xml& d) { d.first("cond") = Expr(1.0).xml("cond"); },
              "Clause condition is not of type BOOL" CORRUPTED},
        Fault{"ConditionNull", [](Xml& d) { d.first("cond") = (!Expr(1)).xml("cond"); },
              "Clause condition is not of type BOOL" CORRUPTED},
        Fault{"NoConstant", [](Xml& d) { d.remove("constant"); },
              "LinExp must have constant expression" MISSING("constant", "LinExp")},
        Fault{"NoOperator", [](Xml& d) { d.first("LinExp").remove("operator"); },
              "LinExp must have operator" MISSING("operator", "LinExp")},
        Fault{"OperatorNotANumber", [](Xml& d) { d.first("LinExp").first("operator").text("<="); },
              "Operator must be integer" VALUE("Any integer number.", "<=")},
        Fault{"OperatorBeyondTheTable", [](Xml& d) { d.first("LinExp").first("operator").text("20"); },
              VALUE("A value for an operatortype, i.e., anything between 1 and 19.", "20")},
        Fault{"OperatorNegative", [](Xml& d) { d.first("LinExp").first("operator").text("-1"); },
              VALUE("A value for an operatortype, i.e., anything between 1 and 19.", "-1")},
        Fault{"NoTerms", [](Xml& d) { d.remove("terms"); }, "LinExp must have terms" MISSING("terms", "LinExp")},
        Fault{"NoFactor", [](Xml& d) { d.remove("factor"); }, "Term must have factor" MISSING("factor", "Term")},
        Fault{"NoVariable", [](Xml& d) { d.remove("var"); }, "Term must have variable" MISSING("var", "Term")}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Transitions, ImplementationFaults,
    testing::Values(Fault{"NoSource", [](Xml& d) { d.remove("source_mode"); },
                          "Transition needs a source" MISSING("source_mode", "ModeTransition")},
                    Fault{"NoTarget", [](Xml& d) { d.remove("target_mode"); },
                          "Transition needs a target" MISSING("target_mode", "ModeTransition")},
                    Fault{"NoLabel", [](Xml& d) { d.remove("label"); },
                          "Transition needs a label" MISSING("label", "ModeTransition")},
                    Fault{"ReactivationWithoutLabel",
                          [](Xml& d) { d.first("reactivation_mode_transitions").remove("label"); },
                          "Transition needs a label" MISSING("label", "ModeTransition")},
                    Fault{"GuardOfTypeInt", [](Xml& d) { d.first("guard") = Expr(1).xml("guard"); },
                          "Transition guard is not of type BOOL" CORRUPTED},
                    Fault{"GuardNull", [](Xml& d) { d.first("guard") = (Expr(1) && true).xml("guard"); },
                          "Transition guard is not of type BOOL" CORRUPTED},
                    Fault{"GuardWithoutClauses", [](Xml& d) { d.first("label").remove("clauses"); },
                          "Target guard was not properly preprocessed" MISSING("clauses", "label")},
                    Fault{"EffectWithoutLeft", [](Xml& d) { d.first("effects").remove("left"); },
                          "Assignments require a left hand side." MISSING("left", "BinaryOperatorTreeNode")},
                    Fault{"EffectWithoutRight", [](Xml& d) { d.first("effects").remove("right"); },
                          "Assignments require a right hand side." MISSING("right", "BinaryOperatorTreeNode")},
                    Fault{"NumberOnTheLeftOfAnEffect",
                          [](Xml& d) { d.first("effects").first("left") = Expr(1).xml("left"); },
                          MISSING("name", "left")}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Connections, ImplementationFaults,
    testing::Values(Fault{"NoSource", [](Xml& d) { d.remove("source_port"); },
                          "Port connection requires a source port" MISSING("source_port", "PortConnection")},
                    Fault{"NoTarget", [](Xml& d) { d.remove("target_port"); },
                          "Port connection requires a target port" MISSING("target_port", "PortConnection")},
                    Fault{"NoPassive", [](Xml& d) { d.remove("passive"); },
                          "Port connection requires passive specifier" MISSING("passive", "PortConnection")},
                    Fault{"NoPassiveInAnEventConnection",
                          [](Xml& d) { d.first("event_port_connections").remove("passive"); },
                          "Port connection requires passive specifier" MISSING("passive", "PortConnection")},
                    Fault{"PassiveNotBoolean", [](Xml& d) { d.first("passive").text("false"); },
                          "Passive specifier must be boolean" VALUE("Either True or False", "false")},
                    Fault{"FlowWithoutExpression", [](Xml& d) { d.first("Flow").remove("expression"); },
                          "flow requires expression" MISSING("expression", "Flow")},
                    Fault{"FlowWithoutLeft", [](Xml& d) { d.first("Flow").remove("left"); },
                          "Flow expressions require a left hand side." MISSING("left", "expression")},
                    Fault{"FlowWithoutRight", [](Xml& d) { d.first("Flow").remove("right"); },
                          "Flow expressions require a right hand side." MISSING("right", "expression")}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Subcomponents, ImplementationFaults,
    testing::Values(
        Fault{"NoName", [](Xml& d) { d.first("NonDataSubcomponent").remove("name"); },
              MISSING("name", "NonDataSubcomponent")},
        Fault{"NoReference", [](Xml& d) { d.remove("implementation_ref"); },
              "subcomponent needs a implementation reference" MISSING("implementation_ref", "NonDataSubcomponent")},
        Fault{"NoAccesses", [](Xml& d) { d.remove("accesses"); },
              "subcomponent needs a list of access bindings" MISSING("accesses", "NonDataSubcomponent")},
        Fault{"NoRunningOn", [](Xml& d) { d.remove("running_on"); },
              "subcomponent needs a list of running on bindings" MISSING("running_on", "NonDataSubcomponent")},
        Fault{"NoStoredIn", [](Xml& d) { d.remove("stored_in"); },
              "subcomponent needs a list of stored in bindings" MISSING("stored_in", "NonDataSubcomponent")},
        Fault{"DataWithoutName", [](Xml& d) { d.first("DataSubcomponent").remove("name"); },
              MISSING("name", "DataSubcomponent")},
        Fault{"DataWithoutType", [](Xml& d) { d.first("DataSubcomponent").remove("data_type"); },
              "Data type specification is needed for data elements" MISSING("data_type", "DataSubcomponent")},
        Fault{"ObservableNotBoolean", [](Xml& d) { d.first("observable").text("yes"); },
              "observable specifier for datasubbcomponent must be boolean" VALUE("Either True or False", "yes")},
        Fault{"DefaultOfTheWrongForm",
              [](Xml& d) { d.first("default_value") = Xml("default_value", {Xml("number", "1")}); },
              "Default value for VornBool needs a Boolean value." MISSING("value", "default_value")}),
    CaseName());

#undef MISSING
#undef VALUE
#undef NATURAL
#undef CORRUPTED

}  // namespace
}  // namespace vornrun::test
