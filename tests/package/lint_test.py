#!/usr/bin/env python3
""".ci/lint-units reads as many sources at once as their names allow, and passes on what clang-tidy says. The compiler and
clang-tidy are replaced by scripts: a source "clashes" with those before it in which the same word follows `name`."""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from build_under_test import SOURCE

COMPILER = """#!{python}
import re, sys
unit, seen, status = sys.argv[-1], set(), 0
for source in re.findall('#include "(.*)"', open(unit).read()):
    for name in re.findall(r"name (\\w+)", open(source).read()):
        if name in seen:
            print(f"{{source}}:1:1: error: redefinition of '{{name}}'", file=sys.stderr)
            status = 1
        seen.add(name)
sys.exit(status)
"""
TIDY = """#!{python}
import re, sys
unit = sys.argv[sys.argv.index("--") - 1]
status = 0
for source in re.findall('#include "(.*)"', open(unit).read()):
    print("read", source.rpartition("/")[2], "in", unit.rpartition("/")[2])
    if "fault" in open(source).read():
        print(f"{{source}}:1:1: error: a fault [bugprone-fault]")
        status = 1
print("3 warnings generated.", file=sys.stderr)
sys.exit(status)
"""


class LintUnits(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name).resolve()
        for folder in (".ci", "programs", "build", "a", "b"):
            (self.root / folder).mkdir()
        shutil.copy(SOURCE / ".ci" / "lint-units", self.root / ".ci" / "lint-units")
        for name, text in (("clang++", COMPILER), ("clang-tidy", TIDY)):
            (self.root / "programs" / name).write_text(text.format(python=sys.executable))
            (self.root / "programs" / name).chmod(0o755)

    def lint(self, sources, files=None):
        """The status, and the lines that are no progress, of a run over these sources: from file to text."""
        for file, text in sources.items():
            (self.root / file).write_text(text)
        entries = [{"file": str(self.root / file), "directory": str(self.root), "command": f"c++ -c {file}"}
                   for file in sources]
        (self.root / "build" / "compile_commands.json").write_text(json.dumps(entries))
        run = subprocess.run([sys.executable, "-B", self.root / ".ci" / "lint-units", "--database", self.root / "build",
                              *(files or sources)], env={"PATH": f"{self.root / 'programs'}:{os.environ['PATH']}"},
                             capture_output=True, text=True, check=False)
        self.assertEqual(run.stderr, "")
        return run.returncode, [line for line in run.stdout.splitlines() if not line.startswith("[step]")]

    def test_sources_of_a_folder_are_read_at_once(self):
        self.assertEqual(self.lint({"a/One.cpp": "", "a/Two.cpp": ""}),
                         (0, ["read One.cpp in a-1.cpp", "read Two.cpp in a-1.cpp"]))

    def test_sources_of_two_folders_are_read_apart(self):
        self.assertEqual(sorted(self.lint({"a/One.cpp": "", "b/Two.cpp": ""})[1]),
                         ["read One.cpp in a-1.cpp", "read Two.cpp in b-1.cpp"])

    def test_a_source_whose_names_clash_is_read_apart(self):
        self.assertEqual(self.lint({"a/One.cpp": "name x", "a/Three.cpp": "", "a/Two.cpp": "name x"})[1],
                         ["read One.cpp in a-1.cpp", "read Three.cpp in a-1.cpp", "read Two.cpp in a-2.cpp"])

    def test_each_of_many_sources_that_clash_is_read_once(self):
        sources = {f"a/{number}.cpp": "name x" for number in range(4)}
        self.assertEqual(self.lint(sources)[1], [f"read {number}.cpp in a-{number + 1}.cpp" for number in range(4)])

    def test_a_fault_is_shown_and_ends_with_status_1(self):
        status, lines = self.lint({"a/One.cpp": "", "a/Two.cpp": "fault"})
        self.assertEqual(status, 1)
        self.assertIn(f"{self.root}/a/Two.cpp:1:1: error: a fault [bugprone-fault]", lines)

    def test_a_fault_in_a_source_that_clashes_is_shown_too(self):
        self.assertEqual(self.lint({"a/One.cpp": "name x", "a/Two.cpp": "name x fault"})[0], 1)

    def test_only_the_files_named_are_read(self):
        self.assertEqual(self.lint({"a/One.cpp": "", "a/Two.cpp": "fault"}, ["a/One.cpp"]),
                         (0, ["read One.cpp in a-1.cpp"]))


if __name__ == "__main__":
    unittest.main()
