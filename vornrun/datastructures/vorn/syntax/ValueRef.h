#pragma once
/// \file
/// How values are identified: by data type and position in the store of that type.

#include <memory>
#include <utility>

#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

namespace vornrun {

class GlobalValuation;

/// Position of a value in the store of its data type, from 1. 0 never denotes a value.
using ValueRef = unsigned long;
/// What identifies a value fully: boolean reference 3 and integer reference 3 are different slots.
using TypedValueRef = std::pair<VornDataTypeTag, ValueRef>;
/// The one shared pointer of the system: constructor, realised variables and network all hold the store.
using ValuationPtr = std::shared_ptr<GlobalValuation>;

}  // namespace vornrun
