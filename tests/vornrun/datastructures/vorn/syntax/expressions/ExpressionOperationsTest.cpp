// A call of each public operation of expressions and linear expressions, with its arguments and its result. The build
// is the test: a call that does not compile, or that has another result, breaks it.

#include <concepts>
#include <list>
#include <ostream>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/expressions/Converter.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ResultTypes.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun::test {
namespace {

using std::same_as;
using Children = std::list<VornExpressionTree*>;
using BoolTree = TypedVornExpressionTree<VornBool>;
using IntTree = TypedVornExpressionTree<VornInt>;

static_assert(requires(std::ostream & stream, const VornExpressionTree& tree, const IntTree& integers,
                       const Children& children, ExpressionTreeVisitor* visitor) {
    { tree.clone() } -> same_as<VornExpressionTree*>;
    { tree.clone(children) } -> same_as<VornExpressionTree*>;
    { tree.evaluationResult() } -> same_as<VornValue*>;
    { tree.accept(visitor) } -> same_as<VornExpressionTree*>;
    { tree.type() } -> same_as<VornDataTypeTag>;
    tree.printExpression(stream);
    tree.printVorn(stream);
    { integers.clone() } -> same_as<IntTree*>;
    { integers.clone(children) } -> same_as<IntTree*>;
    { integers.evaluationResultTyped() } -> same_as<TypedVornValue<VornInt>*>;
    { integers.evaluateDirect() } -> same_as<long>;
    { getDoubleValue(&tree) } -> same_as<double>;
});

static_assert(requires(const VornValue& value, const TypedVornValue<VornEnum>& text, TypedVornValue<VornEnum>& target,
                       const std::string& payload) {
    { value.convertToType(VornDataTypeTag::VornReal) } -> same_as<VornValue*>;
    TypedVornValue<VornEnum>(payload);
    TypedVornValue<VornEnum>(text);
    target = text;
    { text.value() } -> std::convertible_to<std::string>;
    { text.clone() } -> same_as<TypedVornValue<VornEnum>*>;
    { Converter<VornInt, VornReal>::convert(1) } -> same_as<double>;
    { Converter<VornInt, VornReal, void>::convert(1) } -> same_as<double>;
});

static_assert(requires(const BinaryOperator& binary, const UnaryOperator& unary, const CaseOperator& cases,
                       IntTree* integer, BoolTree* truth, const std::vector<CasePair>& pairs) {
    { binary.getLeftTree() } -> same_as<VornExpressionTree*>;
    { binary.getRightTree() } -> same_as<VornExpressionTree*>;
    { unary.getSubTree() } -> same_as<VornExpressionTree*>;
    { cases.getCases() } -> same_as<std::vector<CasePair>>;
    { cases.getDefaultTree() } -> same_as<VornExpressionTree*>;
    TypedBinaryOperator<VornPlus, VornInt, VornInt, VornInt>(integer, integer);
    TypedUnaryOperator<VornNot, VornBool, VornBool>(truth);
    TypedCaseOperator<VornInt>(pairs, integer);
});
static_assert(BinaryResultType<VornPlus, VornInt, VornReal, void>::valid);
static_assert(same_as<BinaryResultType<VornPlus, VornInt, VornReal>::type, VornReal>);
static_assert(!BinaryResultType<VornMod, VornInt, VornReal>::valid);
static_assert(UnaryResultType<VornInvert, VornClock, void>::valid);

static_assert(requires(const std::string& text, const VornReference& reference, ExpressionTreeVisitor& visitor,
                       const VornVariable* variable, const VornValue* value, const BinaryOperator* binary,
                       const UnaryOperator* unary, const CaseOperator* cases, const RealisedVariable* realised,
                       const IdentifierEvaluation& fault) {
    VornReference(text);
    TypedVornVariable<VornInt>(text);
    { reference.getSubReference() } -> same_as<VornReference>;
    { visitor.visit(variable) } -> same_as<VornExpressionTree*>;
    { visitor.visit(value) } -> same_as<VornExpressionTree*>;
    { visitor.visit(binary) } -> same_as<VornExpressionTree*>;
    { visitor.visit(unary) } -> same_as<VornExpressionTree*>;
    { visitor.visit(cases) } -> same_as<VornExpressionTree*>;
    { visitor.visit(realised) } -> same_as<VornExpressionTree*>;
    { fault.what() } -> same_as<const char*>;
});

static_assert(requires(std::ostream & stream, const TimeInterval& interval, const std::vector<TimeRange>& ranges,
                       const TimeRange& range) {
    TimeInterval(Time(0), TimeInterval::INF_TIME);
    TimeInterval(ranges);
    { interval.intersect(TimeInterval::EmptyInterval) } -> same_as<TimeInterval>;
    { interval.unite(TimeInterval::InfiniteInterval) } -> same_as<TimeInterval>;
    { stream << range } -> same_as<std::ostream&>;
    { stream << interval } -> same_as<std::ostream&>;
});

static_assert(requires(std::ostream & stream, VornExpressionTree* tree, BoolTree* truth, LinExp& comparison,
                       const LinExp& constComparison, Clause& clause, const Clause& constClause,
                       const std::vector<Clause*>& clauses, const VornLinearExpression& expression) {
    LinExp(tree, parser::OperatorType::Lt);
    comparison.addTerm(tree, tree, tree);
    constComparison.print(stream);
    {Clause(truth)};
    clause.addExpr(&comparison);
    constClause.print(stream);
    { constClause.holdsWhile() } -> same_as<TimeInterval>;
    VornLinearExpression(truth, clauses);
    { expression.isSimple() } -> same_as<bool>;
    { expression.holds() } -> same_as<bool>;
    { expression.holdsWhile() } -> same_as<TimeInterval>;
    expression.offsetCache(Time(1.0));
    expression.invalidateCache();
});

}  // namespace
}  // namespace vornrun::test
