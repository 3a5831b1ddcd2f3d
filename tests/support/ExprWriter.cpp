#include "tests/support/ExprWriter.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace vornrun::test {

namespace {

/// Place in the order of the numeric types; the result of arithmetic has the higher one.
int rank(Type type) {
    switch (type) {
        case Type::Interval:
            return 0;
        case Type::Int:
            return 1;
        case Type::Real:
            return 2;
        case Type::Clock:
            return 3;
        case Type::Continuous:
            return 4;
        case Type::Bool:
        case Type::Enum:
        case Type::Mode:
            break;
    }
    return -1;
}

Type resultType(Op op, Type left, Type right) {
    switch (op) {
        case Op::Plus:
        case Op::Minus:
        case Op::Multiply:
        case Op::Divide:
        case Op::Mod:
            return rank(left) >= rank(right) ? left : right;
        default:
            return Type::Bool;
    }
}

std::string typeAttribute(Expr::Kind kind) {
    switch (kind) {
        case Expr::Kind::Binary:
            return "BinaryOperatorTreeNode";
        case Expr::Kind::Unary:
            return "UnaryOperatorTreeNode";
        case Expr::Kind::Case:
            return "CaseExpressionTreeNode";
        case Expr::Kind::Boolean:
            return "BooleanTreeNode";
        case Expr::Kind::Number:
            return "NumberTreeNode";
        case Expr::Kind::Trajectory:
            return "TrajectoryEquationTreeNode";
        default:
            return "IdentifierTreeNode";
    }
}

Xml operatorXml(Op op) { return Xml("operator", std::to_string(static_cast<int>(op))); }

Expr leaf(Expr::Kind kind, Type type, int nodeType, std::string text) {
    return Expr(Expr::Node{.kind = kind, .type = type, .nodeType = nodeType, .text = std::move(text)});
}

}  // namespace

std::string numberText(double value) {
    char buffer[64];
    const auto [end, error] = std::to_chars(std::begin(buffer), std::end(buffer), value);
    if (error != std::errc()) throw std::logic_error("number too long");
    return std::string(buffer, end);
}

int nodeTypeOf(Type type) {
    switch (type) {
        case Type::Bool:
            return 0;
        case Type::Int:
            return 1;
        case Type::Real:
            return 2;
        case Type::Enum:
            return 3;
        case Type::Clock:
            return 5;
        case Type::Continuous:
            return 6;
        case Type::Mode:
            return 12;
        case Type::Interval:
            return 16;
    }
    throw std::logic_error("unknown type");
}

std::string dataTypeName(Type type) {
    switch (type) {
        case Type::Bool:
            return "Bool";
        case Type::Int:
            return "Int";
        case Type::Real:
            return "Real";
        case Type::Enum:
            return "Enum";
        case Type::Clock:
            return "Clock";
        case Type::Continuous:
            return "Continuous";
        case Type::Interval:
            return "IntRange";
        case Type::Mode:
            break;
    }
    throw std::logic_error("a mode cannot be declared");
}

Expr::Expr(Node node) : mNode(std::make_shared<const Node>(std::move(node))) {}

Expr::Expr(bool value)
    : Expr(Node{.kind = Kind::Boolean, .type = Type::Bool, .nodeType = 0, .text = value ? "True" : "False"}) {}

Expr::Expr(double value)
    : Expr(Node{.kind = Kind::Number, .type = Type::Real, .nodeType = 2, .text = numberText(value)}) {}

Expr::Node Expr::integerNode(std::string text) {
    return Node{.kind = Kind::Number, .type = Type::Int, .nodeType = 1, .text = std::move(text)};
}

Expr Expr::withNodeType(int nodeType) const {
    Node changed = *mNode;
    changed.nodeType = nodeType;
    return Expr(std::move(changed));
}

Xml Expr::xml(const std::string& tag) const {
    if (mNode->kind == Kind::Raw) return Xml(mNode->raw.front()).rename(tag);
    Xml element(tag);
    element.attribute("type", typeAttribute(mNode->kind));
    element.add(Xml("node_type", std::to_string(mNode->nodeType)));
    addContents(element);
    return element;
}

Xml Expr::valueXml(const std::string& tag) const {
    if (mNode->kind == Kind::Raw) return Xml(mNode->raw.front()).rename(tag);
    Xml element(tag);
    addContents(element);
    return element;
}

void Expr::addContents(Xml& element) const {
    const std::vector<Expr>& children = mNode->children;
    switch (mNode->kind) {
        case Kind::Binary:
            element.add(children[0].xml("left")).add(children[1].xml("right")).add(operatorXml(mNode->op));
            break;
        case Kind::Unary:
            element.add(children[0].xml("subexpression")).add(operatorXml(mNode->op));
            break;
        case Kind::Case: {
            Xml cases("cases");
            for (std::size_t i = 0; i + 1 < children.size(); i += 2)
                cases.add(Xml("tuple", {children[i].xml("condition"), children[i + 1].xml("result")}));
            element.add(cases).add(children.back().xml("default_expression"));
            break;
        }
        case Kind::Boolean:
            element.add(Xml("value", mNode->text));
            break;
        case Kind::Number:
            element.add(Xml("number", mNode->text));
            break;
        case Kind::Literal:
        case Kind::Variable:
            element.add(Xml("name", mNode->text));
            break;
        case Kind::Trajectory:
        case Kind::Raw:
            break;
    }
}

