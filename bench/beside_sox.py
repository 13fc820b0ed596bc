#!/usr/bin/env python3
"""Runs commands over a whole file beside sox or ffmpeg, in turns, and prints the ratios as Markdown.

usage: bench/beside_sox.py [--build build/release] [--work FOLDER] [--minutes 30] [--rounds 5]
                            [--memory] [--only COMMAND...]

Needs sox and ffmpeg. The file is stereo, 16 bits, 44100 Hz, made by sox of pink noise and kept in
the system's cache; files are read from and written to the work folder (default: the current one),
which needs 5 GB. Ours opens the file, runs the command over everything and saves to another file; the
other does the same by its own effect, without dither, or only writes what is made out of nothing. Of
every time the shortest of all rounds counts, so that what else the machine does matters little.
"--memory" measures only the memory of long documents.
"""
import argparse
import array
import os
import random
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

LONGEST_COMMAND = 0.6  # seconds


class Case:
    """What it is called, our command, the other program's line for the same, and the most of its
    time. Of a line that begins with no program the rest is an effect of sox."""

    def __init__(self, name, command, line, limit, source="stereo", longest=LONGEST_COMMAND,
                 much_space=False):
        self.name = name
        self.command = command
        self.line = line if "{out}" in line else ["sox", "-D", "{in}", "{out}"] + line
        self.limit = limit
        self.source = source    # which of the files it works on
        self.longest = longest  # seconds of the command itself, where there is a limit
        self.much_space = much_space  # asks for more than there is beside the longest documents

    def other(self):
        return self.line[0]

    def on_long_files(self):
        """Whether a longer file and one in work files, of two equal channels, are of its kind."""
        return self.source == "stereo" and not self.much_space


def ffmpeg(effect):
    return ["ffmpeg", "-v", "error", "-y", "-i", "{in}", "-af", effect, "{out}"]


def made_by_sox(*sound):
    return ["sox", "-D", "-n", "-r", "44100", "-c", "2", "-b", "16", "{out}", "synth", "{seconds}",
            *sound]


BANDS = "60 150 400 1000 2400 5000 9000 15000".split()
GAINS = "-3 0 2 0 -6 3 -2 5".split()
EQUALIZER = [word for band, gain in zip(BANDS, GAINS) for word in ("equalizer", band, "1q", gain)]

CASES = [
    Case("volume 50 %", "volume-50", ["vol", "0.5"], 0.55),
    Case("Fade In", "fade-in", ["fade", "t", "{seconds}"], 0.45),
    Case("Fade Out", "fade-out", ["fade", "t", "0", "{seconds}", "{seconds}"], 0.45),
    Case("Reverse", "reverse", ["reverse"], 0.45),
    Case("Maximize", "maximize", ["gain", "-n"], 0.45),
    Case("Invert", "invert", ["vol", "-1"], 0.45),
    Case("Channel Mix, averages", "mix-average", ["remix", "1,2", "1,2"], 0.45),
    Case("Channel Mix, sum and difference", "mix-sums", ["remix", "-m", "1,2", "1,2i"], 0.45),
    Case("16 to 8 bits", "8-bits", ["sox", "-D", "{in}", "-b", "8", "{out}"], 0.6),
    Case("stereo to mono by merge", "mono-merge", ["remix", "1,2"], 0.6),
    Case("mono to stereo", "stereo", ["remix", "1", "1"], 0.6, source="mono"),
    Case("44100 to 22050 Hz", "rate-22050", ffmpeg("aresample=22050"), 1.0),
    Case("equalizer of 8 bands", "equalize", EQUALIZER, 0.5, longest=None),
    Case("noise reduction", "reduce-noise", ffmpeg("afftdn"), 0.3, longest=None),
    Case("echo of 5 repeats", "echo",
         ffmpeg("aecho=0.8:0.9:80|140|200|260|320:0.8|0.64|0.51|0.41|0.33"), 0.5, longest=None),
    Case("Change Speed 150", "speed-150", ffmpeg("asetrate=66150,aresample=44100"), 1.0,
         longest=None, much_space=True),
    Case("Sine Wave", "sine", made_by_sox("sine", "200-1000"), 1.0, longest=None),
    Case("Noise", "noise", made_by_sox("noise"), 1.0, longest=None),
    Case("Modulate", "modulate", made_by_sox("sine", "200-1000"), 1.0, longest=None),
    # Half a second of each silence is left.
    Case("Delete Silence", "delete-silence",
         ["silence", "-l", "1", "0.1", "1%", "-1", "0.5", "1%"], 0.5, source="speech"),
]
# Files of other types, opened and saved as they are: what sox is told of such a file.
TYPES = [("au", []), ("raw", ["-t", "raw", "-r", "44100", "-c", "2", "-b", "16", "-e", "signed"])]
MOST_OF_TYPE = 0.6  # of sox's time
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


def write_speech(path, seconds):
    """A file whose frames are loud and quiet in turns of 0.2 to 3 s."""
    choice = random.Random(1)
    most = 3 * 44100 * 2
    loud, quiet = (array.array("h", (choice.randint(-top, top) for _ in range(most))).tobytes()
                   for top in (20000, 200))
    size = seconds * 44100 * 4
    with open(path, "wb") as file:
        file.write(b"RIFF" + struct.pack("<I", 36 + size) + b"WAVEfmt " +
                   struct.pack("<IHHIIHH", 16, 1, 2, 44100, 176400, 4, 16) +
                   b"data" + struct.pack("<I", size))
        while size > 0:
            for sound in (loud, quiet):
                run_length = min(4 * choice.randint(8820, 132300), size)
                file.write(sound[:run_length])
                size -= run_length


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


