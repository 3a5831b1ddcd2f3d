#!/usr/bin/env python3
"""`cmake --install` puts each file of the tool where it belongs and nothing else, and what it has put there works."""
import os
import pathlib
import subprocess
import tempfile
import unittest

from build_under_test import BUILD, CMAKE, SOURCE, smallest_example

DOCUMENTS = pathlib.Path("share/doc/vornrun")
PROGRAMS = {pathlib.Path("bin/vornrun"), pathlib.Path("share/vornrun/render-topologies")}


def scripts():
    return {DOCUMENTS / path for path in below("docs") | below("examples") if os.access(SOURCE / path, os.X_OK)}


def below(folder, pattern="*"):
    return {path.relative_to(SOURCE) for path in (SOURCE / folder).rglob(pattern)
            if path.is_file() and "__pycache__" not in path.parts and not path.name.endswith("_output.txt")}


def expected_files():
    data = {pathlib.Path("share/man/man1/vornrun.1"), pathlib.Path("share/bash-completion/completions/vornrun")}
    data |= {DOCUMENTS / name for name in ("README.md", "CHANGELOG.md", "copyright")}
    data |= {DOCUMENTS / path for path in (below("docs") | below("examples")) if path.name != "vornrun.1"}
    data |= {pathlib.Path("share/vornrun") / path for path in below("schemas", "*.xsd")}
    return PROGRAMS | data


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.prefix = pathlib.Path(temporary.name) / "prefix"
        subprocess.run([CMAKE, "--install", BUILD, "--component", "tool", "--prefix", cls.prefix], check=True,
                       stdout=subprocess.DEVNULL)
        cls.files = {path.relative_to(cls.prefix) for path in cls.prefix.rglob("*") if path.is_file()}

    def test_the_files_are_those_that_belong_there(self):
        self.assertEqual(sorted(map(str, self.files)), sorted(map(str, expected_files())))

    def test_programs_and_scripts_and_only_they_are_executable(self):
        self.assertEqual({path for path in self.files if os.access(self.prefix / path, os.X_OK)}, PROGRAMS | scripts())

    def test_the_installed_pages_speak_of_the_installed_program(self):
        self.assertIn("<!-- source tree -->", (SOURCE / "README.md").read_text())
        for page in (self.prefix / DOCUMENTS).rglob("*.md"):
            text = page.read_text()
            self.assertNotIn("<!-- source tree -->", text, page)
            self.assertNotIn("<!-- installed", text, page)

    def test_the_installed_tool_runs_an_installed_example(self):
        model, properties = smallest_example(self.prefix / DOCUMENTS / "examples")
        run = subprocess.run([self.prefix / "bin/vornrun", "--seed", "1", "--numtraces", "2", "--level", "warn", model,
                              properties], cwd=self.prefix, capture_output=True, text=True, check=True)
        self.assertRegex(run.stdout, r"\nProperty holds with probability \[[01]\.\d{10},[01]\.\d{10}\]\n$")


if __name__ == "__main__":
    unittest.main()
