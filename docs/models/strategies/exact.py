#!/usr/bin/env python3
"""The probability that a batch spoils, strategy by strategy, without vornrun.

A power cut comes with rate 0.2 per hour, so that a batch that is exposed for T hours survives with exp(-0.2 T). The
strategies differ in T. A drawn delay in [a, b] is a + (b - a) U, where U is the sum of 53 independent uniform
variables with weights 1/2, 1/4, 1/8 and so on. With F its distribution function, F(u) for u up to 1/2 is the integral
of F from 0 to 2 u, and F(1 - u) = 1 - F(u); its density is 2 F(2 u).
"""
import math

RATE = 0.2
N = 2048  # steps per unit of U


def distribution():
    """F at 0, 1/N, ..., 1."""
    values = [i / N for i in range(N + 1)]
    for _ in range(40):
        integral = [0.0]
        for i in range(N):
            integral.append(integral[-1] + (values[i] + values[i + 1]) / (2 * N))
        lower = [integral[2 * i] for i in range(N // 2 + 1)]
        values = lower + [1 - lower[N - i] for i in range(N // 2 + 1, N + 1)]
    return values


F = distribution()
DENSITY = [2 * F[min(2 * i, 2 * (N - i))] for i in range(N + 1)]


def mean(function):
    """The expected value of function(U)."""
    return sum(DENSITY[i] * function(i / N) for i in range(1, N)) / N


def survives_earliest(width, draws):
    """Over the least of several delays in [0, width]: by parts, from P(U > u) = (1 - F(u)) for each draw."""
    s = RATE * width
    heights = [math.exp(-s * i / N) * (1 - F[i]) ** draws for i in range(N + 1)]
    return 1 - s * (sum(heights) - (heights[0] + heights[-1]) / 2) / N


def survives_heating_by_draws():
    """Draws from what is left of 2 hours, until at least 1 hour has passed; by what is left, from 1 hour up to 2."""
    steps = 100
    result = [1.0]  # with 1 hour left heating is done

    def after(left):
        if left <= 1:
            return 1.0
        position = (left - 1) * steps
        below = min(int(position), len(result) - 2)
        return result[below] + (position - below) * (result[below + 1] - result[below])

    result.append(1.0)
    for k in range(1, steps + 1):
        left = 1 + k / steps
        if k > 1:
            result.append(result[-1])  # a first guess, which only very small draws look at
        for _ in range(2):
            total = 0.0
            for i in range(1, 256):
                u = i / 256
                total += DENSITY[i * N // 256] * math.exp(-RATE * left * u) * after(left * (1 - u))
            result[k] = total / 256
        if k == 1:
            result[0] = result[1]  # just above 1 hour, for the interpolation
    return result[-1]


survival = {
    "asap": math.exp(-RATE * 1),
    "event": math.exp(-RATE * 2),
    "maxtime": math.exp(-RATE * 10),
    "local": survives_heating_by_draws() * survives_earliest(8, 1),
    "progressive": math.exp(-RATE * 1) * survives_earliest(1, 1) * survives_earliest(8, 3),
}
for strategy, probability in survival.items():
    print(f"{strategy:12} {1 - probability:.4f}")
