#!/usr/bin/env python3
"""Writes model.xml and the property files of the telecommand link into the folder of this script."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from vornxml import *

HERE = pathlib.Path(__file__).resolve().parent

# Times in seconds, rates per second. exact.py reads them from here.
PASS_BEGINS = 2.0
GROUND_KEYING, GROUND_COOLING = 0.4, 1.6
CRAFT_KEYING, CRAFT_COOLING = 0.3, 0.2
DECODING = 0.3
INTACT, GARBLED = 3, 1
TIMEOUT = 1.5
ATTEMPTS = 5
FADE_RATE, CLEAR_RATE = 0.25, 0.5
END = 20.0

c = clock("c")


def after(delay, **more):
    """The guard of a transition that fires `delay` after the clock c was set to 0."""
    return {"guard": c >= delay, **more}


# A transmitter takes a frame, sends it when it is complete, and cools before it takes the next. There are two makes.
transmitter_type = component_type("Transmitter", "device", in_events=[in_event("load")],
                                  out_events=[out_event("air", nonblocking=True)])


def transmitter(make, keying, cooling):
    return implementation(
        f"Transmitter.{make}",
        modes=[mode("ready", "activation"), mode("keying", invariant=c <= keying),
               mode("cooling", invariant=c <= cooling)],
        transitions=[transition("ready", "keying", "load", effects=[assign(c, 0.0)]),
                     transition("keying", "cooling", "air", **after(keying, effects=[assign(c, 0.0)])),
                     transition("cooling", "ready", **after(cooling))],
        data=[data(c)])


# The controller of the ground station: sends, waits, sends again, gives up. Its port `load` blocks.
attempts = integer("attempts")
controller_type = component_type("Controller", "thread", in_events=[in_event("begin"), in_event("acknowledged")],
                                 out_events=[out_event("load"), out_event("confirmed", nonblocking=True),
                                             out_event("abandoned", nonblocking=True)])
controller = implementation(
    "Controller.impl",
    modes=[mode("idle", "initial"), mode("sending"), mode("waiting", invariant=c <= TIMEOUT), mode("answered"),
           mode("done"), mode("failed", "error")],
    transitions=[transition("idle", "sending", "begin"),
                 transition("sending", "waiting", "load", effects=[assign(c, 0.0), assign(attempts, attempts + 1)]),
                 transition("waiting", "answered", "acknowledged"),
                 transition("answered", "done", "confirmed"),
                 transition("waiting", "sending", guard=(c >= TIMEOUT) & (attempts < ATTEMPTS)),
                 transition("waiting", "failed", "abandoned", guard=(c >= TIMEOUT) & (attempts >= ATTEMPTS))],
    data=[data(c), data(attempts, 0)])

# The log counts what it hears and never takes part otherwise.
sent = integer("sent")
log_type = component_type("Log", "device", in_events=[in_event("frame")])
log = implementation("Log.impl", modes=[mode("listening", "initial")],
                     transitions=[transition("listening", "listening", "frame", effects=[assign(sent, sent + 1)])],
                     data=[data(sent, 0)])

# The ground station starts the pass by raising a port of its controller, and hears from it how the pass ended.
since = clock("since")
ground_type = component_type("Ground", "system", in_events=[in_event("rx")],
                             out_events=[out_event("tx", nonblocking=True)])
ground = implementation(
    "Ground.impl",
    modes=[mode("before", "initial", invariant=since <= PASS_BEGINS), mode("contact"), mode("over")],
    transitions=[transition("before", "contact", "controller.begin", guard=since >= PASS_BEGINS),
                 transition("contact", "over", "controller.confirmed"),
                 transition("contact", "over", "controller.abandoned")],
    event_connections=[connection("controller.load", "transmitter.load"),
                       connection("controller.load", "log.frame", passive=True),
                       connection("transmitter.air", "tx"),
                       connection("rx", "controller.acknowledged", modes=["contact"])],
    subcomponents=[subcomponent("controller", "Controller.impl"), subcomponent("log", "Log.impl"),
                   subcomponent("transmitter", "Transmitter.ground", modes=["contact"])],
    data=[data(since)])

# The decoder takes a frame or finds it garbled: one of four equal transitions is chosen evenly.
garbled = integer("garbled")
decoder_type = component_type("Decoder", "device", in_events=[in_event("frame")], out_events=[out_event("accepted")])
decoder = implementation(
    "Decoder.impl",
    modes=[mode("idle", "initial"), mode("decoding", invariant=c <= DECODING)],
    transitions=INTACT * [transition("idle", "decoding", "frame", effects=[assign(c, 0.0)])]
    + GARBLED * [transition("idle", "idle", "frame", effects=[assign(garbled, garbled + 1)])]
    + [transition("decoding", "idle", "accepted", **after(DECODING))],
    data=[data(c), data(garbled, 0)])

# The spacecraft executes the first command and counts further copies of it.
copies = integer("copies")
craft_type = component_type("Craft", "system", in_events=[in_event("rx")],
                            out_events=[out_event("tx", nonblocking=True)])
craft = implementation(
    "Craft.impl",
    modes=[mode("listening", "initial"), mode("executed")],
    transitions=[transition("listening", "executed", "decoder.accepted"),
                 transition("executed", "executed", "decoder.accepted", effects=[assign(copies, copies + 1)])],
    event_connections=[connection("rx", "decoder.frame"), connection("decoder.accepted", "transponder.load"),
                       connection("transponder.air", "tx")],
    subcomponents=[subcomponent("decoder", "Decoder.impl"), subcomponent("transponder", "Transmitter.craft")],
    data=[data(copies, 0)])

# The channel fades and clears by itself; the link follows it and lets frames through only while it is clear.
channel_type = component_type("Channel", "bus",
                              out_events=[error_event("fades", FADE_RATE), error_event("clears", CLEAR_RATE)])
channel = implementation("Channel.impl", modes=[mode("clear", "initial"), mode("faded", "error")],
                         transitions=[transition("clear", "faded", "fades"), transition("faded", "clear", "clears")])
link_type = component_type("Link", "system")
link = implementation(
    "Link.impl",
    modes=[mode("clear", "initial"), mode("faded", "error")],
    transitions=[transition("clear", "faded", "channel.fades"), transition("faded", "clear", "channel.clears")],
    event_connections=[connection("ground.tx", "craft.rx", modes=["clear"]),
                       connection("craft.tx", "ground.rx", modes=["clear"])],
    subcomponents=[subcomponent("channel", "Channel.impl"), subcomponent("ground", "Ground.impl"),
                   subcomponent("craft", "Craft.impl")])

LINK = model("telecommand",
             [transmitter_type, controller_type, log_type, ground_type, decoder_type, craft_type, channel_type,
              link_type],
             [transmitter("ground", GROUND_KEYING, GROUND_COOLING), transmitter("craft", CRAFT_KEYING, CRAFT_COOLING),
              controller, log, ground, decoder, craft, channel, link])

confirmed = mode_is("ground.controller.", "done")
executed = mode_is("craft.", "executed")
QUESTIONS = {
    "": eventually(confirmed, END),
    "-quick": eventually(confirmed, 6.0),
    "-late": until(atom(~confirmed), atom(confirmed), END, lower=6.0),
    "-frames": eventually(integer("ground.log.sent") >= 4, END),
    "-copies": eventually(integer("craft.copies") >= 1, END),
    "-in-doubt": eventually(mode_is("ground.controller.", "failed") & executed, END),
}

if __name__ == "__main__":
    write(HERE / "model.xml", LINK)
    for question, formula in QUESTIONS.items():
        write(HERE / f"properties{question}.xml", properties(formula))
