#!/usr/bin/env python3
"""Writes the model of the emergency power supply and its questions into the folder of this script."""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from vornxml import *  # noqa: E402,F403

# Hours, and rates per hour.
GRID_FAILS, GRID_RESTORED = 0.01, 0.25
INVERTER_FAILS = 0.005
BATTERY_LASTS = 0.25
STARTING, SLOW_START = 0.1, 0.4
QUICK, SLOW = 3, 1             # of so many equally likely starts
FUEL, FUEL_OF_A_START = 6.0, 0.5
SERVICE = 6.0
WEEK = 168.0

power = integer("power")


def grid():
    return (component_type("Grid", "system", out_data=[out_port("power", "int", 1)],
                           out_events=[error_event("fails", GRID_FAILS), error_event("restored", GRID_RESTORED)]),
            implementation("Grid.impl", modes=[mode("up", "initial"), mode("down", "error")],
                           transitions=[transition("up", "down", "fails", effects=[assign(power, 0)]),
                                        transition("down", "up", "restored", effects=[assign(power, 1)])]))


def battery():
    """Starts anew with each outage: the first mode is of type activation, and no reactivation transition leaves it."""
    used = clock("used")
    return (component_type("Battery", "device", out_data=[out_port("power", "int", 1)]),
            implementation("Battery.impl",
                           modes=[mode("full", "activation", invariant=used <= BATTERY_LASTS), mode("empty")],
                           transitions=[transition("full", "empty", guard=used >= BATTERY_LASTS,
                                                   effects=[assign(power, 0)])],
                           data=[data(used, 0.0)]))


def diesel():
    """Has several reactivation transitions in each of its modes, and takes one of them when an outage wakes it up."""
    cranked = clock("cranked")
    modes = [mode("stopped", "initial"), mode("starting", invariant=cranked <= STARTING),
             mode("choked", "error", invariant=cranked <= SLOW_START), mode("running")]
    begin = [assign(power, 0), assign(cranked, 0.0)]
    return (component_type("Diesel", "device", out_data=[out_port("power", "int", 0)]),
            implementation("Diesel.impl", modes,
                           transitions=[transition("starting", "running", guard=cranked >= STARTING,
                                                   effects=[assign(power, 1)]),
                                        transition("choked", "running", guard=cranked >= SLOW_START,
                                                   effects=[assign(power, 1)])],
                           reactivations=[transition(source, target, effects=begin)
                                          for source in ("stopped", "starting", "choked", "running")
                                          for target in ["starting"] * QUICK + ["choked"] * SLOW],
                           subcomponents=[subcomponent("tank", "Tank.impl"), subcomponent("meter", "Meter.impl")],
                           data=[data(cranked, 0.0)]))


def tank():
    """Has one reactivation transition in its mode `stocked`, and none in `low`, where it stays."""
    burnt = clock("burnt")
    return (component_type("Tank", "device"),
            implementation("Tank.impl",
                           modes=[mode("stocked", "initial", invariant=burnt <= FUEL), mode("low", "error")],
                           transitions=[transition("stocked", "low", guard=burnt >= FUEL)],
                           reactivations=[transition("stocked", "stocked",
                                                     effects=[assign(burnt, burnt + FUEL_OF_A_START)])],
                           data=[data(burnt, 0.0)]))


def meter():
    """Goes on where it stopped: its first mode is of type initial, and it has no reactivation transition."""
    hours = clock("hours")
    return (component_type("Meter", "device"),
            implementation("Meter.impl",
                           modes=[mode("counting", "initial", invariant=hours <= SERVICE), mode("due", "error")],
                           transitions=[transition("counting", "due", guard=hours >= SERVICE)],
                           data=[data(hours, 0.0)]))


def inverter():
    return (component_type("Inverter", "device", out_events=[error_event("fails", INVERTER_FAILS)]),
            implementation("Inverter.impl", modes=[mode("working", "initial"), mode("broken", "error")],
                           transitions=[transition("working", "broken", "fails")]))


def pair():
    """The two ways to keep a spare: asleep until it is needed, or at work from the start."""
    def either(source, target):
        return [transition(source, target, "main.fails"), transition(source, target, "spare.fails")]

    main = subcomponent("main", "Inverter.impl")
    cold = implementation("Pair.cold", modes=[mode("on_main", "initial"), mode("on_spare"), mode("dead", "error")],
                          transitions=[transition("on_main", "on_spare", "main.fails"),
                                       transition("on_spare", "dead", "spare.fails")],
                          subcomponents=[main, subcomponent("spare", "Inverter.impl", ["on_spare"])])
    hot = implementation("Pair.hot", modes=[mode("both", "initial"), mode("one"), mode("dead", "error")],
                         transitions=either("both", "one") + either("one", "dead"),
                         subcomponents=[main, subcomponent("spare", "Inverter.impl")])
    return component_type("Pair", "system"), cold, hot


def load():
    supply = integer("grid") + integer("standby")
    return (component_type("Load", "device", in_data=[in_port("grid", "int", 1), in_port("standby", "int", 0)]),
            implementation("Load.impl", modes=[mode("supplied", "initial"), mode("dark", "error")],
                           transitions=[transition("supplied", "dark", guard=supply < 1),
                                        transition("dark", "supplied", guard=supply >= 1)]))


def site():
    return (component_type("Site", "system"),
            implementation("Site.impl", modes=[mode("normal", "initial"), mode("outage")],
                           transitions=[transition("normal", "outage", "grid.fails"),
                                        transition("outage", "normal", "grid.restored")],
                           data_connections=[connection("grid.power", "load.grid")],
                           flows=[flow(integer("load.standby"), integer("battery.power") + integer("diesel.power"))],
                           subcomponents=[subcomponent("grid", "Grid.impl"), subcomponent("load", "Load.impl"),
                                          subcomponent("battery", "Battery.impl", ["outage"]),
                                          subcomponent("diesel", "Diesel.impl", ["outage"]),
                                          subcomponent("cold", "Pair.cold"), subcomponent("hot", "Pair.hot")]))


if __name__ == "__main__":
    parts = [grid(), battery(), tank(), meter(), diesel(), inverter(), pair(), load(), site()]
    write(HERE / "model.xml", model("emergency_power", types=[declared for declared, *_ in parts],
                                    implementations=[one for _, *implemented in parts for one in implemented]))
    for name, reached in {"properties": mode_is("load.", "dark"),
                          "properties-battery": mode_is("battery.", "empty"),
                          "properties-fuel": mode_is("diesel.tank.", "low"),
                          "properties-service": mode_is("diesel.meter.", "due"),
                          "properties-cold": mode_is("cold.", "dead"),
                          "properties-hot": mode_is("hot.", "dead")}.items():
        write(HERE / f"{name}.xml", properties(eventually(reached, WEEK)))
