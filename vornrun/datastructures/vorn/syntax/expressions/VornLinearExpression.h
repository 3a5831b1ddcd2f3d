#pragma once
/// \file
/// Guards and invariants in a form from which the delays are computed at which they hold. It is a disjunction of
/// clauses. A clause is a condition that does not depend on time, and a conjunction of linear comparisons.

#include <iosfwd>
#include <memory>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/syntax/expressions/NumberReader.h"
#include "vornrun/datastructures/vorn/syntax/expressions/OperatorType.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornExpressionTree.h"

namespace vornrun {

/// One comparison: the sum over the terms of coefficient times variable, compared with a constant. Constant and
/// coefficients are trees, since they may depend on variables that do not change with time.
class LinExp {
  public:
    /// What one summand needs: the variable's value, its rate of change, and the factor in front of it.
    struct Term {
        std::unique_ptr<VornExpressionTree> variable;
        std::unique_ptr<VornExpressionTree> rate;
        std::unique_ptr<VornExpressionTree> coefficient;
    };

    /// Adopts the constant. If it is null, the evaluation throws missing_operand.
    LinExp(VornExpressionTree* constant, parser::OperatorType op);
    /// Adopts the three trees. If one is null, the evaluation throws missing_operand.
    void addTerm(VornExpressionTree* variable, VornExpressionTree* rate, VornExpressionTree* coefficient);
    /// The terms joined by " + ", the operator, the constant; rates are not printed.
    void print(std::ostream& stream) const;

    const std::vector<Term>& terms() const noexcept { return mTerms; }
    const VornExpressionTree* constant() const noexcept { return mConstant.get(); }
    parser::OperatorType op() const noexcept { return mOperator; }

    /// Narrows `running` to the delays at which the comparison holds, every variable keeping its present rate.
    /// With rest = constant - sum(c_i x_i) and rate = sum(c_i r_i) the bound is rest / rate. A rate within 1e-6 of zero
    /// makes the comparison independent of time.
    /// \return false when the comparison never holds; `running` is then empty, and further comparisons change nothing
    /// \throws missing_operand naming the tree that is null
    bool restrict(TimeInterval& running) const;

  private:
    /// How one term is read, beside the trees themselves.
    struct TermReader {
        NumberReader coefficient;
        NumberReader variable;
        NumberReader rate;
    };
    [[noreturn]] void reportMissingTree() const;

    std::vector<Term> mTerms;
    std::unique_ptr<VornExpressionTree> mConstant;
    parser::OperatorType mOperator;
    std::vector<TermReader> mTermReaders;  // one for each term, in the same order
    NumberReader mConstantReader;
    bool mComplete;  // no tree is null
};

class Clause {
  public:
    /// Adopts the condition; null means true.
    explicit Clause(TypedVornExpressionTree<VornBool>* condition);
    /// Adopts the comparison.
    /// \pre the comparison is not null
    void addExpr(LinExp* expression);
    /// The comparisons joined by " and ", then " and " and the condition if any: a clause without comparisons starts
    /// with " and ".
    void print(std::ostream& stream) const;
    /// The delays at which the clause holds. Computed anew at every call; kept as the last result unless the condition
    /// fails.
    TimeInterval holdsWhile() const;
    /// Shifts the last result, if present, by the time that has passed.
    void offsetCache(Time delta) const {
        if (mHasLastResult) mLastResult.advance(delta);
    }
    void invalidateCache() const { mHasLastResult = false; }
    /// The stored result of the last holdsWhile(), shifted since by offsetCache(); null when there is none.
    const TimeInterval* lastResult() const noexcept { return mHasLastResult ? &mLastResult : nullptr; }

    /// Null means true.
    const TypedVornExpressionTree<VornBool>* condition() const noexcept { return mCondition.get(); }
    const std::vector<std::unique_ptr<LinExp>>& expressions() const noexcept { return mExpressions; }

  private:
    static const Log sLogger;
    std::unique_ptr<TypedVornExpressionTree<VornBool>> mCondition;
    std::vector<std::unique_ptr<LinExp>> mExpressions;
    mutable TimeInterval mLastResult;  // shifted by offsetCache(), dropped by invalidateCache()
    mutable bool mHasLastResult;
};

/// A guard or invariant, in two forms: a plain tree for the present moment, and clauses for the delays from now.
class VornLinearExpression : public Vorn {
  public:
    /// Adopts the plain form and the clauses. If the plain form is null, its evaluation throws missing_operand.
    /// \pre no clause is null
    VornLinearExpression(TypedVornExpressionTree<VornBool>* plain, const std::vector<Clause*>& clauses);

    /// True when no clause has a comparison: the answer then does not depend on the delay.
    bool isSimple() const noexcept { return mSimple; }
    /// The plain form, evaluated now.
    /// \throws missing_operand when there is none
    bool holds() const {
        if (!mPlain) reportMissingPlainForm();
        return mPlain->evaluateDirect();
    }
    /// The delays at which the expression holds, from present values and rates. A simple expression costs one
    /// evaluation of the plain form; otherwise nothing is allocated as long as no set has more than two ranges.
    TimeInterval holdsWhile() const;
    /// Shifts the last results of the clauses by the time that has passed. holdsWhile() never reads them, so a run
    /// needs no call of this.
    void offsetCache(Time delta) const {
        for (const auto& clause : mClauses) clause->offsetCache(delta);
    }
    /// Drops the last results of the clauses; lastResult() keeps its value.
    void invalidateCache() const {
        for (const auto& clause : mClauses) clause->invalidateCache();
    }

    /// Prints the plain form.
    void printVorn(std::ostream& stream) const override;

    /// Null when it is missing.
    const TypedVornExpressionTree<VornBool>* plain() const noexcept { return mPlain.get(); }
    const std::vector<std::unique_ptr<Clause>>& clauses() const noexcept { return mClauses; }
    /// What the last holdsWhile() of an expression that is not simple gave; the empty interval at first.
    const TimeInterval& lastResult() const noexcept { return mLastResult; }

  private:
    static const Log sLogger;
    [[noreturn]] static void reportMissingPlainForm();

    std::unique_ptr<TypedVornExpressionTree<VornBool>> mPlain;
    std::vector<std::unique_ptr<Clause>> mClauses;
    bool mSimple;
    mutable TimeInterval mLastResult;  // written by holdsWhile()
};

}  // namespace vornrun
