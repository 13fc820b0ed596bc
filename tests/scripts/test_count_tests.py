"""scripts/count_tests.py on results that ctest itself has written."""

import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

import count_tests

TESTS = {
    "good": "add_test(NAME good COMMAND ${CMAKE_COMMAND} -E true)",
    "bad": "add_test(NAME bad COMMAND ${CMAKE_COMMAND} -E false)",
    "skipped": "add_test(NAME skipped COMMAND ${CMAKE_COMMAND} -E false)\n"
               "set_tests_properties(skipped PROPERTIES SKIP_RETURN_CODE 1)",
    "disabled": "add_test(NAME disabled COMMAND ${CMAKE_COMMAND} -E true)\n"
                "set_tests_properties(disabled PROPERTIES DISABLED TRUE)",
    "missing": "add_test(NAME missing COMMAND /no/such/program)",
}


class CountTests(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def results(self, name, *tests):
        """The file that ctest writes of a run of these tests."""
        source = self.root / name
        source.mkdir()
        (source / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(made-up NONE)\nenable_testing()\n"
            + "\n".join(TESTS[test] for test in tests), encoding="utf-8")
        subprocess.run(["cmake", "-G", "Ninja", "-S", source, "-B", source], check=True,
                       capture_output=True)
        subprocess.run(["ctest", "--test-dir", source, "--output-junit", source / "result.xml"],
                       check=False, capture_output=True)
        return str(source / "result.xml")

    def close(self, *paths):
        """Exit code and lines of the count."""
        done = subprocess.run([sys.executable, "-B", count_tests.__file__, *paths],
                              capture_output=True, text=True, check=False)
        return done.returncode, done.stdout.splitlines()

    def test_the_sum_over_runs_closes_the_count(self):
        self.assertEqual(self.close(self.results("a", "good"), self.results("b", "good")),
                         (0, ["2 passed, 0 failed"]))

    def test_slow_tests_are_named_the_slowest_first(self):
        result = Path(self.results("a", "good", "bad"))
        suite = xml.parse(result)
        for case, seconds in zip(suite.getroot().findall("testcase"), ("12.4", "90")):
            case.set("time", seconds)
        suite.write(result)
        self.assertEqual(self.close(str(result)),
                         (1, ["  90 s  bad", "  12 s  good", "Failed: bad", "1 passed, 1 failed"]))

    def test_a_failed_test_fails_the_count_and_is_named(self):
        self.assertEqual(self.close(self.results("a", "good", "bad")),
                         (1, ["Failed: bad", "1 passed, 1 failed"]))

    def test_a_skipped_test_fails_the_count_and_is_named(self):
        for test in ("skipped", "disabled"):
            with self.subTest(test):
                self.assertEqual(self.close(self.results(test, "good", test)),
                                 (1, [f"Did not run: {test}", "1 passed, 0 failed, 1 skipped"]))

    def test_a_program_that_is_not_there_fails_the_count(self):
        code, lines = self.close(self.results("a", "good", "missing"))
        self.assertEqual(code, 1)
        self.assertIn("missing", lines[0])

    def test_no_test_at_all_fails_the_count(self):
        self.assertEqual(self.close(self.results("a")),
                         (1, ["There was no test to run.", "0 passed, 0 failed"]))

    def test_a_result_that_cannot_be_read_fails_the_count(self):
        half = Path(self.results("a", "good", "bad"))
        text = half.read_text(encoding="utf-8")
        for broken in ("", text[:len(text) // 2], text.replace("<testcase", "<lost", 1)
                       .replace("</testcase>", "</lost>", 1)):
            half.write_text(broken, encoding="utf-8")
            code, lines = self.close(str(half))
            self.assertEqual((code, lines), (1, []))


if __name__ == "__main__":
    unittest.main()
