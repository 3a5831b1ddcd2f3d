#!/usr/bin/env python3
"""Checks the list of tests that `ctest -N` prints.

usage: check_listing.py --ctest CTEST --build BUILD --readme README

Fails when the line of a test does not fit a screen, when a name has other characters than words need, or ends in a bare
number, and when the number of tests that README shows is more than a twentieth off.
"""
import argparse
import pathlib
import re
import subprocess
import sys

COLUMNS = 120
TEST = re.compile(r"^ *Test +#\d+: (.*?)(?: \(Disabled\))?$", re.MULTILINE)
WORDS = re.compile(r"[\w./<>:-]+")
NUMBERED = re.compile(r"/\d+$")
SHOWN_COUNT = re.compile(r"tests failed out of (\d+)")


def faults_of_names(listing):
    """A line of text for each fault of a list as `ctest -N` prints it."""
    faults = []
    for line in listing.splitlines():
        match = TEST.match(line)
        if match is None:
            continue
        name = match.group(1)
        if len(line) > COLUMNS:
            faults.append(f"{name}: the line of this test has {len(line)} columns, more than {COLUMNS}")
        if not WORDS.fullmatch(name):
            faults.append(f"{name}: this name is more than words")
        if NUMBERED.search(name):
            faults.append(f"{name}: this name ends in a bare number; give the case a name")
    return faults


def faults_of_count(listing, readme):
    """What is wrong with the number of tests that the text of README shows."""
    count = len(TEST.findall(listing))
    if count == 0:
        return ["ctest lists no test"]
    shown = [int(number) for number in SHOWN_COUNT.findall(readme)]
    if not shown:
        return ["README shows no number of tests"]
    return [f"README shows {number} tests, there are {count}" for number in shown if abs(number - count) > count / 20]


def main():
    parser = argparse.ArgumentParser(description="Checks the list of tests.")
    parser.add_argument("--ctest", required=True, help="the program ctest")
    parser.add_argument("--build", required=True, help="folder of the build")
    parser.add_argument("--readme", type=pathlib.Path, required=True, help="the file README.md")
    arguments = parser.parse_args()
    listing = subprocess.run([arguments.ctest, "--test-dir", arguments.build, "-N"], check=True, capture_output=True,
                             text=True).stdout
    faults = faults_of_names(listing) + faults_of_count(listing, arguments.readme.read_text(encoding="utf-8"))
    print("\n".join(faults) if faults else f"{len(TEST.findall(listing))} tests, each with a name of words")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
