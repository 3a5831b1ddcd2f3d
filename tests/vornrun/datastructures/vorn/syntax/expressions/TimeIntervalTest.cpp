#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <sstream>

#include "tests/support/AllocationCounter.h"
#include "tests/support/CaseName.h"
#include "tests/support/Printed.h"

namespace vornrun {
namespace {

using test::printed;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Time INF = TimeInterval::INF_TIME;

TimeInterval interval(const std::vector<TimeRange>& ranges) { return TimeInterval(ranges); }

void expectScalars(const TimeInterval& actual, Time lower, Time upper, Time length) {
    EXPECT_EQ(actual.lower, lower);
    EXPECT_EQ(actual.upper, upper);
    EXPECT_EQ(actual.length, length);
}

TEST(TimeInterval, InfTimeIsTheLargestFiniteDouble) {
    EXPECT_EQ(TimeInterval::INF_TIME, std::numeric_limits<double>::max());
}

TEST(TimeInterval, OfOneRangeTakesItsScalarsFromIt) {
    const TimeInterval one(1.5, 4.0);
    EXPECT_THAT(one.ranges, ElementsAre(TimeRange{1.5, 4.0}));
    expectScalars(one, 1.5, 4.0, 2.5);
}

TEST(TimeInterval, WithLowerAboveUpperHasNoRangesAndTheScalarsOfEmptiness) {
    const TimeInterval none(0.0, -2.0);
    EXPECT_THAT(none.ranges, IsEmpty());
    EXPECT_TRUE(none.empty());
    expectScalars(none, 1.0, 0.0, 0.0);
}

TEST(TimeInterval, OfASinglePointIsNotEmptyThoughItsLengthIsZero) {
    const TimeInterval point(3.0, 3.0);
    EXPECT_FALSE(point.empty());
    EXPECT_THAT(point.ranges, ElementsAre(TimeRange{3.0, 3.0}));
    expectScalars(point, 3.0, 3.0, 0.0);
}

TEST(TimeInterval, OfSeveralRangesSumsTheirLengths) {
    expectScalars(interval({{0, 1}, {3, 4}, {6, 9}}), 0.0, 9.0, 5.0);
}

TEST(TimeInterval, OfNoRangesHasTheScalarsOfEmptiness) { expectScalars(interval({}), 1.0, 0.0, 0.0); }

TEST(TimeInterval, KeepsEmptyRangesOfAList) {
    const TimeInterval kept = interval({{0, -1}, {2, 3}});
    EXPECT_THAT(kept.ranges, ElementsAre(TimeRange{0, -1}, TimeRange{2, 3}));
    expectScalars(kept, 0.0, 3.0, 0.0);
}

TEST(TimeInterval, StaticsAreTheEmptyAndTheUnboundedSet) {
    EXPECT_THAT(TimeInterval::EmptyInterval.ranges, IsEmpty());
    expectScalars(TimeInterval::EmptyInterval, 1.0, 0.0, 0.0);
    EXPECT_THAT(TimeInterval::InfiniteInterval.ranges, ElementsAre(TimeRange{0.0, INF}));
    expectScalars(TimeInterval::InfiniteInterval, 0.0, INF, INF);
}

TEST(TimeInterval, NotANumberBoundsMakeARangeSinceTheyAreNotAboveAnything) {
    const TimeInterval odd(0.0, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(odd.ranges.size(), 1u);
}

struct SetCase {
    const char* name;
    std::vector<TimeRange> left, right, result;
};
void PrintTo(const SetCase& setCase, std::ostream* stream) { *stream << setCase.name; }

class Intersection : public testing::TestWithParam<SetCase> {};

TEST_P(Intersection, GivesTheRanges) {
    const TimeInterval result = interval(GetParam().left).intersect(interval(GetParam().right));
    EXPECT_THAT(result.ranges, testing::ElementsAreArray(GetParam().result));
}

INSTANTIATE_TEST_SUITE_P(
    TimeInterval, Intersection,
    testing::Values(
        SetCase{"OverlappingRangesShareTheMiddle", {{0, 2}}, {{1, 3}}, {{1, 2}}},
        SetCase{"RangesWithinTheToleranceMeetInAPoint", {{0, 1}}, {{1.000005, 2}}, {{1.000005, 1.000005}}},
        SetCase{"TheSameTheOtherWayRound", {{1.000005, 2}}, {{0, 1}}, {{1.000005, 1.000005}}},
        SetCase{"AGapOfExactlyTheToleranceStillTouches", {{0, 0}}, {{1e-5, 2}}, {{1e-5, 1e-5}}},
        // Both tests are rounded, and 1 + 1e-5 lies a little more than 1e-5 above 1.
        SetCase{"AGapThatOnlyRoundsToTheToleranceStaysInverted", {{0, 1}}, {{1 + 1e-5, 2}}, {{1 + 1e-5, 1}}},
        SetCase{"AGapBeyondTheToleranceDoesNot", {{0, 1}}, {{1.00002, 2}}, {}},
        SetCase{"SeparateRangesShareNothing", {{0, 1}}, {{1.1, 2}}, {}},
        SetCase{"RangesThatMeetShareThePoint", {{0, 1}}, {{1, 2}}, {{1, 1}}},
        SetCase{"APointInARangeStays", {{3, 3}}, {{0, 5}}, {{3, 3}}},
        SetCase{"TheUnboundedSetIsNeutral", {{0, INF}}, {{1, 2}, {4, INF}}, {{1, 2}, {4, INF}}},
        SetCase{"NothingOnTheLeftGivesNothing", {}, {{0, 1}}, {}},
        SetCase{"NothingOnTheRightGivesNothing", {{0, 1}}, {}, {}},
        SetCase{"AnEmptyRangeDropsOut", {{0, INF}}, {{0, -1}, {2, INF}}, {{2, INF}}},
        SetCase{"AnEmptyRangeOnTheLeftDropsOut", {{0, -1}, {2, INF}}, {{0, INF}}, {{2, INF}}},
        SetCase{"OneRangeMeetsSeveral", {{1, 8}}, {{0, 2}, {3, 4}, {7, 9}}, {{1, 2}, {3, 4}, {7, 8}}},
        // Equal uppers advance the left index, so that the next left range still sees the same right one.
        SetCase{"ATouchAtTheSameUpperIsSeenTwice", {{0, 2}, {2.000005, 3}}, {{1, 2}}, {{1, 2}, {2.000005, 2.000005}}},
        // The left index has moved past its end by then: the walk is not symmetric.
        SetCase{"ATouchBehindTheLastLeftRangeIsNotSeen", {{1, 2}}, {{0, 2}, {2.000005, 3}}, {{1, 2}}}),
    test::CaseName());

TEST(TimeIntervalIntersection, OfNothingHasTheScalarsOfEmptiness) {
    expectScalars(TimeInterval(0, 1).intersect(TimeInterval(1.1, 2)), 1.0, 0.0, 0.0);
}

TEST(TimeIntervalIntersection, ComputesItsScalars) {
    expectScalars(interval({{0, 2}, {3, 5}}).intersect(TimeInterval(1, 4)), 1.0, 4.0, 2.0);
}

class Union : public testing::TestWithParam<SetCase> {};

TEST_P(Union, GivesTheRanges) {
    const TimeInterval result = interval(GetParam().left).unite(interval(GetParam().right));
    EXPECT_THAT(result.ranges, testing::ElementsAreArray(GetParam().result));
}

INSTANTIATE_TEST_SUITE_P(
    TimeInterval, Union,
    testing::Values(SetCase{"RangesThatMeetJoin", {{0, 1}}, {{1, 2}}, {{0, 2}}},
                    SetCase{"TheSmallestGapStays", {{0, 1}}, {{1.0000001, 2}}, {{0, 1}, {1.0000001, 2}}},
                    SetCase{"TheOtherMayStandInFront", {{3, 4}}, {{0, 1}}, {{0, 1}, {3, 4}}},
                    SetCase{"AContainedRangeVanishes", {{0, 10}}, {{2, 3}}, {{0, 10}}},
                    SetCase{"TheOtherContainsThis", {{2, 3}}, {{0, 10}}, {{0, 10}}},
                    SetCase{"OneRangeBridgesSeveral", {{0, 1}, {3, 4}, {8, 9}}, {{1, 3}}, {{0, 4}, {8, 9}}},
                    SetCase{"NothingOnTheLeftGivesTheOther", {}, {{0, -1}, {3, 4}}, {{0, -1}, {3, 4}}},
                    SetCase{"NothingOnTheRightGivesThis", {{0, -1}, {3, 4}}, {}, {{0, -1}, {3, 4}}},
                    SetCase{"EmptyRangesOfTheOtherAreSkipped", {{1, 2}}, {{0, -1}, {5, 6}}, {{1, 2}, {5, 6}}},
                    SetCase{"EmptyRangesOfThisAreKept", {{0, -1}, {1, 2}}, {{5, 6}}, {{0, -1}, {1, 2}, {5, 6}}},
                    SetCase{"AnEmptyRangeOfThisIsSwallowedByAnEqualLower", {{0, -1}}, {{0, 6}}, {{0, 6}}},
                    SetCase{"EqualLowersTakeTheGreaterUpper", {{0, 1}}, {{0, 3}}, {{0, 3}}},
                    SetCase{"RangesOfTheOtherJoinAmongThemselves", {{9, 10}}, {{0, 1}, {1, 2}}, {{0, 2}, {9, 10}}}),
    test::CaseName());

TEST(TimeIntervalUnion, ComputesItsScalars) {
    expectScalars(TimeInterval(0, 1).unite(TimeInterval(3, 4)), 0.0, 4.0, 2.0);
}

TEST(TimeInterval, SetOperationsWithOneRangeResultsAllocateNothing) {
    const TimeInterval left(0, 5);
    const TimeInterval right(3, INF);
    const test::AllocationCounter allocations;
    const TimeInterval both = left.intersect(right);
    const TimeInterval either = left.unite(right);
    EXPECT_EQ(allocations.count(), 0u);
    EXPECT_EQ(both.ranges.size(), 1u);
    EXPECT_EQ(either.ranges.size(), 1u);
}

struct PassingCase {
    const char* name;
    std::vector<TimeRange> before;
    Time delta;
    std::vector<TimeRange> after;
};
void PrintTo(const PassingCase& passingCase, std::ostream* stream) { *stream << passingCase.name; }

class PassingTime : public testing::TestWithParam<PassingCase> {};

TEST_P(PassingTime, ShiftsTheSet) {
    TimeInterval shifted = interval(GetParam().before);
    shifted.advance(GetParam().delta);
    const TimeInterval expected = interval(GetParam().after);
    EXPECT_EQ(shifted.ranges, expected.ranges);
    expectScalars(shifted, expected.lower, expected.upper, expected.length);
}

INSTANTIATE_TEST_SUITE_P(TimeInterval, PassingTime,
                         testing::Values(PassingCase{"CutsAtNow", {{1, 5}}, 2, {{0, 3}}},
                                         PassingCase{"DropsWhatIsOver", {{0, 1}}, 2, {}},
                                         PassingCase{"KeepsTheVeryEndAsAPoint", {{0, 2}}, 2, {{0, 0}}},
                                         PassingCase{"MovesWhatLiesAhead", {{3, 4}, {6, 7}}, 2, {{1, 2}, {4, 5}}},
                                         PassingCase{"DropsOnlyTheFirst", {{0, 1}, {6, 7}}, 2, {{4, 5}}},
                                         PassingCase{"LeavesAnUnboundedEndUnbounded", {{1, INF}}, 5, {{0, INF}}},
                                         PassingCase{"OfNothingLeavesNothing", {}, 1, {}}),
                         test::CaseName());

TEST(TimeIntervalText, OfARangeShowsItsBounds) {
    EXPECT_EQ(printed(TimeRange{0.5, 2}), "[0.5, 2]");
    EXPECT_EQ(printed(TimeRange{2, 2}), "[2, 2]");
    EXPECT_EQ(printed(TimeRange{2, 1}), "[]");
    EXPECT_EQ(printed(TimeRange{2, INF}), "[2, INFTY]");
    EXPECT_EQ(printed(TimeRange{INF, INF}), "[1.79769e+308, INFTY]");
}

TEST(TimeIntervalText, OfASetJoinsItsRangesWithoutASeparator) {
    EXPECT_EQ(printed(TimeInterval::EmptyInterval), "[-]");
    EXPECT_EQ(printed(TimeInterval::InfiniteInterval), "[0, INFTY]");
    EXPECT_EQ(printed(interval({{0, -1}, {0, 1}, {2, INF}})), "[][0, 1][2, INFTY]");
}

// Random sets on a grid of 0.5, compared with membership tested point by point: on the grid, and between its points.
class RandomSets {
  public:
    explicit RandomSets(std::uint64_t seed) : mEngine(seed) {}

    std::vector<TimeRange> draw() {
        std::vector<TimeRange> ranges;
        if (mEngine() % 4 == 0) ranges.push_back({0.0, -0.5});  // as an unequal comparison leaves one
        double at = 0.5 * static_cast<double>(mEngine() % 4);
        for (auto count = mEngine() % 5; count > 0; --count) {
            const double length = 0.5 * static_cast<double>(mEngine() % 5);
            ranges.push_back({at, at + length});
            at += length + 0.5 * static_cast<double>(1 + mEngine() % 4);
        }
        return ranges;
    }

  private:
    std::mt19937_64 mEngine;
};

bool contains(const auto& ranges, double point) {
    for (const TimeRange& range : ranges)
        if (range.lower <= point && point <= range.upper) return true;
    return false;
}

void expectWellFormed(const TimeInterval& set) {
    double length = 0;
    for (std::size_t i = 0; i < set.ranges.size(); ++i) {
        if (i > 0) {
            ASSERT_LT(set.ranges[i - 1].upper, set.ranges[i].lower);
        }
        length += set.ranges[i].upper - set.ranges[i].lower;
    }
    EXPECT_EQ(set.length, length);
    EXPECT_EQ(set.lower, set.empty() ? 1.0 : set.ranges.front().lower);
    EXPECT_EQ(set.upper, set.empty() ? 0.0 : set.ranges.back().upper);
}

TEST(TimeIntervalLaws, IntersectionAndUnionAgreeWithMembershipPointByPoint) {
    for (std::uint64_t seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomSets sets(seed);
        const auto left = sets.draw();
        const auto right = sets.draw();
        SCOPED_TRACE(printed(interval(left)) + " and " + printed(interval(right)));
        const TimeInterval both = interval(left).intersect(interval(right));
        const TimeInterval either = interval(left).unite(interval(right));
        expectWellFormed(both);
        expectWellFormed(either);
        for (double point = -0.75; point < 24; point += 0.25) {
            ASSERT_EQ(contains(both.ranges, point), contains(left, point) && contains(right, point)) << point;
            ASSERT_EQ(contains(either.ranges, point), contains(left, point) || contains(right, point)) << point;
        }
        if (testing::Test::HasFailure()) return;
    }
}

}  // namespace
}  // namespace vornrun
