#!/usr/bin/env python3
"""Computes the probabilities that the questions ask for, without any simulation.

As long as the valve works, 4 hours of heating and 2 hours of filling follow each other. All that happens later is
settled by the part of the cycle in which the valve sticks, and by the time that the operator takes.
"""
import math

# Hours, and rates per hour, as in generate.py.
VALVE_STICKS, OPERATOR_ACTS = 0.02, 1.0
LOW, HIGH, RIM = 4.0, 8.0, 10.0
FILLING_TOO_LONG = 2.25
BOUND = 48.0
HEATING = (HIGH - LOW) / 1.0   # the level falls by 1 an hour
FILLING = (HIGH - LOW) / 2.0   # and rises by 2
CYCLE = HEATING + FILLING
# From the low level on, the rim is reached after this time.
TO_RIM = (RIM - LOW) / 2.0
# After t hours of heating: 52 + 2 t = 50 + 5 (HIGH - t).
TO_BURN = (50 + 5 * HIGH - 52) / (2 + 5)


def sticks_between(begin, end):
    return math.exp(-VALVE_STICKS * begin) - math.exp(-VALVE_STICKS * end)


def sticks_in_filling(latest):
    """That it sticks in a filling which began at the time `latest` or before."""
    starts = (cycle * CYCLE + HEATING for cycle in range(1000))
    return sum(sticks_between(start, start + FILLING) for start in starts if start <= latest)


def sticks_in_heating(latest):
    starts = (cycle * CYCLE for cycle in range(1000))
    return sum(sticks_between(start, start + HEATING) for start in starts if start <= latest)


def operator_takes(hours):
    """That the operator takes longer than this from the alarm on."""
    return math.exp(-OPERATOR_ACTS * hours)


def overflowed():
    return sticks_in_filling(BOUND - TO_RIM) * operator_takes(TO_RIM - FILLING_TOO_LONG)


def burnt():
    return sticks_in_heating(BOUND - TO_BURN)


def narrow():
    """The level is 9.5 or more in the last quarter of an hour before the rim; no such quarter contains BOUND."""
    last = (RIM - 9.5) / 2.0
    to_rim = TO_RIM - FILLING_TOO_LONG
    return sticks_in_filling(BOUND - TO_RIM) * (operator_takes(to_rim - last) - operator_takes(to_rim))


def passed():
    """That the valve sticks, which is the only step before 3 hours, while the level is at most 7."""
    return sticks_between(1.0, 3.0)


if __name__ == "__main__":
    for question, value in {"properties.xml": overflowed(), "properties-burnt.xml": burnt(),
                            "properties-narrow.xml": narrow(), "properties-passed.xml": passed()}.items():
        print(f"{question:22} {value:.6f}")
