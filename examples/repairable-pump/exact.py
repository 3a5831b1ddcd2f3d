#!/usr/bin/env python3
"""Computes the probabilities that the property files ask for, from the rates alone."""
import math
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from markov import reaches
from generate import BREAKS, OUTAGE, PUMPS, REPAIRED

ALL = len(PUMPS)


def pumps(broken):
    """The number of broken pumps; one crew repairs one pump at a time."""
    return [((ALL - broken) * BREAKS, broken + 1)] * (broken < ALL) + [(REPAIRED, broken - 1)] * (broken > 0)


def dry(days):
    """Dry is a power outage or no working pump, and the two have nothing to do with each other."""
    all_broken = reaches({0: 1.0}, pumps, lambda broken: broken == ALL, days)
    return 1 - math.exp(-OUTAGE * days) * (1 - all_broken)


def counted(state):
    broken, repairs = state
    return [(rate, (target, repairs + (target < broken))) for rate, target in pumps(broken)]


print(f"properties.xml             {dry(30):.6f}")
print(f"properties-quiet-week.xml  {math.exp(-(ALL * BREAKS + OUTAGE) * 7) * dry(30 - 7):.6f}")
print(f"properties-busy-crew.xml   {reaches({(0, 0): 1.0}, counted, lambda state: state[1] >= 5, 30):.6f}")
