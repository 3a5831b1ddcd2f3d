#include "tests/support/ClauseWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace vornrun::test {
namespace {

const Var x = var("x", Type::Clock);
const Var c = var("c", Type::Continuous);
const Var r = var("r", Type::Real);
const Var b = var("b", Type::Bool);

/// Short text of the few kinds of expressions that the cases below use.
std::string text(const Expr& e) {
    const auto& children = e.node().children;
    if (children.empty()) return e.node().text;
    const std::string op = "#" + std::to_string(static_cast<int>(e.node().op));
    if (children.size() == 1) return op + "(" + text(children[0]) + ")";
    return "(" + text(children[0]) + " " + op + " " + text(children[1]) + ")";
}

std::string text(const Clauses& clauses) {
    std::ostringstream result;
    for (const ClauseSpec& spec : clauses) {
        result << "{";
        if (spec.condition) result << text(*spec.condition);
        for (const LinSpec& comparison : spec.comparisons) {
            result << "[";
            for (const auto& [factor, variable] : comparison.terms)
                result << text(factor) << "*" << text(variable) << " ";
            result << "#" << static_cast<int>(comparison.op) << " " << text(comparison.constant) << "]";
        }
        result << "}";
    }
    return result.str();
}

struct ClauseCase {
    const char* name;
    Expr expression;
    const char* clauses;  // operators by number: # and the number
};

class DerivedClauses : public testing::TestWithParam<ClauseCase> {};

TEST_P(DerivedClauses, SplitConditionsFromComparisons) {
    EXPECT_EQ(text(clausesOf(GetParam().expression)), GetParam().clauses);
}

INSTANTIATE_TEST_SUITE_P(
    ClauseWriter, DerivedClauses,
    testing::Values(ClauseCase{"Comparison", x <= 5.0, "{[1*x #1 5]}"},
                    ClauseCase{"VariableOnTheRightIsMirrored", Expr(5.0) <= x, "{[1*x #3 5]}"},
                    ClauseCase{"StrictMirrored", Expr(5.0) > x, "{[1*x #0 5]}"}, ClauseCase{"ConditionOnly", b, "{b}"},
                    ClauseCase{"ComparisonOfPlainNumbersIsACondition", r < 3.0, "{(r #0 3)}"},
                    ClauseCase{"ConjunctionIsOneClause", x >= 5.0 && b&& c == 1.0, "{b[1*x #3 5][1*c #4 1]}"},
                    ClauseCase{"ConditionsAreJoined", b&& x < 1.0 && !b, "{(b #10 #15(b))[1*x #0 1]}"},
                    ClauseCase{"DisjunctionIsTwoClauses", x < 1.0 || b, "{[1*x #0 1]}{b}"},
                    ClauseCase{"DisjunctionIsMultipliedOut", (x < 1.0 || b) && c > 2.0,
                               "{[1*x #0 1][1*c #2 2]}{b[1*c #2 2]}"},
                    ClauseCase{"NegationTurnsTheComparison", !(x < 1.0), "{[1*x #3 1]}"},
                    ClauseCase{"NegatedConjunction", !(x < 1.0 && b), "{[1*x #3 1]}{#15(b)}"},
                    ClauseCase{"NegatedEquality", !(x == 1.0), "{[1*x #5 1]}"},
                    ClauseCase{"BothSides", x - c >= 2.0 * x + 1.0, "{[1*x -1*c -2*x #3 1]}"},
                    ClauseCase{"ConstantsMoveRight", x + 3.0 <= 5.0, "{[1*x #1 2]}"},
                    ClauseCase{"FactorMayBeAVariable", r* x <= r, "{[r*x #1 r]}"},
                    ClauseCase{"NegatedTerm", -x <= 1.0, "{[-1*x #1 1]}"},
                    ClauseCase{"Division", x / 2.0 <= 1.0, "{[(1 #9 2)*x #1 1]}"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ClauseWriter, RefusesWhatIsNotLinear) {
    EXPECT_THROW(clausesOf(x * c <= 1.0), std::logic_error);
    EXPECT_THROW(clausesOf(Expr(1.0) / x <= 1.0), std::logic_error);
    EXPECT_THROW(clausesOf(iff(b, x <= 1.0)), std::logic_error);
}

TEST(ClauseWriter, WritesConditionAndComparisons) {
    EXPECT_EQ(
        clausesXml({clause(b, {lin({{2.0, x}}, Op::LEq, 5.0)}), clause(b), clause(std::vector<LinSpec>{})}).toString(),
        "<clauses>\n"
        "  <Clause>\n"
        "    <cond type=\"IdentifierTreeNode\">\n"
        "      <node_type>0</node_type>\n"
        "      <name>b</name>\n"
        "    </cond>\n"
        "    <equations>\n"
        "      <LinExp>\n"
        "        <constant type=\"NumberTreeNode\">\n"
        "          <node_type>2</node_type>\n"
        "          <number>5</number>\n"
        "        </constant>\n"
        "        <operator>1</operator>\n"
        "        <terms>\n"
        "          <Term>\n"
        "            <factor type=\"NumberTreeNode\">\n"
        "              <node_type>2</node_type>\n"
        "              <number>2</number>\n"
        "            </factor>\n"
        "            <var type=\"IdentifierTreeNode\">\n"
        "              <node_type>5</node_type>\n"
        "              <name>x</name>\n"
        "            </var>\n"
        "          </Term>\n"
        "        </terms>\n"
        "      </LinExp>\n"
        "    </equations>\n"
        "  </Clause>\n"
        "  <Clause>\n"
        "    <cond type=\"IdentifierTreeNode\">\n"
        "      <node_type>0</node_type>\n"
        "      <name>b</name>\n"
        "    </cond>\n"
        "  </Clause>\n"
        "  <Clause/>\n"
        "</clauses>\n");
}

}  // namespace
}  // namespace vornrun::test
