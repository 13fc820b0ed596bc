#!/usr/bin/env python3
"""Runs commands over a whole file beside sox, in turns, and prints the ratios as Markdown.

usage: bench/beside_sox.py [--build build/release] [--work FOLDER] [--minutes 30] [--rounds 5]

Needs sox, and ffmpeg for the noise reduction. The file is stereo, 16 bits, 44100 Hz, made by sox of
pink noise and kept in the system's cache; files are read from and written to the work folder
(default: the current one), which needs 5 GB. Ours opens the file, runs the command over everything
and saves to another file; the other tool does the same by its own effect, without dither. Of every
time the shortest of all rounds counts, so that what else the machine does matters little.
"--memory" measures only the memory of long documents.
"""
import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

# What it is called, our command, what sox is told for the same, and the most of sox's time.
CASES = [
    ("volume 50 %", "volume-50", ["vol", "0.5"], 0.55),
    ("Fade In", "fade-in", ["fade", "t", "{seconds}"], 0.45),
    ("Fade Out", "fade-out", ["fade", "t", "0", "{seconds}", "{seconds}"], 0.45),
    ("Reverse", "reverse", ["reverse"], 0.45),
    ("Maximize", "maximize", ["gain", "-n"], 0.45),
    ("Invert", "invert", ["vol", "-1"], 0.45),
    ("Channel Mix, averages", "mix-average", ["remix", "1,2", "1,2"], 0.45),
    ("Channel Mix, sum and difference", "mix-sums", ["remix", "-m", "1,2", "1,2i"], 0.45),
]
# The same for the filters, each with the whole line of the other tool.
BANDS = "60 150 400 1000 2400 5000 9000 15000".split()
GAINS = "-3 0 2 0 -6 3 -2 5".split()
FILTERS = [
    ("equalizer of 8 bands", "equalize", ["sox", "-D", "{source}", "{out}"] +
     [word for band, gain in zip(BANDS, GAINS) for word in ("equalizer", band, "1q", gain)], 0.5),
    ("noise reduction", "reduce-noise", ["ffmpeg", "-v", "error", "-y", "-i", "{source}",
                                         "-af", "afftdn", "{out}"], 0.3),
]
LONGEST_COMMAND = 0.6  # seconds
MOST_READ = 1.02  # of the file
MOST_BESIDE_CP = 2.8
LONGEST_UNDO = 5.0  # milliseconds
MOST_ABOVE_BUDGET = 150.0  # MB
LONGEST_STILL = 0.25  # seconds between two moves of the bar
LARGEST_FILE_FRAMES = 268000000  # 1.07 GB: what the disk guard can add up with the command's own need


def run(command):
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"{' '.join(str(part) for part in command)} failed:\n{done.stdout}{done.stderr}")
    return done.stdout


def seconds_of(command, out):
    out.unlink(missing_ok=True)
    begin = time.monotonic()
    output = run(command)
    return time.monotonic() - begin, output


class OneRun:
    """What quoril_command_bench tells."""

    def __init__(self, output):
        self.steps = {}
        self.numbers = {}
        for line in output.splitlines():
            name, *values = line.split("\t")
            if len(values) == 1:
                self.numbers[name] = int(values[0])
            else:
                self.steps[name] = tuple(float(value) for value in values)

    def above_budget(self):
        return (self.numbers["peak"] - self.numbers["budget"]) / 1e6


class Table:
    def __init__(self):
        self.missed = 0
        print("| measured | value | limit | |\n|---|---|---|---|")

    def row(self, name, value, unit, limit=None):
        held = limit is None or value <= limit
        self.missed += not held
        bound = "" if limit is None else f"at most {limit:.3g} {unit}"
        verdict = "" if limit is None else "held" if held else "missed"
        print(f"| {name} | {value:.3g} {unit} | {bound} | {verdict} |", flush=True)


def beside_sox(table, program, source, out, seconds, rounds):
    best = {}
    ratios = {}
    for turn in range(rounds):
        for name, command, effect, _ in CASES:
            words = [word.format(seconds=seconds) for word in effect]
            contest = [("sox", ["sox", "-D", source, out] + words),
                       ("ours", [program, command, source, out])]
            times = {}
            for who, line in contest if turn % 2 else reversed(contest):
                times[who], _ = seconds_of(line, out)
                best[name, who] = min(best.get((name, who), 1e9), times[who])
            ratios.setdefault(name, []).append(times["ours"] / times["sox"])
    for name, _, _, limit in CASES:
        ours, sox = best[name, "ours"], best[name, "sox"]
        table.row(f"open, {name}, save: ours / sox", ours / sox, "times", limit)
        table.row(f"the same, middle of {rounds} rounds", statistics.median(ratios[name]), "times")
        table.row("the same, ours", ours, "s")
        table.row("the same, sox", sox, "s")
    copy = min(seconds_of(["cp", source, out], out)[0] for _ in range(rounds))
    table.row("cp of the file", copy, "s")
    name = CASES[0][0]
    table.row(f"open, {name}, save: ours / cp", best[name, "ours"] / copy, "times", MOST_BESIDE_CP)


