#!/usr/bin/env python3
"""Runs the commands that documents show, as a reader who pastes them, and compares what they print.

usage: run_documents.py --source ROOT --tool VORNRUN DOCUMENT...

A fence marked "sh" holds commands; all of a document run in one shell, one block after another. A fence marked "text"
right behind it shows the combined output of that block: "..." stands for any characters of a line, and alone on a line
for any lines. A block without such a fence must succeed in every command. Other fences are not run, and what a comment
"<!-- installed ... -->" keeps for the installed page is passed over.

The shell starts in a scratch copy of what a user has in the root of the tree; "./dev build" and "./dev demo" there use the
tool under test.
"""
import argparse
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

COPIED = ("docs", "examples", "schemas", "tools")
FENCE = re.compile(r"^```(\w*)[^\n]*\n(.*?)^```[ ]*$", re.MULTILINE | re.DOTALL)
INSTALLED = re.compile(r"^<!-- installed\n.*?^-->\n", re.MULTILINE | re.DOTALL)
TIME_LIMIT = 280  # seconds for one document
DEV = """#!/bin/sh
case $1 in
    build) echo "$PWD/build/release/bin/vornrun" ;;
    demo) exec examples/run-all build/release/bin/vornrun ;;
    *) echo "only ./dev build and ./dev demo are known here" >&2; exit 1 ;;
esac
"""


def blocks(text):
    """Pairs (commands, expected output or None), in the document's order."""
    text = INSTALLED.sub("", text)
    fences = [(match.group(1), match.group(2), match.start(), match.end()) for match in FENCE.finditer(text)]
    result = []
    for index, (kind, body, _, end) in enumerate(fences):
        if kind != "sh":
            continue
        follower = fences[index + 1] if index + 1 < len(fences) else None
        behind = follower is not None and follower[0] == "text" and not text[end:follower[2]].strip()
        result.append((body, follower[1] if behind else None))
    return result


def pattern(expected):
    """The regular expression that an expected output stands for."""
    parts = []
    for line in expected.splitlines():
        if line.strip() == "...":
            parts.append(r"(?:[^\n]*\n)*")
        else:
            parts.append(r"[^\n]*".join(re.escape(piece) for piece in line.rstrip().split("...")) + r"[ ]*\n")
    return re.compile("".join(parts))


def script(commands, folder):
    """One shell script that keeps the output of each block, and the commands that failed in it, in files of their own."""
    lines = ["set -o errtrace"]
    for index, block in enumerate(commands):
        lines += [f"exec >'{folder}/{index}.output' 2>&1", f"trap 'echo \"$BASH_COMMAND\" >>\"{folder}/{index}.failed\"' ERR",
                  block.rstrip("\n")]
    return "\n".join(lines) + f"\ntouch '{folder}/end'\n"


def scratch_copy(source, tool, folder):
    for name in COPIED:
        if (source / name).is_dir():
            shutil.copytree(source / name, folder / name, ignore=shutil.ignore_patterns("__pycache__"))
    binaries = folder / "build" / "release" / "bin"
    binaries.mkdir(parents=True)
    (binaries / "vornrun").symlink_to(tool)
    (folder / "dev").write_text(DEV)
    (folder / "dev").chmod(0o755)
    return binaries


def read(path):
    return path.read_text(errors="replace") if path.exists() else ""


def complaints(document, source, tool):
    """What a reader of this document would see otherwise than it says, one text each."""
    pairs = blocks(document.read_text())
    if not pairs:
        return []
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary).resolve()
        tree, kept = folder / "tree", folder / "kept"
        kept.mkdir()
        binaries = scratch_copy(source, tool, tree)
        environment = {"PATH": f"{binaries}:{os.environ['PATH']}", "HOME": str(folder), "LC_ALL": "C.UTF-8", "TZ": "UTC",
                       "PYTHONDONTWRITEBYTECODE": "1"}
        try:
            subprocess.run(["bash", "-c", script([commands for commands, _ in pairs], kept)], cwd=tree, env=environment,
                           stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=TIME_LIMIT, check=False)
        except subprocess.TimeoutExpired:
            return [f"not finished within {TIME_LIMIT} seconds"]
        result = []
        for index, (commands, expected) in enumerate(pairs):
            output, failed = read(kept / f"{index}.output"), read(kept / f"{index}.failed")
            if expected is None and failed:
                result.append(f"these commands fail:\n{failed}in the block\n{commands}with the output\n{output}")
            elif expected is not None:
                output = output if output.endswith("\n") or not output else output + "\n"
                if not pattern(expected).fullmatch(output):
                    difference = difflib.unified_diff(expected.splitlines(), output.splitlines(), "shown", "printed",
                                                      lineterm="")
                    result.append(f"the block\n{commands}prints otherwise:\n" + "\n".join(difference))
        if not (kept / "end").exists():
            result.append("the shell ended before the last block did")
        return result


def main():
    parser = argparse.ArgumentParser(description="Runs the commands that documents show.")
    parser.add_argument("--source", type=pathlib.Path, required=True, help="root of the tree")
    parser.add_argument("--tool", type=pathlib.Path, required=True, help="the vornrun executable")
    parser.add_argument("documents", type=pathlib.Path, nargs="+")
    arguments = parser.parse_args()
    found = 0
    for document in arguments.documents:
        for complaint in complaints(document, arguments.source.resolve(), arguments.tool.resolve()):
            found += 1
            print(f"{document}: {complaint}\n")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
