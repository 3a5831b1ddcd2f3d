#!/usr/bin/env python3
"""The script that makes installed pages speak of the installed program takes out and puts in what it should."""
import pathlib
import subprocess
import tempfile
import unittest

from build_under_test import CMAKE, SOURCE


class InstalledPages(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name)

    def run_script(self, text):
        """The status of the script, and what it makes of a page with this text."""
        page = self.root / "docs" / "page.md"
        page.parent.mkdir(exist_ok=True)
        page.write_text(text)
        run = subprocess.run([CMAKE, f"-DPAGES={self.root}", "-P", SOURCE / "cmake" / "InstalledPages.cmake"],
                             capture_output=True, check=False)
        return run.returncode, page.read_text()

    def test_a_page_without_marks_stays_as_it_is(self):
        text = "# A; [b] ${c} \\d\n\n<!-- a comment -->\n"
        self.assertEqual(self.run_script(text), (0, text))

    def test_what_is_for_the_source_tree_goes(self):
        self.assertEqual(self.run_script("one\n<!-- source tree -->\n./dev build\n<!-- installed\n-->\ntwo\n"),
                         (0, "one\ntwo\n"))

    def test_what_is_for_the_installed_page_comes_in_its_place(self):
        self.assertEqual(self.run_script("<!-- source tree -->\na;b\n<!-- installed\nc;[d]\n-->\nend\n"),
                         (0, "c;[d]\nend\n"))

    def test_several_places_of_a_page_change(self):
        place = "<!-- source tree -->\na\n<!-- installed\nb\n-->\n"
        self.assertEqual(self.run_script(f"1\n{place}2\n{place}3\n"), (0, "1\nb\n2\nb\n3\n"))

    def test_a_place_without_its_other_lines_is_a_fault(self):
        self.assertNotEqual(self.run_script("<!-- source tree -->\na\n")[0], 0)
        self.assertNotEqual(self.run_script("<!-- source tree -->\na\n<!-- installed\nb\n")[0], 0)


if __name__ == "__main__":
    unittest.main()
