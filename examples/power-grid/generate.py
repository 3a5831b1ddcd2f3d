#!/usr/bin/env python3
"""Writes model.xml and the property files of the power grid into the folder of this script."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from vornxml import *

HERE = pathlib.Path(__file__).resolve().parent

# Times in hours, rates per hour, power in megawatts. exact.py reads them from here.
STATIONS, BAYS = 12, 6
PARTS = {"transformer": 0.0015, "breaker": 0.001, "relay": 0.002, "cable": 0.0005}
ARRIVAL_RATE, REPAIR_RATE = 0.5, 0.125
BAY_POWER, DEMAND = 10, 50
STARTING, CHARGE = 0.25, 4.0
READING_PERIOD, DAY = 6.0, 24.0
STATIONS_AFFECTED, GRID_LIMIT = 2, 660


def part(name, rate):
    """The type and the implementation of a part that fails by itself and is restored from outside."""
    kind = name.capitalize()
    return (component_type(kind, "device", in_events=[in_event("restore")], out_events=[error_event("fails", rate)]),
            implementation(f"{kind}.impl", modes=[mode("working", "initial"), mode("failed", "error")],
                           transitions=[transition("working", "failed", "fails"),
                                        transition("failed", "working", "restore")]))


# A crew travels to the bay, repairs it and leaves. It exists only while its bay is out.
crew_type = component_type("Crew", "process",
                           out_events=[error_event("arrives", ARRIVAL_RATE), error_event("done", REPAIR_RATE)])
crew = implementation("Crew.impl", modes=[mode("travelling", "activation"), mode("repairing"), mode("leaving")],
                      transitions=[transition("travelling", "repairing", "arrives"),
                                   transition("repairing", "leaving", "done")])

# A bay supplies power while all its parts work. Its flow ends with the mode, and the port falls back to its default 0.
bay_type = component_type("Bay", "system", out_data=[out_port("power", "int", 0)])
bay = implementation(
    "Bay.impl",
    modes=[mode("supplying", "initial"), mode("out", "error")],
    transitions=[transition("supplying", "out", f"{name}.fails") for name in PARTS]
    + [transition("out", "supplying", "crew.done")],
    event_connections=[connection("crew.done", f"{name}.restore", modes=["out"]) for name in PARTS],
    flows=[flow(integer("power"), BAY_POWER, modes=["supplying"])],
    subcomponents=[subcomponent(name, f"{name.capitalize()}.impl") for name in PARTS]
    + [subcomponent("crew", "Crew.impl", modes=["out"])])

# A battery needs a while to start and then gives power until its charge is used up. It starts anew each time.
since, charge, gives = clock("since"), continuous("charge"), integer("gives")
battery_type = component_type("Battery", "device", out_data=[out_port("gives", "int", 0)],
                              out_events=[out_event("empty", nonblocking=True)])
battery = implementation(
    "Battery.impl",
    modes=[mode("starting", "activation", invariant=since <= STARTING),
           mode("feeding", invariant=charge >= 0.0, rates={charge: -1.0}), mode("drained")],
    transitions=[transition("starting", "feeding", guard=since >= STARTING,
                            effects=[assign(gives, DEMAND - BAY_POWER)]),
                 transition("feeding", "drained", "empty", guard=charge <= 0.0, effects=[assign(gives, 0)])],
    data=[data(since), data(charge, CHARGE)])

# A station sums up its bays. Short of power it raises the alarm and calls its battery; without the battery it is lost.
power, affected, available = integer("power"), integer("affected"), integer("available")
station_type = component_type("Station", "system",
                              out_data=[out_port(name, "int", 0) for name in ("power", "available", "affected")],
                              out_events=[out_event("alarm", nonblocking=True), out_event("lost", nonblocking=True)])
bays = [f"bay{i}" for i in range(1, BAYS + 1)]
station = implementation(
    "Station.impl",
    modes=[mode("normal", "initial"), mode("strained"), mode("dark", "error")],
    transitions=[transition("normal", "strained", "alarm", guard=power < DEMAND, effects=[assign(affected, 1)]),
                 transition("strained", "normal", guard=power >= DEMAND),
                 transition("strained", "dark", "battery.empty"),
                 transition("dark", "normal", guard=power >= DEMAND)],
    event_connections=[connection("battery.empty", "lost")],
    flows=[flow(power, total([integer(f"{name}.power") for name in bays])),
           flow(available, power, modes=["normal", "dark"]),
           flow(available, power + integer("battery.gives"), modes=["strained"])],
    subcomponents=[subcomponent(name, "Bay.impl") for name in bays]
    + [subcomponent("battery", "Battery.impl", modes=["strained"])])

# The dispatcher hears the stations.
dispatcher_type = component_type("Dispatcher", "process", in_events=[in_event("alarm"), in_event("lost")])
dispatcher = implementation(
    "Dispatcher.impl", modes=[mode("calm", "initial"), mode("alerted"), mode("crisis", "error")],
    transitions=[transition("calm", "alerted", "alarm"), transition("calm", "crisis", "lost"),
                 transition("alerted", "crisis", "lost")])

# The meter calls for a reading at fixed times.
meter_type = component_type("Meter", "device", out_events=[out_event("reads", nonblocking=True)])
meter = implementation(
    "Meter.impl", modes=[mode("waiting", "initial", invariant=since <= READING_PERIOD)],
    transitions=[transition("waiting", "waiting", "reads", guard=since >= READING_PERIOD,
                            effects=[assign(since, 0.0)])],
    data=[data(since)])

# The grid sums up its stations and keeps the least supply that was read.
supply, least = integer("supply"), integer("least")
grid_type = component_type("Grid", "system")
stations = [f"station{i}" for i in range(1, STATIONS + 1)]
grid = implementation(
    "Grid.impl", modes=[mode("operating", "initial")],
    transitions=[transition("operating", "operating", "meter.reads",
                            effects=[assign(least, case([(supply < least, supply)], least))])],
    event_connections=[connection(f"{name}.{event}", f"dispatcher.{event}")
                       for name in stations for event in ("alarm", "lost")],
    flows=[flow(supply, total([integer(f"{name}.power") for name in stations])),
           flow(integer("with_batteries"), total([integer(f"{name}.available") for name in stations])),
           flow(affected, total([integer(f"{name}.affected") for name in stations]))],
    subcomponents=[subcomponent(name, "Station.impl") for name in stations]
    + [subcomponent("dispatcher", "Dispatcher.impl"), subcomponent("meter", "Meter.impl")],
    data=[data(supply, STATIONS * BAYS * BAY_POWER), data(integer("with_batteries"), STATIONS * BAYS * BAY_POWER),
          data(affected, 0), data(least, STATIONS * BAYS * BAY_POWER)])

part_types, parts = zip(*(part(name, rate) for name, rate in PARTS.items()))
GRID = model("power",
             [*part_types, crew_type, bay_type, battery_type, station_type, dispatcher_type, meter_type, grid_type],
             [*parts, crew, bay, battery, station, dispatcher, meter, grid])

QUESTIONS = {
    "": eventually(affected >= STATIONS_AFFECTED, DAY),
    "-crisis": eventually(mode_is("dispatcher.", "crisis"), DAY),
    "-supply": eventually(supply <= GRID_LIMIT, DAY),
    "-readings": eventually(least <= GRID_LIMIT, DAY + READING_PERIOD / 2),
}

if __name__ == "__main__":
    write(HERE / "model.xml", GRID)
    for question, formula in QUESTIONS.items():
        write(HERE / f"properties{question}.xml", properties(formula))
