#!/usr/bin/env python3
"""Checks the schemas of the model and property files, through xmllint, and the files of these tests through the tool.

usage: check_schemas.py --source ROOT [--xmllint PROGRAM] [--tool PROGRAM] GROUP

Groups:
  valid        valid/ and the golden model validate
  invalid      each file of invalid/ is refused; its name tells its fault
  examples     the models and property files of all examples and documents validate
  expressions  the children of an expression in every order validate; with one missing or doubled they are refused
  namespaces   property files in a namespace, against a schema made for it
  tool         the tool reads what validates, and reports a fault in what does not
"""
import argparse
import itertools
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

HERE = pathlib.Path(__file__).resolve().parent
FAULTS = ("Exception during parsing", "vornrun: fatal:")
# What is passed over with this warning is a fault of the file too.
WARNING = "[Incomplete parser warning:]"


class Checks:
    """Counts what was checked and prints what failed."""

    def __init__(self, arguments):
        self.arguments = arguments
        self.count = 0
        self.failures = []

    def note(self, good, name, message):
        self.count += 1
        if not good:
            self.failures.append(name)
            print(f"FAILED {name}: {message}")

    def schema(self, name):
        return self.arguments.source / "schemas" / f"{name}.xsd"

    def faults(self, schema, files):
        """What xmllint says against each file; nothing for one that validates."""
        files = [str(file) for file in files]
        if not files:
            return {}
        command = [self.arguments.xmllint, "--huge", "--noent", "--noout", "--schema", str(schema), *files]
        run = subprocess.run(command, capture_output=True, text=True)
        lines = run.stderr.splitlines()
        faults = {}
        for file in files:
            if f"{file} validates" in lines:
                continue
            own = [line for line in lines if line.startswith(f"{file}:")]
            faults[file] = "\n".join(own or lines or ["xmllint says nothing"])
        return faults

    def expect(self, schema, files, valid):
        files = list(files)
        faults = self.faults(schema, files)
        for file in files:
            fault = faults.get(str(file))
            if valid:
                self.note(fault is None, file, f"does not validate against {schema.name}\n{fault}")
            else:
                # Without the schema's own words the file is not even well-formed, or xmllint did not run.
                self.note(fault is not None and "Schemas validity error" in fault, file,
                          f"is not refused by {schema.name}\n{fault or ''}")


def by_root(files):
    """The files that are a model or properties, with the schema of each."""
    for file in files:
        root = ET.parse(file).getroot().tag.rpartition("}")[2]
        if root in ("CompileInformation", "formulae"):
            yield file, "model" if root == "CompileInformation" else "properties"


def by_name(folder):
    """The files of a folder, with the schema that each is named after."""
    for file in sorted((HERE / folder).glob("*.xml")):
        yield file, file.name.partition("-")[0]


def expect_all(checks, files, valid):
    files = list(files)
    for schema in ("model", "properties"):
        checks.expect(checks.schema(schema), [file for file, name in files if name == schema], valid)


def check_valid(checks):
    golden = sorted((checks.arguments.source / "tests/golden").glob("*.xml"))
    expect_all(checks, [*by_name("valid"), *by_root(golden)], True)


def check_invalid(checks):
    expect_all(checks, by_name("invalid"), False)


def check_examples(checks):
    for folder in ("examples", "docs"):
        expect_all(checks, by_root(sorted((checks.arguments.source / folder).rglob("*.xml"))), True)


def check_namespaces(checks):
    schema = HERE / "namespaces" / "formulae.xsd"
    checks.expect(schema, sorted((HERE / "namespaces").glob("valid-*.xml")), True)
    checks.expect(schema, sorted((HERE / "namespaces").glob("invalid-*.xml")), False)


