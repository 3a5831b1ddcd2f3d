#!/usr/bin/env python3
"""Writes model.xml and one property file per question about the cooling plant into the folder of this script.

The XML is what a compiler of the modelling language would write: every guard and invariant stands there twice, as a
plain expression and as clauses of linear comparisons.
"""
import pathlib

PUMPS = 12
NODE = {"bool": 0, "int": 1, "real": 2, "enum": 3, "clock": 5, "continuous": 6}
OPERATOR = {"<": 0, "<=": 1, ">": 2, ">=": 3, "=": 4, "!=": 5, "+": 6, "-": 7, "and": 10}


def var(name, kind):
    return ("IdentifierTreeNode", f"<node_type>{NODE[kind]}</node_type><name>{name}</name>")


def num(value, kind):
    return ("NumberTreeNode", f"<node_type>{NODE[kind]}</node_type><number>{value}</number>")


def binary(left, operator, right, kind="bool"):
    return ("BinaryOperatorTreeNode",
            f"<node_type>{NODE[kind]}</node_type>{element('left', left)}{element('right', right)}"
            f"<operator>{OPERATOR[operator]}</operator>")


def element(tag, expression):
    kind, content = expression
    return f'<{tag} type="{kind}">{content}</{tag}>'


def condition(tag, expression):
    """A guard or invariant that does not depend on time: one clause with a condition and no comparison."""
    return element(tag, expression) + f"<clauses><Clause>{element('cond', expression)}</Clause></clauses>"


def comparison(tag, name, kind, operator, bound):
    """A guard or invariant on one clock or continuous variable: one clause with one linear comparison."""
    linear = (f"<LinExp>{element('constant', num(bound, 'real'))}<operator>{OPERATOR[operator]}</operator>"
              f"<terms><Term>{element('factor', num(1.0, 'real'))}{element('var', var(name, kind))}</Term></terms></LinExp>")
    plain = binary(var(name, kind), operator, num(bound, "real"))
    return element(tag, plain) + f"<clauses><Clause><equations>{linear}</equations></Clause></clauses>"


def assign(target, kind, value):
    return f"<BinaryOperatorTreeNode>{element('left', var(target, kind))}{element('right', value)}</BinaryOperatorTreeNode>"


def transition(source, target, trigger=None, guard="", effects=()):
    label = (f"<trigger>{trigger}</trigger>" if trigger else "") + guard
    label += f"<effects>{''.join(effects)}</effects>" if effects else ""
    return (f"<ModeTransition><source_mode>{source}</source_mode><target_mode>{target}</target_mode>"
            f"<label>{label}</label></ModeTransition>")


def mode(name, kind, invariant="", trajectories=""):
    return f"<Mode><name>{name}</name><type>{kind}</type>{invariant}{trajectories}</Mode>"


INITIAL, ACTIVATION, ERROR, PLAIN = 0, 1, 2, 3


def trajectory(name, rate):
    return (f"<TrajectoryEquationTreeNode>{element('variable', var(name, 'continuous'))}"
            f"{element('trajectory_expression', num(rate, 'real'))}</TrajectoryEquationTreeNode>")


def error_port(name, rate):
    return (f"<ErrorEventPort><name>{name}</name><nonblocking>True</nonblocking><distribution>1</distribution>"
            f"<parameter>{rate}</parameter></ErrorEventPort>")


def out_int_port(name, default):
    return (f"<OutDataPort><name>{name}</name><observable>False</observable><alarm>False</alarm>"
            f'<data_type type="Int"/><default_value><number>{default}</number></default_value></OutDataPort>')


def component_type(name, category, data_ports="", event_ports=""):
    return (f"<ComponentType><name>{name}</name><category>{category}</category>"
            f"<out_data_ports>{data_ports}</out_data_ports><out_event_ports>{event_ports}</out_event_ports></ComponentType>")


def data(name, kind, default=None):
    value = f"<default_value><number>{default}</number></default_value>" if default is not None else ""
    return f'<DataSubcomponent><name>{name}</name><data_type type="{kind}"/>{value}</DataSubcomponent>'


def subcomponent(name, reference, modes=()):
    in_modes = "<in_modes>" + "".join(f"<mode>{m}</mode>" for m in modes) + "</in_modes>" if modes else ""
    return (f"<NonDataSubcomponent><name>{name}</name><implementation_ref>{reference}</implementation_ref>"
            f"<accesses/><running_on/><stored_in/>{in_modes}</NonDataSubcomponent>")


def flow(target, kind, value):
    return f"<Flow><expression>{element('left', var(target, kind))}{element('right', value)}</expression></Flow>"


