#include "vornrun/StackGuard.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vornrun {

namespace {

constexpr std::size_t COUNTED_STACK = std::size_t{8} * 1024 * 1024;
/// What is taken for the stack's size when the system does not tell.
constexpr std::size_t ASSUMED_STACK = std::size_t{1} * 1024 * 1024;

std::uintptr_t addressHere() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }

/// The stack of a thread that is started without a wish of its own. It can be far smaller than that of the initial
/// thread: with no limit on the latter, the system gives other threads 2 MiB.
std::size_t stackOfNewThreads() {
    pthread_attr_t attributes;
    if (pthread_getattr_default_np(&attributes) != 0) return ASSUMED_STACK;
    std::size_t size = 0;
    const bool known = pthread_attr_getstacksize(&attributes, &size) == 0;
    pthread_attr_destroy(&attributes);
    return known ? size : ASSUMED_STACK;
}

/// The address below which half of the stack is used; stacks grow downwards.
std::uintptr_t halfWay() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return addressHere() - ASSUMED_STACK / 2;
    void* lowest = nullptr;
    std::size_t size = 0;
    const bool known = pthread_attr_getstack(&attributes, &lowest, &size) == 0;
    pthread_attr_destroy(&attributes);
    if (!known) return addressHere() - ASSUMED_STACK / 2;
    return reinterpret_cast<std::uintptr_t>(lowest) + size - std::min({size, COUNTED_STACK, stackOfNewThreads()}) / 2;
}

}  // namespace

bool stackNearlyExhausted() {
    // Asked once per thread: for the initial thread the answer comes out of a file of the system.
    thread_local const std::uintptr_t limit = halfWay();
    return addressHere() < limit;
}

}  // namespace vornrun
