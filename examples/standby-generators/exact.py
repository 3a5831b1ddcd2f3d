#!/usr/bin/env python3
"""Computes the probabilities that the questions ask for, without any simulation."""
import math

# Hours, and rates per hour, as in generate.py.
GRID_FAILS, GRID_RESTORED = 0.01, 0.25
INVERTER_FAILS = 0.005
BATTERY_LASTS = 0.25
SLOW_STARTS = 1 / 4
FUEL, FUEL_OF_A_START = 6.0, 0.5
SERVICE = 6.0
WEEK = 168.0


def long_outage(share, bridged, until, steps_per_bridge=50):
    """That one of the outages that count, each with the probability `share`, lasts for `bridged` hours or more.

    F(t) is the probability with t hours to go and the grid up, K(t) the one with the grid down in an outage that does
    not count or no longer matters:

        F' = a (G - F),    K' = b (F - K),    G(t) = K(t) + share e^(-b c) (1 - K(t - c))  from t = c on, K(t) before,

    with a, b the rates of failure and repair, c the hours bridged, and G the probability as an outage begins: one that
    counts has the chance of e^(-b c) to last for c hours, and the part of K that went on from there is lost. The
    classical Runge-Kutta method solves it, with a step that divides c.
    """
    a, b, c = GRID_FAILS, GRID_RESTORED, bridged
    h = c / steps_per_bridge
    lasts = share * math.exp(-b * c)
    # K at every half step, as the stages of the method look back by c.
    f, past = 0.0, [0.0]
    half_steps = round(2 * until / h)

    def slope(f, k, at_half_step):
        back = at_half_step - 2 * steps_per_bridge
        g = k + (lasts * (1 - past[back]) if back >= 0 else 0.0)
        return a * (g - f), b * (f - k)

    for at in range(0, half_steps, 2):
        k = past[-1]
        # The jump of G at t = c lies between two steps, and belongs to the step behind it.
        middle = at + 1
        end = at + 2 if at + 2 != 2 * steps_per_bridge else at + 1
        f1, k1 = slope(f, k, at)
        f2, k2 = slope(f + h / 2 * f1, k + h / 2 * k1, middle)
        f3, k3 = slope(f + h / 2 * f2, k + h / 2 * k2, middle)
        f4, k4 = slope(f + h * f3, k + h * k3, end)
        next_f = f + h / 6 * (f1 + 2 * f2 + 2 * f3 + f4)
        next_k = k + h / 6 * (k1 + 2 * k2 + 2 * k3 + k4)
        # The value in the middle by the cubic through both ends and their slopes.
        past.append((k + next_k) / 2 + h / 8 * (k1 - slope(next_f, next_k, end)[1]))
        f = next_f
        past.append(next_k)
    return f


def erlang_density(n, rate, x): return rate * math.exp(-rate * x) * (rate * x) ** (n - 1) / math.factorial(n - 1)


def erlang(n, rate, x):
    """That the sum of n exponential times is at most x."""
    if x <= 0:
        return 0.0
    return 1 - sum(math.exp(-rate * x) * (rate * x) ** k / math.factorial(k) for k in range(n))


def simpson(function, lower, upper, pieces=400):
    if upper <= lower:
        return 0.0
    h = (upper - lower) / pieces
    inner = sum((4 if i % 2 else 2) * function(lower + i * h) for i in range(1, pieces))
    return h / 3 * (function(lower) + inner + function(upper))


def fuel_low():
    """That hours of outage and starts use up the fuel.

    In the n-th outage, with s hours of outage before it, `left` = fuel - n starts are the hours of outage at which the
    tank runs low. It does so if s is below `left` and the outage lasts for `left` - s, or at its start if s is between
    `left` and `left` + one start. The hours of grid before it are a sum of n exponential times.
    """
    result = 0.0
    for n in range(1, math.ceil(FUEL / FUEL_OF_A_START) + 1):
        left = FUEL - n * FUEL_OF_A_START

        def term(s):
            grid = erlang(n, GRID_FAILS, WEEK - max(s, left))
            return math.exp(-GRID_RESTORED * max(0.0, left - s)) * grid

        if n == 1:
            result += term(0.0)
        else:
            def weighted(s): return erlang_density(n - 1, GRID_RESTORED, s) * term(s)
            result += simpson(weighted, 0.0, max(0.0, left)) + simpson(weighted, max(0.0, left), left + FUEL_OF_A_START)
    return result


def service_due():
    """That the hours of outage within the week come to SERVICE.

    They stay below it if the outages that begin in the first WEEK - SERVICE hours of grid sum up to less. Their number
    has the Poisson distribution, and n of them last for a sum of n exponential times.
    """
    mean = GRID_FAILS * (WEEK - SERVICE)
    return 1 - sum(math.exp(-mean) * mean ** n / math.factorial(n) * (erlang(n, GRID_RESTORED, SERVICE) if n else 1)
                   for n in range(60))


def cold_spare():
    """That the sum of two exponential times is at most a week."""
    return erlang(2, INVERTER_FAILS, WEEK)


def hot_spare():
    """That each of two exponential times is at most a week."""
    return erlang(1, INVERTER_FAILS, WEEK) ** 2


if __name__ == "__main__":
    for question, value in {"properties.xml": long_outage(SLOW_STARTS, BATTERY_LASTS, WEEK),
                            "properties-battery.xml": long_outage(1.0, BATTERY_LASTS, WEEK),
                            "properties-fuel.xml": fuel_low(), "properties-service.xml": service_due(),
                            "properties-cold.xml": cold_spare(), "properties-hot.xml": hot_spare()}.items():
        print(f"{question:23} {value:.6f}")
