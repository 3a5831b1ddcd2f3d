#!/usr/bin/env python3
"""The installed library serves a client: the program of docs/library.md builds against it, by CMake and by pkg-config,
and prints what the page shows."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from build_under_test import BUILD, CMAKE, SOURCE

PAGE = (SOURCE / "docs/library.md").read_text()
CONSUMER = pathlib.Path(__file__).parent / "consumer"


def fence(kind, following):
    """The first fence of that kind behind a text of the page."""
    return re.search(rf"^```{kind}\n(.*?)^```$", PAGE[PAGE.index(following):], re.MULTILINE | re.DOTALL).group(1)


class Library(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.folder = pathlib.Path(temporary.name)
        cls.prefix = cls.folder / "prefix"
        subprocess.run([CMAKE, "--install", BUILD, "--component", "library", "--prefix", cls.prefix], check=True,
                       stdout=subprocess.DEVNULL)
        cls.project = cls.folder / "project"
        shutil.copytree(CONSUMER, cls.project)
        cls.program = fence("cpp", "A complete program")
        (cls.project / "main.cpp").write_text(cls.program)
        cls.consumer = cls.folder / "build" / "consumer"
        for command in ([CMAKE, "-S", cls.project, "-B", cls.consumer.parent, f"-DCMAKE_PREFIX_PATH={cls.prefix}"],
                        [CMAKE, "--build", cls.consumer.parent]):
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL)

    def run_in(self, *command, **environment):
        run = subprocess.run([str(part) for part in command], cwd=SOURCE, env={**os.environ, **environment},
                             capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        return run.stdout

    def test_the_program_of_the_page_is_short(self):
        self.assertLessEqual(len(self.program.splitlines()), 40)

    def test_it_prints_what_the_page_shows(self):
        output = self.run_in(self.consumer, "examples/repairable-pump/model.xml",
                             "examples/repairable-pump/properties.xml")
        self.assertEqual(output, fence("text", "A complete program"))

    def test_it_builds_with_pkg_config(self):
        folder = next(self.prefix.glob("lib*/**/pkgconfig"))
        flags = self.run_in("pkg-config", "--cflags", "--libs", "vornrun", PKG_CONFIG_PATH=str(folder)).split()
        program = self.folder / "by-pkg-config"
        self.run_in(os.environ.get("CXX", "c++"), "-std=c++20", self.project / "main.cpp", "-o", program, *flags)
        self.run_in(program, "examples/repairable-pump/model.xml", "examples/repairable-pump/properties.xml")

    def test_it_says_what_is_wrong_with_a_file_and_nothing_else(self):
        run = subprocess.run([self.consumer, "missing.xml", "missing.xml"], cwd=SOURCE, capture_output=True, text=True)
        self.assertEqual(run.returncode, 1)
        self.assertEqual(run.stdout, "")
        self.assertRegex(run.stderr, r"^missing\.xml: error: [^\n]+\n$")


if __name__ == "__main__":
    unittest.main()
