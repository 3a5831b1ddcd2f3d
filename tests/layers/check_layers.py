#!/usr/bin/env python3
"""Checks that includes point from upper layers to lower ones.

usage: check_layers.py [ROOT]

Reads the include lines of all headers and sources in SOURCES and fails, with file, line and include, for

  - an include of a layer that the including layer may not see, by the table below;
  - an include of the project that names no file, or a file outside the layers;
  - a folder with headers or sources that is in no layer;
  - a circle of includes among files.

The table lists the layers from the lowest to the highest, and each sees only layers before it. So a circle among folders
always has an include in a wrong direction, and is reported as that.
"""
import pathlib
import re
import sys

SOURCES = ("vornrun", "tools")
SYNTAX = "vornrun/datastructures/vorn/syntax"
REALISATION = "vornrun/datastructures/vorn/realisation"
SIMULATORS = "vornrun/algorithms/simulators"
MODEL = ("base", "syntax", "valuations", "realisation")

# Name, folders (without the folders below them), and the layers that it may see besides itself. The parser and the
# simulators do not know each other: what is parsed is run by the layers above both.
LAYERS = (
    ("base", ("vornrun",), ()),
    ("syntax", (SYNTAX, f"{SYNTAX}/expressions"), ("base",)),
    ("valuations", (f"{REALISATION}/valuations",), ("base", "syntax")),
    ("realisation", (REALISATION,), ("base", "syntax", "valuations")),
    ("vornconstructor", ("vornrun/algorithms/vornconstructor",), MODEL),
    ("eda", ("vornrun/datastructures/eda",), MODEL),
    ("property", ("vornrun/datastructures/property",), (*MODEL, "vornconstructor", "eda")),
    ("random", (f"{SIMULATORS}/random",), ("base", "syntax")),
    ("steps", (f"{SIMULATORS}/steps",), (*MODEL, "eda", "property", "random")),
    ("strategies", (f"{SIMULATORS}/strategies",), (*MODEL, "eda", "property", "random", "steps")),
    ("simulators", (SIMULATORS,), (*MODEL, "vornconstructor", "eda", "property", "random", "steps", "strategies")),
    ("parser", ("vornrun/algorithms/parser",), (*MODEL, "vornconstructor", "property")),
    ("api", ("vornrun/api",), (*MODEL, "vornconstructor", "eda", "property", "random", "steps", "strategies",
                               "simulators", "parser")),
    ("tool", ("tools/simulator",), (*MODEL, "vornconstructor", "eda", "property", "random", "steps", "strategies",
                                    "simulators", "parser", "api")),
)

INCLUDE = re.compile(r"""^[ \t]*#[ \t]*include[ \t]*(?:"([^"\n]+)"|<([^>\n]+)>)""", re.MULTILINE)
BLOCK_COMMENT = re.compile(r"/\*.*?\*/", re.DOTALL)


def check_table():
    """The table itself is in order: each layer sees only layers above it in the list."""
    known = set()
    for name, _, visible in LAYERS:
        assert known.issuperset(visible), f"the layer {name} sees one that is not below it"
        known.add(name)


def sources_of(root):
    """All headers and sources, as paths relative to `root`."""
    return sorted(path.relative_to(root).as_posix() for folder in SOURCES for path in (root / folder).rglob("*")
                  if path.suffix in (".h", ".cpp") and path.is_file())


def includes_of(root, file):
    """(line, include as written, file of the project or None) of each include that belongs to the project.

    Relative includes do too; those of other libraries are left out."""
    text = (root / file).read_text(encoding="utf-8")
    text = BLOCK_COMMENT.sub(lambda comment: "\n" * comment.group().count("\n"), text)
    for match in INCLUDE.finditer(text):
        written = match.group(1) or match.group(2)
        line = text.count("\n", 0, match.start(1) if match.group(1) else match.start(2)) + 1
        beside = (root / file).parent / written
        if match.group(1) and beside.is_file() and root in beside.resolve().parents:
            yield line, written, beside.resolve().relative_to(root).as_posix()
        elif (root / written).is_file():
            yield line, written, pathlib.PurePath(written).as_posix()
        elif written.split("/")[0] in SOURCES:
            yield line, written, None


def folder_of(file):
    return file.rpartition("/")[0]


def circles(includes):
    """One list of files for each circle found by a walk along the includes."""
    found, state = [], {}
    for start in sorted(includes):
        if start in state:
            continue
        state[start] = "open"
        path, pending = [start], [iter(includes[start])]
        while path:
            target = next(pending[-1], None)
            if target is None:
                state[path.pop()] = "closed"
                pending.pop()
            elif state.get(target) == "open":
                found.append(path[path.index(target):] + [target])
            elif target not in state:
                state[target] = "open"
                path.append(target)
                pending.append(iter(includes.get(target, ())))
    return found


def faults_of(root):
    """A line of text for each fault of the tree below `root`."""
    layer_of = {folder: (name, {name, *visible}) for name, folders, visible in LAYERS for folder in folders}
    files = sources_of(root)
    faults = [f"{folder}: this folder is in no layer" for folder in sorted({folder_of(file) for file in files})
              if folder not in layer_of]
    targets = {}
    for file in files:
        name, visible = layer_of.get(folder_of(file), (None, set()))
        targets[file] = []
        for line, written, target in includes_of(root, file):
            fault = None
            if target is None:
                fault = "no such file"
            elif folder_of(target) not in layer_of:
                fault = "this file is in no layer"
            elif name is not None and layer_of[folder_of(target)][0] not in visible:
                fault = f"the layer {name} may not see the layer {layer_of[folder_of(target)][0]}"
            if fault:
                faults.append(f'{file}:{line}: include of "{written}": {fault}')
            if target is not None:
                targets[file].append(target)
    faults += [f"{circle[0]}: a circle of includes: {' > '.join(circle)}" for circle in circles(targets)]
    if not files:
        faults.append(f"{root}: no headers and no sources in {' and '.join(SOURCES)}")
    return faults


def main():
    check_table()
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parents[2]).resolve()
    faults = faults_of(root)
    print("\n".join(faults) if faults else "all includes point to lower layers")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
