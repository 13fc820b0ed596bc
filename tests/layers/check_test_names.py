"""check_test_names.py ROOT: every test in ROOT/tests is named in one style: suite and test in CamelCase
without underscores, TEST_F(VolumeTest, DoublingClipsAtBothDepths)."""

import re
import sys
from pathlib import Path

TEST = re.compile(r"^[ \t]*(?:TYPED_)?TEST(?:_F|_P)?\(\s*([^\s,()]*)\s*,\s*([^\s,()]*)\s*\)",
                  re.MULTILINE)
CAMEL_CASE = re.compile(r"[A-Z][A-Za-z0-9]*\Z")


def complaints(root):
    """The tests whose names are not in the style, one sentence each."""
    found, count = [], 0
    folder = Path(root, "tests")
    for path in sorted([*folder.rglob("*.cpp"), *folder.rglob("*.h")]):
        text = path.read_text(encoding="utf-8")
        for test in TEST.finditer(text):
            count += 1
            line = text.count("\n", 0, test.start()) + 1
            for name in test.groups():
                if not CAMEL_CASE.match(name):
                    found.append(f"{path.relative_to(root)}:{line}: {name} is not CamelCase")
    if count == 0:
        raise ValueError(f"there is no test in {folder}")
    return found


def main(root):
    found = complaints(root)
    for sentence in found:
        print(sentence)
    print(f"{len(found)} names of tests in another style" if found
          else "All tests are named in one style.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
