#pragma once
/// \file
/// Sets of delays. A TimeInterval answers "after which delays from now?": 0 is now, the unit is the model's own.
/// Invariant: ranges are closed and ascend. A set is empty when `ranges` has no element; `length` is no
/// test of that: the single point [3, 3] has length 0.

#include <iosfwd>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/expressions/TimeRanges.h"

namespace vornrun {

class TimeInterval {
  public:
    /// The largest finite delay. It means an unbounded one.
    static constexpr Time INF_TIME = 1.7976931348623157e308;
    static const TimeInterval EmptyInterval;
    static const TimeInterval InfiniteInterval;

    /// One range, or no range at all when `lower` is greater than `upper`. Allocates nothing.
    constexpr TimeInterval(Time lowerBound, Time upperBound)
        : ranges(TimeRange{lowerBound, upperBound}),
          lower(lowerBound > upperBound ? EMPTY_LOWER : lowerBound),
          upper(lowerBound > upperBound ? EMPTY_UPPER : upperBound),
          length(lowerBound > upperBound ? EMPTY_LENGTH : upperBound - lowerBound) {}
    /// \param ranges ascending; empty ranges are kept as they are
    explicit TimeInterval(const std::vector<TimeRange>& ranges);
    explicit TimeInterval(TimeRanges ranges);

    /// The delays in both sets. Ranges within 1e-5 of each other count as touching and meet in a single point.
    TimeInterval intersect(const TimeInterval& other) const;
    /// The delays in either set; ranges that are separated by any gap stay separate.
    TimeInterval unite(const TimeInterval& other) const;
    /// Shifts the set by the time `delta` that has passed: delays before it are dropped, the others become shorter.
    void advance(Time delta);

    bool empty() const noexcept { return ranges.empty(); }

    TimeRanges ranges;
    // Computed once; 1.0, 0.0 and 0.0 for an interval without ranges, on which callers rely.
    Time lower;   // of the first range
    Time upper;   // of the last range
    Time length;  // the sum over the ranges of upper minus lower

  private:
    static constexpr Time EMPTY_LOWER = 1.0;
    static constexpr Time EMPTY_UPPER = 0.0;
    static constexpr Time EMPTY_LENGTH = 0.0;

    void computeScalars() noexcept;
};

/// "[a, b]", "[a, INFTY]" for an unbounded range, "[]" for an empty one.
std::ostream& operator<<(std::ostream& stream, const TimeRange& range);
/// The ranges one behind the other without a separator; "[-]" for no ranges.
std::ostream& operator<<(std::ostream& stream, const TimeInterval& interval);

}  // namespace vornrun
