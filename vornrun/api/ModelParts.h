#pragma once
/// \file
/// The components and values of a model in the order in which the door counts them. Part of the library's inside.

#include <cstddef>
#include <functional>
#include <string>

#include "vornrun/api/Model.h"
#include "vornrun/datastructures/vorn/realisation/valuations/ValueRef.h"

namespace vornrun {

class EDANetwork;
class RealisedPart;

namespace api {

/// Calls `visit` for each value of the network's model: by automaton in the order of the network, and within a
/// component first the data by name, then the data ports by name.
/// \param visit gets the index of the component, the part, and the slot of its value
void forEachValue(const EDANetwork& network,
                  const std::function<void(std::size_t component, const RealisedPart& part, ValueRef slot)>& visit);

std::vector<ComponentInfo> componentsOf(const EDANetwork& network);
std::vector<ValueInfo> valuesOf(const EDANetwork& network);

/// What the slot holds now. A mode that is not set is an empty text.
Value valueOf(const GlobalValuation& valuation, TypedValueRef slot);

}  // namespace api
}  // namespace vornrun
