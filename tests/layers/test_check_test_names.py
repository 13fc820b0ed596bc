"""The checker of test names finds each kind of other style, and nothing else."""

import tempfile
import unittest
from pathlib import Path

from check_test_names import complaints


class CheckTestNames(unittest.TestCase):
    def complaints_about(self, text, name="edit/CutTest.cpp"):
        with tempfile.TemporaryDirectory() as root:
            path = Path(root, "tests", name)
            path.parent.mkdir(parents=True)
            path.write_text(text, encoding="utf-8")
            return complaints(root)

    def test_camel_case_has_no_complaint(self):
        self.assertEqual(self.complaints_about(
            "TEST(Cut, TakesOut8Bits) {}\nTEST_F(STD1, A) {}\nTEST_P(Cut, F1Opens) {}\n"), [])

    def test_an_underscore_is_found_with_its_place(self):
        self.assertEqual(self.complaints_about("\nTEST_F(Cut, takes_out) {}\n"),
                         ["tests/edit/CutTest.cpp:2: takes_out is not CamelCase"])

    def test_a_small_letter_at_the_beginning_is_found(self):
        self.assertEqual(self.complaints_about("TEST_P(Cut, takesOut) {}\n"),
                         ["tests/edit/CutTest.cpp:1: takesOut is not CamelCase"])

    def test_an_underscore_between_capitals_is_found(self):
        self.assertEqual(self.complaints_about("TYPED_TEST(Cut, Takes_Out) {}\n"),
                         ["tests/edit/CutTest.cpp:1: Takes_Out is not CamelCase"])

    def test_a_suite_in_another_style_is_found(self):
        self.assertEqual(self.complaints_about("TEST(Cut_Test, TakesOut) {}\n"),
                         ["tests/edit/CutTest.cpp:1: Cut_Test is not CamelCase"])

    def test_a_name_on_a_line_of_its_own_is_found(self):
        self.assertEqual(self.complaints_about("TEST_F(Cut,\n       takes_out) {}\n"),
                         ["tests/edit/CutTest.cpp:1: takes_out is not CamelCase"])

    def test_a_test_in_a_header_is_found(self):
        self.assertEqual(self.complaints_about("TEST(Cut, takes_out) {}\n", "Shared.h"),
                         ["tests/Shared.h:1: takes_out is not CamelCase"])

    def test_a_tree_without_tests_is_refused(self):
        with self.assertRaises(ValueError):
            self.complaints_about("int main() {}\n")


if __name__ == "__main__":
    unittest.main()
