#!/usr/bin/env python3
"""Writes the model of the heated tank and its questions into the folder of this script."""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from vornxml import *  # noqa: E402,F403

# Hours, and rates per hour. Levels are in decimetres, temperatures in degrees.
VALVE_STICKS, OPERATOR_ACTS = 0.02, 1.0
LOW, HIGH, RIM = 4.0, 8.0, 10.0
FILLING_TOO_LONG = 2.25
BOUND = 48.0

level, temperature, since = continuous("level"), continuous("temperature"), clock("since")
# The less water covers the rods, the lower is the temperature at which they burn out.
rods_limit = 50.0 + 5.0 * level


def valve():
    return (component_type("Valve", "device", in_events=[in_event("open"), in_event("close")],
                           out_events=[error_event("sticks", VALVE_STICKS)]),
            implementation("Valve.impl", modes=[mode("shut", "initial"), mode("opened"), mode("stuck", "error")],
                           transitions=[transition("shut", "opened", "open"), transition("opened", "shut", "close"),
                                        transition("shut", "stuck", "sticks"),
                                        transition("opened", "stuck", "sticks")]))


def operator():
    return (component_type("Operator", "system", in_events=[in_event("called")],
                           out_events=[error_event("acts", OPERATOR_ACTS)]),
            implementation("Operator.impl", modes=[mode("away", "initial"), mode("coming"), mode("done")],
                           transitions=[transition("away", "coming", "called"), transition("coming", "done", "acts")]))


def tank():
    heating_up = {level: -1.0, temperature: 2.0}
    filling_up = {level: 2.0, temperature: -4.0}
    return (component_type("Tank", "device", in_events=[in_event("stop")],
                           out_events=[out_event("open"), out_event("close"), out_event("alarm", nonblocking=True)]),
            implementation("Tank.impl",
                           modes=[mode("heating", "initial", invariant=temperature <= rods_limit, rates=heating_up),
                                  mode("filling", invariant=level <= RIM, rates=filling_up),
                                  mode("alarmed", "error", invariant=level <= RIM, rates=filling_up),
                                  mode("saved"), mode("overflowed", "error"), mode("burnt", "error")],
                           transitions=[transition("heating", "filling", "open", guard=level <= LOW,
                                                   effects=[assign(since, 0.0)]),
                                        transition("filling", "heating", "close", guard=level >= HIGH),
                                        transition("filling", "alarmed", "alarm", guard=since >= FILLING_TOO_LONG),
                                        transition("alarmed", "saved", "stop"),
                                        transition("alarmed", "overflowed", guard=level >= RIM),
                                        transition("heating", "burnt", guard=temperature >= rods_limit)],
                           data=[data(level, HIGH), data(temperature, 52.0), data(since, 0.0)]))


def plant():
    return (component_type("Plant", "system"),
            implementation("Plant.impl", modes=[mode("on", "initial")],
                           event_connections=[connection("tank.open", "valve.open"),
                                              connection("tank.close", "valve.close"),
                                              connection("tank.alarm", "operator.called"),
                                              connection("operator.acts", "tank.stop")],
                           subcomponents=[subcomponent("tank", "Tank.impl"), subcomponent("valve", "Valve.impl"),
                                          subcomponent("operator", "Operator.impl")]))


if __name__ == "__main__":
    types, implementations = zip(valve(), operator(), tank(), plant())
    write(HERE / "model.xml", model("heated_tank", types, implementations))
    level_seen = continuous("tank.level")
    for name, question in {"properties": eventually(mode_is("tank.", "overflowed"), BOUND),
                           "properties-burnt": eventually(mode_is("tank.", "burnt"), BOUND),
                           "properties-narrow": eventually(mode_is("tank.", "saved") & (level_seen >= 9.5), BOUND),
                           "properties-passed": eventually(level_seen <= 7.0, 3.0)}.items():
        write(HERE / f"{name}.xml", properties(question))
