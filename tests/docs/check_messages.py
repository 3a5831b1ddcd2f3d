#!/usr/bin/env python3
"""Fails when a text that the tool can print to a user stands in none of the documents below.

    check_messages.py [source root]

What counts as such a text, found in the sources by their form:

  - every string literal of a statement that throws, logs at WARN, ERROR or FATAL, or writes to a standard stream;
  - besides, every string literal of two words or more, wherever it stands, unless the statement logs at a lower level:
    texts on their way to an exception through a function, a variable or a table.

The pieces of one throwing or logging statement must follow each other in the document, with at most a placeholder
between them. Pieces without two letters in a row are not looked for. Literals that are no messages are listed below,
each with its reason; an entry that fits nothing any more is a failure too.
"""
import pathlib
import re
import sys

DOCUMENTS = ("docs/troubleshooting.md", "docs/model-format.md", "docs/property-format.md", "docs/library.md")
SOURCES = ("vornrun", "tools")

# Literals that are no messages, by the reason.
PASSED = {
    "the help tells the options": (
        "Generic options", "Hidden options", "Input parameters", "Strategy options", "Display this help message",
        "Logging level (trace, debug, info, warn, error, fatal)", "Number of threads to use (0 for auto detect)",
        "Input file (XML model)", "Property file (XML properties)", "Fixed random seed",
        "Strategy to use (asap, input, local, maxtime, progressive)",
        "Number of traces to generate (use 0 for CH bound)", "Maximum number of steps for each trace",
        "Confidence of result (CH)", "Error bound of result (CH)", "Ignore traces exceeding the step bound",
        "Generate error when finding deadlock"),
    "part of a printed model, state or topology": (
        "  trajectory data: ", "Active triggers:\n", " in modes (", "] (from feature [", "\tData ports:\n",
        "\tEvent ports:\n", "\tEvent connections:\n", "\tReactivation Transitions:\n", "Stacked values: \n",
        "TODO: Implement string representation of DynamicValuesTemp", "Permanent valuation:\n",
        "Global valuation of depth: ", "Global valuation stacked values: \n", "-------- END PACKAGE --------\n",
        "error event port", " occurrence poisson ", "digraph EC {\n"),
    "logged at DEBUG, in a statement apart from the level": (
        "The following event names are used within the network: ",),
    "of checked arithmetic, which only clients of the library use": (
        "No result of '", "division by zero"),
    "an instruction of the processor": ("idivq %[divisor]",),
}

TOKEN = re.compile(r"""//[^\n]* | /\*.*?\*/ | ^[ \t]*\#(?:[^\n\\]|\\.)* | "(?:[^"\\\n]|\\.)*" | '(?:[^'\\\n]|\\.)+'"""
                   r""" | \w+ | << | ::? | \s+ | .""", re.VERBOSE | re.DOTALL | re.MULTILINE)
ESCAPES = {"n": "\n", "t": "\t", '"': '"', "\\": "\\", "'": "'"}


def statements(text):
    """Lists of (token, line), split at semicolons and braces; comments, blanks and preprocessor lines are left out."""
    statement, line = [], 1
    for match in TOKEN.finditer(text):
        token = match.group()
        if not token.isspace() and not token.lstrip().startswith(("//", "/*", "#")):
            if token in "{};":
                yield statement
                statement = []
            else:
                statement.append((token, line))
        line += token.count("\n")
    yield statement


def literals(statement):
    """(text, line) of each literal; neighbours are one literal, as for the compiler."""
    result, previous = [], ""
    for token, line in statement:
        if token.startswith('"'):
            text = re.sub(r"\\(.)", lambda escape: ESCAPES.get(escape[1], " "), token[1:-1], flags=re.DOTALL)
            if previous.startswith('"'):
                text = result.pop()[0] + text
            result.append((text, line))
        previous = token
    return result


def words(text):
    return " ".join(text.split())


def is_text(text):
    return re.search(r"[A-Za-z]{2}", text) is not None


def is_phrase(text):
    return re.search(r"[A-Za-z]{2}\S*\s+\S*[A-Za-z]{2}", text) is not None


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parents[2])
    missing_documents = [name for name in DOCUMENTS if not (root / name).is_file()]
    if missing_documents:
        return f"{root}: no {', no '.join(missing_documents)}"
    documents = words("\n".join((root / name).read_text(encoding="utf-8") for name in DOCUMENTS).replace("\\|", "|"))
    passed = {text: reason for reason, texts in PASSED.items() for text in texts}
    unused = set(passed)
    faults, found = [], 0
    sources = (path for folder in SOURCES for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp"))
    for path in sorted(sources):
        name = path.relative_to(root).as_posix()
        for statement in statements(path.read_text(encoding="utf-8")):
            tokens = {token for token, _ in statement}
            if tokens & {"assert", "static_assert"} or "VORNRUN_LOG" in tokens and tokens & {"Info", "Debug", "Trace"}:
                continue
            is_site = bool(tokens & {"throw", "VORNRUN_LOG", "Fatal", "cerr", "cout"})
            pieces = []
            for text, line in literals(statement):
                if text in passed:
                    unused.discard(text)
                elif is_text(text) if is_site else is_phrase(text):
                    pieces.append((words(text), line))
            found += len(pieces)
            missing = [piece for piece in pieces if piece[0] not in documents]
            faults += [f"{name}:{line}: not in the documents: {text}" for text, line in missing]
            if is_site and "?" not in tokens and len(pieces) > 1 and not missing:
                pattern = ".{0,60}?".join(re.escape(text) for text, _ in pieces)
                if re.search(pattern, documents) is None:
                    faults.append(f"{name}:{pieces[0][1]}: not together in the documents: "
                                  + " ... ".join(text for text, _ in pieces))
    faults += [f"{pathlib.Path(__file__).name}: no source has this literal any more: {text}" for text in sorted(unused)]
    if found < 200:
        faults.append(f"only {found} texts found below {root}: are these the sources?")
    print("\n".join(faults) if faults else f"{found} texts, all in the documents")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
