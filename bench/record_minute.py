#!/usr/bin/env python3
"""Records known sound through the real window in every format of both engines, side by side, while
2 GB are written to the same disk and the window is moved and used, and compares sample for sample.

usage: bench/record_minute.py [--build build/release] [--seconds 60]

Each format has a screen, a sound server and an editor of its own. The files lie in the folder of
temporary files ($TMPDIR), which needs 3 GB.
"""
import argparse
import os
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SERVER, PLAIN = 1, 2
# Engine, channels, bits. The engine of the sound server takes no 8 bits.
FORMATS = [(SERVER, 1, 16), (SERVER, 2, 16),
           (PLAIN, 1, 8), (PLAIN, 2, 8), (PLAIN, 1, 16), (PLAIN, 2, 16)]
WRITTEN_MB = 2048


def environment(build):
    programs = ":".join(str(build / "src" / name) for name in ("quoril-wave-editor", "quoril-player"))
    return {**os.environ, "QUORIL_PROGRAMS": programs,
            "QUORIL_DEMO_SOUND": str(build / "tools" / "demo-sound"),
            "PYTHONPATH": f"{ROOT / 'scripts'}:{ROOT / 'tests' / 'desktop'}"}


def write_beside():
    """Writes the 2 GB and gives the seconds that it took."""
    begin = time.monotonic()
    with tempfile.TemporaryFile() as file:
        piece = os.urandom(1 << 20)
        for _ in range(WRITTEN_MB):
            file.write(piece)
        file.flush()
        os.fsync(file.fileno())
    return time.monotonic() - begin


def processor_seconds(process):
    fields = Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def record_one(engine, channels, bits, seconds):
    """In a process of its own: fails as a test does."""
    import unittest
    from take_test import TakeFormat, TakeTest

    class Minute(TakeTest):
        def use(self, window):
            """Moves the window, goes through its controls, and turns some on and off. Then lets it
            record, and tells what of a processor that takes."""
            for step in range(seconds // 3):
                self.desktop.run("xdotool", "windowmove", window.id,
                                 str(50 + 7 * (step % 50)), str(30 + 3 * (step % 50)))
                self.keys(window, "Tab", "Tab", "Tab", "alt+n", "alt+u", "alt+u", "alt+n")
            used, begin = processor_seconds(window.pid), time.monotonic()
            time.sleep(seconds / 6)
            share = (processor_seconds(window.pid) - used) / (time.monotonic() - begin)
            print(f"{100 * share:.2f} % of a processor", flush=True)

        def runTest(self):
            self.recorded_whole(TakeFormat(engine, channels, bits), seconds, self.use)

    result = unittest.TextTestRunner(verbosity=0).run(Minute())
    return 0 if result.wasSuccessful() else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, default=ROOT / "build" / "release")
    parser.add_argument("--seconds", type=int, default=60)
    parser.add_argument("--one", type=int, nargs=3, help=argparse.SUPPRESS)
    given = parser.parse_args()
    if given.one:
        return record_one(*given.one, given.seconds)
    print(f"{len(FORMATS)} editors side by side, {given.seconds} s each, "
          f"load {os.getloadavg()[0]:.1f} before", flush=True)
    running = [(form, subprocess.Popen(
        [sys.executable, "-B", __file__, "--seconds", str(given.seconds),
         "--one", *map(str, form)],
        env=environment(given.build.resolve()), stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
        text=True)) for form in FORMATS]
    took = []
    writer = threading.Thread(target=lambda: took.append(write_beside()))
    writer.start()
    failed = 0
    for (engine, channels, bits), process in running:
        words, _ = process.communicate()
        whole = process.returncode == 0
        failed += not whole
        print(f"{'sound server' if engine == SERVER else 'plain sound':12} "
              f"{'mono' if channels == 1 else 'stereo':6} {bits:2} bits: "
              f"{'whole' if whole else 'NOT WHOLE'}, {words.splitlines()[0]}", flush=True)
        if not whole:
            print(words)
    writer.join()
    print(f"{WRITTEN_MB} MB written beside it in {took[0]:.0f} s, load {os.getloadavg()[0]:.1f} after")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
