#include "tests/support/ClauseWriter.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace vornrun::test {

namespace {

using Kind = Expr::Kind;

bool dependsOnTime(const Expr& e) {
    const Expr::Node& node = e.node();
    if (node.kind == Kind::Variable) return node.type == Type::Clock || node.type == Type::Continuous;
    return std::any_of(node.children.begin(), node.children.end(), dependsOnTime);
}

bool isBinary(const Expr& e, Op op) { return e.node().kind == Kind::Binary && e.node().op == op; }
bool isUnary(const Expr& e, Op op) { return e.node().kind == Kind::Unary && e.node().op == op; }
bool isComparison(const Expr& e) { return e.node().kind == Kind::Binary && e.node().op <= Op::NEq; }
bool isNumber(const Expr& e) { return e.node().kind == Kind::Number; }
double valueOf(const Expr& e) { return std::stod(e.node().text); }

// Sums and products of constants are reckoned out, so that the clauses of simple guards are simple as well.

Expr scaled(const Expr& factor, const Expr& e) {
    if ((isNumber(factor) && valueOf(factor) == 0.0) || (isNumber(e) && valueOf(e) == 0.0)) return real(0.0);
    if (isNumber(factor) && isNumber(e)) return real(valueOf(factor) * valueOf(e));
    if (isNumber(factor) && valueOf(factor) == 1.0) return e;
    if (isNumber(e) && valueOf(e) == 1.0) return factor;
    return factor * e;
}

Expr sum(const Expr& left, const Expr& right) {
    if (isNumber(left) && isNumber(right)) return real(valueOf(left) + valueOf(right));
    if (isNumber(left) && valueOf(left) == 0.0) return right;
    if (isNumber(right) && valueOf(right) == 0.0) return left;
    return left + right;
}

/// The sum of the terms (factor, variable) and the constant.
struct LinearForm {
    std::vector<std::pair<Expr, Expr>> terms;
    Expr constant;
};

LinearForm scaled(const Expr& factor, LinearForm form) {
    for (auto& term : form.terms) term.first = scaled(factor, term.first);
    form.constant = scaled(factor, form.constant);
    return form;
}

LinearForm sum(LinearForm left, const LinearForm& right) {
    left.terms.insert(left.terms.end(), right.terms.begin(), right.terms.end());
    left.constant = sum(left.constant, right.constant);
    return left;
}

LinearForm linearForm(const Expr& e) {
    if (!dependsOnTime(e)) return {{}, e};
    const Expr::Node& node = e.node();
    if (node.kind == Kind::Variable) return {{{real(1.0), e}}, real(0.0)};
    const std::vector<Expr>& children = node.children;
    if (isUnary(e, Op::Invert)) return scaled(real(-1.0), linearForm(children[0]));
    if (isBinary(e, Op::Plus)) return sum(linearForm(children[0]), linearForm(children[1]));
    if (isBinary(e, Op::Minus)) return sum(linearForm(children[0]), scaled(real(-1.0), linearForm(children[1])));
    if (isBinary(e, Op::Multiply) && !dependsOnTime(children[0])) return scaled(children[0], linearForm(children[1]));
    if (isBinary(e, Op::Multiply) && !dependsOnTime(children[1])) return scaled(children[1], linearForm(children[0]));
    if (isBinary(e, Op::Divide) && !dependsOnTime(children[1]))
        return scaled(real(1.0) / children[1], linearForm(children[0]));
    throw std::logic_error("not linear in the variables that change with time; give the clauses by hand");
}

Op mirrored(Op op) {
    switch (op) {
        case Op::Lt:
            return Op::Gt;
        case Op::LEq:
            return Op::GEq;
        case Op::Gt:
            return Op::Lt;
        case Op::GEq:
            return Op::LEq;
        default:
            return op;
    }
}

Op negated(Op op) {
    switch (op) {
        case Op::Lt:
            return Op::GEq;
        case Op::LEq:
            return Op::Gt;
        case Op::Gt:
            return Op::LEq;
        case Op::GEq:
            return Op::Lt;
        case Op::Eq:
            return Op::NEq;
        default:
            return Op::Eq;
    }
}

LinSpec comparison(const Expr& e) {
    Expr left = e.node().children[0];
    Expr right = e.node().children[1];
    Op op = e.node().op;
    if (!dependsOnTime(left)) {
        std::swap(left, right);
        op = mirrored(op);
    }
    LinearForm form = linearForm(left);
    const LinearForm other = linearForm(right);
    const LinearForm moved = scaled(real(-1.0), other);
    form.terms.insert(form.terms.end(), moved.terms.begin(), moved.terms.end());
    const Expr constant = isNumber(form.constant) && valueOf(form.constant) == 0.0
                              ? other.constant
                              : sum(other.constant, scaled(real(-1.0), form.constant));
    return {form.terms, op, constant};
}

ClauseSpec joined(ClauseSpec left, const ClauseSpec& right) {
    if (right.condition) left.condition = left.condition ? *left.condition && *right.condition : *right.condition;
    left.comparisons.insert(left.comparisons.end(), right.comparisons.begin(), right.comparisons.end());
    return left;
}

Clauses disjunctive(const Expr& e, bool negate) {
    if (!dependsOnTime(e)) return {clause(negate ? !e : e)};
    const std::vector<Expr>& children = e.node().children;
    if (isUnary(e, Op::Not)) return disjunctive(children[0], !negate);
    if (isBinary(e, negate ? Op::And : Op::Or)) {
        Clauses result = disjunctive(children[0], negate);
        for (ClauseSpec& spec : disjunctive(children[1], negate)) result.push_back(std::move(spec));
        return result;
    }
    if (isBinary(e, negate ? Op::Or : Op::And)) {
        const Clauses lefts = disjunctive(children[0], negate);
        const Clauses rights = disjunctive(children[1], negate);
        Clauses result;
        for (const ClauseSpec& left : lefts)
            for (const ClauseSpec& right : rights) result.push_back(joined(left, right));
        return result;
    }
    if (!isComparison(e)) throw std::logic_error("depends on time below and, or, not; give the clauses by hand");
    LinSpec spec = comparison(e);
    if (negate) spec.op = negated(spec.op);
    return {clause({spec})};
}

Xml linXml(const LinSpec& spec) {
    Xml terms("terms");
    for (const auto& [factor, variable] : spec.terms)
        terms.add(Xml("Term", {factor.xml("factor"), variable.xml("var")}));
    return Xml("LinExp",
               {spec.constant.xml("constant"), Xml("operator", std::to_string(static_cast<int>(spec.op))), terms});
}

}  // namespace

LinSpec lin(std::vector<std::pair<Expr, Expr>> terms, Op op, const Expr& constant) {
    return {std::move(terms), op, constant};
}

ClauseSpec clause(const Expr& condition, std::vector<LinSpec> comparisons) {
    return {condition, std::move(comparisons)};
}

ClauseSpec clause(std::vector<LinSpec> comparisons) { return {std::nullopt, std::move(comparisons)}; }

Clauses clausesOf(const Expr& expression) { return disjunctive(expression, false); }

Xml clausesXml(const Clauses& clauses) {
    Xml result("clauses");
    for (const ClauseSpec& spec : clauses) {
        Xml element("Clause");
        if (spec.condition) element.add(spec.condition->xml("cond"));
        if (!spec.comparisons.empty()) {
            Xml equations("equations");
            for (const LinSpec& comparison : spec.comparisons) equations.add(linXml(comparison));
            element.add(equations);
        }
        result.add(element);
    }
    return result;
}

}  // namespace vornrun::test
