"""Writes model and property files, as a compiler of the modelling language would.

A model file has each guard and each invariant twice: as a plain expression, and split into clauses of linear comparisons
over clocks and continuous variables. `clauses_of` does that split. Equal expressions are written once; the others refer
to the first.

    level = continuous("level")
    tank = implementation("Tank.impl",
                          modes=[mode("filling", "initial", invariant=level <= 8.0, rates={level: 2.0}), mode("full")],
                          transitions=[transition("filling", "full", guard=level >= 8.0)],
                          data=[data(level, 1.5)])
    write("model.xml", model("plant", [component_type("Tank", "device")], [tank]))
    write("properties.xml", properties(eventually(mode_is("", "full"), 10.0)))
"""
import xml.etree.ElementTree as ET

NODE_TYPES = {"bool": 0, "int": 1, "real": 2, "enum": 3, "clock": 5, "continuous": 6, "mode": 12, "error": 14,
              "interval": 16}
CONSTANT_NODE_TYPES = {"bool": 0, "int": 1, "real": 2, "enum": 4, "mode": 13, "error": 15}
OPERATORS = {"<": 0, "<=": 1, ">": 2, ">=": 3, "=": 4, "!=": 5, "+": 6, "-": 7, "*": 8, "/": 9, "and": 10, "or": 12,
             "not": 15, "negate": 16, "iff": 17, "imp": 18, "mod": 19}
COMPARISONS = ("<", "<=", ">", ">=", "=", "!=")
DATA_TYPES = {"bool": "Bool", "int": "Int", "real": "Real", "enum": "Enum", "clock": "Clock",
              "continuous": "Continuous", "interval": "IntRange"}
CATEGORIES = ("process", "threadGroup", "thread", "data", "processor", "memory", "device", "bus", "system")
MODE_TYPES = {"initial": 0, "activation": 1, "error": 2, "plain": 3}


def element(tag, *children, **attributes):
    """An element with these children. A child that is no element becomes the text of the element."""
    result = ET.Element(tag, attributes)
    for child in children:
        if isinstance(child, ET.Element):
            result.append(child)
        else:
            result.text = str(child)
    return result


# Expressions. Operators of Python build them, with & | ~ for "and", "or", "not" and == for "=".

class Expression:
    """A node of an expression tree; `kind` is its data type."""
    __hash__ = object.__hash__

    def __init__(self, kind, operator, operands, name=None):
        self.kind, self.operator, self.operands, self.name = kind, operator, operands, name

    def _binary(self, operator, other, kind=None):
        return Expression(kind or wider(self, literal(other)), operator, [self, literal(other)])

    def __lt__(self, other): return self._binary("<", other, "bool")
    def __le__(self, other): return self._binary("<=", other, "bool")
    def __gt__(self, other): return self._binary(">", other, "bool")
    def __ge__(self, other): return self._binary(">=", other, "bool")
    def __eq__(self, other): return self._binary("=", other, "bool")
    def __ne__(self, other): return self._binary("!=", other, "bool")
    def __and__(self, other): return self._binary("and", other, "bool")
    def __or__(self, other): return self._binary("or", other, "bool")
    def __add__(self, other): return self._binary("+", other)
    def __sub__(self, other): return self._binary("-", other)
    def __mul__(self, other): return self._binary("*", other)
    def __truediv__(self, other): return self._binary("/", other)
    def __mod__(self, other): return self._binary("mod", other)
    def __radd__(self, other): return literal(other) + self
    def __rsub__(self, other): return literal(other) - self
    def __rmul__(self, other): return literal(other) * self
    def __rmod__(self, other): return literal(other) % self
    def __invert__(self): return Expression("bool", "not", [self])
    def __neg__(self): return Expression(self.kind, "negate", [self])

    def __bool__(self):
        raise TypeError("an expression of the model has no truth value here; use & | ~")

    def to_xml(self, tag):
        if self.operator == "variable":
            return element(tag, element("node_type", NODE_TYPES[self.kind]), element("name", self.name),
                           type="IdentifierTreeNode")
        if self.operator == "constant":
            return element(tag, element("node_type", CONSTANT_NODE_TYPES[self.kind]), *constant_content(self.name),
                           type={"bool": "BooleanTreeNode", "enum": "IdentifierTreeNode", "mode": "IdentifierTreeNode",
                                 "error": "IdentifierTreeNode"}.get(self.kind, "NumberTreeNode"))
        if self.operator == "case":
            *branches, default = self.operands
            tuples = [element("tuple", condition.to_xml("condition"), value.to_xml("value"))
                      for condition, value in branches]
            return element(tag, element("node_type", NODE_TYPES[self.kind]), element("cases", *tuples),
                           default.to_xml("default_expression"), type="CaseExpressionTreeNode")
        node_type = element("node_type", NODE_TYPES[self.kind])
        operator = element("operator", OPERATORS[self.operator])
        if len(self.operands) == 1:
            return element(tag, node_type, self.operands[0].to_xml("subexpression"), operator,
                           type="UnaryOperatorTreeNode")
        left, right = self.operands
        return element(tag, node_type, left.to_xml("left"), right.to_xml("right"), operator,
                       type="BinaryOperatorTreeNode")


