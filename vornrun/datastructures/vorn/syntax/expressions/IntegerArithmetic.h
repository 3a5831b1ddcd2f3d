#pragma once
/// \file
/// 64-bit integer arithmetic as the processor does it: sums, products and negations wrap, and a division that has no
/// result raises the arithmetic signal. The language promises neither for signed operands.

#include <limits>

#if !defined(__x86_64__)
#include <csignal>
#include <cstdlib>
#endif

namespace vornrun {

static_assert(sizeof(long) == 8, "the integer types of the language are 64 bits wide");

inline long wrappingSum(long left, long right) noexcept {
    return static_cast<long>(static_cast<unsigned long>(left) + static_cast<unsigned long>(right));
}

inline long wrappingDifference(long left, long right) noexcept {
    return static_cast<long>(static_cast<unsigned long>(left) - static_cast<unsigned long>(right));
}

inline long wrappingProduct(long left, long right) noexcept {
    return static_cast<long>(static_cast<unsigned long>(left) * static_cast<unsigned long>(right));
}

inline long wrappingNegation(long value) noexcept { return wrappingDifference(0, value); }

/// The fraction is cut off. What no integer can hold, and what is no number, becomes the lowest integer, as the
/// processor has it; C++ leaves these cases undefined.
inline long truncatedToInteger(double value) noexcept {
    constexpr double limit = 0x1p63;
    return value >= -limit && value < limit ? static_cast<long>(value) : std::numeric_limits<long>::min();
}

struct QuotientAndRemainder {
    long quotient;   ///< truncated towards zero
    long remainder;  ///< of the dividend's sign
};

/// The processor's division. A divisor of 0, and the lowest value divided by -1, end the process with SIGFPE.
inline QuotientAndRemainder hardwareDivision(long dividend, long divisor) noexcept {
#if defined(__x86_64__)
    // The instruction itself, since the compiler assumes that a division in C++ has a result. Volatile, since the trap
    // must happen even if nobody uses the result.
    long low = dividend;
    long high = dividend >> 63;
    asm volatile("idivq %[divisor]" : "+a"(low), "+d"(high) : [divisor] "r"(divisor) : "cc");
    return {low, high};
#else
    if (divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<long>::min())) {
        std::raise(SIGFPE);
        std::abort();  // a handler that returns has no division to go on with
    }
    return {dividend / divisor, dividend % divisor};
#endif
}

}  // namespace vornrun
