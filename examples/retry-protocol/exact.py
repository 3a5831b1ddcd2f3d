#!/usr/bin/env python3
"""Computes the answers about the telecommand link without simulation.

All instants at which a frame or an acknowledgement is on the air are fixed; only what becomes of it is random. The
channel is a chain of two states whose transition probabilities over a span of time have a closed form. So the link is a
discrete chain over the attempts: (state of the channel, how often the command was accepted).
"""
import math

from generate import (ATTEMPTS, CLEAR_RATE, CRAFT_KEYING, DECODING, FADE_RATE, GARBLED, GROUND_COOLING, GROUND_KEYING,
                      INTACT, PASS_BEGINS, TIMEOUT)

PERIOD = max(TIMEOUT, GROUND_KEYING + GROUND_COOLING)  # the next attempt waits for the time-out and for the transmitter
ANSWER = DECODING + CRAFT_KEYING                       # from the frame on the air to the acknowledgement on the air
DECODED = INTACT / (INTACT + GARBLED)


def channel(clear, time):
    """The probability that the channel is clear after this time, given the probability that it is now."""
    total = FADE_RATE + CLEAR_RATE
    stationary = CLEAR_RATE / total
    return stationary + (clear - stationary) * math.exp(-total * time)


def pass_time(states, time):
    """`states` maps (clear, accepted) to a probability; the channel moves on and the count stays."""
    result = {}
    for (clear, accepted), weight in states.items():
        stays_clear = channel(1.0 if clear else 0.0, time)
        for next_clear, share in ((True, stays_clear), (False, 1 - stays_clear)):
            key = (next_clear, accepted)
            result[key] = result.get(key, 0.0) + weight * share
    return result


def answers(attempts=ATTEMPTS, period=PERIOD):
    confirmed_at = []  # the probability that the acknowledgement of this attempt arrives
    copies = 0.0       # the probability that the command was accepted twice or more often
    open_before = []   # the probability that this attempt is made
    states = pass_time({(True, 0): 1.0}, PASS_BEGINS + GROUND_KEYING)
    for attempt in range(attempts):
        open_before.append(sum(states.values()))
        # The frame is on the air: only in a clear channel does it arrive, and then it may be garbled.
        silent, on_the_way = {}, {}
        for (clear, accepted), weight in states.items():
            share = DECODED if clear else 0.0
            silent[clear, accepted] = silent.get((clear, accepted), 0.0) + weight * (1 - share)
            key = (clear, accepted + 1)
            on_the_way[key] = on_the_way.get(key, 0.0) + weight * share
            if accepted == 1:
                copies += weight * share
        # The acknowledgement is on the air: in a clear channel it ends the transfer.
        silent, on_the_way = pass_time(silent, ANSWER), pass_time(on_the_way, ANSWER)
        confirmed_at.append(sum(weight for (clear, _), weight in on_the_way.items() if clear))
        states = silent
        for (clear, accepted), weight in on_the_way.items():
            if not clear:
                states[clear, accepted] = states.get((clear, accepted), 0.0) + weight
        if attempt + 1 < attempts:
            states = pass_time(states, period - ANSWER)
    in_doubt = sum(weight for (_, accepted), weight in states.items() if accepted > 0)
    assert abs(sum(confirmed_at) + sum(states.values()) - 1) < 1e-12
    return {"properties.xml": sum(confirmed_at), "properties-quick.xml": sum(confirmed_at[:2]),
            "properties-late.xml": sum(confirmed_at[2:]), "properties-frames.xml": sum(open_before[3:4]),
            "properties-copies.xml": copies, "properties-in-doubt.xml": in_doubt}


if __name__ == "__main__":
    for name, value in answers().items():
        print(f"{name:<40} {value:.6f}")
    # A log that takes part lets the controller load into a transmitter that still cools: every second frame is lost.
    value = answers(attempts=(ATTEMPTS + 1) // 2, period=2 * TIMEOUT)["properties.xml"]
    print(f"{'properties.xml, log no longer passive':<40} {value:.6f}")
