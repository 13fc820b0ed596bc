"""count_tests.py RESULT...: adds up what ctest has written of its runs (its JUnit files), names the
slowest tests of each and those that did not pass, and closes with the plain line of the sum. A test
that was skipped or could not be run has not passed, and neither have no tests at all."""

import sys
import xml.etree.ElementTree as xml


SLOW = 10.0  # seconds that a test may take before it is named
MOST_NAMED = 10


def count(paths):
    """Three lists of names: the tests that passed, that failed, and that did not run; and of all that
    are slow (seconds, name)."""
    passed, failed, idle, slow = [], [], [], []
    for path in paths:
        suite = xml.parse(path).getroot()
        cases = suite.findall("testcase")
        if len(cases) != int(suite.get("tests")):
            raise ValueError(f"{path} is not whole: it names {len(cases)} tests of {suite.get('tests')}")
        for case in cases:
            {"run": passed, "fail": failed}.get(case.get("status"), idle).append(case.get("name"))
            seconds = float(case.get("time", 0))
            if seconds >= SLOW:
                slow.append((seconds, case.get("name")))
    return passed, failed, idle, sorted(slow, reverse=True)


def main(paths):
    try:
        passed, failed, idle, slow = count(paths)
    except (OSError, ValueError, TypeError, xml.ParseError) as error:
        print(f"The results of the tests cannot be read: {error}", file=sys.stderr)
        return 1
    for seconds, name in slow[:MOST_NAMED]:
        print(f"{seconds:4.0f} s  {name}")
    for word, names in (("Failed", failed), ("Did not run", idle)):
        for name in names:
            print(f"{word}: {name}")
    if not passed and not failed and not idle:
        print("There was no test to run.")
    print(f"{len(passed)} passed, {len(failed)} failed" + (f", {len(idle)} skipped" if idle else ""))
    return 0 if passed and not failed and not idle else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
