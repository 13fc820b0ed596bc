#!/usr/bin/env python3
"""Runs the benchmarks and prints their table as Markdown.

usage: bench/report.py [--build build/release] [--work FOLDER]

Every figure that is held against a limit is a ratio to a reference of the same run, or a bound that
holds on any machine. The work folder lies on the disk that is measured (default: the current one)
and needs 5 GB.
"""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "scripts"))
from virtual_desktop import VirtualDesktop, wait_until  # noqa: E402

START_ROUNDS = 6


def run(command, work):
    """What a benchmark says that makes its files in the work folder."""
    env = {**os.environ, "TMPDIR": str(Path(work).resolve())}
    return subprocess.run(command, cwd=work, env=env, capture_output=True, text=True)


def lines_of(command, work):
    """The report lines of one benchmark: (name, value, unit, limit)."""
    done = run(command, work)
    if done.returncode != 0:
        sys.exit(f"{' '.join(command)} failed:\n{done.stdout}{done.stderr}")
    rows = []
    for line in done.stdout.splitlines():
        name, value, unit, limit = line.split("\t")
        rows.append((name, float(value), unit, float(limit)))
    return rows


def store_rows(program, work):
    done = run([program, "--benchmark_format=json"], work)
    if done.returncode != 0:
        sys.exit(done.stderr)
    speed = {}
    for row in json.loads(done.stdout)["benchmarks"]:
        speed[row["name"].split("/")[0]] = row["bytes_per_second"]
    copy = speed["MemoryCopy"]
    # 300 million samples a second on a machine that copies 10 GB/s.
    floor = 300e6 * 2 / 10e9
    return [
        ("memory copy", copy / 1e9, "GB/s", None, ""),
        ("WaveLR read in order / memory copy", speed["WaveLRRead"] / copy, "times", floor, "at least"),
        ("WaveLR read and write in order / memory copy", speed["WaveLRReadAndWrite"] / copy, "times",
         floor, "at least"),
        ("gain with rounding and clipping by runs / memory copy", speed["GainByRuns"] / copy, "times",
         0.5, "at least"),
        ("the same on shared samples / memory copy", speed["GainOfSharedSamplesByRuns"] / copy,
         "times", None, ""),
    ]


def painted(desktop, process, file):
    """Whether the window of that file shows more than a few colours."""
    for window in desktop.windows(process):
        if not window.title.startswith(file.name):
            continue
        picture = subprocess.run(["xwd", "-silent", "-id", window.id], env=desktop.env,
                                 capture_output=True)
        middle = picture.stdout[len(picture.stdout) // 3:len(picture.stdout) * 2 // 3]
        if len({middle[i:i + 4] for i in range(0, len(middle), 4 * 101)}) > 4:
            return True
    return False


def start_seconds(desktop, editor, file):
    """From the start of the process to the painted window."""
    begin = time.monotonic()
    process = desktop.start([editor, file])
    wait_until(lambda: painted(desktop, process, file), f"the window of {file.name}")
    seconds = time.monotonic() - begin
    desktop.close_all(process)
    return seconds


def make_wav(path, frames, pattern):
    data = frames * 4
    with open(path, "wb") as out:
        out.write(b"RIFF" + (data + 36).to_bytes(4, "little") + b"WAVEfmt " + (16).to_bytes(4, "little")
                  + (1).to_bytes(2, "little") + (2).to_bytes(2, "little")
                  + (44100).to_bytes(4, "little") + (176400).to_bytes(4, "little")
                  + (4).to_bytes(2, "little") + (16).to_bytes(2, "little")
                  + b"data" + data.to_bytes(4, "little"))
        left = data
        while left > 0:
            out.write(pattern[:min(left, len(pattern))])
            left -= len(pattern)


def start_rows(build, work):
    folder = Path(tempfile.mkdtemp(prefix="quoril-start-", dir=work)).resolve()
    # Copies of the programs in a folder of their own, so that they keep their settings there.
    for program in ("quoril-wave-editor", "quoril-player"):
        shutil.copy2(Path(build, "src", program), folder)
    (folder / "quoril-wave-editor.ini").write_text("[General]\nShowNewUserGuide=0\n")
    pattern = bytes((i * i >> 4) & 255 for i in range(1 << 20))
    short, long = folder / "short.wav", folder / "long.wav"
    make_wav(short, 44100, pattern)
    make_wav(long, 500000000, pattern)
    try:
        with VirtualDesktop(1600, 1000) as desktop:
            desktop.start_sound()
            times = {}
            for file in (short, long):
                times[file] = min(start_seconds(desktop, folder / "quoril-wave-editor", file)
                                  for _ in range(START_ROUNDS))
    finally:
        shutil.rmtree(folder)
    return [("start to painted window: 2 GB / one second", times[long] / times[short], "times", 1.3,
             "at most"),
            ("start to painted window: one second of sound", times[short], "s", None, "")]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--work", default=".")
    given = parser.parse_args()
    build = os.path.abspath(given.build)
    program = os.path.join(build, "bench", "quoril_")
    rows = store_rows(program + "store_bench", given.work)
    for command in ([program + "file_bench", "speed"], [program + "file_bench", "memory"],
                    [program + "clip_bench", "clip"], [program + "clip_bench", "computing"],
                    [program + "draw_bench"], [program + "drag_bench"], [program + "redraw_bench"]):
        for name, value, unit, limit in lines_of(command, given.work):
            kind = "at least" if limit < 0 else "at most"
            rows.append((name, value, unit, abs(limit) or None, kind))
    rows += start_rows(build, given.work)
    print("| measured | value | limit | |\n|---|---|---|---|")
    missed = 0
    for name, value, unit, limit, kind in rows:
        held = limit is None or (value <= limit if kind == "at most" else value >= limit)
        missed += not held
        bound = f"{kind} {limit:.3g} {unit}" if limit is not None else ""
        verdict = "" if limit is None else "held" if held else "missed"
        print(f"| {name} | {value:.3g} {unit} | {bound} | {verdict} |")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