Var::Var(const std::string& name, Type type, int nodeType)
    : Expr(Node{.kind = Kind::Variable, .type = type, .nodeType = nodeType, .text = name}) {}

Var var(const std::string& name, Type type) { return Var(name, type, nodeTypeOf(type)); }

Var modeOf(const std::string& subcomponent) {
    return Var(subcomponent.empty() ? "mode" : subcomponent + ".mode", Type::Mode, 12);
}

Var errorOf(const std::string& subcomponent) { return Var(subcomponent + ".error", Type::Mode, 14); }

Expr boolean(bool value) { return Expr(value); }
Expr integer(long value) { return Expr(value); }
Expr real(double value) { return Expr(value); }
Expr number(double value, Type type) { return leaf(Expr::Kind::Number, type, nodeTypeOf(type), numberText(value)); }
Expr enumLiteral(const std::string& name) { return leaf(Expr::Kind::Literal, Type::Enum, 4, name); }
Expr modeLiteral(const std::string& name) { return leaf(Expr::Kind::Literal, Type::Mode, 13, name); }
Expr trajectoryTerm() { return leaf(Expr::Kind::Trajectory, Type::Bool, 0, ""); }

Expr rawExpr(Xml element, Type type) {
    return Expr(Expr::Node{
        .kind = Expr::Kind::Raw, .type = type, .nodeType = nodeTypeOf(type), .text = "", .raw = {std::move(element)}});
}

Expr binary(Op op, const Expr& left, const Expr& right) {
    const Type type = resultType(op, left.type(), right.type());
    return Expr(Expr::Node{.kind = Expr::Kind::Binary,
                           .type = type,
                           .nodeType = nodeTypeOf(type),
                           .text = "",
                           .op = op,
                           .children = {left, right}});
}

Expr unary(Op op, const Expr& operand) {
    const Type type = op == Op::Not ? Type::Bool : operand.type();
    return Expr(Expr::Node{.kind = Expr::Kind::Unary,
                           .type = type,
                           .nodeType = nodeTypeOf(type),
                           .text = "",
                           .op = op,
                           .children = {operand}});
}

Expr imp(const Expr& left, const Expr& right) { return binary(Op::Imp, left, right); }
Expr iff(const Expr& left, const Expr& right) { return binary(Op::Iff, left, right); }

Expr caseOf(const std::vector<std::pair<Expr, Expr>>& cases, const Expr& otherwise) {
    return caseOf(otherwise.type(), cases, otherwise);
}

Expr caseOf(Type type, const std::vector<std::pair<Expr, Expr>>& cases, const Expr& otherwise) {
    Expr::Node node{.kind = Expr::Kind::Case, .type = type, .nodeType = nodeTypeOf(type), .text = ""};
    for (const auto& [condition, value] : cases) {
        node.children.push_back(condition);
        node.children.push_back(value);
    }
    node.children.push_back(otherwise);
    return Expr(std::move(node));
}

Expr operator+(const Expr& left, const Expr& right) { return binary(Op::Plus, left, right); }
Expr operator-(const Expr& left, const Expr& right) { return binary(Op::Minus, left, right); }
Expr operator*(const Expr& left, const Expr& right) { return binary(Op::Multiply, left, right); }
Expr operator/(const Expr& left, const Expr& right) { return binary(Op::Divide, left, right); }
Expr operator%(const Expr& left, const Expr& right) { return binary(Op::Mod, left, right); }
Expr operator&&(const Expr& left, const Expr& right) { return binary(Op::And, left, right); }
Expr operator||(const Expr& left, const Expr& right) { return binary(Op::Or, left, right); }
Expr operator==(const Expr& left, const Expr& right) { return binary(Op::Eq, left, right); }
Expr operator!=(const Expr& left, const Expr& right) { return binary(Op::NEq, left, right); }
Expr operator<(const Expr& left, const Expr& right) { return binary(Op::Lt, left, right); }
Expr operator<=(const Expr& left, const Expr& right) { return binary(Op::LEq, left, right); }
Expr operator>(const Expr& left, const Expr& right) { return binary(Op::Gt, left, right); }
Expr operator>=(const Expr& left, const Expr& right) { return binary(Op::GEq, left, right); }
Expr operator!(const Expr& operand) { return unary(Op::Not, operand); }
Expr operator-(const Expr& operand) { return unary(Op::Invert, operand); }

}  // namespace vornrun::test
