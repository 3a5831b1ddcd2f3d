#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace vornrun {

namespace {

/// Ranges this close count as touching in an intersection.
constexpr Time RANGE_TOLERANCE = 1e-5;

bool overlap(const TimeRange& a, const TimeRange& b) {
    return (a.lower >= b.lower - RANGE_TOLERANCE && b.upper + RANGE_TOLERANCE >= a.lower) ||
           (b.lower >= a.lower - RANGE_TOLERANCE && a.upper + RANGE_TOLERANCE >= b.lower);
}

/// Takes ranges sorted by `lower` and joins those that overlap or meet exactly.
class Coalescer {
  public:
    void add(const TimeRange& range) {
        if (mResult.empty() || range.lower > mResult.back().upper)
            mResult.push_back(range);
        else
            mResult.back().upper = std::max(mResult.back().upper, range.upper);
    }
    TimeRanges take() { return std::move(mResult); }

  private:
    TimeRanges mResult;  // its last element is the range that still grows
};

}  // namespace

constinit const TimeInterval TimeInterval::EmptyInterval(1.0, 0.0);
constinit const TimeInterval TimeInterval::InfiniteInterval(0.0, TimeInterval::INF_TIME);

TimeInterval::TimeInterval(const std::vector<TimeRange>& theRanges) : TimeInterval(TimeRanges(theRanges)) {}

TimeInterval::TimeInterval(TimeRanges theRanges)
    : ranges(std::move(theRanges)), lower(EMPTY_LOWER), upper(EMPTY_UPPER), length(EMPTY_LENGTH) {
    computeScalars();
}

void TimeInterval::computeScalars() noexcept {
    lower = ranges.empty() ? EMPTY_LOWER : ranges.front().lower;
    upper = ranges.empty() ? EMPTY_UPPER : ranges.back().upper;
    length = EMPTY_LENGTH;
    for (const TimeRange& range : ranges) length += range.upper - range.lower;
}

TimeInterval TimeInterval::intersect(const TimeInterval& other) const {
    TimeRanges common;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < ranges.size() && j < other.ranges.size()) {
        const TimeRange& a = ranges[i];
        const TimeRange& b = other.ranges[j];
        if (!a.empty() && !b.empty() && overlap(a, b)) {
            TimeRange both{std::max(a.lower, b.lower), std::min(a.upper, b.upper)};
            // Ranges that overlap only by the tolerance meet in a point.
            if (both.lower > both.upper && both.lower - both.upper <= RANGE_TOLERANCE) both.upper = both.lower;
            common.push_back(both);
        }
        if (b.upper >= a.upper)
            ++i;
        else
            ++j;
    }
    return TimeInterval(std::move(common));
}

TimeInterval TimeInterval::unite(const TimeInterval& other) const {
    if (ranges.empty()) return other;
    if (other.ranges.empty()) return *this;
    // A merge by `lower`, without a tolerance: even the smallest gap remains. Empty ranges of this interval take part,
    // those of the other do not.
    Coalescer merged;
    std::size_t i = 0;
    for (const TimeRange& inserted : other.ranges) {
        if (inserted.empty()) continue;
        while (i < ranges.size() && ranges[i].lower < inserted.lower) merged.add(ranges[i++]);
        merged.add(inserted);
    }
    while (i < ranges.size()) merged.add(ranges[i++]);
    return TimeInterval(merged.take());
}

void TimeInterval::advance(Time delta) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const TimeRange range = ranges[i];
        if (range.upper - delta < 0.0) continue;
        ranges[kept++] = {std::max(0.0, range.lower - delta), range.upper - delta};
    }
    ranges.truncate(kept);
    computeScalars();
}

std::ostream& operator<<(std::ostream& stream, const TimeRange& range) {
    if (range.empty()) return stream << "[]";
    if (range.upper < TimeInterval::INF_TIME) return stream << "[" << range.lower << ", " << range.upper << "]";
    return stream << "[" << range.lower << ", INFTY]";
}

std::ostream& operator<<(std::ostream& stream, const TimeInterval& interval) {
    if (interval.ranges.empty()) return stream << "[-]";
    for (const TimeRange& range : interval.ranges) stream << range;
    return stream;
}

}  // namespace vornrun
