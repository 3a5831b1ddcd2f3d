#pragma once
/// \file
/// Three different payloads of every data type, for tests that run over all eight.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"
#include "vornrun/datastructures/vorn/realisation/valuations/GlobalValuation.h"

namespace vornrun::test {

using AllTypes =
    testing::Types<VornBool, VornReal, VornInt, VornContinuous, VornClock, VornEnum, VornInterval, VornModeVal>;

/// Payload 0 to 2; for bools only 0 and 1 differ.
template <class T>
typename T::AssociatedDataType sample(std::size_t which) {
    if constexpr (std::same_as<T, VornBool>) {
        return which == 1;
    } else if constexpr (DoubleTag<T>) {
        return std::array{1.5, -2.25, 1e300}[which];
    } else if constexpr (IntegerTag<T>) {
        return std::array{7L, -8L, 9000000000L}[which];
    } else if constexpr (std::same_as<T, VornEnum>) {
        // One too long for the buffer inside a std::string.
        return std::array<std::string, 3>{"idle", "busy", std::string(100, 'x')}[which];
    } else {
        static const RealisedMode modes[] = {{1, "on"}, {2, "off"}, {3, "failed"}};
        return &modes[which];
    }
}

}  // namespace vornrun::test
