#!/usr/bin/env python3
"""Writes the small models of docs/semantics.md and docs/strategies.md, one folder each, beside this script.

Each model shows only one thing. `properties.xml` has its main question; further questions are in
`properties-<question>.xml`.
"""
import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "examples"))

from vornxml import (assign, atom, boolean, bounds, clock, component_type, connection, continuous, data, element,
                     error_event, eventually, flow, implementation, in_event, in_port, integer, mode, mode_is, model,
                     out_event, out_port, probability, properties, real, subcomponent, transition, true, until, write)


def save(name, types, implementations, question, **questions):
    """`question` is the formula of properties.xml; a keyword argument adds properties-<keyword>.xml."""
    folder = HERE / name
    folder.mkdir(exist_ok=True)
    write(folder / "model.xml", model(name, types, implementations))
    write(folder / "properties.xml", properties(question))
    for key, formula in questions.items():
        write(folder / f"properties-{key.replace('_', '-')}.xml", properties(formula))


def following(operand, upper, lower=0): return probability(element("x", *bounds(lower, upper), operand))


x = clock("x")


def stopwatch():
    """A clock, a flow that reads it, and an invariant that stops time."""
    shown, laps = real("shown"), integer("laps")
    watch = implementation(
        "Watch.impl",
        modes=[mode("running", "initial", invariant=x <= 5.0), mode("stopped")],
        transitions=[transition("running", "running", guard=x >= 2.0, effects=[assign(laps, laps + 1)]),
                     transition("running", "stopped", guard=x > 3.0)],
        flows=[flow(shown, x)], data=[data(x, 0.0), data(laps, 0)])
    save("stopwatch", [component_type("Watch", "device", out_data=[out_port("shown", "real", 0.0)])], [watch],
         eventually(mode_is("", "stopped"), 10.0))


def tank():
    """A level that rises, and three ways to leave: by a guard, into an invariant, and by writing the level."""
    level = continuous("level")
    basin = implementation(
        "Tank.impl",
        modes=[mode("filling", "initial", invariant=level <= 8.0, rates={level: 2.0}), mode("full"),
               mode("serving", invariant=level >= 4.0, rates={level: -1.0}),
               mode("rinsing", invariant=level <= 6.0)],
        transitions=[transition("filling", "full", guard=level >= 8.0), transition("filling", "serving"),
                     transition("filling", "rinsing", effects=[assign(level, 5.0)])],
        data=[data(level, 1.5)])
    save("tank", [component_type("Tank", "device")], [basin], eventually(mode_is("", "full"), 10.0))


def bells():
    """Buttons in a house of two rooms. They differ in the components that hear them."""
    def button(name, port, extra=()):
        return implementation(f"{name}.impl", modes=[mode("idle", "initial"), mode("pressed")],
                              transitions=[transition("idle", "pressed", trigger=port), *extra])

    types = [component_type("House", "system"),
             component_type("Room", "system", out_events=[out_event("call")]),
             component_type("Cellar", "system", in_events=[in_event("hear")]),
             component_type("Blocking", "device", out_events=[out_event("press")]),
             component_type("Nonblocking", "device", out_events=[out_event("press", nonblocking=True)]),
             component_type("Selfish", "device", in_events=[in_event("hear")], out_events=[out_event("press")]),
             component_type("Bell", "device", in_events=[in_event("ring")]),
             component_type("Lamp", "device", in_events=[in_event("flash")])]
    bell = implementation("Bell.impl", modes=[mode("quiet", "initial"), mode("loud"), mode("soft")],
                          transitions=[transition("quiet", "loud", trigger="ring"),
                                       transition("quiet", "soft", trigger="ring")])
    lamp = implementation("Lamp.impl", modes=[mode("dark", "initial"), mode("lit")],
                          transitions=[transition("dark", "lit", trigger="flash")])
    room = implementation("Room.impl", modes=[mode("one", "initial")],
                          subcomponents=[subcomponent("button", "Blocking.impl")],
                          event_connections=[connection("button.press", "call")])
    cellar = implementation("Cellar.impl", modes=[mode("one", "initial")],
                            subcomponents=[subcomponent("bell", "Bell.impl")],
                            event_connections=[connection("hear", "bell.ring")])
    house = implementation(
        "House.impl", modes=[mode("one", "initial")],
        subcomponents=[subcomponent("cellar", "Cellar.impl"), subcomponent("lamp", "Lamp.impl"),
                       subcomponent("room", "Room.impl"), subcomponent("lonely", "Blocking.impl"),
                       subcomponent("free", "Nonblocking.impl"), subcomponent("polite", "Blocking.impl"),
                       subcomponent("selfish", "Selfish.impl")],
        event_connections=[connection("room.call", "cellar.hear"), connection("room.call", "lamp.flash", passive=True),
                           connection("polite.press", "lamp.flash", passive=True),
                           connection("selfish.press", "selfish.hear")])
    save("bells", types,
         [house, room, cellar, bell, lamp, button("Blocking", "press"), button("Nonblocking", "press"),
          button("Selfish", "press", [transition("idle", "idle", trigger="hear")])],
         eventually(mode_is("cellar.bell.", "loud"), 10.0),
         lamp=eventually(mode_is("lamp.", "lit"), 10.0))


