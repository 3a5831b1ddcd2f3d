#!/usr/bin/env python3
"""Writes model.xml and the property files of the voting sensors into the folder of this script."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from vornxml import *

STICKS, BREAKS, PLUGGED_IN = 0.05, 0.2, 6.0         # of one sensor, of one line, of one broken line; per year
PRESSURE, STUCK_AT, NO_SIGNAL = 40, 0, -1
CHANNELS = ["channel1", "channel2", "channel3"]

pressure, reading, signal, value = integer("pressure"), integer("reading"), integer("signal"), integer("value")
in1, in2, in3 = inputs = [integer(f"in{i}") for i in (1, 2, 3)]
voted, quality, doubt = integer("voted"), enum("quality"), boolean("doubt")

vessel_type = component_type("Vessel", "device", out_data=[out_port("pressure", "int", PRESSURE)])
vessel = implementation("Vessel.impl", modes=[mode("closed", "initial")])

sensor_type = component_type("Sensor", "device", in_data=[in_port("pressure", "int", 0)],
                             out_data=[out_port("reading", "int", STUCK_AT)],
                             out_events=[error_event("sticks", STICKS)])
sensor = implementation("Sensor.impl",
                        modes=[mode("good", "initial"), mode("stuck", "error")],
                        transitions=[transition("good", "stuck", "sticks")],
                        flows=[flow(reading, pressure, modes=["good"]), flow(reading, STUCK_AT, modes=["stuck"])])

# While the line is broken no flow drives its port, and the port falls back to its default: no signal.
line_type = component_type("Line", "bus", in_data=[in_port("reading", "int", 0)],
                           out_data=[out_port("signal", "int", NO_SIGNAL, observable=True)],
                           out_events=[error_event("breaks", BREAKS), error_event("plugged_in", PLUGGED_IN)])
line = implementation("Line.impl",
                      modes=[mode("whole", "initial"), mode("broken", "error")],
                      transitions=[transition("whole", "broken", "breaks"),
                                   transition("broken", "whole", "plugged_in")],
                      flows=[flow(signal, reading, modes=["whole"])])

channel_type = component_type("Channel", "system", in_data=[in_port("pressure", "int", 0)],
                              out_data=[out_port("value", "int", NO_SIGNAL)])
channel = implementation("Channel.impl", modes=[mode("mounted", "initial")],
                         data_connections=[connection("pressure", "sensor.pressure"),
                                           connection("sensor.reading", "line.reading"),
                                           connection("line.signal", "value")],
                         subcomponents=[subcomponent("sensor", "Sensor.impl"), subcomponent("line", "Line.impl")])

voter_type = component_type("Voter", "process",
                            in_data=[in_port(i.name, "int", NO_SIGNAL) for i in inputs],
                            out_data=[out_port("voted", "int", NO_SIGNAL, observable=True),
                                      out_port("quality", "enum", "full"),
                                      out_port("doubt", "bool", False, alarm=True)])
voter = implementation(
    "Voter.impl", modes=[mode("votes", "initial")],
    # Two signals that agree make the vote; without such a pair there is none.
    flows=[flow(voted, case([((in1 != NO_SIGNAL) & ((in1 == in2) | (in1 == in3)), in1),
                             ((in2 != NO_SIGNAL) & (in2 == in3), in2)], NO_SIGNAL)),
           flow(quality, case([(voted == NO_SIGNAL, enum_literal("none")),
                               ((in1 == in2) & (in2 == in3), enum_literal("full"))], enum_literal("reduced"))),
           flow(doubt, quality != enum_literal("full"))])

device_type = component_type("Device", "system")
device = implementation("Device.impl", modes=[mode("in_service", "initial")],
                        data_connections=[*(connection("vessel.pressure", f"{c}.pressure") for c in CHANNELS),
                                          *(connection(f"{c}.value", f"voter.{i.name}")
                                            for c, i in zip(CHANNELS, inputs))],
                        subcomponents=[subcomponent("vessel", "Vessel.impl"), subcomponent("voter", "Voter.impl"),
                                       *(subcomponent(c, "Channel.impl") for c in CHANNELS)])

vote = integer("voter.voted")
wrong = (vote != NO_SIGNAL) & (vote != integer("vessel.pressure"))
no_vote = enum("voter.quality") == enum_literal("none")
stuck1, stuck2, stuck3 = [error_is(f"{c}.sensor.", "stuck") for c in CHANNELS]
two_stuck = (stuck1 & stuck2) | (stuck1 & stuck3) | (stuck2 & stuck3)

if __name__ == "__main__":
    here = pathlib.Path(__file__).resolve().parent
    write(here / "model.xml",
          model("votes", [vessel_type, sensor_type, line_type, channel_type, voter_type, device_type],
                [vessel, sensor, line, channel, voter, device]))
    write(here / "properties.xml", properties(eventually(wrong, 5)))
    write(here / "properties-no-vote.xml", properties(eventually(no_vote, 5)))
    write(here / "properties-two-stuck.xml", properties(eventually(two_stuck, 5)))
    wrong_is_doubted = element("imp", atom(wrong), atom(boolean("voter.doubt")))
    write(here / "properties-unnoticed.xml", properties(until(true(), element("not", wrong_is_doubted), 5)))