def wider(left, right):
    """The type of an arithmetic result: the wider of the two types."""
    return max(left.kind, right.kind, key=("interval", "int", "real", "clock", "continuous").index)


def constant_content(value):
    if isinstance(value, bool):
        return [element("value", "True" if value else "False")]
    return [element("name" if isinstance(value, str) else "number", value)]


def literal(value):
    """Returns an expression unchanged, and a bool, int or float as a constant."""
    if isinstance(value, Expression):
        return value
    kind = {bool: "bool", int: "int", float: "real"}[type(value)]
    return Expression(kind, "constant", [], value)


def variable(name, kind): return Expression(kind, "variable", [], name)
def boolean(name): return variable(name, "bool")
def integer(name): return variable(name, "int")
def real(name): return variable(name, "real")
def enum(name): return variable(name, "enum")
def clock(name): return variable(name, "clock")
def continuous(name): return variable(name, "continuous")
def interval(name): return variable(name, "interval")
def enum_literal(name): return Expression("enum", "constant", [], name)


def mode_is(path, name):
    """Whether the component at `path` is in the mode `name`. The path is "" for this component, "a.b." for one below."""
    return variable(f"{path}mode", "mode") == Expression("mode", "constant", [], f"{path}mode:{name}")


def error_is(path, name):
    """The same as `mode_is`, in the form for the error state of a component."""
    return variable(f"{path}error", "error") == Expression("error", "constant", [], f"{path}error:{name}")


def case(branches, default):
    """The value of the first pair (condition, value) whose condition holds, otherwise the default."""
    default = literal(default)
    pairs = [(literal(condition), literal(value)) for condition, value in branches]
    return Expression(default.kind, "case", [*pairs, default])


def total(terms):
    first, *rest = terms
    for term in rest:
        first = first + term
    return first


def is_timed(expression):
    """Whether the expression contains a clock or continuous variable, so that time changes its value."""
    if expression.operator == "variable":
        return expression.kind in ("clock", "continuous")
    return any(is_timed(part) for operand in expression.operands
               for part in (operand if isinstance(operand, tuple) else (operand,)))


def linear_form(expression):
    """Returns (terms, constant): pairs of a number and a timed variable, and the rest, without time, as an expression."""
    if not is_timed(expression):
        return [], expression
    if expression.operator == "variable":
        return [(1.0, expression)], literal(0.0)
    parts = [linear_form(operand) for operand in expression.operands]
    if expression.operator in ("+", "-"):
        sign = 1.0 if expression.operator == "+" else -1.0
        (left_terms, left), (right_terms, right) = parts
        return left_terms + [(sign * factor, term) for factor, term in right_terms], fold(left, expression.operator, right)
    if expression.operator == "*":
        factor, (terms, rest) = ((parts[0][1], parts[1]) if not parts[0][0] else (parts[1][1], parts[0]))
        if factor.operator == "constant":
            return [(float(factor.name) * number, term) for number, term in terms], fold(rest, "*", factor)
    raise ValueError(f"no linear form: {expression.operator}")


def fold(left, operator, right):
    """The expression `left operator right`, computed if both are numbers."""
    if left.operator == right.operator == "constant":
        return literal(float({"+": left.name + right.name, "-": left.name - right.name, "*": left.name * right.name}[operator]))
    return Expression("real", operator, [left, right])


