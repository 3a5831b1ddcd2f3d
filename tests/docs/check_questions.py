#!/usr/bin/env python3
"""Checks the list of main questions of the examples.

usage: check_questions.py ROOT

Each example has a line in examples/questions.txt. Its README has the question, its exact.py computes the probability.
"""
import pathlib
import re
import subprocess
import sys


def questions(text):
    """Example, question and exact value, all as written, of each line that is no comment."""
    return [tuple(field.strip() for field in line.split("|")) for line in text.splitlines()
            if line.strip() and not line.startswith("#")]


def computed(folder):
    """What exact.py prints for properties.xml."""
    run = subprocess.run([sys.executable, "-B", str(folder / "exact.py")], check=True, capture_output=True, text=True)
    values = re.findall(r"^properties\.xml +([\d.]+)$", run.stdout, re.MULTILINE)
    return values[0] if values else "nothing"


def faults_of(root):
    """A line of text for each fault."""
    rows = questions((root / "examples" / "questions.txt").read_text(encoding="utf-8"))
    folders = {path.parent.name for path in (root / "examples").glob("*/model.xml")}
    named = [row[0] for row in rows]
    faults = [f"{name}: this example is not in the list" for name in sorted(folders - set(named))]
    faults += [f"{name}: there is no such example" for name in sorted(set(named) - folders)]
    faults += [f"{name}: more than one line" for name in sorted(set(named)) if named.count(name) > 1]
    for name, question, exact in rows:
        if name not in folders:
            continue
        page = " ".join((root / "examples" / name / "README.md").read_text(encoding="utf-8").split()).lower()
        if question.lower() not in page:
            faults.append(f"{name}: its README does not ask: {question}")
        value = computed(root / "examples" / name)
        if value != exact:
            faults.append(f"{name}: the list has {exact}, exact.py computes {value}")
    return faults


def main(root):
    faults = faults_of(root)
    print("\n".join(faults) if faults else "all questions and exact values are right")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
