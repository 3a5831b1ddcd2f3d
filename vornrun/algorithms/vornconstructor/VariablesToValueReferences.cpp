#include "vornrun/algorithms/vornconstructor/VariablesToValueReferences.h"

#include <cassert>

#include "vornrun/Ownership.h"
#include "vornrun/algorithms/vornconstructor/VariableSubstitutionExpressionVisitor.h"
#include "vornrun/datastructures/vorn/realisation/MistypedVariable.h"
#include "vornrun/datastructures/vorn/realisation/ModelException.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"
#include "vornrun/datastructures/vorn/syntax/VornAssignment.h"
#include "vornrun/datastructures/vorn/syntax/VornMode.h"
#include "vornrun/datastructures/vorn/syntax/expressions/Operand.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornLinearExpression.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun {

namespace {

using Tree = std::unique_ptr<VornExpressionTree>;
using BoolTree = TypedVornExpressionTree<VornBool>;

Tree accepted(const VornExpressionTree* tree, VariableSubstitutionExpressionVisitor& visitor) {
    return Tree(tree == nullptr ? nullptr : tree->accept(&visitor));
}

/// Takes the place of a tree of the type that became null as a whole. Its evaluation throws missing_operand.
Tree missing(VornDataTypeTag type, const OperandPlace& place) {
    return withTagClass(type, [&]<class T>() -> Tree { return std::make_unique<MissingOperand<T>>(place); });
}

}  // namespace

const Log VariablesToValueReferences::sLogger("root.realisation.valref");

VariablesToValueReferences::VariablesToValueReferences(const VornComponentRealisation* realisation,
                                                       ValuationPtr valuation, ModelOptions options)
    : mValuation(std::move(valuation)), mRealisation(realisation), mOptions(options) {
    assert(mRealisation != nullptr && mValuation != nullptr);
}

VornExpressionTree* VariablesToValueReferences::operator()(const VornExpressionTree* tree) const {
    VariableSubstitutionExpressionVisitor visitor(this);
    return accepted(tree, visitor).release();
}

std::unique_ptr<RealisedVariable> VariablesToValueReferences::leftSide(const VornVariable* variable,
                                                                       Slots slots) const {
    const std::string place = "Component " + mRealisation->fullIdentifier() + ": the left side of an assignment";
    if (variable == nullptr) throw model_exception(place + " is no variable of a type that can be assigned there");
    auto target = substitute(variable, slots);
    if (target == nullptr) throw model_exception(place + ", \"" + variable->text() + "\", names nothing with a value");
    return target;
}

std::unique_ptr<VornExpressionTree> VariablesToValueReferences::rightSide(
    const VornExpressionTree* tree, const VornVariable* target, VariableSubstitutionExpressionVisitor& visitor) const {
    if (tree == nullptr)
        throw model_exception("Component " + mRealisation->fullIdentifier() + ": the assignment to \"" +
                              (target == nullptr ? "" : target->text()) + "\" has no valid right side");
    Tree rewritten = accepted(tree, visitor);
    return rewritten != nullptr ? std::move(rewritten) : missing(tree->type(), {"Right side", ":="});
}

RealisedAssignment* VariablesToValueReferences::operator()(const VornAssignment* assignment) const {
    VariableSubstitutionExpressionVisitor visitor(this);
    Tree expression = rightSide(assignment->expression(), assignment->variable(), visitor);
    auto target = leftSide(assignment->variable(), &VornComponentRealisation::valueReferences);
    return makeAssignment(target.release(), expression.release(), visitor.getReferences(), mValuation);
}

RealisedFlow* VariablesToValueReferences::operator()(const VornFlow* flow, const ModeList& modes) const {
    VariableSubstitutionExpressionVisitor visitor(this);
    Tree expression = rightSide(flow->expression(), flow->variable(), visitor);
    auto target = leftSide(flow->variable(), &VornComponentRealisation::valueReferences);
    return makeFlow(target.release(), expression.release(), visitor.getReferences(), mValuation, modes);
}

RealisedTrajectoryEquation* VariablesToValueReferences::operator()(const VornTrajectoryEquation* equation) const {
    VariableSubstitutionExpressionVisitor visitor(this);
    Tree expression = rightSide(equation->rhs(), equation->variable(), visitor);
    auto rate = leftSide(equation->variable(), &VornComponentRealisation::valueTrajectories);
    auto variable = leftSide(equation->variable(), &VornComponentRealisation::valueReferences);
    return makeTrajectory(variable.release(), rate.release(), expression.release(), visitor.getReferences(),
                          mValuation);
}

VornLinearExpression* VariablesToValueReferences::operator()(const VornLinearExpression* expression) const {
    VariableSubstitutionExpressionVisitor visitor(this);
    auto plain = castOwned<BoolTree>(accepted(expression->plain(), visitor));
    std::vector<std::unique_ptr<Clause>> clauses;
    clauses.reserve(expression->clauses().size());
    for (const auto& clause : expression->clauses()) clauses.push_back(rewrite(*clause, visitor));
    return new VornLinearExpression(plain.release(), releaseAll(std::move(clauses)));
}

