#!/usr/bin/env python3
"""Computes the answers about the power grid without simulation.

The bays are independent of each other and alike: each supplies, waits for its crew, or is under repair. A group of bays
is therefore a chain over (bays that wait, bays under repair). Chains are solved by uniformisation, stations combined by
the binomial distribution, and the time that a battery lasts enters as a delay into the equations of one station.
"""
import math

from generate import (ARRIVAL_RATE, BAY_POWER, BAYS, CHARGE, DAY, DEMAND, GRID_LIMIT, PARTS, READING_PERIOD,
                      REPAIR_RATE, STARTING, STATIONS, STATIONS_AFFECTED)

FAIL_RATE = sum(PARTS.values())  # of a bay: its parts in series


def chain(bays, alive):
    """{state: [(rate, next state or None)]} of so many bays, all supplying at first; None is all that is not alive."""
    moves, todo = {}, [(0, 0)]
    while todo:
        waiting, repaired = state = todo.pop()
        if state in moves:
            continue
        moves[state] = []
        for rate, following in (((bays - waiting - repaired) * FAIL_RATE, (waiting + 1, repaired)),
                                (waiting * ARRIVAL_RATE, (waiting - 1, repaired + 1)),
                                (repaired * REPAIR_RATE, (waiting, repaired - 1))):
            if rate > 0:
                if alive(following):
                    moves[state].append((rate, following))
                    todo.append(following)
                else:
                    moves[state].append((rate, None))
    return moves


def after(moves, start, time):
    """The distribution over the living states after this time, by uniformisation."""
    top = max(sum(rate for rate, _ in out) for out in moves.values())
    vector, weight = start, math.exp(-top * time)
    result = {state: weight * share for state, share in vector.items()}
    step, seen = 0, weight
    while seen < 1 - 1e-13:
        following = dict.fromkeys(vector, 0.0)
        for state, share in vector.items():
            staying = share
            for rate, target in moves[state]:
                staying -= share * rate / top
                if target is not None:
                    following[target] = following.get(target, 0.0) + share * rate / top
            following[state] += staying
        vector = following
        step += 1
        weight *= top * time / step
        seen += weight
        for state, share in vector.items():
            result[state] = result.get(state, 0.0) + weight * share
    return result


def at_least(count, trials, probability):
    return 1 - sum(math.comb(trials, k) * probability ** k * (1 - probability) ** (trials - k) for k in range(count))


SPARE = BAYS - -(-DEMAND // BAY_POWER)  # so many bays of a station can be out without harm


def station_strained():
    """The probability that one station comes short of power within a day."""
    moves = chain(BAYS, lambda state: sum(state) <= SPARE)
    return 1 - sum(after(moves, {(0, 0): 1.0}, DAY).values())


def station_lost(steps_per_quarter):
    """The probability that one station is short for longer than its battery lasts, within a day.

    With a(t) the distribution over the states without shortage, and b(t) over those with a shortage and a battery that
    is not empty yet, and Q the generator in blocks: a' = a Qaa + b Qba, b' = b Qbb + a Qab - e(t), where
    e(t) = a(t-d) Qab exp(Qbb d) is the rate at which batteries become empty at time t, d after the shortage began.
    The equations are integrated by the method of Heun.
    """
    moves = chain(BAYS, lambda state: True)
    short = {state: sum(state) > SPARE for state in moves}
    inside = {state: [(rate, target if short[target] else None) for rate, target in out]
              for state, out in moves.items() if short[state]}
    entries = {target for state, out in moves.items() if not short[state] for _, target in out if short[target]}
    lasting = {entry: after(inside, {entry: 1.0}, STARTING + CHARGE) for entry in entries}  # exp(Qbb d), by rows
    step = 0.25 / steps_per_quarter
    delay = round((STARTING + CHARGE) / step)

    def emptied(past):
        result = {}
        for state, share in past.items():
            for rate, target in moves[state]:
                if short[target] and not short[state]:
                    for last, remaining in lasting[target].items():
                        result[last] = result.get(last, 0.0) + share * rate * remaining
        return result

    def slope(now, emptying):
        result = {state: -emptying.get(state, 0.0) for state in now}
        for state, share in now.items():
            for rate, target in moves[state]:
                result[state] -= share * rate
                result[target] += share * rate
        return result

    now = {state: 0.0 for state in moves}
    now[0, 0] = 1.0
    history, lost = [], 0.0
    for index in range(round(DAY / step)):
        history.append({state: share for state, share in now.items() if not short[state]})
        lag = index - delay  # before that no battery can be empty
        start, end = (emptied(history[lag]), emptied(history[lag + 1])) if lag >= 0 else ({}, {})
        first = slope(now, start)
        second = slope({state: share + step * first[state] for state, share in now.items()}, end)
        now = {state: share + step / 2 * (first[state] + second[state]) for state, share in now.items()}
        lost += step / 2 * (sum(start.values()) + sum(end.values()))
    return lost


def grid_low():
    """The probability that at some time within a day the supply of the whole grid is at the limit or below."""
    out = STATIONS * BAYS - GRID_LIMIT // BAY_POWER
    moves = chain(STATIONS * BAYS, lambda state: sum(state) < out)
    return 1 - sum(after(moves, {(0, 0): 1.0}, DAY).values())


def grid_low_at_reading():
    """The same at one of the readings. States with far more bays out than asked for are too rare to count."""
    out = STATIONS * BAYS - GRID_LIMIT // BAY_POWER
    moves = chain(STATIONS * BAYS, lambda state: sum(state) < out + 15)
    now = {(0, 0): 1.0}
    for _ in range(round(DAY / READING_PERIOD)):
        now = {state: share for state, share in after(moves, now, READING_PERIOD).items() if sum(state) < out}
    return 1 - sum(now.values())


def answers():
    coarse, fine = station_lost(5), station_lost(10)
    lost = fine + (fine - coarse) / 3  # the error of the method falls with the square of the step
    return {"properties.xml": at_least(STATIONS_AFFECTED, STATIONS, station_strained()),
            "properties-crisis.xml": at_least(1, STATIONS, lost),
            "properties-supply.xml": grid_low(),
            "properties-readings.xml": grid_low_at_reading()}


if __name__ == "__main__":
    for name, value in answers().items():
        print(f"{name:<24} {value:.6f}")
