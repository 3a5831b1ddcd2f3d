#include "vornrun/algorithms/parser/StackGuard.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <thread>

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
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1024 * 1024), 0);
    std::size_t calls = 0;
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* result) -> void* {
                      *static_cast<std::size_t*>(result) = callsHere();
                      return nullptr;
                  },
                  &calls),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_GT(calls, 20U);
    EXPECT_LE(calls, 512U * 1024 / 1000);
}

TEST(StackGuard, ServesTheInitialThread) {
    EXPECT_FALSE(stackNearlyExhausted());
    EXPECT_LE(callsHere(), 4U * 1024 * 1024 / 1000);
    EXPECT_FALSE(stackNearlyExhausted()) << "what has been given back is free again";
}

}  // namespace
}  // namespace vornrun::test