def beside_others(table, program, sources, out, seconds, cases, rounds):
    best = {}
    ratios = {}
    for turn in range(rounds):
        for case in cases:
            source = sources[case.source]
            words = [word.format(**{"in": source, "out": out, "seconds": seconds})
                     for word in case.line]
            contest = [("other", words), ("ours", [program, case.command, source, out])]
            times = {}
            for who, line in contest if turn % 2 else reversed(contest):
                times[who], _ = seconds_of(line, out)
                best[case.name, who] = min(best.get((case.name, who), 1e9), times[who])
            ratios.setdefault(case.name, []).append(times["ours"] / times["other"])
    for case in cases:
        ours, other = best[case.name, "ours"], best[case.name, "other"]
        table.row(f"open, {case.name}, save: ours / {case.other()}", ours / other, "times",
                  case.limit)
        table.row(f"the same, middle of {rounds} rounds", statistics.median(ratios[case.name]),
                  "times")
        table.row("the same, ours", ours, "s")
        table.row(f"the same, {case.other()}", other, "s")
    if CASES[0] in cases:
        copy = min(seconds_of(["cp", sources["stereo"], out], out)[0] for _ in range(rounds))
        table.row("cp of the file", copy, "s")
        name = CASES[0].name
        table.row(f"open, {name}, save: ours / cp", best[name, "ours"] / copy, "times",
                  MOST_BESIDE_CP)


def types_beside_sox(table, program, work, source, rounds):
    for ending, form in TYPES:
        made, out = work / f"in.{ending}", work / f"out.{ending}"
        run(["sox", "-D", source, *form, made])
        best = {}
        for turn in range(rounds):
            contest = [("sox", ["sox", "-D", *form, made, *form, out]),
                       ("ours", [program, "nothing", made, out])]
            for who, line in contest if turn % 2 else reversed(contest):
                best[who] = min(best.get(who, 1e9), seconds_of(line, out)[0])
        table.row(f".{ending}, open and save: ours / sox", best["ours"] / best["sox"], "times",
                  MOST_OF_TYPE)
        table.row("the same, ours", best["ours"], "s")
        table.row("the same, sox", best["sox"], "s")
        table.row(f".{ending}: peak memory above the budget",
                  OneRun(run([program, "nothing", made, out])).above_budget(), "MB",
                  MOST_ABOVE_BUDGET)
        if made.read_bytes() != out.read_bytes() and ending == "raw":
            sys.exit("the raw file is not what it was")
        made.unlink()
        out.unlink()


def steps(table, program, sources, cases, rounds):
    for case in cases:
        source = sources[case.source]
        name = case.name
        runs = [OneRun(run([program, case.command, source])) for _ in range(rounds)]
        table.row(f"{name}: the command", min(one.steps["command"][0] for one in runs), "s",
                  case.longest)
        table.row(f"{name}: its undo", min(one.steps["undo"][0] for one in runs) * 1000, "ms",
                  LONGEST_UNDO)
        table.row(f"{name}: bytes read / the file's",
                  runs[0].steps["command"][1] / source.stat().st_size, "times", MOST_READ)
        table.row(f"{name}: longest time without a move of the bar",
                  min(one.steps["command"][3] for one in runs), "s", LONGEST_STILL)


def memory(table, program, work, sources, out, cases):
    def peak(name, words):
        one = OneRun(run([program] + words))
        out.unlink(missing_ok=True)
        table.row(f"{name}: peak memory above the budget", one.above_budget(), "MB",
                  MOST_ABOVE_BUDGET)

    for case in cases:
        peak(case.name, [case.command, sources[case.source], out])
    large = work / "large.wav"
    run(["sox", "-n", "-r", 44100, "-c", 2, "-b", 16, large, "synth", f"{LARGEST_FILE_FRAMES}s",
         "sine", 300, "gain", -6])
    for case in cases:
        if case.on_long_files():
            peak(f"{case.name}, file of 1.07 GB", [case.command, large, out])
    large.unlink()
    for case in cases:
        # The sound in work files has two equal channels.
        if case.on_long_files() and not case.command.startswith("mix"):
            peak(f"{case.name}, 2 GB in work files", [case.command, "--work-files", out])


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--work", default=".")
    parser.add_argument("--minutes", type=int, default=30)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--memory", action="store_true")
    parser.add_argument("--only", nargs="+", metavar="COMMAND", help="some of the commands")
    given = parser.parse_args()
    for needed in ("sox", "ffmpeg"):
        if shutil.which(needed) is None:
            sys.exit(f"{needed} is not installed")
    cases = [case for case in CASES if given.only is None or case.command in given.only]
    program = Path(given.build, "bench", "quoril_command_bench").resolve()
    work = Path(tempfile.mkdtemp(prefix="quoril-beside-", dir=given.work)).resolve()
    out = work / "out.wav"
    sources = {kind: work / f"{kind}.wav" for kind in ("stereo", "mono", "speech")}
    source = sources["stereo"]
    seconds = 60 * given.minutes
    here = os.getcwd()
    os.chdir(work)
    os.environ["TMPDIR"] = str(work)  # the benchmark makes its session folder here
    try:
        run(["sox", "-R", "-n", "-r", 44100, "-c", 2, "-b", 16, source, "synth", seconds,
             "pinknoise", "gain", -6])
        run(["sox", "-D", source, sources["mono"], "remix", 1])
        write_speech(sources["speech"], seconds)
        os.sync()
        table = Table()
        if not given.memory:
            beside_others(table, program, sources, out, seconds, cases, given.rounds)
            steps(table, program, sources, cases, given.rounds)
            if given.only is None:
                types_beside_sox(table, program, work, source, given.rounds)
        memory(table, program, work, sources, out, cases)
    finally:
        os.chdir(here)
        shutil.rmtree(work)
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
