#pragma once
/// \file
/// The list of ranges inside a set of delays. Nearly every set has one or two ranges, and every candidate transition of
/// every step makes new sets. So the object has room for two ranges, and only a third one allocates.

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace vornrun {

/// Model time and delays, in the model's own unit.
using Time = double;

/// The delays from `lower` to `upper`, both included; empty when `lower` is greater than `upper`.
struct TimeRange {
    Time lower;
    Time upper;

    constexpr bool empty() const noexcept { return lower > upper; }
    friend bool operator==(const TimeRange&, const TimeRange&) = default;
};

/// A sequence of ranges with the part of std::vector's interface that sets of delays need. Up to INLINE_CAPACITY ranges
/// are in the object itself; copying a sequence of that size allocates nothing.
class TimeRanges {
  public:
    using value_type = TimeRange;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = TimeRange&;
    using const_reference = const TimeRange&;
    using iterator = TimeRange*;
    using const_iterator = const TimeRange*;

    static constexpr size_type INLINE_CAPACITY = 2;

    constexpr TimeRanges() noexcept = default;
    /// The one range, or no range when it is empty.
    explicit constexpr TimeRanges(const TimeRange& range) noexcept : mInline{range}, mSize(range.empty() ? 0 : 1) {}
    explicit TimeRanges(const std::vector<TimeRange>& ranges) { assign(ranges.data(), ranges.size()); }
    TimeRanges(const TimeRanges& other) { assign(other.data(), other.size()); }
    /// Leaves `other` without ranges.
    TimeRanges(TimeRanges&& other) noexcept { take(other); }
    TimeRanges& operator=(const TimeRanges& other) {
        if (this != &other) assign(other.data(), other.size());
        return *this;
    }
    TimeRanges& operator=(TimeRanges&& other) noexcept {
        if (this != &other) take(other);
        return *this;
    }
    ~TimeRanges() = default;

    size_type size() const noexcept { return mSize; }
    bool empty() const noexcept { return mSize == 0; }
    size_type capacity() const noexcept { return mCapacity; }

    TimeRange* data() noexcept { return mHeap ? mHeap.get() : mInline.data(); }
    const TimeRange* data() const noexcept { return mHeap ? mHeap.get() : mInline.data(); }
    iterator begin() noexcept { return data(); }
    iterator end() noexcept { return data() + mSize; }
    const_iterator begin() const noexcept { return data(); }
    const_iterator end() const noexcept { return data() + mSize; }

    TimeRange& operator[](size_type index) noexcept {
        assert(index < mSize);
        return data()[index];
    }
    const TimeRange& operator[](size_type index) const noexcept {
        assert(index < mSize);
        return data()[index];
    }
    const TimeRange& front() const noexcept { return (*this)[0]; }
    TimeRange& back() noexcept { return (*this)[mSize - 1]; }
    const TimeRange& back() const noexcept { return (*this)[mSize - 1]; }

    void push_back(TimeRange range) {  // by value: the argument may be in this sequence
        if (mSize == mCapacity) grow(2 * mCapacity);
        data()[mSize++] = range;
    }
    /// Drops the ranges from position `size` on; keeps the storage.
    void truncate(size_type size) noexcept {
        assert(size <= mSize);
        mSize = size;
    }
    void clear() noexcept { mSize = 0; }

    friend bool operator==(const TimeRanges& left, const TimeRanges& right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end());
    }

  private:
    void assign(const TimeRange* ranges, size_type size) {
        if (size > mCapacity) {
            mHeap = std::make_unique<TimeRange[]>(size);
            mCapacity = size;
        }
        std::copy_n(ranges, size, data());
        mSize = size;
    }
    void take(TimeRanges& other) noexcept {
        mInline = other.mInline;
        mHeap = std::move(other.mHeap);
        mSize = std::exchange(other.mSize, 0);
        mCapacity = std::exchange(other.mCapacity, INLINE_CAPACITY);
    }
    void grow(size_type capacity) {
        auto larger = std::make_unique<TimeRange[]>(capacity);
        std::copy(begin(), end(), larger.get());
        mHeap = std::move(larger);
        mCapacity = capacity;
    }

    std::array<TimeRange, INLINE_CAPACITY> mInline{};
    std::unique_ptr<TimeRange[]> mHeap;  // null as long as the ranges are in mInline
    size_type mSize = 0;
    size_type mCapacity = INLINE_CAPACITY;
};

}  // namespace vornrun
