#!/usr/bin/env python3
"""Computes the probabilities that the property files ask for, from the rates alone."""
import math
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from markov import reaches
from generate import BREAKS, PLUGGED_IN, STICKS

YEARS = 5
NEW = {((False, False),) * 3: 1.0}


def moves(channels):
    """The state is, for each channel, whether its sensor is stuck and whether its line is broken."""
    for i, (stuck, broken) in enumerate(channels):
        changes = [(PLUGGED_IN if broken else BREAKS, (stuck, not broken))] + [(STICKS, (True, broken))] * (not stuck)
        for rate, channel in changes:
            yield rate, tuple(sorted(channels[:i] + (channel,) + channels[i + 1:]))


def right_and_wrong(channels): return channels.count((False, False)), channels.count((True, False))
def wrong(channels): return right_and_wrong(channels)[1] >= 2
def no_vote(channels): return max(right_and_wrong(channels)) < 2
def unnoticed(channels): return right_and_wrong(channels)[1] == 3


stuck = 1 - math.exp(-STICKS * YEARS)
print(f"properties.xml            {reaches(NEW, moves, wrong, YEARS):.6f}")
print(f"properties-no-vote.xml    {reaches(NEW, moves, no_vote, YEARS):.6f}")
print(f"properties-two-stuck.xml  {3 * stuck**2 - 2 * stuck**3:.6f}")
print(f"properties-unnoticed.xml  {reaches(NEW, moves, unnoticed, YEARS):.6f}")
