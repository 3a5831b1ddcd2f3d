#!/usr/bin/env python3
"""Checks that the files of the examples are those that the scripts beside them write.

usage: check_generated.py ROOT
"""
import filecmp
import pathlib
import shutil
import subprocess
import sys
import tempfile


def main(root):
    with tempfile.TemporaryDirectory() as temporary:
        found = 0
        for name in ("examples", "docs"):
            if (root / name).is_dir():
                shutil.copytree(root / name, pathlib.Path(temporary) / name, ignore=shutil.ignore_patterns("__pycache__"))
        for script in sorted(pathlib.Path(temporary).rglob("generate.py")):
            for written in script.parent.rglob("*.xml"):
                written.unlink()
            subprocess.run([sys.executable, "-B", str(script)], check=True)
            folder = root / script.parent.relative_to(temporary)
            there = {path.relative_to(folder) for path in folder.rglob("*.xml")}
            written = {path.relative_to(script.parent) for path in script.parent.rglob("*.xml")}
            for path in sorted(there | written):
                if path not in there & written or not filecmp.cmp(folder / path, script.parent / path, shallow=False):
                    found += 1
                    print(f"{folder.relative_to(root) / path}: not what {script.name} writes")
        return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
