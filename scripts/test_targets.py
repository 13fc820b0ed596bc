"""test_targets.py NEEDS PATTERN: the build targets that the tests whose names match a regular
expression need, one a line; nothing when no test is known to match.

NEEDS is what the build writes of its tests, a line for each:

    program NAME SOURCE...    tests of GoogleTest, found in the sources; NAME is their target
    script NAME TARGET...     one test, and the targets that it runs
"""

import re
import sys
from pathlib import Path

TEST = re.compile(r"^[ \t]*TEST(_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\)", re.MULTILINE)
WITH_VALUES = re.compile(r"INSTANTIATE_TEST_SUITE_P\(\s*(\w+)\s*,\s*(\w+)")


def names_in(program, sources):
    """The names that ctest gives the tests of a program. Of a test with values, those with the first
    ten values stand for all."""
    text = "\n".join(Path(source).read_text(encoding="utf-8") for source in sources)
    sets = WITH_VALUES.findall(text)
    for kind, suite, test in TEST.findall(text):
        if kind != "_P":
            yield f"{program}.{suite}.{test}"
        for prefix, values_of in sets:
            if kind == "_P" and values_of == suite:
                yield from (f"{program}.{prefix}/{suite}.{test}/{value}" for value in range(10))


def targets_for(lines, pattern):
    wanted = re.compile(pattern)
    targets = []
    for line in lines:
        kind, name, *rest = line.split()
        if kind == "program" and any(wanted.search(each) for each in names_in(name, rest)):
            targets.append(name)
        elif kind == "script" and wanted.search(name):
            targets += rest
    return sorted(set(targets))


def main(needs, pattern):
    try:
        targets = targets_for(Path(needs).read_text(encoding="utf-8").splitlines(), pattern)
    except re.error as error:
        print(f"{pattern} is no regular expression: {error}", file=sys.stderr)
        return 1
    print("\n".join(targets))
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
