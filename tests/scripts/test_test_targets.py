"""scripts/test_targets.py: which targets a choice of tests needs."""

import re
import tempfile
import unittest
from pathlib import Path

from test_targets import targets_for

CUT = "TEST_F(Cut, TakesOut) {}\nTEST(Cut,\n     Joins) {}\n"
FORMS = ("TEST_P(Forms, AreRead) {}\nINSTANTIATE_TEST_SUITE_P(All, Forms,\n"
         "                         ::testing::Values(1, 2));\n")


class TestTargets(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        for name, text in (("Cut.cpp", CUT), ("Forms.cpp", FORMS)):
            Path(folder.name, name).write_text(text, encoding="utf-8")
        self.lines = [f"program edit_tests {folder.name}/Cut.cpp",
                      f"program file_tests {folder.name}/Forms.cpp",
                      "script desktop.play app demo-sound",
                      "script desktop.work app",
                      "script layers.order"]

    def targets(self, pattern):
        return targets_for(self.lines, pattern)

    def test_a_test_needs_its_program(self):
        self.assertEqual(self.targets("Cut.TakesOut"), ["edit_tests"])
        self.assertEqual(self.targets("Joins$"), ["edit_tests"])

    def test_the_name_of_a_program_chooses_it(self):
        self.assertEqual(self.targets("^file_tests"), ["file_tests"])

    def test_a_test_with_values_is_found_by_each_part_of_its_name(self):
        for pattern in ("All/Forms", r"AreRead/1$", r"Forms\.AreRead"):
            self.assertEqual(self.targets(pattern), ["file_tests"], pattern)

    def test_a_pattern_may_choose_several(self):
        self.assertEqual(self.targets("_tests"), ["edit_tests", "file_tests"])

    def test_a_script_needs_what_it_runs_and_each_target_stands_once(self):
        self.assertEqual(self.targets("desktop"), ["app", "demo-sound"])

    def test_a_script_may_need_nothing(self):
        self.assertEqual(self.targets("layers"), [])

    def test_a_pattern_that_matches_nothing_gives_nothing(self):
        self.assertEqual(self.targets("NoSuchTest"), [])

    def test_a_pattern_that_is_none_is_told(self):
        with self.assertRaises(re.error):
            self.targets("(")


if __name__ == "__main__":
    unittest.main()
