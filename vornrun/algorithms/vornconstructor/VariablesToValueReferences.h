#pragma once
/// \file
/// From syntax to its realised form for one component instance. Names become variables over value slots, and mode
/// literals become the real modes. The syntax tree does not change; all threads share it.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/algorithms/vornconstructor/ModelOptions.h"
#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"
#include "vornrun/datastructures/vorn/realisation/VornComponentRealisation.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"

namespace vornrun {

class VariableSubstitutionExpressionVisitor;
class VornAssignment;
class VornFlow;
class VornMode;
class VornTrajectoryEquation;
class VornVariable;

/// Rewrites expressions, assignments, flows, trajectories and linear expressions relative to one component.
/// Every result is new and owned by the caller. A name that does not resolve is logged at ERROR and leaves a null in
/// its place, so that only the evaluation of the result fails. The name of a part without a value, such as an event
/// port, does not resolve either. A variable of another type than its part has its slot in the store of its own type;
/// if there is no such slot, evaluating or assigning it throws model_exception.
class VariablesToValueReferences {
  public:
    /// \param realisation the component that names are relative to; not owned
    VariablesToValueReferences(const VornComponentRealisation* realisation, ValuationPtr valuation,
                               ModelOptions options = {});
    const ModelOptions& options() const noexcept { return mOptions; }

    /// Null for a null tree, and where the name or mode literal that is the whole tree does not resolve.
    VornExpressionTree* operator()(const VornExpressionTree* tree) const;
    // Null when the types do not fit. A right side that is only a name that does not resolve becomes an expression
    // whose evaluation throws missing_operand.
    // Precondition of this and the following operations: the argument is not null.
    // \throws model_exception when the left side is missing or does not resolve, or the right side is missing
    RealisedAssignment* operator()(const VornAssignment* assignment) const;
    RealisedFlow* operator()(const VornFlow* flow, const ModeList& modes) const;
    RealisedTrajectoryEquation* operator()(const VornTrajectoryEquation* equation) const;
    /// A clause whose condition does not resolve has no condition in the result, which means true.
    /// \throws model_exception when a term of a comparison is anything but a coefficient and a variable
    VornLinearExpression* operator()(const VornLinearExpression* expression) const;
    /// Sets the invariant and the trajectories of `target`. An equation whose types do not fit is left out.
    void operator()(const VornMode* mode, RealisedMode* target) const;

    /// A variable on the value slot; null when the name does not resolve.
    RealisedVariable* substituteVariable(const VornVariable* variable) const;
    /// A variable on the rate slot; null when the name does not resolve.
    RealisedVariable* substituteTrajVariable(const VornVariable* variable) const;
    /// A copy; a mode literal "path:mode" around the real mode, null when there is no such mode.
    VornValue* substituteValue(const VornValue* value) const;

  private:
    /// Which of a component's two tables of slots: values or rates.
    using Slots = const VornComponentRealisation::ValueSlots& (VornComponentRealisation::*)() const noexcept;

    /// A variable on the slot of `variable` in the table `slots` of the component that owns the part.
    std::unique_ptr<RealisedVariable> substitute(const VornVariable* variable, Slots slots) const;
    /// The left side of an assignment, resolved. \throws model_exception when that is impossible
    std::unique_ptr<RealisedVariable> leftSide(const VornVariable* variable, Slots slots) const;
    /// The right side of an assignment to `target`, rewritten. \throws model_exception when there is none
    std::unique_ptr<VornExpressionTree> rightSide(const VornExpressionTree* tree, const VornVariable* target,
                                                  VariableSubstitutionExpressionVisitor& visitor) const;
    std::unique_ptr<Clause> rewrite(const Clause& clause, VariableSubstitutionExpressionVisitor& visitor) const;
    std::unique_ptr<LinExp> rewrite(const LinExp& comparison, VariableSubstitutionExpressionVisitor& visitor) const;
    /// The variable of a term, or its rate; null for a null tree.
    std::unique_ptr<RealisedVariable> termVariable(const VornExpressionTree* tree, Slots slots) const;
    /// The component that a mode literal's path leads to, null after an ERROR when there is none.
    const VornComponentRealisation* componentOfPath(const std::string& path, const std::string& text) const;

    static const Log sLogger;  // "root.realisation.valref"
    ValuationPtr mValuation;
    const VornComponentRealisation* mRealisation;
    ModelOptions mOptions;
};

/// A variable on a slot of the tag's store; null for a tag beyond the eight. The caller owns it.
RealisedVariable* makeValueReference(VornDataTypeTag tag, ValuationPtr valuation, ValueRef slot,
                                     const RealisedIdentifier* part);

// From run-time tags to the typed classes. Each adopts target, rate and expression. The caller owns the result. It is
// null, and the arguments are deleted, when target or expression is null or there is no class for their types.
// `dependencies` are the variables inside the expression; nulls are left out.
RealisedAssignment* makeAssignment(RealisedVariable* target, VornExpressionTree* expression,
                                   std::vector<RealisedVariable*> dependencies, ValuationPtr valuation);
RealisedFlow* makeFlow(RealisedVariable* target, VornExpressionTree* expression,
                       std::vector<RealisedVariable*> dependencies, ValuationPtr valuation, ModeList modes);
RealisedTrajectoryEquation* makeTrajectory(RealisedVariable* variable, RealisedVariable* rate,
                                           VornExpressionTree* expression, std::vector<RealisedVariable*> dependencies,
                                           ValuationPtr valuation);

// The same with a target of known type, for the eight data types. Only clocks and continuous variables have
// trajectories: for any other type makeTrajectory returns null.
template <class T>
RealisedAssignment* makeAssignment(TypedRealisedVariable<T>* target, VornExpressionTree* expression,
                                   std::vector<RealisedVariable*> dependencies, ValuationPtr valuation);
template <class T>
RealisedFlow* makeFlow(TypedRealisedVariable<T>* target, VornExpressionTree* expression,
                       std::vector<RealisedVariable*> dependencies, ValuationPtr valuation, ModeList modes);
/// \param rate null, or of the variable's own type; any other is deleted and the equation then has no rate to assign
template <class T>
RealisedTrajectoryEquation* makeTrajectory(TypedRealisedVariable<T>* variable, RealisedVariable* rate,
                                           VornExpressionTree* expression, std::vector<RealisedVariable*> dependencies,
                                           ValuationPtr valuation);

}  // namespace vornrun
