#pragma once
/// \file
/// The names of elements and attributes in the model file, transcoded once per parser. A name of several families of
/// elements is a field of each family, so that a family can change its spelling alone.

#include "vornrun/algorithms/parser/XmlNameTable.h"

namespace vornrun {

/// `modeInvariants`, `portPassive` and `probabilisticModeTransitions` are known names that no parser reads: elements
/// of these names are passed over.
class VornXmlTags final : public parser::XmlNameTable {
  public:
    const XMLCh* const clause = own("Clause");
    const XMLCh* const clauses = own("clauses");
    const XMLCh* const clauseCondition = own("cond");
    const XMLCh* const clauseEquations = own("equations");
    const XMLCh* const compileInformation = own("CompileInformation");
    const XMLCh* const portConnection = own("PortConnection");
    const XMLCh* const portConnectionPassive = own("passive");
    const XMLCh* const sourcePort = own("source_port");
    const XMLCh* const targetPort = own("target_port");
    const XMLCh* const dataPortConnections = own("data_port_connections");
    const XMLCh* const eventPortConnections = own("event_port_connections");
    const XMLCh* const dataSubcomponents = own("data_subcomponents");
    const XMLCh* const dataSubcomponent = own("DataSubcomponent");
    const XMLCh* const dataType = own("data_type");
    const XMLCh* const dataSubcomponentDefaultValue = own("default_value");
    const XMLCh* const dataSubcomponentObservable = own("observable");
    const XMLCh* const expression = own("expression");
    const XMLCh* const caseTuple = own("tuple");
    const XMLCh* const cases = own("cases");
    const XMLCh* const caseDefaultExpression = own("default_expression");
    const XMLCh* const left = own("left");
    const XMLCh* const nodeType = own("node_type");
    const XMLCh* const expressionOperator = own("operator");
    const XMLCh* const right = own("right");
    const XMLCh* const subexpression = own("subexpression");
    const XMLCh* const flow = own("Flow");
    const XMLCh* const flows = own("flows");
    const XMLCh* const formulae = own("formulae");
    const XMLCh* const implementations = own("implementations");
    const XMLCh* const inModes = own("in_modes");
    const XMLCh* const linExp = own("LinExp");
    const XMLCh* const linExpOperator = own("operator");
    const XMLCh* const linExpConstant = own("constant");
    const XMLCh* const linExpTerms = own("terms");
    const XMLCh* const mode = own("Mode");
    const XMLCh* const modeInvariant = own("invariant");
    const XMLCh* const modeInvariants = own("invariants");
    const XMLCh* const modeTrajectories = own("trajectories");
    const XMLCh* const modeType = own("type");
    const XMLCh* const modes = own("modes");
    const XMLCh* const name = own("name");
    const XMLCh* const nonblocking = own("nonblocking");
    const XMLCh* const package = own("Package");
    const XMLCh* const packages = own("packages");
    const XMLCh* const portPassive = own("passive");
    const XMLCh* const portAlarm = own("alarm");
    const XMLCh* const dataPort = own("DataPort");
    const XMLCh* const outDataPort = own("OutDataPort");
    const XMLCh* const portDefaultValue = own("default_value");
    const XMLCh* const portDistribution = own("distribution");
    const XMLCh* const errorEventPort = own("ErrorEventPort");
    const XMLCh* const inEventPort = own("InEventPort");
    const XMLCh* const outEventPort = own("OutEventPort");
    const XMLCh* const portObservable = own("observable");
    const XMLCh* const portParameter = own("parameter");
    const XMLCh* const inDataPorts = own("in_data_ports");
    const XMLCh* const outDataPorts = own("out_data_ports");
    const XMLCh* const inEventPorts = own("in_event_ports");
    const XMLCh* const outEventPorts = own("out_event_ports");
    const XMLCh* const privateSubpackage = own("private_subpackage");
    const XMLCh* const publicSubpackage = own("public_subpackage");
    const XMLCh* const nonDataSubcomponent = own("NonDataSubcomponent");
    const XMLCh* const implementationRef = own("implementation_ref");
    const XMLCh* const accesses = own("accesses");
    const XMLCh* const runningOn = own("running_on");
    const XMLCh* const storedIn = own("stored_in");
    const XMLCh* const nonDataSubcomponents = own("non_data_subcomponents");
    const XMLCh* const term = own("Term");
    const XMLCh* const termFactor = own("factor");
    const XMLCh* const termVariable = own("var");
    const XMLCh* const trajectoryEquation = own("TrajectoryEquationTreeNode");
    const XMLCh* const trajectoryVariable = own("variable");
    const XMLCh* const trajectoryExpression = own("trajectory_expression");
    const XMLCh* const modeTransition = own("ModeTransition");
    const XMLCh* const transitionGuard = own("guard");
    const XMLCh* const transitionTrigger = own("trigger");
    const XMLCh* const effect = own("BinaryOperatorTreeNode");
    const XMLCh* const transitionEffects = own("effects");
    const XMLCh* const transitionLabel = own("label");
    const XMLCh* const sourceMode = own("source_mode");
    const XMLCh* const targetMode = own("target_mode");
    const XMLCh* const normalModeTransitions = own("normal_mode_transitions");
    const XMLCh* const reactivationModeTransitions = own("reactivation_mode_transitions");
    const XMLCh* const probabilisticModeTransitions = own("probabilistic_mode_transitions");
    const XMLCh* const typeCategory = own("category");
    const XMLCh* const componentType = own("ComponentType");
    const XMLCh* const componentImplementation = own("ComponentImplementation");
    const XMLCh* const types = own("types");
    const XMLCh* const value = own("value");
    const XMLCh* const number = own("number");
};

/// The attributes that a parser of either file reads, and "key", which the format has and no parser reads.
class VornXmlAttributes final : public parser::XmlNameTable {
  public:
    const XMLCh* const key = own("key");
    const XMLCh* const type = own("type");
    const XMLCh* const objid = own("objid");
    const XMLCh* const objref = own("objref");
};

}  // namespace vornrun