def parent():
    """A parent that uses the ports of its parts without connections: it listens on one port and raises the other."""
    types = [component_type("Yard", "system"),
             component_type("Door", "device", out_events=[out_event("opened")]),
             component_type("Gate", "device", in_events=[in_event("open")])]
    door = implementation("Door.impl", modes=[mode("shut", "initial"), mode("ajar")],
                          transitions=[transition("shut", "ajar", trigger="opened")])
    gate = implementation("Gate.impl", modes=[mode("shut", "initial"), mode("ajar")],
                          transitions=[transition("shut", "ajar", trigger="open")])
    yard = implementation("Yard.impl", modes=[mode("calm", "initial"), mode("warned"), mode("escaped")],
                          transitions=[transition("calm", "warned", trigger="door.opened"),
                                       transition("warned", "escaped", trigger="gate.open")],
                          subcomponents=[subcomponent("door", "Door.impl"), subcomponent("gate", "Gate.impl")])
    save("parent", types, [yard, door, gate], eventually(mode_is("gate.", "ajar"), 1.0))


def shifts():
    """Four workers that exist by day only and wake up in four ways."""
    done, worn = integer("done"), clock("worn")
    ways = {"Resumes": ("initial", []), "Restarts": ("activation", []),
            "Recovers": ("initial", [transition("busy", "checked", effects=[assign(done, 10)])]),
            "Chooses": ("initial", [transition("busy", "checked"), transition("busy", "fresh")])}
    workers = [implementation(
        f"{name}.impl", modes=[mode("fresh", kind), mode("busy"), mode("checked")],
        transitions=[transition("fresh", "busy", trigger="work", effects=[assign(done, done + 1)])],
        reactivations=reactivations, data=[data(done, 0), data(worn, 0.0)])
        for name, (kind, reactivations) in ways.items()]
    names = [(name.lower(), f"{name}.impl") for name in ways]
    factory = implementation(
        "Factory.impl", modes=[mode("day", "initial"), mode("night")],
        transitions=[transition("day", "night", trigger="dusk"), transition("night", "day", trigger="dawn"),
                     transition("day", "day", trigger="start"), transition("night", "night", trigger="start")],
        subcomponents=[subcomponent(name, reference, modes=["day"]) for name, reference in names],
        event_connections=[connection("start", f"{name}.work") for name, _ in names])
    types = [component_type("Factory", "system", out_events=[out_event(name, nonblocking=True)
                                                              for name in ("dawn", "dusk", "start")])]
    types += [component_type(name, "process", in_events=[in_event("work")]) for name in ways]
    save("shifts", types, [factory, *workers], eventually(mode_is("resumes.", "busy"), 1.0))


def signals():
    """A chain of flows in the opposite order of declaration. An out port returns to its default, an in port does not."""
    reading, half, double = integer("reading"), integer("half"), integer("double")
    sensor = implementation(
        "Sensor.impl", modes=[mode("on", "initial"), mode("off")],
        transitions=[transition("on", "on", trigger="sample", effects=[assign(reading, reading + 10)]),
                     transition("on", "off", trigger="stop")],
        flows=[flow(double, half * 2, modes=["on"]), flow(half, reading / 2, modes=["on"])],
        data=[data(reading, 4)])
    display = implementation("Display.impl", modes=[mode("one", "initial")])
    panel = implementation(
        "Panel.impl", modes=[mode("linked", "initial"), mode("cut")],
        transitions=[transition("linked", "cut", trigger="unlink"), transition("cut", "cut", trigger="unlink")],
        data_connections=[connection("sensor.double", "display.value", modes=["linked"])],
        subcomponents=[subcomponent("display", "Display.impl"), subcomponent("sensor", "Sensor.impl")])
    types = [component_type("Panel", "system", out_events=[out_event("unlink", nonblocking=True)]),
             component_type("Sensor", "device", out_data=[out_port("half", "int", -1), out_port("double", "int", -2)],
                            out_events=[out_event("sample", nonblocking=True), out_event("stop", nonblocking=True)]),
             component_type("Display", "device", in_data=[in_port("value", "int", 0)])]
    save("signals", types, [panel, sensor, display], eventually(integer("display.value") == 14, 1.0))


