#pragma once
/// \file
/// The preprocessed form of guards and invariants: clauses of linear comparisons. clausesOf() derives it from the plain
/// expression; a test that wants other clauses gives them by hand:
///
///     clause(b, {lin({{2.0, x}, {1.0, y}}, Op::LEq, 5.0)})    // b and 2.0 * x + 1.0 * y <= 5.0
///     clause(b)                                               // a condition alone
///     clause({lin({{1.0, x}}, Op::GEq, 3.0)})                 // a comparison alone

#include <optional>
#include <utility>
#include <vector>

#include "tests/support/ExprWriter.h"

namespace vornrun::test {

/// The sum over the terms of factor times variable, compared with a constant.
struct LinSpec {
    std::vector<std::pair<Expr, Expr>> terms;  // factor, variable
    Op op;
    Expr constant;
};

/// A condition that does not depend on time, and comparisons that do, joined by "and".
struct ClauseSpec {
    std::optional<Expr> condition;
    std::vector<LinSpec> comparisons;
};

using Clauses = std::vector<ClauseSpec>;

LinSpec lin(std::vector<std::pair<Expr, Expr>> terms, Op op, const Expr& constant);
ClauseSpec clause(const Expr& condition, std::vector<LinSpec> comparisons = {});
ClauseSpec clause(std::vector<LinSpec> comparisons);

/// The disjunctive form of an expression. A comparison of numbers in which a clock or a continuous variable occurs
/// becomes a linear one, with all variables that change with time on the left; every other part is a condition.
/// \throws std::logic_error when a part that depends on time is not linear, or stands below something else than
///         and, or, not
Clauses clausesOf(const Expr& expression);

/// The element `clauses`.
Xml clausesXml(const Clauses& clauses);

}  // namespace vornrun::test
