"""Exact probabilities of finite Markov chains in continuous time, by uniformisation. Uses the standard library only.

A chain is given by a function `moves`: for a state it lists the pairs (rate, next state).

    moves = lambda broken: [(0.1, broken + 1)] if broken < 2 else []
    distribution({0: 1.0}, moves, 10.0)                     # state -> probability at time 10
    reaches({0: 1.0}, moves, lambda broken: broken == 2, 10.0)
"""
import math


def distribution(start, moves, time):
    """Where the chain is at `time`: a dictionary from state to probability. `start` is one as well."""
    chain, to_visit = {}, list(start)
    while to_visit:
        state = to_visit.pop()
        if state not in chain:
            chain[state] = list(moves(state))
            to_visit.extend(target for _, target in chain[state])
    # The chain is looked at whenever a Poisson process of this rate rings; at most rings nothing happens.
    fastest = max(sum(rate for rate, _ in choices) for choices in chain.values())
    mean = fastest * time
    if mean == 0:
        return dict(start)
    result, current, covered, rings = dict.fromkeys(chain, 0.0), dict(start), 0.0, 0
    while covered < 1 - 1e-13 and rings < mean + 20 * math.sqrt(mean) + 50:
        weight = math.exp(rings * math.log(mean) - mean - math.lgamma(rings + 1))
        covered, rings = covered + weight, rings + 1
        following = dict.fromkeys(chain, 0.0)
        for state, chance in current.items():
            result[state] += weight * chance
            stays = chance
            for rate, target in chain[state]:
                following[target] += chance * rate / fastest
                stays -= chance * rate / fastest
            following[state] += stays
        current = following
    return result


def reaches(start, moves, goal, time):
    """The probability that the chain is in a state of `goal`, a function of the state, at some time up to `time`."""
    absorbing = distribution(start, lambda state: [] if goal(state) else moves(state), time)
    return sum(chance for state, chance in absorbing.items() if goal(state))
