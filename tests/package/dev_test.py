#!/usr/bin/env python3
"""./dev says what it does, shows faults whole, and names all that is missing at once. The programs that it calls are
replaced by scripts that say what those would say."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from build_under_test import SOURCE

# Lists two files to compile and one program to link; the second file has a fault if the file "fault" exists.
CMAKE = """#!/bin/sh
case "$*" in
    *--build*" -n")
        echo "[1/3] Building CXX object a/CMakeFiles/a.dir/One.cpp.o"
        echo "[2/3] Building CXX object a/CMakeFiles/a.dir/Two.cpp.o"
        echo "[3/3] Linking CXX executable bin/vornrun"
        ;;
    *--build*)
        echo "${NINJA_STATUS}Building CXX object a/CMakeFiles/a.dir/One.cpp.o"
        echo "${NINJA_STATUS}Building CXX object a/CMakeFiles/a.dir/Two.cpp.o"
        if [ -e fault ]; then
            echo "FAILED: a/CMakeFiles/a.dir/Two.cpp.o"
            echo "Two.cpp:1:1: error: no such type"
            echo "  1 | typ x;"
            echo "ninja: build stopped: subcommand failed."
            exit 1
        fi
        echo "${NINJA_STATUS}Linking CXX executable bin/vornrun"
        ;;
    *) if [ -e unconfigurable ]; then echo "CMake Error: no Boost"; exit 1; fi ;;
