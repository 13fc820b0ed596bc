"""scripts/lint.py: which sources a change concerns, and how they are read."""

import unittest

from lint import sources_for, without_precompiled

INCLUDES = {
    "src/edit/Cut.cpp": {"edit/Cut.h", "base/Sum.h"},
    "src/edit/Paste.cpp": {"edit/Paste.h", "base/Sum.h", "base/Rule.h"},
    "src/base/Rule.cpp": {"base/Rule.h"},
    "tools/Maker.cpp": set(),
}


class Lint(unittest.TestCase):
    def test_a_changed_source_is_looked_at(self):
        self.assertEqual(sources_for(["src/edit/Cut.cpp", "tools/Maker.cpp"], INCLUDES),
                         ["src/edit/Cut.cpp", "tools/Maker.cpp"])

    def test_other_files_are_not(self):
        self.assertEqual(sources_for(["docs/a.md", "tests/edit/CutTest.cpp", "src/Gone.cpp"], INCLUDES),
                         [])

    def test_a_header_is_looked_at_in_its_own_source(self):
        self.assertEqual(sources_for(["src/base/Rule.h"], INCLUDES), ["src/base/Rule.cpp"])

    def test_a_header_without_a_source_is_looked_at_in_one_that_includes_it(self):
        self.assertEqual(sources_for(["src/base/Sum.h"], INCLUDES), ["src/edit/Cut.cpp"])

    def test_a_header_needs_no_further_source_beside_a_changed_one(self):
        self.assertEqual(sources_for(["src/base/Rule.h", "src/edit/Paste.cpp"], INCLUDES),
                         ["src/edit/Paste.cpp"])

    def test_other_rules_concern_everything(self):
        self.assertEqual(sources_for([".clang-tidy"], INCLUDES), sorted(INCLUDES))

    def test_a_precompiled_header_is_left_out_and_nothing_else(self):
        self.assertEqual(
            without_precompiled("g++ -Ia -Winvalid-pch -include /b/x.dir/cmake_pch.hxx "
                                "-include other.h -c 'a b.cpp'"),
            "g++ -Ia -include other.h -c 'a b.cpp'")


if __name__ == "__main__":
    unittest.main()
