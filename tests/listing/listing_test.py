#!/usr/bin/env python3
"""The check of the list of tests finds what it is there to find."""
import sys
import unittest

sys.dont_write_bytecode = True
import check_listing


def listing(*names):
    lines = "".join(f"  Test {'#' + str(number):>5}: {name}\n" for number, name in enumerate(names, 1))
    return f"Test project /build\n{lines}\nTotal Tests: {len(names)}\n"


class Names(unittest.TestCase):
    def faults(self, name):
        return check_listing.faults_of_names(listing("Guard.HoldsAtItsBound", name))

    def test_names_of_words_pass(self):
        for name in ("Rates/BadRates.AreRefused/MinusInfinity", "documents.docs/model-format.md",
                     "ValuationOf.Reads<vornrun::VornBool>", "layers.includes_point_downwards (Disabled)"):
            self.assertEqual(self.faults(name), [])

    def test_a_dump_of_bytes_is_found(self):
        self.assertEqual(len(self.faults("Rates.AreRefused/Zero  # GetParam() = 8-byte object <00-00 00-00>")), 1)

    def test_a_bare_number_is_found(self):
        self.assertEqual(len(self.faults("Rates/BadRates.AreRefused/0")), 1)

    def test_a_number_with_a_word_passes(self):
        self.assertEqual(self.faults("Rates/BadRates.AreRefused/Rate0"), [])

    def test_a_line_of_120_columns_passes_and_one_more_is_found(self):
        self.assertEqual(self.faults("n" * (120 - len("  Test    #2: "))), [])
        self.assertEqual(len(self.faults("n" * (121 - len("  Test    #2: ")))), 1)


class Count(unittest.TestCase):
    def faults(self, shown):
        return check_listing.faults_of_count(listing(*["Suite.Test"] * 100),
                                             f"100% tests passed, 0 tests failed out of {shown}\n")

    def test_a_number_that_is_about_right_passes(self):
        self.assertEqual(self.faults(100), [])
        self.assertEqual(self.faults(95), [])

    def test_a_number_that_is_off_is_found(self):
        self.assertEqual(len(self.faults(94)), 1)
        self.assertEqual(len(self.faults(106)), 1)

    def test_a_page_without_a_number_is_found(self):
        self.assertEqual(len(check_listing.faults_of_count(listing("Suite.Test"), "All tests pass.\n")), 1)

    def test_an_empty_list_is_found(self):
        self.assertEqual(len(check_listing.faults_of_count("", "0 tests failed out of 0")), 1)


if __name__ == "__main__":
    unittest.main()