NODE_TYPE = "<node_type>0</node_type>"
LEAF = f'type="BooleanTreeNode">{NODE_TYPE}<value>True</value>'
KINDS = {
    "BinaryOperatorTreeNode": [NODE_TYPE, f"<left {LEAF}</left>", f"<right {LEAF}</right>", "<operator>10</operator>"],
    "UnaryOperatorTreeNode": [NODE_TYPE, f"<subexpression {LEAF}</subexpression>", "<operator>15</operator>"],
    "CaseExpressionTreeNode": [NODE_TYPE, "<cases/>", f"<default_expression {LEAF}</default_expression>"],
    "BooleanTreeNode": [NODE_TYPE, "<value>True</value>"],
    "NumberTreeNode": [NODE_TYPE, "<number>1</number>"],
    "IdentifierTreeNode": [NODE_TYPE, "<name>b</name>"],
    "TrajectoryEquationTreeNode": [NODE_TYPE, f"<variable {LEAF}</variable>",
                                   f"<trajectory_expression {LEAF}</trajectory_expression>"],
}


def check_expressions(checks):
    minimal = (HERE / "valid" / "model-minimal.xml").read_text()
    good, bad = [], []
    for kind, children in KINDS.items():
        good += [(kind, order) for order in itertools.permutations(children)]
        for child in children:
            rest = [other for other in children if other is not child]
            bad += [(kind, order) for order in itertools.permutations([*children, child])]
            # A reference is empty. What has only a node type may be a trajectory, which needs no more than that.
            if rest != [NODE_TYPE] and (kind, child) != ("TrajectoryEquationTreeNode", NODE_TYPE):
                bad += [(kind, order) for order in itertools.permutations(rest)]
    good += [("TrajectoryEquationTreeNode", (NODE_TYPE,)), ("IdentifierTreeNode", ())]
    with tempfile.TemporaryDirectory() as folder:
        for expressions, valid in ((good, True), (bad, False)):
            files = []
            for number, (kind, order) in enumerate(expressions):
                file = pathlib.Path(folder) / f"{'good' if valid else 'bad'}-{number}-{kind}.xml"
                mode = f'<invariant type="{kind}">{"".join(order)}</invariant><clauses/>'
                file.write_text(minimal.replace("<type>0</type>", f"<type>0</type>{mode}"))
                files.append(file)
            checks.expect(checks.schema("model"), files, valid)


def check_tool(checks):
    minimal = HERE / "valid" / "model-minimal.xml"
    with tempfile.TemporaryDirectory() as folder:
        none = pathlib.Path(folder) / "none.xml"
        none.write_text("<formulae/>")

        def says(file, schema):
            files = [file, none] if schema == "model" else [minimal, file]
            options = ["--level", "warn", "--threads", "1", "--seed", "1", "--numtraces", "1", "--stepbound", "10"]
            run = subprocess.run([checks.arguments.tool, *options, *map(str, files)], cwd=folder, capture_output=True,
                                 text=True)
            return run.stdout + run.stderr

        namespaced = sorted((HERE / "namespaces").glob("valid-*.xml"))
        for file, schema in [*by_name("valid"), *((file, "properties") for file in namespaced)]:
            output = says(file, schema)
            checks.note(not any(fault in output for fault in FAULTS), file, f"the tool does not read it\n{output}")
        for file, schema in by_name("invalid"):
            output = says(file, schema)
            reported = any(fault in output for fault in (*FAULTS, WARNING))
            checks.note(reported, file, f"the tool does not report it\n{output}")


GROUPS = {"valid": check_valid, "invalid": check_invalid, "examples": check_examples,
          "expressions": check_expressions, "namespaces": check_namespaces, "tool": check_tool}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--xmllint", default="xmllint")
    parser.add_argument("--tool")
    parser.add_argument("group", choices=GROUPS)
    arguments = parser.parse_args()
    if arguments.group == "tool" and not arguments.tool:
        parser.error("the group tool needs --tool")
    checks = Checks(arguments)
    GROUPS[arguments.group](checks)
    print(f"{arguments.group}: {checks.count - len(checks.failures)} of {checks.count} files as expected")
    if checks.count == 0:
        print("FAILED: there was nothing to check")
    return 1 if checks.failures or checks.count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
