#!/usr/bin/env python3
"""The check of the layers finds each kind of fault that it is there to find."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("check_layers.py")
# A small tree in order. A circle between a header and its source is none, and other libraries do not count.
TREE = {
    "vornrun/Log.h": "#include <string>\n",
    "vornrun/datastructures/vorn/syntax/VornMode.h": '#include "vornrun/Log.h"\n',
    "vornrun/datastructures/vorn/syntax/expressions/VornValue.h": '#include "vornrun/Log.h"\n',
    "vornrun/datastructures/property/CSLFormula.h": '#include "vornrun/datastructures/vorn/syntax/VornMode.h"\n',
    "vornrun/algorithms/simulators/Simulator.h":
        "// A comment.\n\n#include <xercesc/dom.hpp>\n"
        '#include "vornrun/datastructures/property/CSLFormula.h"\n',
    "vornrun/algorithms/simulators/Simulator.cpp": '#include "Simulator.h"\n',
    "vornrun/algorithms/parser/VornXmlParser.h": '#include "vornrun/datastructures/property/CSLFormula.h"\n',
    "tools/simulator/main.cpp":
        '#include "vornrun/algorithms/parser/VornXmlParser.h"\n'
        '#include "vornrun/algorithms/simulators/Simulator.h"\n',
}


class Layers(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name)
        for name, text in TREE.items():
            self.write(name, text)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def add(self, name, line):
        """Puts one more line behind those of a file."""
        self.write(name, TREE.get(name, "") + line + "\n")

    def run_check(self):
        run = subprocess.run([sys.executable, "-B", str(CHECK), str(self.root)], capture_output=True, text=True)
        self.assertEqual(run.stderr, "")
        return run.returncode, run.stdout

    def assert_fault(self, *texts):
        status, output = self.run_check()
        self.assertEqual(status, 1, output)
        for text in texts:
            self.assertIn(text, output)

    def test_a_tree_in_order_passes(self):
        self.assertEqual(self.run_check(), (0, "all includes point to lower layers\n"))

    def test_an_include_upwards_is_named_with_file_and_line(self):
        self.add("vornrun/datastructures/property/CSLFormula.h", '#include "vornrun/algorithms/simulators/Simulator.h"')
        self.assert_fault('vornrun/datastructures/property/CSLFormula.h:2: '
                          'include of "vornrun/algorithms/simulators/Simulator.h": '
                          "the layer property may not see the layer simulators")

    def test_parser_and_simulators_may_not_see_each_other(self):
        self.add("vornrun/algorithms/simulators/Simulator.cpp", '#include "vornrun/algorithms/parser/VornXmlParser.h"')
        self.assert_fault("the layer simulators may not see the layer parser")
        self.add("vornrun/algorithms/simulators/Simulator.cpp", "")
        self.add("vornrun/algorithms/parser/VornXmlParser.h", '#include "vornrun/algorithms/simulators/Simulator.h"')
        self.assert_fault("the layer parser may not see the layer simulators")

    def test_an_include_in_angle_brackets_counts(self):
        self.add("vornrun/Log.h", "#  include <vornrun/algorithms/parser/VornXmlParser.h>")
        self.assert_fault("vornrun/Log.h:2:", "the layer base may not see the layer parser")

    def test_an_include_relative_to_the_file_counts(self):
        self.add("vornrun/Log.h", '#include "algorithms/parser/VornXmlParser.h"')
        self.assert_fault("the layer base may not see the layer parser")

    def test_an_include_in_a_comment_does_not_count(self):
        self.add("vornrun/Log.h", '/*\n#include "vornrun/algorithms/parser/VornXmlParser.h"\n*/\n'
                                  '// #include "vornrun/algorithms/parser/VornXmlParser.h"')
        self.assertEqual(self.run_check()[0], 0)

    def test_the_line_is_right_behind_a_comment_of_several_lines(self):
        self.add("vornrun/Log.h", '/*\n\n*/\n#include "vornrun/algorithms/parser/VornXmlParser.h"')
        self.assert_fault("vornrun/Log.h:5:")

    def test_a_folder_in_no_layer_is_found(self):
        self.add("vornrun/algorithms/novelties/Thing.h", "")
        self.assert_fault("vornrun/algorithms/novelties: this folder is in no layer")

    def test_an_include_of_a_file_in_no_layer_is_found(self):
        self.add("tests/support/TempDir.h", "")
        self.add("tools/simulator/main.cpp", '#include "tests/support/TempDir.h"')
        self.assert_fault('tools/simulator/main.cpp:3: include of "tests/support/TempDir.h": this file is in no layer')

    def test_an_include_without_a_file_is_found(self):
        self.add("vornrun/Log.h", '#include "vornrun/Gone.h"')
        self.assert_fault('vornrun/Log.h:2: include of "vornrun/Gone.h": no such file')

    def test_a_circle_of_files_within_a_layer_is_found(self):
        mode = "vornrun/datastructures/vorn/syntax/VornMode.h"
        value = "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"
        self.add(mode, f'#include "{value}"')
        self.assertEqual(self.run_check()[0], 0)
        self.add(value, f'#include "{mode}"')
        self.assert_fault(f"a circle of includes: {mode} > {value} > {mode}")

    def test_a_file_that_includes_itself_is_found(self):
        self.add("vornrun/Log.h", '#include "vornrun/Log.h"')
        self.assert_fault("a circle of includes: vornrun/Log.h > vornrun/Log.h")

    def test_a_tree_without_sources_is_found(self):
        empty = self.root / "empty"
        empty.mkdir()
        run = subprocess.run([sys.executable, "-B", str(CHECK), str(empty)], capture_output=True, text=True)
        self.assertEqual(run.returncode, 1)
        self.assertIn("no headers and no sources", run.stdout)


if __name__ == "__main__":
    unittest.main()
