#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include "vornrun/Ownership.h"

namespace vornrun {

using parser::OperatorType;

namespace {

/// A comparison whose rate is this close to zero does not depend on time. Strict bounds move inwards by as much, so
/// that a delay drawn at the bound of an open set cannot be the excluded point.
constexpr double LIN_TOLERANCE = 1e-6;

void printTree(std::ostream& stream, const VornExpressionTree* tree) {
    if (tree == nullptr)
        stream << "(null)";
    else
        tree->printExpression(stream);
}

const char* operatorText(OperatorType op) {
    switch (op) {
        case OperatorType::Lt:
            return " < ";
        case OperatorType::LEq:
            return " <= ";
        case OperatorType::Gt:
            return " > ";
        case OperatorType::GEq:
            return " >= ";
        case OperatorType::Eq:
            return " = ";
        case OperatorType::NEq:
            return " != ";
        default:
            return " ?= ";
    }
}

/// Whether 0 compares with `rest`. The tolerance favours the comparison, for the strict operators too.
bool constantHolds(OperatorType op, double rest) {
    switch (op) {
        case OperatorType::Lt:
            return rest > -LIN_TOLERANCE;
        case OperatorType::LEq:
            return rest >= -LIN_TOLERANCE;
        case OperatorType::Gt:
            return rest < LIN_TOLERANCE;
        case OperatorType::GEq:
            return rest <= LIN_TOLERANCE;
        case OperatorType::Eq:
            return std::abs(rest) <= LIN_TOLERANCE;
        case OperatorType::NEq:
            return std::abs(rest) > LIN_TOLERANCE;
        default:
            return false;
    }
}

/// The operator after both sides have changed their sign.
OperatorType mirrored(OperatorType op) {
    switch (op) {
        case OperatorType::Lt:
            return OperatorType::Gt;
        case OperatorType::LEq:
            return OperatorType::GEq;
        case OperatorType::Gt:
            return OperatorType::Lt;
        case OperatorType::GEq:
            return OperatorType::LEq;
        default:
            return op;
    }
}

/// All delays but `bound`. The first range is empty for a bound at or before now; an intersection drops it.
TimeInterval allBut(Time bound) {
    TimeRanges ranges;
    ranges.push_back({0.0, bound - LIN_TOLERANCE});
    ranges.push_back({bound + LIN_TOLERANCE, TimeInterval::INF_TIME});
    return TimeInterval(std::move(ranges));
}

/// Narrows `running` to the delays that compare with `bound`.
void restrictTo(TimeInterval& running, OperatorType op, Time bound) {
    constexpr Time unbounded = TimeInterval::INF_TIME;
    switch (op) {
        case OperatorType::Lt:
            running = running.intersect(TimeInterval(0.0, bound - LIN_TOLERANCE));
            break;
        case OperatorType::LEq:
            running = running.intersect(TimeInterval(0.0, bound));
            break;
        case OperatorType::Gt:
            running = running.intersect(TimeInterval(bound + LIN_TOLERANCE, unbounded));
            break;
        case OperatorType::GEq:
            running = running.intersect(TimeInterval(bound, unbounded));
            break;
        case OperatorType::Eq:
            running = running.intersect(TimeInterval(bound, bound));
            break;
        case OperatorType::NEq:
            running = running.intersect(allBut(bound));
            break;
        default:
            break;  // no comparison, no restriction
    }
}

/// Writes what a clause or a comparison prints.
template <class Printable>
struct Printed {
    const Printable& printable;
    friend std::ostream& operator<<(std::ostream& stream, const Printed& printed) {
        printed.printable.print(stream);
        return stream;
    }
};

bool hasNoComparison(const std::unique_ptr<Clause>& clause) { return clause->expressions().empty(); }

}  // namespace

LinExp::LinExp(VornExpressionTree* constant, OperatorType op)
    : mConstant(constant), mOperator(op), mConstantReader(constant), mComplete(constant != nullptr) {}

void LinExp::addTerm(VornExpressionTree* variable, VornExpressionTree* rate, VornExpressionTree* coefficient) {
    Term term{std::unique_ptr<VornExpressionTree>(variable), std::unique_ptr<VornExpressionTree>(rate),
              std::unique_ptr<VornExpressionTree>(coefficient)};
    mTermReaders.push_back({NumberReader(coefficient), NumberReader(variable), NumberReader(rate)});
    mTerms.push_back(std::move(term));
    mComplete = mComplete && variable != nullptr && rate != nullptr && coefficient != nullptr;
}

void LinExp::print(std::ostream& stream) const {
    const char* separator = "";
    for (const Term& term : mTerms) {
        stream << separator;
        printTree(stream, term.variable.get());
        stream << " * ";
        printTree(stream, term.coefficient.get());
        separator = " + ";
    }
    stream << operatorText(mOperator);
    printTree(stream, mConstant.get());
}

void LinExp::reportMissingTree() const {
    std::string missing = "constant";
    for (std::size_t i = 0; mConstant != nullptr && i < mTerms.size(); ++i) {
        const Term& term = mTerms[i];
        if (term.coefficient && term.variable && term.rate) continue;
        missing = !term.coefficient ? "coefficient" : !term.variable ? "variable" : "rate";
        missing += " of term " + std::to_string(i + 1);
        break;
    }
    std::ostringstream text;
    text << "The " << missing << " is missing in the linear comparison '" << Printed<LinExp>{*this} << "'";
    throw missing_operand(text.str());
}

bool LinExp::restrict(TimeInterval& running) const {
    if (!mComplete) reportMissingTree();
    double rest = mConstantReader.read();
    double rate = 0.0;
    for (const TermReader& term : mTermReaders) {
        const double c = term.coefficient.read();
        const double x = term.variable.read();
        const double r = term.rate.read();
        rate += r * c;
        rest -= c * x;
    }
    if (mTermReaders.empty() || std::abs(rate) <= LIN_TOLERANCE) {
        if (constantHolds(mOperator, rest)) return true;
        running = TimeInterval::EmptyInterval;
        return false;
    }
    if (rate < 0.0)
        restrictTo(running, mirrored(mOperator), -rest / -rate);
    else
        restrictTo(running, mOperator, rest / rate);
    return true;
}

const Log Clause::sLogger("root.expr.linear");

Clause::Clause(TypedVornExpressionTree<VornBool>* condition)
    : mCondition(condition), mLastResult(TimeInterval::EmptyInterval), mHasLastResult(false) {}

void Clause::addExpr(LinExp* expression) {
    assert(expression != nullptr);
    mExpressions.emplace_back(expression);
}

void Clause::print(std::ostream& stream) const {
    const char* separator = "";
    for (const auto& expression : mExpressions) {
        stream << separator << Printed<LinExp>{*expression};
        separator = " and ";
    }
    if (mCondition) {
        stream << " and ";
        mCondition->printExpression(stream);
    }
}

TimeInterval Clause::holdsWhile() const {
    const bool condition = !mCondition || mCondition->evaluateDirect();
    VORNRUN_LOG(sLogger, Trace, "Clause: " << Printed<Clause>{*this});
    if (!condition) {
        VORNRUN_LOG(sLogger, Trace, "Condition negative");
        return TimeInterval::EmptyInterval;
    }
    TimeInterval running = TimeInterval::InfiniteInterval;
    for (const auto& expression : mExpressions) {
        VORNRUN_LOG(sLogger, Trace, " Linexp: " << Printed<LinExp>{*expression});
        if (!expression->restrict(running)) break;
    }
    mLastResult = running;
    mHasLastResult = true;
    return running;
}

const Log VornLinearExpression::sLogger("root.expr.linear");

VornLinearExpression::VornLinearExpression(TypedVornExpressionTree<VornBool>* plain,
                                           const std::vector<Clause*>& clauses)
    : mPlain(plain),
      mClauses(adoptAll(clauses)),
      mSimple(std::all_of(mClauses.begin(), mClauses.end(), hasNoComparison)),
      mLastResult(TimeInterval::EmptyInterval) {}

TimeInterval VornLinearExpression::holdsWhile() const {
    if (mSimple) {
        const bool now = holds();
        VORNRUN_LOG(sLogger, Trace, "Simple invariant holds: " << now);
        return now ? TimeInterval::InfiniteInterval : TimeInterval::EmptyInterval;
    }
    TimeInterval running = TimeInterval::EmptyInterval;
    for (const auto& clause : mClauses) {
        TimeInterval delays = clause->holdsWhile();
        running = running.empty() ? std::move(delays) : running.unite(delays);
    }
    mLastResult = running;
    return running;
}

void VornLinearExpression::printVorn(std::ostream& stream) const { printTree(stream, mPlain.get()); }

void VornLinearExpression::reportMissingPlainForm() {
    throw missing_operand("The plain form of a linear expression is missing");
}

}  // namespace vornrun