def leftover():
    """A flow of one mode that is still on in another mode of a later run; and the same model without this fault."""
    seen = boolean("seen")
    for name, effects in (("leftover", []), ("leftover-mended", [assign(seen, False)])):
        chooser = implementation(
            "Chooser.impl", modes=[mode("start", "initial"), mode("left"), mode("right")],
            transitions=[transition("start", "left"), transition("start", "right", effects=effects)],
            flows=[flow(seen, True, modes=["left"])])
        save(name, [component_type("Chooser", "process", out_data=[out_port("seen", "bool", False)])], [chooser],
             eventually(mode_is("", "right") & seen, 1.0))


def race():
    """Two pumps that fail, one of them three times as fast, and an error event without a transition in its own component."""
    def pump(name, rate):
        return (component_type(name, "device", out_events=[error_event("fault", rate)]),
                implementation(f"{name}.impl", modes=[mode("works", "initial"), mode("failed", "error")],
                               transitions=[transition("works", "failed", trigger="fault")]))

    slow_type, slow = pump("Slow", 0.25)
    fast_type, fast = pump("Fast", 0.75)
    deaf = implementation("Deaf.impl", modes=[mode("works", "initial")])
    station = implementation("Station.impl", modes=[mode("one", "initial"), mode("alarmed")],
                             transitions=[transition("one", "alarmed", trigger="deaf.fault")],
                             subcomponents=[subcomponent("deaf", "Deaf.impl"), subcomponent("fast", "Fast.impl"),
                                            subcomponent("slow", "Slow.impl")])
    save("race", [component_type("Station", "system"), slow_type, fast_type,
                  component_type("Deaf", "device", out_events=[error_event("fault", 1000.0)])],
         [station, slow, fast, deaf], eventually(mode_is("slow.", "failed") & mode_is("fast.", "works"), 1000.0),
         alarm=eventually(mode_is("", "alarmed"), 1000.0))


def spare():
    """A spare that exists in the hours 0 to 1 and 1.5 to 2.5; and the same with switching in steps that take no time."""
    unit = implementation("Spare.impl", modes=[mode("works", "initial"), mode("failed", "error")],
                          transitions=[transition("works", "failed", trigger="fault")])
    types = [component_type("Station", "system"),
             component_type("Spare", "device", out_events=[error_event("fault", 0.5)])]

    def station(modes, transitions, awake):
        return implementation("Station.impl", modes=[*modes, mode("closed")], transitions=transitions,
                              subcomponents=[subcomponent("spare", "Spare.impl", modes=awake)], data=[data(x, 0.0)])

    combined = station(
        [mode("before", "initial", invariant=x <= 1.0), mode("without", invariant=x <= 1.5),
         mode("after", invariant=x <= 2.5)],
        [transition("before", "without", guard=x >= 1.0), transition("without", "after", guard=x >= 1.5),
         transition("after", "closed", guard=x >= 2.5)], ["before", "after"])
    separate = station(
        [mode("before", "initial", invariant=x <= 1.0), mode("leaving"), mode("without", invariant=x <= 1.5),
         mode("coming"), mode("after", invariant=x <= 2.5)],
        [transition("before", "leaving", guard=x >= 1.0), transition("leaving", "without"),
         transition("without", "coming", guard=x >= 1.5), transition("coming", "after"),
         transition("after", "closed", guard=x >= 2.5)], ["before", "leaving", "after"])
    for name, root in (("spare", combined), ("spare-exact", separate)):
        save(name, types, [root, unit], eventually(mode_is("spare.", "failed"), 1000.0))


def guarded():
    """An error event whose transition has a guard: the race ignores the guard."""
    armed = boolean("armed")
    fuse = implementation("Fuse.impl", modes=[mode("whole", "initial"), mode("blown", "error")],
                          transitions=[transition("whole", "blown", trigger="surge", guard=armed)],
                          data=[data(armed, False)])
    save("guarded", [component_type("Fuse", "device", out_events=[error_event("surge", 1.0)])], [fuse],
         eventually(mode_is("", "blown"), 10.0))


def stuck():
    """An invariant ends at 2, and the only transition is enabled from 3 on."""
    lock = implementation("Lock.impl", modes=[mode("waits", "initial", invariant=x <= 2.0), mode("open")],
                          transitions=[transition("waits", "open", guard=x >= 3.0)], data=[data(x, 0.0)])
    save("stuck", [component_type("Lock", "device")], [lock], eventually(mode_is("", "open"), 10.0))


