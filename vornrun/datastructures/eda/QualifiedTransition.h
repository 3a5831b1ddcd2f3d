#pragma once
/// \file
/// Transitions and events together with the automaton that takes or raises them.

#include <utility>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/RealisedTransition.h"

namespace vornrun {

class EDA;

/// A transition and the automaton that would take it.
using QualifiedTransition = std::pair<EDA*, TransitionPtr>;
using QualifiedTransitions = std::vector<QualifiedTransition>;
/// An event port and the automaton that raises it: the parent, for a subcomponent's port that the parent drives.
using QualifiedEvent = std::pair<EDA*, const RealisedEventPort*>;
/// For one event: per participating automaton, the alternatives among which it can choose.
using ConnectionAsTransitions = std::vector<std::pair<EDA*, std::vector<TransitionPtr>>>;

}  // namespace vornrun
