#!/usr/bin/env python3
"""Checks that what documents point at exists: links, headings behind "#", and file names in code quotes.

usage: check_links.py ROOT

A path in code quotes that starts with a folder of the tree must exist, from the root or from the document; a bare file
name must be that of some file in the tree, or be written by a command that the same document shows.
"""
import glob
import pathlib
import re
import sys

FENCE = re.compile(r"^```.*?^```[ ]*$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
CODE = re.compile(r"`([^`\n]+)`")
FILE_NAME = re.compile(r"^[\w.-]+\.(?:cpp|h|py|xml|xsd|md|svg|png|cmake|properties|txt|json)$")
# The tool writes these, or a user does.
NOT_IN_THE_TREE = {"EC_output.txt", "DD_output.txt", "CMakeCache.txt", "compile_commands.json"}
SKIPPED = {"build", ".git", "__pycache__"}


def files_of(root):
    return [path for path in root.rglob("*") if path.is_file() and not SKIPPED & set(path.relative_to(root).parts)]


def anchor(heading):
    """The identifier that a heading gets where Markdown is shown."""
    plain = re.sub(r"[`*_]|\[([^\]]*)\]\([^)]*\)", r"\1", heading) if "[" in heading else re.sub(r"[`*]", "", heading)
    return re.sub(r"[^\w\- ]", "", plain.strip().lower()).replace(" ", "-")


def anchors(document):
    text = FENCE.sub("", document.read_text())
    return {anchor(match) for match in re.findall(r"^#+ (.*)$", text, re.MULTILINE)}


def broken_links(document, text):
    for target in LINK.findall(text):
        if re.match(r"^[a-z]+:", target):
            continue
        path, _, heading = target.partition("#")
        linked = (document.parent / path).resolve() if path else document
        if not linked.exists():
            yield f"link to {target}: no such file"
        elif heading and linked.suffix == ".md" and heading not in anchors(linked):
            yield f"link to {target}: no such heading"


def missing_files(root, document, text, shown, folders, names):
    for code in CODE.findall(text):
        code = code.removeprefix("./").rstrip("/")
        if re.search(r"[\s<>{}$|=\"']", code):
            continue
        if code.split("/")[0] in folders and "/" in code:
            if not any(glob.glob(str(base / code)) for base in (root, document.parent)):
                yield f"`{code}`: no such file"
        elif FILE_NAME.match(code) and code not in names | NOT_IN_THE_TREE and code not in shown:
            yield f"`{code}`: no file of this name"


def main(root):
    files = files_of(root)
    names = {path.name for path in files}
    folders = {path.name for path in root.iterdir() if path.is_dir()} - SKIPPED
    found = 0
    for document in sorted(path for path in files if path.suffix == ".md"):
        text = document.read_text()
        prose = FENCE.sub("", text)
        shown = "\n".join(FENCE.findall(text))
        for complaint in [*broken_links(document, prose), *missing_files(root, document, prose, shown, folders, names)]:
            found += 1
            print(f"{document.relative_to(root)}: {complaint}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