def filters(table, program, source, out, rounds):
    """Ours beside sox and ffmpeg, in turns; how the bar moves, what is read, and the memory."""
    for name, command, words, limit in FILTERS:
        other = [word.format(source=source, out=out) for word in words]
        ours, theirs, ratios, runs = [], [], [], []
        for _ in range(rounds):
            theirs.append(seconds_of(other, out)[0])
            seconds, output = seconds_of([program, command, source, out], out)
            ours.append(seconds)
            runs.append(OneRun(output))
            ratios.append(ours[-1] / theirs[-1])
        table.row(f"open, {name}, save: ours / {words[0]}", min(ours) / min(theirs), "times", limit)
        table.row(f"the same, middle of {rounds} rounds", statistics.median(ratios), "times")
        table.row("the same, ours", min(ours), "s")
        table.row(f"the same, {words[0]}", min(theirs), "s")
        table.row(f"{name}: bytes read / the file's",
                  runs[0].steps["command"][1] / source.stat().st_size, "times")
        table.row(f"{name}: longest time without a move of the bar",
                  min(one.steps["command"][3] for one in runs), "s", LONGEST_STILL)
        for what, files in (("", [source, out]), (", 2 GB in work files", ["--work-files", out])):
            one = OneRun(run([program, command] + files))
            out.unlink(missing_ok=True)
            table.row(f"{name}{what}: peak memory above the budget", one.above_budget(), "MB",
                      MOST_ABOVE_BUDGET)


def steps(table, program, source, rounds):
    for name, command, _, _ in CASES:
        runs = [OneRun(run([program, command, source])) for _ in range(rounds)]
        table.row(f"{name}: the command", min(one.steps["command"][0] for one in runs), "s",
                  LONGEST_COMMAND)
        table.row(f"{name}: its undo", min(one.steps["undo"][0] for one in runs) * 1000, "ms",
                  LONGEST_UNDO)
        table.row(f"{name}: bytes read / the file's",
                  runs[0].steps["command"][1] / source.stat().st_size, "times", MOST_READ)
        table.row(f"{name}: longest time without a move of the bar",
                  min(one.steps["command"][3] for one in runs), "s", LONGEST_STILL)


def memory(table, program, work, source, out):
    def peak(name, words):
        one = OneRun(run([program] + words))
        out.unlink(missing_ok=True)
        table.row(f"{name}: peak memory above the budget", one.above_budget(), "MB",
                  MOST_ABOVE_BUDGET)

    for name, command, _, _ in CASES:
        peak(name, [command, source, out])
    large = work / "large.wav"
    run(["sox", "-n", "-r", 44100, "-c", 2, "-b", 16, large, "synth", f"{LARGEST_FILE_FRAMES}s",
         "sine", 300, "gain", -6])
    for name, command, _, _ in CASES:
        peak(f"{name}, file of 1.07 GB", [command, large, out])
    large.unlink()
    for name, command, _, _ in CASES:
        if not command.startswith("mix"):  # the sound in work files is mono
            peak(f"{name}, 2 GB in work files", [command, "--work-files", out])


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--work", default=".")
    parser.add_argument("--minutes", type=int, default=30)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--memory", action="store_true")
    given = parser.parse_args()
    for tool in ("sox", "ffmpeg"):
        if shutil.which(tool) is None:
            sys.exit(f"{tool} is not installed")
    program = Path(given.build, "bench", "quoril_command_bench").resolve()
    work = Path(tempfile.mkdtemp(prefix="quoril-beside-", dir=given.work)).resolve()
    source, out = work / "in.wav", work / "out.wav"
    seconds = 60 * given.minutes
    here = os.getcwd()
    os.chdir(work)
    os.environ["TMPDIR"] = str(work)  # the benchmark makes its session folder here
    try:
        run(["sox", "-R", "-n", "-r", 44100, "-c", 2, "-b", 16, source, "synth", seconds,
             "pinknoise", "gain", -6])
        os.sync()
        table = Table()
        if not given.memory:
            beside_sox(table, program, source, out, seconds, given.rounds)
            steps(table, program, source, given.rounds)
            filters(table, program, source, out, given.rounds)
        memory(table, program, work, source, out)
    finally:
        os.chdir(here)
        shutil.rmtree(work)
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
