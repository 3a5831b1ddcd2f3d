#!/usr/bin/env python3
"""examples/run-all finds the tool in the tree and where it is installed, and shows question, estimate and exact value."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from build_under_test import SOURCE

TOOL = """#!/bin/sh
echo "$0" >>"$HOME/called"
echo '..d.'
echo 'Property holds with probability [{probability},{probability}]'
"""


class RunAll(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name).resolve()
        (self.root / "tree" / "examples").mkdir(parents=True)
        for name in ("run-all", "questions.txt"):
            shutil.copy(SOURCE / "examples" / name, self.root / "tree" / "examples" / name)

    def tool(self, folder, probability="0.2500000000"):
        (self.root / folder).mkdir(parents=True)
        path = self.root / folder / "vornrun"
        path.write_text(TOOL.format(probability=probability))
        path.chmod(0o755)
        return str(path)

    def run_all(self, *arguments):
        return subprocess.run([self.root / "tree" / "examples" / "run-all", *arguments], cwd=self.root,
                              env={"PATH": f"{self.root}/bin:{os.environ['PATH']}", "HOME": str(self.root)},
                              capture_output=True, text=True, check=False)

    def called(self):
        return set((self.root / "called").read_text().splitlines())

    def test_the_tool_named_is_asked(self):
        self.tool("bin")
        named = self.tool("elsewhere")
        self.assertEqual(self.run_all("elsewhere/vornrun").returncode, 0)
        self.assertEqual(self.called(), {named})

    def test_the_tool_of_the_tree_comes_before_that_of_the_path(self):
        self.tool("bin")
        built = self.tool("tree/build/release/bin")
        self.assertEqual(self.run_all().returncode, 0)
        self.assertEqual(self.called(), {built})

    def test_the_tool_of_the_path_is_asked_where_none_is_built(self):
        installed = self.tool("bin")
        self.assertEqual(self.run_all().returncode, 0)
        self.assertEqual(self.called(), {installed})

    def test_a_tool_that_is_not_there_is_said(self):
        run = self.run_all("nowhere/vornrun")
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn("nowhere/vornrun", run.stderr)

    def test_each_example_has_a_row_with_estimate_and_exact_value(self):
        self.tool("bin")
        rows = [line for line in self.run_all().stdout.splitlines() if " +- " in line and line[0].islower()]
        listed = [line for line in (SOURCE / "examples" / "questions.txt").read_text().splitlines() if line[0] != "#"]
        self.assertEqual(len(rows), len(listed))
        for row, line in zip(rows, listed):
            example, _, exact = (field.strip() for field in line.split("|"))
            # Two standard errors of 1000 traces with the share 0.25 are 2 sqrt(0.25 * 0.75 / 1000) = 0.0274.
            self.assertRegex(row, rf"^{example} .*\?  +0\.250 \+- 0\.027  {float(exact):.3f}$")

    def test_a_run_without_an_answer_ends_with_what_the_tool_says(self):
        self.tool("bin", probability="none")
        run = self.run_all()
        self.assertEqual(run.returncode, 1)
        self.assertIn("no answer for heated-tank", run.stderr)
        self.assertIn("Property holds with probability [none,none]", run.stderr)


if __name__ == "__main__":
    unittest.main()
