#include "vornrun/datastructures/vorn/syntax/expressions/TimeRanges.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "tests/support/AllocationCounter.h"
#include "tests/support/CaseName.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

std::vector<TimeRange> someRanges(std::size_t count) {
    std::vector<TimeRange> ranges;
    for (std::size_t i = 0; i < count; ++i)
        ranges.push_back({static_cast<double>(2 * i), static_cast<double>(2 * i + 1)});
    return ranges;
}

class TimeRangesOfSize : public testing::TestWithParam<std::size_t> {
  protected:
    const std::vector<TimeRange> expected = someRanges(GetParam());
    const TimeRanges ranges{expected};
};

TEST_P(TimeRangesOfSize, HoldsTheRangesOfTheVector) {
    EXPECT_EQ(ranges.size(), expected.size());
    EXPECT_EQ(ranges.empty(), expected.empty());
    EXPECT_THAT(ranges, ElementsAreArray(expected));
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(ranges[i], expected[i]);
}

TEST_P(TimeRangesOfSize, CopiesAreIndependent) {
    TimeRanges copy(ranges);
    copy.push_back({100, 101});
    EXPECT_THAT(ranges, ElementsAreArray(expected));
    EXPECT_EQ(copy.size(), expected.size() + 1);
    EXPECT_EQ(copy.back(), (TimeRange{100, 101}));
}

TEST_P(TimeRangesOfSize, MovingLeavesNoRangesBehind) {
    TimeRanges source(ranges);
    TimeRanges target(std::move(source));
    EXPECT_THAT(target, ElementsAreArray(expected));
    EXPECT_THAT(source, IsEmpty());  // NOLINT(bugprone-use-after-move)
    source.push_back({1, 2});
    source.push_back({3, 4});
    source.push_back({5, 6});
    EXPECT_THAT(source, ElementsAre(TimeRange{1, 2}, TimeRange{3, 4}, TimeRange{5, 6}));
    EXPECT_THAT(target, ElementsAreArray(expected));
}

TEST_P(TimeRangesOfSize, AssignmentReplacesContentsOfAnySize) {
    for (std::size_t before = 0; before < 6; ++before) {
        TimeRanges copied(someRanges(before));
        copied = ranges;
        EXPECT_THAT(copied, ElementsAreArray(expected));
        TimeRanges moved(someRanges(before));
        moved = TimeRanges(ranges);
        EXPECT_THAT(moved, ElementsAreArray(expected));
    }
}

TEST_P(TimeRangesOfSize, AssigningToItselfChangesNothing) {
    TimeRanges self(ranges);
    TimeRanges& alias = self;
    self = alias;
    EXPECT_THAT(self, ElementsAreArray(expected));
    self = std::move(alias);
    EXPECT_THAT(self, ElementsAreArray(expected));
}

TEST_P(TimeRangesOfSize, TruncatingKeepsTheFirstRanges) {
    TimeRanges shorter(ranges);
    shorter.truncate(expected.size() / 2);
    EXPECT_THAT(shorter, ElementsAreArray(someRanges(expected.size() / 2)));
    TimeRanges copyOfShorter(shorter);
    EXPECT_EQ(copyOfShorter, shorter);
    shorter.clear();
    EXPECT_THAT(shorter, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(InlineAndHeap, TimeRangesOfSize, testing::Values(0u, 1u, 2u, 3u, 4u, 9u),
                         test::NamesInOrder({"None", "One", "Two", "Three", "Four", "Nine"}));

TEST(TimeRanges, AreEqualWhenTheirRangesAre) {
    EXPECT_EQ(TimeRanges(someRanges(3)), TimeRanges(someRanges(3)));
    EXPECT_NE(TimeRanges(someRanges(3)), TimeRanges(someRanges(2)));
    EXPECT_NE(TimeRanges(TimeRange{0, 1}), TimeRanges(TimeRange{0, 2}));
}

TEST(TimeRanges, OfOneRangeHoldItUnlessItIsEmpty) {
    EXPECT_THAT(TimeRanges(TimeRange{1, 2}), ElementsAre(TimeRange{1, 2}));
    EXPECT_THAT(TimeRanges(TimeRange{2, 2}), ElementsAre(TimeRange{2, 2}));
    EXPECT_THAT(TimeRanges(TimeRange{2, 1}), IsEmpty());
}

TEST(TimeRanges, AnElementOfItsOwnCanBeAppendedWhileItGrows) {
    TimeRanges ranges(someRanges(2));
    ranges.push_back(ranges[0]);
    EXPECT_THAT(ranges, ElementsAre(TimeRange{0, 1}, TimeRange{2, 3}, TimeRange{0, 1}));
}

TEST(TimeRanges, UpToTwoRangesAllocateNothing) {
    const test::AllocationCounter allocations;
    TimeRanges ranges;
    ranges.push_back({0, 1});
    ranges.push_back({2, 3});
    TimeRanges copy(ranges);
    TimeRanges assigned;
    assigned = copy;
    const TimeRanges moved(std::move(copy));
    EXPECT_EQ(allocations.count(), 0u);
    assigned.push_back({4, 5});
    EXPECT_EQ(allocations.count(), 1u);
    EXPECT_EQ(moved.size(), 2u);
}

TEST(TimeRanges, BehaveLikeAVectorUnderRandomOperations) {
    std::mt19937_64 engine(20240607);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        TimeRanges ranges;
        std::vector<TimeRange> model;
        for (int operation = 0; operation < 30; ++operation) {
            const auto choice = engine() % 8;
            if (choice < 5) {
                const TimeRange range{static_cast<double>(engine() % 100), static_cast<double>(engine() % 100)};
                ranges.push_back(range);
                model.push_back(range);
            } else if (choice == 5) {
                const std::size_t size = engine() % (model.size() + 1);
                ranges.truncate(size);
                model.resize(size);
            } else if (choice == 6) {
                const TimeRanges copy(ranges);
                ranges = copy;
            } else {
                TimeRanges other(std::move(ranges));
                ranges = std::move(other);
            }
            ASSERT_THAT(ranges, ElementsAreArray(model));
            ASSERT_GE(ranges.capacity(), ranges.size());
        }
    }
}

}  // namespace
}  // namespace vornrun