def clauses_of(expression):
    """The disjunctive form of a guard: a list of clauses, each a pair (untimed conditions, timed comparisons).

    A negation over a clock or continuous variable is an error: move it inwards first."""
    if not is_timed(expression):
        return [([expression], [])]
    if expression.operator == "or":
        return clauses_of(expression.operands[0]) + clauses_of(expression.operands[1])
    if expression.operator == "and":
        return [(conditions + more_conditions, comparisons + more_comparisons)
                for conditions, comparisons in clauses_of(expression.operands[0])
                for more_conditions, more_comparisons in clauses_of(expression.operands[1])]
    if expression.operator in COMPARISONS:
        return [([], [expression])]
    raise ValueError(f"no clauses: {expression.operator} over a clock or continuous variable")


def linear_comparison(comparison):
    left, right = comparison.operands
    (left_terms, left_rest), (right_terms, right_rest) = linear_form(left), linear_form(right)
    if left_rest.operator == "constant" and left_rest.name == 0:
        constant = right_rest
    else:
        constant = fold(right_rest, "-", left_rest)
    terms = left_terms + [(-factor, term) for factor, term in right_terms]
    return element("LinExp", constant.to_xml("constant"), element("operator", OPERATORS[comparison.operator]),
                   element("terms", *(element("Term", literal(factor).to_xml("factor"), term.to_xml("var"))
                                      for factor, term in terms)))


def condition(tag, expression):
    """The two elements of a guard or invariant: the plain form and the clauses."""
    clauses = []
    for conditions, comparisons in clauses_of(expression):
        clause = element("Clause")
        if conditions:
            together = conditions[0]
            for further in conditions[1:]:
                together = together & further
            clause.append(together.to_xml("cond"))
        if comparisons:
            clause.append(element("equations", *map(linear_comparison, comparisons)))
        clauses.append(clause)
    return [expression.to_xml(tag), element("clauses", *clauses)]


# Declarations

def truth(tag, value): return element(tag, "True" if value else "False")


def typed(kind, default):
    result = [element("data_type", type=DATA_TYPES[kind])]
    return result if default is None else result + [element("default_value", *constant_content(default))]


def in_port(name, kind, default=None): return element("DataPort", element("name", name), *typed(kind, default))


def out_port(name, kind, default=None, observable=False, alarm=False):
    return element("OutDataPort", element("name", name), truth("observable", observable), truth("alarm", alarm),
                   *typed(kind, default))


def in_event(name): return element("InEventPort", element("name", name))


def out_event(name, nonblocking=False):
    return element("OutEventPort", element("name", name), truth("nonblocking", nonblocking))


def error_event(name, rate=None, nonblocking=True):
    """An event that occurs by itself with this rate. Without a rate, only transitions raise it."""
    occurrence = [] if rate is None else [element("distribution", 1), element("parameter", rate)]
    return element("ErrorEventPort", element("name", name), truth("nonblocking", nonblocking), *occurrence)


def component_type(name, category, in_data=(), out_data=(), in_events=(), out_events=()):
    result = element("ComponentType", element("name", name), element("category", CATEGORIES.index(category)))
    for tag, ports in (("in_data_ports", in_data), ("out_data_ports", out_data),
                       ("in_event_ports", in_events), ("out_event_ports", out_events)):
        if ports:
            result.append(element(tag, *ports))
    return result


# Implementations

def in_modes(modes): return [element("in_modes", *(element("mode", name) for name in modes))] if modes else []


def mode(name, kind="plain", invariant=None, rates=None):
    """`rates` maps continuous variables to numbers. The format has rates only beside an invariant."""
    if rates and invariant is None:
        invariant = literal(True)
    result = element("Mode", element("name", name), element("type", MODE_TYPES[kind]))
    if invariant is not None:
        result.extend(condition("invariant", invariant))
    if rates:
        result.append(element("trajectories", *(
            element("TrajectoryEquationTreeNode", target.to_xml("variable"), literal(rate).to_xml("trajectory_expression"))
            for target, rate in rates.items())))
    return result


def assign(target, value):
    return element("BinaryOperatorTreeNode", target.to_xml("left"), literal(value).to_xml("right"))


