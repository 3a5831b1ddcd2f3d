#pragma once
/// \file
/// From syntax to its realised form for one component instance: names become reads of value slots, mode literals
/// become the real modes. The syntax tree stays untouched; it is shared by all threads.

#include <memory>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/datastructures/vorn/realisation/RealisedAssignment.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"

namespace vornrun {

class VornAssignment;
class VornComponentRealisation;
class VornFlow;
class VornMode;
class VornTrajectoryEquation;
class VornVariable;

/// Rewrites expressions, assignments, flows, trajectories and linear expressions relative to one component.
/// Every result is new and owned by the caller. A name that does not resolve is logged at error level and leaves a
/// null in its place; only evaluating the result fails.
class VariablesToValueReferences {
  public:
    /// \param realisation the component that names are relative to; not owned
    VariablesToValueReferences(const VornComponentRealisation* realisation, ValuationPtr valuation);

    VornExpressionTree* operator()(const VornExpressionTree* tree) const;
    /// \throws model_exception when the left side does not resolve; null when the types do not fit
    RealisedAssignment* operator()(const VornAssignment* assignment) const;
    RealisedFlow* operator()(const VornFlow* flow, const ModeList& modes) const;
    RealisedTrajectoryEquation* operator()(const VornTrajectoryEquation* equation) const;
    VornLinearExpression* operator()(const VornLinearExpression* expression) const;
    /// Sets the invariant and the trajectories of `target`.
    void operator()(const VornMode* mode, RealisedMode* target) const;

    /// A variable on the value slot; null when the name does not resolve.
    RealisedVariable* substituteVariable(const VornVariable* variable) const;
    /// A variable on the rate slot; null when the name does not resolve.
    RealisedVariable* substituteTrajVariable(const VornVariable* variable) const;
    /// A copy; a mode literal "path:mode" around the real mode, null when there is no such mode.
    VornValue* substituteValue(const VornValue* value) const;

  private:
    static const Log sLogger;    // "root.realisation.valref"
    ValuationPtr mValuation;
    const VornComponentRealisation* mRealisation;
};

/// A variable on a slot of the tag's store; null for a tag beyond the eight. The caller owns it.
RealisedVariable* makeValueReference(VornDataTypeTag tag, ValuationPtr valuation, ValueRef slot,
                                     const RealisedIdentifier* part);

// From run-time tags to the typed classes. Each adopts target, rate and expression, and gives null, with what it was
// given deleted, when the pair of types does not exist. The caller owns the result.
RealisedAssignment* makeAssignment(RealisedVariable* target, VornExpressionTree* expression,
                                   std::vector<RealisedVariable*> dependencies, ValuationPtr valuation);
RealisedFlow* makeFlow(RealisedVariable* target, VornExpressionTree* expression,
                       std::vector<RealisedVariable*> dependencies, ValuationPtr valuation, ModeList modes);
RealisedTrajectoryEquation* makeTrajectory(RealisedVariable* variable, RealisedVariable* rate,
                                           VornExpressionTree* expression,
                                           std::vector<RealisedVariable*> dependencies, ValuationPtr valuation);

}  // namespace vornrun
