#!/usr/bin/env python3
"""Writes model.xml and the property files of the print queue into the folder of this script."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent))
from vornxml import *

CAPACITY = 5                                             # jobs in the printer, the one on paper among them
SENDS, PRINTED, JAMS, CLEARED = 0.4, 0.6, 0.02, 0.2      # per minute

jobs, refused, last = interval("jobs"), integer("refused"), enum("last")


def happened(name): return assign(last, enum_literal(name))


office_type = component_type("Office", "process", out_events=[error_event("sends", SENDS)])
office = implementation("Office.impl", modes=[mode("working", "initial")],
                        transitions=[transition("working", "working", "sends")])

printer_type = component_type("Printer", "device", in_events=[in_event("job")],
                              out_events=[error_event("printed", PRINTED), error_event("jams", JAMS),
                                          error_event("cleared", CLEARED)])


def receives(at):
    """A job that comes in the mode `at`, where jobs are waiting already: it joins them or is refused."""
    return [transition(at, at, "job", guard=jobs < CAPACITY, effects=[assign(jobs, jobs + 1), happened("accepted")]),
            transition(at, at, "job", guard=jobs >= CAPACITY,
                       effects=[assign(refused, refused + 1), happened("turned_away")])]


printer = implementation(
    "Printer.impl",
    modes=[mode("idle", "initial"), mode("printing"), mode("jammed", "error")],
    transitions=[transition("idle", "printing", "job", effects=[assign(jobs, 1), happened("accepted")]),
                 *receives("printing"), *receives("jammed"),
                 transition("printing", "printing", "printed", guard=jobs > 1,
                            effects=[assign(jobs, jobs - 1), happened("finished")]),
                 transition("printing", "idle", "printed", guard=jobs <= 1,
                            effects=[assign(jobs, 0), happened("finished")]),
                 transition("printing", "jammed", "jams", effects=[happened("paper_jam")]),
                 transition("jammed", "printing", "cleared", effects=[happened("jam_cleared")])],
    # `jobs` is a range, which starts at 0; nothing but the guards above keeps it between 0 and the capacity.
    data=[data(jobs), data(refused, 0, observable=True), data(last, "nothing")])

print_room_type = component_type("PrintRoom", "system")
print_room = implementation("PrintRoom.impl", modes=[mode("open", "initial")],
                            event_connections=[connection("office.sends", "printer.job")],
                            subcomponents=[subcomponent("office", "Office.impl"),
                                           subcomponent("printer", "Printer.impl")])

turned_away = enum("printer.last") == enum_literal("turned_away")
idle, empty = mode_is("printer.", "idle"), interval("printer.jobs") == 0

if __name__ == "__main__":
    here = pathlib.Path(__file__).resolve().parent
    write(here / "model.xml", model("office", [office_type, printer_type, print_room_type],
                                    [office, printer, print_room]))
    write(here / "properties.xml", properties(eventually(integer("printer.refused") >= 1, 60)))
    write(here / "properties-window.xml", properties(next_state(atom(turned_away), 30, lower=20)))
    write(here / "properties-consistent.xml",
          properties(until(true(), element("not", element("iff", atom(idle), atom(empty))), 60)))
