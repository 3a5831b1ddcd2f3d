#!/usr/bin/env python3
"""Writes model.xml and the property files of the pumping station into the folder of this script."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from vornxml import *

BREAKS, REPAIRED = 0.05, 2.0        # of one pump, per day
OUTAGE, RESTORED = 0.01, 12.0       # of the power supply, per day
PUMPS = ["pump1", "pump2"]
FLOW = 60                           # of one pump, in cubic metres an hour
DEMAND = FLOW * len(PUMPS)

delivers, water, repairs = integer("delivers"), integer("water"), integer("repairs")
live, short = boolean("live"), boolean("short")

pump_type = component_type("Pump", "device",
                           out_data=[out_port("delivers", "int", FLOW, observable=True)],
                           in_events=[in_event("crew_comes")],
                           out_events=[error_event("breaks", BREAKS), error_event("repaired", REPAIRED)])
pump = implementation("Pump.impl",
                      modes=[mode("running", "initial"), mode("broken", "error"), mode("in_repair", "error")],
                      transitions=[transition("running", "broken", "breaks", effects=[assign(delivers, 0)]),
                                   transition("broken", "in_repair", "crew_comes"),
                                   transition("in_repair", "running", "repaired", effects=[assign(delivers, FLOW)])])

supply_type = component_type("Supply", "device",
                             out_data=[out_port("live", "bool", True, observable=True)],
                             out_events=[error_event("outage", OUTAGE), error_event("restored", RESTORED)])
supply = implementation("Supply.impl",
                        modes=[mode("on", "initial"), mode("off", "error")],
                        transitions=[transition("on", "off", "outage", effects=[assign(live, False)]),
                                     transition("off", "on", "restored", effects=[assign(live, True)])])

# The two calls are blocking events: the crew can raise one only while the pump behind it is waiting for it.
crew_type = component_type("Crew", "process",
                           in_events=[in_event("done")],
                           out_events=[out_event(f"to_{p}") for p in PUMPS])
crew = implementation("Crew.impl",
                      modes=[mode("idle", "initial"), mode("at_work")],
                      transitions=[*(transition("idle", "at_work", f"to_{p}") for p in PUMPS),
                                   transition("at_work", "idle", "done", effects=[assign(repairs, repairs + 1)])],
                      data=[data(repairs, 0, observable=True)])

# "runs_dry" is an error event without a rate: the station raises it itself, as soon as no water flows.
station_type = component_type("Station", "system",
                              out_data=[out_port("short", "bool", False, alarm=True)],
                              out_events=[error_event("runs_dry")])
station = implementation(
    "Station.impl",
    modes=[mode("supplying", "initial"), mode("dry", "error")],
    transitions=[transition("supplying", "dry", "runs_dry", guard=water == 0),
                 transition("dry", "supplying", guard=water > 0)],
    event_connections=[*(connection(f"crew.to_{p}", f"{p}.crew_comes") for p in PUMPS),
                       *(connection(f"{p}.repaired", "crew.done") for p in PUMPS)],
    flows=[flow(water, case([(boolean("supply.live"), total([integer(f"{p}.delivers") for p in PUMPS]))], 0)),
           flow(short, water < DEMAND)],
    subcomponents=[*(subcomponent(p, "Pump.impl") for p in PUMPS),
                   subcomponent("supply", "Supply.impl"), subcomponent("crew", "Crew.impl")],
    data=[data(water, DEMAND)])

dry = mode_is("", "dry")

if __name__ == "__main__":
    here = pathlib.Path(__file__).resolve().parent
    write(here / "model.xml", model("waterworks", [pump_type, supply_type, crew_type, station_type],
                                    [pump, supply, crew, station]))
    write(here / "properties.xml", properties(eventually(dry, 30)))
    write(here / "properties-quiet-week.xml", properties(until(atom(~short), atom(dry), 30, lower=7)))
    write(here / "properties-busy-crew.xml", properties(eventually(integer("crew.repairs") >= 5, 30)))
