#!/usr/bin/env python3
"""The manual page and the completion know the options that the tool takes, all of them and no others."""
import os
import re
import shutil
import subprocess
import tempfile
import unittest

from build_under_test import SOURCE, TOOL, VERSION

MANUAL = SOURCE / "docs/vornrun.1"
COMPLETION = SOURCE / "tools/simulator/vornrun.bash-completion"
# --help leaves these out.
HIDDEN = {("-f", "--input-file", True), ("-p", "--property-file", True)}


def options_of_the_tool():
    """Triples: short name or None, long name, whether it takes a value."""
    text = subprocess.run([TOOL, "--help"], capture_output=True, text=True, check=False).stdout
    shown = re.findall(r"^  (?:(-\w) \[ )?(--[a-z-]+)(?: \])?( arg)?", text, re.MULTILINE)
    return {(short or None, long, bool(value)) for short, long, value in shown} | HIDDEN


def options_of_the_manual():
    text = MANUAL.read_text().replace(r"\-", "-")
    entries = re.findall(r'^\.TP\n\.BR? (?:(-\w) ?", " )?(--[a-z-]+)( " \\fI\w+"?)?$', text, re.MULTILINE)
    return {(short or None, long, bool(value)) for short, long, value in entries}


def completions(*words):
    """What the completion offers for the last of these words behind the command."""
    script = 'source "$0"; COMP_WORDS=(vornrun "$@"); COMP_CWORD=$#; _vornrun; printf "%s\\n" "${COMPREPLY[@]}"'
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.run(["bash", "--norc", "-c", script, COMPLETION, *words], cwd=folder, capture_output=True,
                             text=True, check=True)
    return set(run.stdout.split())


def accepts(*arguments):
    """Whether the tool takes these options. It looks at their values before it shows the help."""
    return subprocess.run([TOOL, *arguments, "--help"], capture_output=True, check=False).stdout != b""


class Options(unittest.TestCase):
    def test_help_shows_some(self):
        self.assertIn(("-l", "--level", True), options_of_the_tool())
        self.assertIn((None, "--disallowdeadlock", False), options_of_the_tool())

    def test_the_manual_has_an_entry_for_each(self):
        self.assertEqual(options_of_the_manual(), options_of_the_tool())

    def test_the_manual_speaks_of_no_other(self):
        names = {name for short, long, _ in options_of_the_tool() for name in (short, long)}
        text = MANUAL.read_text().replace(r"\-", "-")
        self.assertEqual(set(re.findall(r"(?<![\w-])--[a-z][a-z-]*|(?<![\w-])-[a-z]\b", text)) - names, set())

    def test_the_completion_offers_each(self):
        names = {name for short, long, _ in options_of_the_tool() for name in (short, long) if name}
        self.assertEqual(completions("-"), names)

    def test_the_completion_offers_no_option_where_a_value_stands(self):
        for short, long, takes_value in options_of_the_tool():
            for name in filter(None, (short, long)):
                with self.subTest(name):
                    self.assertEqual("--help" in completions(name, "--h"), not takes_value)


class Words(unittest.TestCase):
    def check(self, option, refused):
        offered = completions(option, "")
        self.assertTrue(offered)
        self.assertFalse(accepts(option, refused))
        for word in offered:
            with self.subTest(word):
                self.assertTrue(accepts(option, word))
                self.assertRegex(MANUAL.read_text(), rf"(?m)^\.BR? {word}( [,.])?$")
        return offered

    def test_those_of_the_strategy_are_taken_and_described(self):
        offered = self.check("--strategy", "lazy")
        shown = re.search(r"Strategy to use \(([^)]*)\)", self.help_text())[1].split(", ")
        self.assertEqual(offered, {*shown, "event"})

    def test_those_of_the_level_are_taken_and_described(self):
        offered = self.check("--level", "loud")
        shown = re.search(r"Logging level \(([^)]*)\)", self.help_text())[1].split(", ")
        self.assertEqual(offered, set(shown))

    @staticmethod
    def help_text():
        return " ".join(subprocess.run([TOOL, "--help"], capture_output=True, text=True, check=False).stdout.split())


class Manual(unittest.TestCase):
    def test_it_is_that_of_this_version(self):
        self.assertRegex(MANUAL.read_text().splitlines()[0], rf'^\.TH VORNRUN 1 \d{{4}}-\d\d-\d\d "vornrun {VERSION}"')

    @unittest.skipUnless(shutil.which("man"), "no man here")
    def test_man_renders_it_without_warnings(self):
        run = subprocess.run(["man", "--warnings", "./vornrun.1"], cwd=MANUAL.parent, capture_output=True, text=True,
                             env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80"}, check=True)
        self.assertEqual(run.stderr, "")
        self.assertIn("SEE ALSO", run.stdout)

    @unittest.skipUnless(shutil.which("mandoc"), "no mandoc here")
    def test_mandoc_finds_no_fault(self):
        run = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", MANUAL], capture_output=True, text=True,
                             check=False)
        self.assertEqual(run.stdout + run.stderr, "")


if __name__ == "__main__":
    unittest.main()