std::unique_ptr<Clause> VariablesToValueReferences::rewrite(const Clause& clause,
                                                            VariableSubstitutionExpressionVisitor& visitor) const {
    // A condition that does not resolve is null, like an absent one. The clause then depends on its comparisons only.
    auto result = std::make_unique<Clause>(castOwned<BoolTree>(accepted(clause.condition(), visitor)).release());
    for (const auto& comparison : clause.expressions()) result->addExpr(rewrite(*comparison, visitor).release());
    return result;
}

std::unique_ptr<LinExp> VariablesToValueReferences::rewrite(const LinExp& comparison,
                                                            VariableSubstitutionExpressionVisitor& visitor) const {
    auto result = std::make_unique<LinExp>(accepted(comparison.constant(), visitor).release(), comparison.op());
    for (const LinExp::Term& term : comparison.terms()) {
        Tree coefficient = accepted(term.coefficient.get(), visitor);
        auto variable = termVariable(term.variable.get(), &VornComponentRealisation::valueReferences);
        auto rate = termVariable(term.rate.get(), &VornComponentRealisation::valueTrajectories);
        result->addTerm(variable.release(), rate.release(), coefficient.release());
    }
    return result;
}

std::unique_ptr<RealisedVariable> VariablesToValueReferences::termVariable(const VornExpressionTree* tree,
                                                                           Slots slots) const {
    if (tree == nullptr) return nullptr;
    const auto* variable = dynamic_cast<const VornVariable*>(tree);
    if (variable == nullptr) {
        std::ostringstream text;
        text << "Component " << mRealisation->fullIdentifier() << ": \"" << *tree
             << "\" stands for a variable in a linear comparison, but is none";
        throw model_exception(text.str());
    }
    return substitute(variable, slots);
}

void VariablesToValueReferences::operator()(const VornMode* mode, RealisedMode* target) const {
    std::vector<std::unique_ptr<RealisedTrajectoryEquation>> equations;
    for (const auto& equation : mode->trajectories()) {
        std::unique_ptr<RealisedTrajectoryEquation> realised((*this)(equation.get()));
        if (realised != nullptr) equations.push_back(std::move(realised));
    }
    target->setInvariant(mode->invariant() == nullptr ? nullptr : (*this)(mode->invariant()));
    target->setTrajectories(std::move(equations));
}

RealisedVariable* VariablesToValueReferences::substituteVariable(const VornVariable* variable) const {
    return substitute(variable, &VornComponentRealisation::valueReferences).release();
}

RealisedVariable* VariablesToValueReferences::substituteTrajVariable(const VornVariable* variable) const {
    return substitute(variable, &VornComponentRealisation::valueTrajectories).release();
}

std::unique_ptr<RealisedVariable> VariablesToValueReferences::substitute(const VornVariable* variable,
                                                                         Slots slots) const {
    if (const auto* part = dynamic_cast<const RealisedPart*>(mRealisation->findIdentifier(variable))) {
        const VornComponentRealisation::ValueSlots& table = (part->component()->*slots)();
        if (const auto slot = table.find(part); slot != table.end()) {
            const VornDataTypeTag type = variable->type();
            if (type == part->type() || mValuation->contains(type, slot->second))
                return std::unique_ptr<RealisedVariable>(makeValueReference(type, mValuation, slot->second, part));
            // The store may still grow, so each access checks whether the slot exists.
            return withTagClass(type, [&]<class T>() -> std::unique_ptr<RealisedVariable> {
                return std::make_unique<MistypedVariable<T>>(mValuation, slot->second, part,
                                                             mRealisation->fullIdentifier(), variable->text());
            });
        }
    }
    VORNRUN_LOG(sLogger, Error, "Unable to find id linked to variable " << variable->text());
    return nullptr;
}

VornValue* VariablesToValueReferences::substituteValue(const VornValue* value) const {
    assert(value != nullptr && "a tree hands in a constant of its own");
    const auto* literal = dynamic_cast<const TypedVornValue<VornModeVal>*>(value);
    if (literal == nullptr || literal->value() == nullptr) return value->clone();
    const std::string& text = literal->value()->name();
    const std::string::size_type colon = text.find(':');
    const std::string modeName = colon == std::string::npos ? text : text.substr(colon + 1);
    const VornComponentRealisation* component = componentOfPath(text.substr(0, colon), text);
    if (component == nullptr) return nullptr;
    for (const auto& mode : component->modes())
        if (mode->name() == modeName) return new TypedVornValue<VornModeVal>(mode.get());
    VORNRUN_LOG(sLogger, Error, "Unable to find mode " << modeName << " for mode path " << text);
    return nullptr;
}

const VornComponentRealisation* VariablesToValueReferences::componentOfPath(const std::string& path,
                                                                            const std::string& text) const {
    const VornComponentRealisation* component = mRealisation;
    // The text after the last dot is not used: it names the variable "mode" of the component.
    for (std::string::size_type start = 0, dot = 0; (dot = path.find('.', start)) != std::string::npos;
         start = dot + 1) {
        const std::string element = path.substr(start, dot - start);
        component = component->findSubcomponent(element);
        if (component == nullptr) {
            VORNRUN_LOG(sLogger, Error, "Unable to find subcomponent " << element << " for mode path " << text);
            return nullptr;
        }
    }
    return component;
}

}  // namespace vornrun