def order():
    """Which values each component reads when several components act in one step."""
    a, b, mine = integer("a"), integer("b"), integer("mine")
    sender = implementation("Sender.impl", modes=[mode("idle", "initial"), mode("sent")],
                            transitions=[transition("idle", "sent", trigger="send",
                                                    effects=[assign(a, b), assign(b, a)])],
                            flows=[flow(integer("out"), a)], data=[data(a, 1), data(b, 2)])
    hearer = implementation("Hearer.impl", modes=[mode("idle", "initial"), mode("told")],
                            transitions=[transition("idle", "told", trigger="hear",
                                                    effects=[assign(mine, integer("input"))])],
                            data=[data(mine, 0)])
    root = implementation("Root.impl", modes=[mode("one", "initial")], transitions=[transition("one", "one")],
                          subcomponents=[subcomponent("sender", "Sender.impl"), subcomponent("hearer", "Hearer.impl")],
                          event_connections=[connection("sender.send", "hearer.hear")],
                          data_connections=[connection("sender.out", "hearer.input")])
    types = [component_type("Root", "system"),
             component_type("Sender", "process", out_data=[out_port("out", "int", 0)], out_events=[out_event("send")]),
             component_type("Hearer", "process", in_data=[in_port("input", "int", 0)], in_events=[in_event("hear")])]
    save("order", types, [root, sender, hearer], eventually(integer("hearer.mine") == 1, 1.0))


def twice():
    """Two transitions that write one clock twice, into a mode that allows it up to 3."""
    writer = implementation("Writer.impl", modes=[mode("start", "initial"), mode("low", invariant=x <= 3.0)],
                            transitions=[transition("start", "low", effects=[assign(x, 1.0), assign(x, 5.0)]),
                                         transition("start", "low", effects=[assign(x, 5.0), assign(x, 1.0)]),
                                         transition("low", "low")],
                            data=[data(x, 0.0)])
    save("twice", [component_type("Writer", "process")], [writer], eventually(x >= 5.0, 1.0))


def blink():
    """A lamp that is off for 3, on for 1, and so on. Under asap the time of each change is certain."""
    lamp = implementation("Lamp.impl", modes=[mode("off", "initial"), mode("on")],
                          transitions=[transition("off", "on", guard=x >= 3.0, effects=[assign(x, 0.0)]),
                                       transition("on", "off", guard=x >= 1.0, effects=[assign(x, 0.0)])],
                          data=[data(x, 0.0)])
    on, off = mode_is("", "on"), mode_is("", "off")
    off_at_once = probability(element("u", *bounds(0, 0.0), true(), atom(off)), threshold=1.0)
    save("blink", [component_type("Lamp", "device")], [lamp],
         eventually(on, 3.0),
         early=eventually(on, 2.9),
         between=eventually(on, 3.8, lower=3.2),
         elapsed=eventually(x >= 2.0, 10.0),
         left=until(element("false"), atom(on), 5.0),
         guarded=until(atom(off), atom(off), 5.0, lower=3.5),
         next=following(atom(off), 1.0),
         nested=probability(element("u", *bounds(0, 5.0), true(), element("and", atom(on), off_at_once))))


def tick():
    """Three ticks of 0.1 each."""
    count = integer("count")
    ticker = implementation("Ticker.impl", modes=[mode("ticks", "initial")],
                            transitions=[transition("ticks", "ticks", guard=x >= 0.1,
                                                    effects=[assign(x, 0.0), assign(count, count + 1)])],
                            data=[data(x, 0.0), data(count, 0)])
    save("tick", [component_type("Ticker", "device")], [ticker],
         eventually(count == 3, 0.3), later=eventually(count == 3, 0.300001))


def strategies():
    """A batch is heated, ready between 1 and 2 hours, and then waits up to 8 hours for one of three carriers."""
    batch = implementation(
        "Batch.impl",
        modes=[mode("heated", "initial", invariant=x <= 2.0), mode("ready", invariant=x <= 8.0), mode("delivered"),
               mode("spoilt", "error")],
        transitions=[transition("heated", "ready", guard=x >= 1.0, effects=[assign(x, 0.0)]),
                     *(transition("ready", "delivered", trigger=f"carrier{i}") for i in (1, 2, 3)),
                     transition("heated", "spoilt", trigger="outage"), transition("ready", "spoilt", trigger="outage")],
        data=[data(x, 0.0)])
    save("strategies",
         [component_type("Batch", "process", out_events=[error_event("outage", 0.2)] +
                         [out_event(f"carrier{i}", nonblocking=True) for i in (1, 2, 3)])], [batch],
         eventually(mode_is("", "spoilt"), 100.0))


if __name__ == "__main__":
    for write_model in (stopwatch, tank, bells, parent, shifts, signals, leftover, race, spare, guarded, stuck, order,
                        twice, blink, tick, strategies):
        write_model()
    # A question that is never decided: for walks through a model by hand.
    write(HERE / "walk.xml", properties(probability(element("u", *bounds(0, 1e300), true(), element("false")))))
