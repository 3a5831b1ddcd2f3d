#!/usr/bin/env python3
"""Computes the probabilities that the property files ask for, from the rates alone."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from markov import distribution, reaches
from generate import CAPACITY, CLEARED, JAMS, PRINTED, SENDS

EMPTY = (0, False, False)


def moves(state):
    """The state is: the jobs in the printer, whether paper is jammed, whether a job has been turned away."""
    jobs, jammed, lost = state
    yield SENDS, (min(jobs + 1, CAPACITY), jammed, lost or jobs == CAPACITY)
    if jammed:
        yield CLEARED, (jobs, False, lost)
    elif jobs > 0:
        yield PRINTED, (jobs - 1, False, lost)
        yield JAMS, (jobs, True, lost)


def lost(state): return state[2]


# What the printer looks like when the window opens, with the losses until then forgotten.
at_opening = {}
for (jobs, jammed, _), chance in distribution({EMPTY: 1.0}, moves, 20).items():
    at_opening[jobs, jammed, False] = at_opening.get((jobs, jammed, False), 0.0) + chance

print(f"properties.xml             {reaches({EMPTY: 1.0}, moves, lost, 60):.6f}")
print(f"properties-window.xml      {reaches(at_opening, moves, lost, 30 - 20):.6f}")
print("properties-consistent.xml  0")