esac
"""
CTEST = """#!/bin/sh
echo "    Start 1: Guard.Holds"
echo "1/2 Test #1: Guard.Holds ....   Passed    0.01 sec"
echo "    Start 2: Guard.Ends"
echo "2/2 Test #2: Guard.Ends .....***Failed    0.01 sec"
echo "Guard.cpp:7: Failure"
echo "50% tests passed, 1 tests failed out of 2"
exit 8
"""
APT = """#!/bin/sh
if [ -e unreachable ]; then echo "E: Unable to fetch some archives"; exit 100; fi
[ "$1" = install ] || exit 0
echo "0 upgraded, 2 newly installed, 0 to remove and 0 not upgraded."
echo "Get:1 http://mirror stable/main amd64 cmake"
echo "Unpacking cmake (3.25) ..."
echo "Setting up cmake (3.25) ..."
"""
ALL_PACKAGES = ("g++", "cmake", "ninja-build", "libxerces-c-dev", "liblog4cplus-dev", "libboost-dev",
                "libboost-program-options-dev", "libboost-filesystem-dev", "libboost-system-dev")
USED = ("bash", "env", "cat", "dirname", "grep", "head", "mktemp", "nproc", "rm", "sh", "tee")


class Runner(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name).resolve()
        self.programs = self.root / "programs"
        self.programs.mkdir()
        shutil.copy(SOURCE / "dev", self.root / "dev")
        for name in USED:
            (self.programs / name).symlink_to(shutil.which(name))
        self.program("cmake", CMAKE)
        self.program("ctest", CTEST)
        self.program("apt-get", APT)
        self.program("id", "#!/bin/sh\necho 0\n")
        self.installed(True)

    def program(self, name, text):
        (self.programs / name).write_text(text)
        (self.programs / name).chmod(0o755)

    def installed(self, yes):
        self.program("dpkg-query", "#!/bin/sh\n" + ("echo installed\n" if yes else "exit 1\n"))

    def dev(self, *arguments):
        environment = {"PATH": str(self.programs), "HOME": str(self.root), "TMPDIR": str(self.root)}
        return subprocess.run([str(self.programs / "bash"), str(self.root / "dev"), *arguments], env=environment,
                              capture_output=True, text=True, check=False)


class Dev(Runner):
    def test_a_build_says_how_much_there_is_to_do_and_prints_the_program_alone(self):
        run = self.dev("build")
        self.assertEqual((run.returncode, run.stdout), (0, f"{self.root}/build/release/bin/vornrun\n"))
        self.assertIn("compiling 2 files for build/release\n", run.stderr)

    def test_progress_is_no_terminal_control_where_there_is_no_terminal(self):
        self.assertNotIn("\r", self.dev("build").stderr)

    def test_a_compile_error_is_shown_whole_and_ends_with_status_1_and_a_word(self):
        (self.root / "fault").touch()
        for subcommand in ("build", "demo", "test", "package", "bench"):
            run = self.dev(subcommand)
            self.assertEqual((run.returncode, run.stdout), (1, ""), subcommand)
            self.assertIn("Two.cpp:1:1: error: no such type\n  1 | typ x;\n", run.stderr)
            self.assertRegex(run.stderr, r"\ndev: the build failed[^\n]*\n$")

    def test_a_fault_of_the_configuration_is_shown_whole(self):
        (self.root / "unconfigurable").touch()
        run = self.dev("build")
        self.assertEqual(run.returncode, 1)
        self.assertIn("CMake Error: no Boost\n", run.stderr)

    def test_tests_that_fail_are_shown_and_those_that_pass_are_counted(self):
        run = self.dev("test")
        self.assertEqual(run.returncode, 8)
        self.assertIn("Guard.Ends .....***Failed", run.stdout)
        self.assertIn("Guard.cpp:7: Failure\n50% tests passed, 1 tests failed out of 2\n", run.stdout)
        self.assertNotIn("Guard.Holds", run.stdout)

    def test_what_is_installed_is_said(self):
        self.installed(False)
        run = self.dev("build")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn(f"dev: installing {' '.join(ALL_PACKAGES)}\n", run.stderr)

    def test_all_missing_packages_of_a_package_build_are_named_at_once(self):
        self.installed(False)
        self.program("id", "#!/bin/sh\necho 1000\n")
        run = self.dev("package")
        self.assertEqual(run.returncode, 1)
        lines = run.stderr.splitlines()
        self.assertEqual(len(lines), 1, run.stderr)
        for package in (*ALL_PACKAGES, "dpkg-dev", "file"):
            self.assertIn(f" {package}", lines[0])

    def test_what_apt_says_is_shown_when_it_fails(self):
        self.installed(False)
        (self.root / "unreachable").touch()
        run = self.dev("build")
        self.assertEqual(run.returncode, 1)
        self.assertIn("E: Unable to fetch some archives\n", run.stderr)
        self.assertIn("missing Debian packages: g++", run.stderr)


class Terminal(Runner):
    """On a terminal one line is rewritten."""

    def dev(self, *arguments):
        """Runs ./dev with standard error on a terminal of its own; its characters are the result's `stderr`."""
        ours, theirs = os.openpty()
        environment = {"PATH": str(self.programs), "HOME": str(self.root), "TMPDIR": str(self.root), "TERM": "dumb"}
        with subprocess.Popen([str(self.programs / "bash"), str(self.root / "dev"), *arguments], env=environment,
                              stdout=subprocess.PIPE, stderr=theirs, text=True) as process:
            os.close(theirs)
            shown = b""
            try:
                while chunk := os.read(ours, 4096):
                    shown += chunk
            except OSError:  # how Linux says that the other end is closed
                pass
            output = process.stdout.read()
        os.close(ours)
        return subprocess.CompletedProcess(arguments, process.returncode, output, shown.decode().replace("\r\n", "\n"))

    def test_each_file_rewrites_the_line(self):
        self.assertIn("\r\033[Kcompiling file 1 of 2: a/One.cpp\r\033[Kcompiling file 2 of 2: a/Two.cpp\r\033[K",
                      self.dev("build").stderr)

    def test_each_test_rewrites_the_line(self):
        self.assertIn("\r\033[Ktest 1 of 2: Guard.Holds\r\033[K", self.dev("test").stderr)

    def test_each_package_rewrites_the_line(self):
        self.installed(False)
        self.assertIn("\r\033[Kfetching package 1 of 2\r\033[Kunpacking package 1 of 2: cmake"
                      "\r\033[Ksetting up package 1 of 2: cmake\r\033[K", self.dev("build").stderr)


if __name__ == "__main__":
    unittest.main()