def implementation(name, modes, transitions, flows="", subcomponents="", variables=""):
    return (f"<ComponentImplementation><name>{name}</name><modes>{modes}</modes>"
            f"<normal_mode_transitions>{transitions}</normal_mode_transitions>"
            f"<data_port_connections/><event_port_connections/><flows>{flows}</flows>"
            f"<non_data_subcomponents>{subcomponents}</non_data_subcomponents>"
            f"<data_subcomponents>{variables}</data_subcomponents></ComponentImplementation>")


def total(names):
    expression = var(names[0], "int")
    for name in names[1:]:
        expression = binary(expression, "+", var(name, "int"), "int")
    return expression


def model():
    pump = implementation(
        "Pump.impl",
        mode("running", INITIAL) + mode("broken", ERROR),
        transition("running", "broken", "fails", effects=[assign("delivers", "int", num(0, "int"))])
        + transition("broken", "running", "repaired", effects=[assign("delivers", "int", num(1, "int"))]))
    # The diesel pump exists only while the plant is in its mode "reserve", and starts anew each time.
    diesel = implementation(
        "Diesel.impl",
        mode("starting", ACTIVATION, comparison("invariant", "since", "clock", "<=", 0.5)) + mode("running", PLAIN),
        transition("starting", "running", guard=comparison("guard", "since", "clock", ">=", 0.5),
                   effects=[assign("delivers", "int", num(2, "int"))]),
        variables=data("since", "Clock"))
    pumps = [f"pump{i}" for i in range(1, PUMPS + 1)]
    # Below nine pumps the water warms up by half a degree an hour and the diesel pump is called; the plant trips at 60.
    def temperature(rate):
        return (comparison("invariant", "temperature", "continuous", "<=", 60.0)
                + f"<trajectories>{trajectory('temperature', rate)}</trajectories>")
    hot = comparison("guard", "temperature", "continuous", ">=", 60.0)
    plant = implementation(
        "Plant.impl",
        mode("normal", INITIAL) + mode("reserve", PLAIN, temperature(0.5)) + mode("tripped", ERROR),
        transition("normal", "reserve", guard=condition("guard", binary(var("working", "int"), "<", num(9, "int"))))
        + transition("reserve", "normal", guard=condition("guard", binary(var("working", "int"), ">=", num(10, "int"))),
                     effects=[assign("temperature", "continuous", num(58.0, "real"))])
        + transition("reserve", "tripped", guard=hot),
        flow("working", "int", total([f"{p}.delivers" for p in pumps])),
        "".join(subcomponent(p, "Pump.impl") for p in pumps) + subcomponent("diesel", "Diesel", ["reserve"]),
        data("working", "Int", PUMPS) + data("temperature", "Continuous", 58.0))
    types = (component_type("Pump", 6, out_int_port("delivers", 1), error_port("fails", 0.05) + error_port("repaired", 0.5))
             + component_type("Diesel", 6, out_int_port("delivers", 0))
             + component_type("Plant", 8))
    return ("<?xml version=\"1.0\"?>\n<CompileInformation><packages><Package><name>plant</name><public_subpackage>"
            f"<types>{types}</types>\n<implementations>\n{pump}\n{diesel}\n{plant}\n</implementations>"
            "</public_subpackage></Package></packages></CompileInformation>\n")


def until(name, expression, upper):
    return (f"<!-- {name} --><cslFormula><p><comparisonOperator><greaterEqual/></comparisonOperator>"
            f"<threshold><value>0.5</value></threshold>"
            f"<u><lowerBound><value>0</value></lowerBound><upperBound><value>{upper}</value></upperBound>"
            f"<true/><atomicProposition>{element('expression', expression)}</atomicProposition></u></p></cslFormula>\n")


def mode_is(path, name):
    return ("BinaryOperatorTreeNode",
            f'<node_type>0</node_type><left type="IdentifierTreeNode"><node_type>12</node_type><name>{path}mode</name></left>'
            f'<right type="IdentifierTreeNode"><node_type>13</node_type><name>{path}mode:{name}</name></right>'
            f"<operator>{OPERATOR['=']}</operator>")


QUESTIONS = {
    "reserve-needed.xml": until("at most eight pumps work at some time within a day",
                                binary(var("working", "int"), "<", num(9, "int")), 24),
    "diesel-runs.xml": until("the diesel pump runs at some time within a day", mode_is("diesel.", "running"), 24),
    "plant-trips.xml": until("the plant trips within a week", mode_is("", "tripped"), 168),
}


if __name__ == "__main__":
    here = pathlib.Path(__file__).parent
    (here / "model.xml").write_text(model())
    for name, formula in QUESTIONS.items():
        (here / name).write_text(f'<?xml version="1.0"?>\n<formulae>\n{formula}</formulae>\n')
