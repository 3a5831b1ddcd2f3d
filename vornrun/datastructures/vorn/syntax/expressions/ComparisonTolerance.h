#pragma once
/// \file
/// When two numbers are compared with a tolerance, and with which.

#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"

namespace vornrun {

/// Doubles closer than this count as equal, where equality is part of the comparison. The operators write
/// their comparisons out with it, since the form decides how infinities and NaN compare.
inline constexpr double COMPARISON_TOLERANCE = 1e-06;

/// True for a double against a double or an int. An interval compares exactly, even with a double, and so do two
/// integers and everything that is no number.
template <VornTag Left, VornTag Right>
inline constexpr bool comparesWithTolerance = (DoubleTag<Left> && DoubleTag<Right>) ||
                                              (DoubleTag<Left> && std::same_as<Right, VornInt>) ||
                                              (std::same_as<Left, VornInt> && DoubleTag<Right>);

}  // namespace vornrun
