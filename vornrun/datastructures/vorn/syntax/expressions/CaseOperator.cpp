#include <ostream>

#include "vornrun/datastructures/vorn/syntax/expressions/ExpressionTreeVisitor.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operators.h"
#include "vornrun/datastructures/vorn/syntax/expressions/ReplacementChildren.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

namespace {

constexpr std::string_view CASE_TEXT = "case";

/// "(null)" for a missing tree.
void printOrNull(std::ostream& stream, const std::unique_ptr<VornExpressionTree>& tree) {
    if (tree) {
        tree->printExpression(stream);
    } else {
        stream << "(null)";
    }
}

VornExpressionTree* cloneOrNull(const std::unique_ptr<VornExpressionTree>& tree) {
    return tree ? tree->clone() : nullptr;
}

}  // namespace

template <class T>
TypedCaseOperator<T>::Branch::Branch(VornExpressionTree* adopted)
    : tree(adopted), typed(dynamic_cast<TypedVornExpressionTree<T>*>(adopted)) {}

template <class T>
TypedCaseOperator<T>::TypedCaseOperator(const std::vector<CasePair>& cases, VornExpressionTree* defaultTree)
    : mDefault(defaultTree) {
    mCases.reserve(cases.size());
    for (const auto& [condition, value] : cases) {
        mCases.push_back({Branch(value), Operand<VornBool>(condition, {"Condition", CASE_TEXT, mCases.size() + 1})});
    }
}

template <class T>
std::vector<CasePair> TypedCaseOperator<T>::getCases() const {
    std::vector<CasePair> cases;
    cases.reserve(mCases.size());
    for (const Case& entry : mCases) cases.emplace_back(entry.condition.get(), entry.value.tree.get());
    return cases;
}

template <class T>
typename T::AssociatedDataType TypedCaseOperator<T>::evaluateDirect() const {
    for (std::size_t i = 0; i < mCases.size(); ++i) {
        if (mCases[i].condition.evaluate()) return evaluateBranch(mCases[i].value, i + 1);
    }
    return evaluateBranch(mDefault, 0);
}

template <class T>
typename T::AssociatedDataType TypedCaseOperator<T>::evaluateBranch(const Branch& branch, std::size_t number) const {
    // A branch of our own type needs no box.
    if (branch.typed != nullptr) return branch.typed->evaluateDirect();
    if (!branch.tree) throwMissingOperand({number == 0 ? "Default" : "Value", CASE_TEXT, number}, T::op);
    const std::unique_ptr<const VornValue> result(branch.tree->evaluationResult());
    const std::unique_ptr<const VornValue> converted(result->convertToType(T::tag));
    return dynamic_cast<const TypedVornValue<T>&>(*converted).value();
}

template <class T>
TypedCaseOperator<T>* TypedCaseOperator<T>::clone() const {
    std::vector<CasePair> cases;
    cases.reserve(mCases.size());
    for (const Case& entry : mCases) cases.emplace_back(entry.condition.clone(), cloneOrNull(entry.value.tree));
    return new TypedCaseOperator(cases, cloneOrNull(mDefault.tree));
}

template <class T>
TypedCaseOperator<T>* TypedCaseOperator<T>::clone(const std::list<VornExpressionTree*>& children) const {
    ReplacementChildren replacements(children);
    const std::size_t paired = replacements.size() == 0 ? 0 : replacements.size() - 1;
    std::vector<CasePair> cases;
    cases.reserve(paired / 2);
    for (std::size_t i = 0; i + 1 < paired; i += 2) {
        cases.emplace_back(replacements.takeTyped<VornBool>(i).release(), replacements.take(i + 1).release());
    }
    return new TypedCaseOperator(cases, replacements.take(paired).release());
}

template <class T>
VornExpressionTree* TypedCaseOperator<T>::accept(ExpressionTreeVisitor* visitor) const {
    return visitor->visit(static_cast<const CaseOperator*>(this));
}

template <class T>
void TypedCaseOperator<T>::printExpression(std::ostream& stream) const {
    stream << "case ";
    const char* separator = "";
    for (const Case& entry : mCases) {
        stream << separator;
        separator = "; ";
        entry.condition.print(stream);
        stream << " : ";
        printOrNull(stream, entry.value.tree);
    }
    stream << " otherwise ";
    printOrNull(stream, mDefault.tree);
    stream << " end";
}

#define VORN_INSTANTIATE(T) template class TypedCaseOperator<T>;
VORN_FOR_EACH_TYPE(VORN_INSTANTIATE)
#undef VORN_INSTANTIATE

}  // namespace vornrun
