#include "vornrun/StackGuard.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <thread>

#include "tests/support/OnStack.h"

namespace vornrun::test {
namespace {

/// Calls itself until the guard speaks, and counts; each call takes at least 1000 bytes.
[[gnu::noinline]] std::size_t callsUntilExhausted(volatile char* previous) {
    volatile char frame[1000];
    frame[0] = *previous;
    if (stackNearlyExhausted()) return 0;
    const std::size_t below = callsUntilExhausted(frame);
    frame[1] = 0;
    return below + 1;
}

std::size_t callsHere() {
    char start = 0;
    return callsUntilExhausted(&start);
}

TEST(StackGuard, IsQuietOnAFreshStackAndSpeaksBeforeTheStackEnds) {
    std::size_t calls = 0;
    bool atStart = true;
    std::thread([&] {
        atStart = stackNearlyExhausted();
        calls = callsHere();
    }).join();
    EXPECT_FALSE(atStart);
    EXPECT_GT(calls, 50U);
    EXPECT_LE(calls, 4U * 1024 * 1024 / 1000) << "half of 8 MiB is the most";
}

TEST(StackGuard, KnowsTheSizeOfASmallStack) {
    // Not smaller, since a sanitizer keeps the better part of a mebibyte in each.
    constexpr std::size_t STACK = std::size_t{3} * 1024 * 1024;
    std::size_t calls = 0;
    onStackOf(STACK, [&] { calls = callsHere(); });
    EXPECT_GT(calls, 20U);
    EXPECT_LE(calls, STACK / 2 / 1000);
}

TEST(StackGuard, ServesTheInitialThread) {
    EXPECT_FALSE(stackNearlyExhausted());
    EXPECT_LE(callsHere(), 4U * 1024 * 1024 / 1000);
    EXPECT_FALSE(stackNearlyExhausted()) << "what has been given back is free again";
}

}  // namespace
}  // namespace vornrun::test
