#!/usr/bin/env python3
"""The script that draws the topologies. A stand-in for dot, which may be missing, shows what it is given."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from build_under_test import SOURCE, TOOL, smallest_example

SCRIPT = SOURCE / "tools/topology/render-topologies"
EVENTS = ('digraph EC {\n 1[label="tick" color="green"]\n 2[label="tick" color="red"]\n'
          '1->2[ style=dotted label="[3] -> [7] (event port clock.tick -> lamp.tick;)" color=red]\n'
          '2->1[ color=green]\n}\n')
FLOWS = 'digraph EC {\n 1[label="a := b" color=green];\n 2[label="c := a" color=red];\n1->2\n}\n'
SHOWS_ITS_INPUT = '#!/bin/sh\necho "$@"\nexec cat\n'
FAILS = '#!/bin/sh\necho "out of ink" >&2\nexit 3\n'


class Dumps(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        self.write(EVENTS, FLOWS)

    def write(self, events=None, flows=None):
        for name, text in (("EC_output.txt", events), ("DD_output.txt", flows)):
            if text is not None:
                (self.folder / name).write_text(text)

    def render(self, *arguments, dot=SHOWS_ITS_INPUT):
        """Runs the script with this text as the program dot; with none if it is None, with Graphviz' if it is ""."""
        programs = self.folder / "bin"
        programs.mkdir(exist_ok=True)
        if dot:
            (programs / "dot").write_text(dot)
            (programs / "dot").chmod(0o755)
        path = str(programs) if dot is None else f"{programs}:{os.environ['PATH']}"
        return subprocess.run([sys.executable, "-B", SCRIPT, *arguments], cwd=self.folder,
                              env={**os.environ, "PATH": path}, capture_output=True, text=True, check=False)

    def picture(self, name):
        return (self.folder / name).read_text()

    def assert_fault(self, run, *texts):
        self.assertEqual(run.returncode, 1)
        for text in texts:
            self.assertIn(text, run.stderr)
        self.assertNotIn("Traceback", run.stderr)


class Pictures(Dumps):
    def test_both_dumps_become_pictures_beside_them(self):
        run = self.render()
        self.assertEqual((run.returncode, run.stderr, run.stdout), (0, "", "EC_output.svg\nDD_output.svg\n"))
        self.assertTrue(self.picture("EC_output.svg").startswith("-Tsvg\ndigraph EC_output {"))
        self.assertIn('1 [label="a := b" color=green3', self.picture("DD_output.svg"))
        self.assertIn("1->2 [", self.picture("DD_output.svg"))

    def test_edges_keep_what_they_say(self):
        self.render()
        edges = [line for line in self.picture("EC_output.svg").splitlines() if "->" in line.split(" [")[0]]
        self.assertEqual(len(edges), 2)
        self.assertIn("style=dotted", edges[0])
        self.assertIn("color=red", edges[0])
        self.assertIn(r"[3] -> [7] (event port clock.tick", edges[0])
        self.assertIn("color=green", edges[1])
        self.assertNotIn("style", edges[1])

    def test_format_and_folders_can_be_chosen(self):
        run = self.render("-T", "png", "-o", "a/b", str(self.folder))
        self.assertEqual(run.stdout, "a/b/EC_output.png\na/b/DD_output.png\n")
        self.assertTrue(self.picture("a/b/EC_output.png").startswith("-Tpng\n"))

    def test_other_formats_are_refused(self):
        self.assertEqual(self.render("-T", "bmp").returncode, 2)

    def test_marks_in_labels_are_taken_as_they_are(self):
        self.write(flows='digraph EC {\n 1[label="say "hi" \\ to {a|b}" color=green];\n}\n')
        self.assertEqual(self.render().returncode, 0)
        self.assertIn(r'"say \"hi\" \\ to {a|b}"', self.picture("DD_output.svg"))

    def test_a_model_without_flows_has_an_empty_picture(self):
        self.write(flows="digraph EC {\n}\n")
        self.assertEqual(self.render().returncode, 0)

    def test_a_missing_dump_is_named_and_the_other_rendered(self):
        (self.folder / "EC_output.txt").unlink()
        run = self.render()
        self.assert_fault(run, "no EC_output.txt; vornrun writes it into its current directory with --strategy input")
        self.assertEqual(run.stdout, "DD_output.svg\n")

    def test_a_missing_folder_is_named(self):
        self.assert_fault(self.render("nowhere"), "no nowhere/EC_output.txt", "no nowhere/DD_output.txt")

    def test_a_dump_that_is_cut_short_is_refused(self):
        self.write(events=EVENTS[:-2], flows="")
        self.assert_fault(self.render(), "EC_output.txt is not complete", "DD_output.txt does not begin as")

    def test_a_line_that_is_none_of_the_tools_is_named(self):
        self.write(flows="digraph EC {\nrank=same;\n}\n")
        self.assert_fault(self.render(), "DD_output.txt, line 2: neither a node nor an edge", "rank=same;")

    def test_a_missing_dot_is_named_with_its_cure(self):
        self.assert_fault(self.render(dot=None), "dot is missing", "apt-get install graphviz")

    def test_a_fault_of_dot_is_passed_on_and_leaves_no_picture(self):
        self.assert_fault(self.render(dot=FAILS), "dot fails on EC_output.txt: out of ink")
        self.assertFalse((self.folder / "EC_output.svg").exists())

    def test_a_folder_that_cannot_be_made_is_named(self):
        self.assert_fault(self.render("-o", "EC_output.txt/pictures"), "EC_output.txt")

    def test_help_is_there_without_dot(self):
        run = self.render("--help", dot=None)
        self.assertEqual(run.returncode, 0)
        self.assertIn("EC_output.txt and DD_output.txt", " ".join(run.stdout.split()))


class PicturesOfAModel(Dumps):
    def dump(self):
        """The dumps of a dialogue that ends at its first question."""
        model, properties = smallest_example(SOURCE / "examples")
        subprocess.run([TOOL, "--strategy", "input", "--numtraces", "1", model, properties], input=b"q\n",
                       cwd=self.folder, check=True, stdout=subprocess.DEVNULL)

    def test_what_the_tool_writes_is_understood(self):
        (self.folder / "EC_output.txt").unlink()
        (self.folder / "DD_output.txt").unlink()
        self.dump()
        run = self.render()
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    @unittest.skipUnless(shutil.which("dot"), "no dot here")
    def test_dot_draws_it(self):
        self.dump()
        self.assertEqual(self.render(dot="").returncode, 0)
        self.assertIn("<svg", self.picture("EC_output.svg"))
        self.assertIn("<svg", self.picture("DD_output.svg"))

    @unittest.skipUnless(shutil.which("dot"), "no dot here")
    def test_dot_draws_any_label(self):
        self.write(EVENTS, 'digraph EC {\n 1[label="say "hi" \\ to {a|b}" color=green];\n}\n')
        self.assertEqual(self.render(dot="").stderr, "")
        self.assertIn("say &quot;hi&quot; \\ to {a|b}", self.picture("DD_output.svg"))


if __name__ == "__main__":
    unittest.main()
