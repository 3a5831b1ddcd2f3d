#!/usr/bin/env python3
"""The checks of the documents find what they are there to find."""
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent))
import check_links
import check_questions
import run_documents


class Scratch(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name).resolve()

    def document(self, text, name="page.md"):
        (self.root / name).write_text(text)
        return self.root / name


class RunDocuments(Scratch):
    def complaints(self, text):
        return run_documents.complaints(self.document(text), self.root, pathlib.Path("/bin/echo"))

    def test_shown_output_that_is_printed_passes(self):
        self.assertEqual(self.complaints("```sh\necho one\necho two >&2\n```\n\n```text\none\ntwo\n```\n"), [])

    def test_other_output_is_found(self):
        self.assertEqual(len(self.complaints("```sh\necho one\n```\n```text\ntwo\n```\n")), 1)

    def test_missing_output_is_found(self):
        self.assertEqual(len(self.complaints("```sh\ntrue\n```\n```text\ntwo\n```\n")), 1)

    def test_dots_stand_for_characters_of_one_line_only(self):
        self.assertEqual(self.complaints("```sh\necho one two three\n```\n```text\none ... three\n```\n"), [])
        self.assertEqual(len(self.complaints("```sh\necho one; echo three\n```\n```text\none...three\n```\n")), 1)

    def test_a_line_of_dots_stands_for_lines(self):
        self.assertEqual(self.complaints("```sh\nseq 9\n```\n```text\n1\n...\n9\n```\n"), [])

    def test_a_block_without_output_must_succeed_in_every_command(self):
        self.assertEqual(self.complaints("```sh\ntrue\n```\n"), [])
        self.assertEqual(len(self.complaints("```sh\nfalse\ntrue\n```\n")), 1)

    def test_blocks_share_one_shell(self):
        self.assertEqual(self.complaints("```sh\nx=5; mkdir a; cd a\n```\n```sh\necho $x\nbasename $PWD\n```\n"
                                         "```text\n5\na\n```\n"), [])

    def test_here_documents_work(self):
        self.assertEqual(self.complaints("```sh\ncat <<'END'\n$x\nEND\n```\n```text\n$x\n```\n"), [])

    def test_other_fences_are_not_run(self):
        self.assertEqual(self.complaints("```shell\nfalse\n```\n```xml\n<a/>\n```\n"), [])

    def test_a_shell_that_ends_early_is_found(self):
        self.assertEqual(len(self.complaints("```sh\nexit 0\n```\n```sh\ntrue\n```\n")), 1)

    def test_the_tool_is_on_the_path_and_dev_build_names_it(self):
        self.assertEqual(self.complaints("```sh\nvornrun hello\n./dev build\n```\n"
                                         "```text\nhello\n.../build/release/bin/vornrun\n```\n"), [])


class CheckLinks(Scratch):
    def found(self, text):
        self.document("# Other page\n## What `it` does\n", "other.md")
        (self.root / "docs").mkdir(exist_ok=True)
        self.document(text)
        return check_links.main(self.root)

    def test_links_that_exist_pass(self):
        self.assertEqual(self.found("# A\n[a](other.md) [b](other.md#what-it-does) [c](#a) [d](https://example.org)\n"), 0)

    def test_a_link_to_nowhere_is_found(self):
        self.assertEqual(self.found("[a](another.md)"), 1)

    def test_a_link_to_a_missing_heading_is_found(self):
        self.assertEqual(self.found("[a](other.md#nothing)"), 1)

    def test_a_missing_path_is_found(self):
        self.assertEqual(self.found("`docs/nothing`"), 1)

    def test_a_missing_file_name_is_found(self):
        self.assertEqual(self.found("`nothing.cpp`"), 1)

    def test_a_file_that_a_command_of_the_page_writes_passes(self):
        self.assertEqual(self.found("`model.xml`\n```sh\ncat >model.xml\n```\n"), 0)


class CheckQuestions(Scratch):
    def setUp(self):
        super().setUp()
        (self.root / "examples" / "pump").mkdir(parents=True)
        self.document("", "examples/pump/model.xml")
        self.document("The main question:\nDoes the\nstation run dry?\n", "examples/pump/README.md")
        self.document('print("properties.xml  0.25")\n', "examples/pump/exact.py")

    def found(self, rows):
        self.document("# A comment.\n" + rows, "examples/questions.txt")
        return len(check_questions.faults_of(self.root))

    def test_a_question_and_value_as_in_the_example_pass(self):
        self.assertEqual(self.found("pump | does the station run dry? | 0.25\n"), 0)

    def test_another_question_is_found(self):
        self.assertEqual(self.found("pump | does the pump break? | 0.25\n"), 1)

    def test_another_value_is_found(self):
        self.assertEqual(self.found("pump | does the station run dry? | 0.26\n"), 1)

    def test_a_missing_line_is_found(self):
        self.assertEqual(self.found(""), 1)

    def test_a_line_too_many_is_found(self):
        row = "pump | does the station run dry? | 0.25\n"
        self.assertEqual(self.found(row + row), 1)
        self.assertEqual(self.found(row + row.replace("pump", "press")), 1)


if __name__ == "__main__":
    unittest.main()
