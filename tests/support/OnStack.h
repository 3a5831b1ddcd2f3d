#pragma once
/// \file
/// Runs something on a stack of a given size, so that what a test says about depth does not hang on how large the
/// frames of a build are, nor on the stack of whoever started it.

#include <pthread.h>
#include <sys/mman.h>

#include <cerrno>
#include <cstddef>
#include <system_error>

namespace vornrun::test {

/// Runs `work` on a thread of its own with so many bytes of stack, and waits for it. Exceptions may not leave `work`.
/// \throws std::system_error when the thread cannot be started
template <class Work>
void onStackOf(std::size_t bytes, Work work) {
    // Memory of our own: asked for a size alone, the system may hand out a larger stack that another thread has left.
    void* const stack = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (stack == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "no memory for a stack");
    const auto run = [](void* argument) -> void* {
        (*static_cast<Work*>(argument))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    int error = pthread_attr_setstack(&attributes, stack, bytes);
    pthread_t thread{};
    if (error == 0) error = pthread_create(&thread, &attributes, run, &work);
    if (error == 0) pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    ::munmap(stack, bytes);
    if (error != 0) throw std::system_error(error, std::generic_category(), "no thread on a stack of a given size");
}

}  // namespace vornrun::test