def transition(source, target, trigger=None, guard=None, effects=()):
    label = element("label")
    if trigger is not None:
        label.append(element("trigger", trigger))
    if guard is not None:
        label.extend(condition("guard", guard))
    if effects:
        label.append(element("effects", *effects))
    return element("ModeTransition", element("source_mode", source), element("target_mode", target), label)


def connection(source, target, passive=False, modes=()):
    return element("PortConnection", element("source_port", source), element("target_port", target),
                   truth("passive", passive), *in_modes(modes))


def flow(target, value, modes=()):
    return element("Flow", element("expression", target.to_xml("left"), literal(value).to_xml("right")), *in_modes(modes))


def subcomponent(name, reference, modes=()):
    """A part. `modes` lists the modes in which it exists; an empty list means all modes."""
    return element("NonDataSubcomponent", element("name", name), element("implementation_ref", reference),
                   element("accesses"), element("running_on"), element("stored_in"), *in_modes(modes))


def data(target, default=None, modes=(), observable=False):
    """The declaration of a variable. `target` is the expression that names it."""
    type_and_default = typed(target.kind, default)
    return element("DataSubcomponent", element("name", target.name), type_and_default[0], *in_modes(modes),
                   truth("observable", observable), *type_and_default[1:])


def implementation(name, modes, transitions=(), reactivations=(), data_connections=(), event_connections=(), flows=(),
                   subcomponents=(), data=()):
    """`name` has the form Type.impl."""
    return element("ComponentImplementation", element("name", name), element("modes", *modes),
                   element("normal_mode_transitions", *transitions),
                   *([element("reactivation_mode_transitions", *reactivations)] if reactivations else []),
                   element("data_port_connections", *data_connections),
                   element("event_port_connections", *event_connections), element("flows", *flows),
                   element("non_data_subcomponents", *subcomponents), element("data_subcomponents", *data))


def model(package, types, implementations):
    return element("CompileInformation", element("packages", element(
        "Package", element("name", package),
        element("public_subpackage", element("types", *types), element("implementations", *implementations)))))


# Properties

def atom(expression): return element("atomicProposition", literal(expression).to_xml("expression"))
def true(): return element("true")


def probability(path, operator="greaterEqual", threshold=0.5):
    """The tool prints the probability of the path formula, whatever the comparison."""
    return element("p", element("comparisonOperator", element(operator)),
                   element("threshold", element("value", threshold)), path)


def bounds(lower, upper):
    return [element("lowerBound", element("value", lower)), element("upperBound", element("value", upper))]


def until(left, right, upper, lower=0):
    """`right` holds in a visited state at a time in [lower, upper], and `left` holds in all visited states before `lower`.

    Both are elements. From `lower` on, `left` is not evaluated."""
    return probability(element("u", *bounds(lower, upper), left, right))


def eventually(expression, upper, lower=0): return until(true(), atom(expression), upper, lower)


def next_state(operand, upper, lower=0):
    """`operand`, an element, holds in a visited state at a time in [lower, upper].

    Visited states are the initial state, at time 0, and the state after each step."""
    return probability(element("x", *bounds(lower, upper), operand))


def properties(*formulas): return element("formulae", *(element("cslFormula", formula) for formula in formulas))


# Files

def share(root):
    """Writes each expression of more than a leaf, and each list of clauses, only once. Equal ones refer to the first."""
    first = {}
    shared = 0

    def visit(node):
        nonlocal shared
        is_expression = node.get("type", "").endswith("OperatorTreeNode") or node.get("type") == "CaseExpressionTreeNode"
        if is_expression or (node.tag == "clauses" and len(node)):
            # A reference replaces the contents of any element, whatever the names of the two elements.
            contents = "".join(ET.tostring(child, "unicode") for child in node)
            original = first.setdefault((node.get("type"), contents), node)
            if original is not node:
                if "objid" not in original.attrib:
                    shared += 1
                    original.set("objid", f"e{shared}")
                node.clear()
                node.set("objref", original.get("objid"))
                return
        for child in node:
            visit(child)

    visit(root)
    return root


def write(path, root):
    ET.indent(share(root))
    with open(path, "w", encoding="utf-8") as file:
        file.write('<?xml version="1.0" encoding="UTF-8"?>\n' + ET.tostring(root, "unicode") + "\n")
