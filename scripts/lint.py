"""lint.py [--build FOLDER] [--since COMMIT | --all | FILE...]: clang-tidy over the sources of src/
and tools/ that a change concerns.

Without a choice these are the sources that differ from where the branch left origin/main, or, on that
branch itself, from RECENT commits ago. For a header that changed, one source that includes it is
looked at. A change of .clang-tidy concerns everything.
"""

import argparse
import json
import os
import re
import shlex
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
RECENT = 40
LINTED = ("src/", "tools/")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def git(*words):
    """The lines that git answers; None when it cannot."""
    done = subprocess.run(["git", *words], cwd=ROOT, capture_output=True, text=True, check=False)
    return done.stdout.splitlines() if done.returncode == 0 else None


def usual_base():
    """The commit to compare with when none is named; None for everything."""
    head, left = git("rev-parse", "HEAD"), git("merge-base", "HEAD", "origin/main")
    if left and left != head:
        return left[0]
    recent = git("rev-parse", "--verify", "--quiet", f"HEAD~{RECENT}")
    return recent[0] if recent else None


def changed_since(base):
    """The files that differ from a commit, those that git does not know yet among them."""
    changed = git("diff", "--name-only", "--diff-filter=d", base)
    if changed is None:
        sys.exit(f"git knows no commit {base}.")
    return sorted({*changed, *git("ls-files", "--others", "--exclude-standard")})


def sources_for(changed, includes):
    """The sources to look at. `includes`: source -> what it includes in quotes."""
    if ".clang-tidy" in changed:
        return sorted(includes)
    chosen = {path for path in changed if path in includes}
    for path in changed:
        if not path.endswith(".h") or not path.startswith(LINTED):
            continue
        name = path.split("/", 1)[1]
        users = [source for source, names in sorted(includes.items()) if name in names]
        if users and not chosen.intersection(users):
            own = path.removesuffix(".h") + ".cpp"
            chosen.add(own if own in users else users[0])
    return sorted(chosen)


def without_precompiled(command):
    """A compiler's command that reads every header as it is written."""
    words, kept = shlex.split(command), []
    for word in words:
        if word.endswith("cmake_pch.hxx") and kept and kept[-1] == "-include":
            kept.pop()
        elif word != "-Winvalid-pch":
            kept.append(word)
    return shlex.join(kept)


def commands_for_lint(build):
    """Writes the compiler's commands of a build for clang-tidy, and gives their folder."""
    known = build / "compile_commands.json"
    if not known.is_file():
        sys.exit(f"{build} is not configured.")
    entries = json.loads(known.read_text(encoding="utf-8"))
    for entry in entries:
        entry["command"] = without_precompiled(entry["command"])
    folder = build / "lint"
    folder.mkdir(exist_ok=True)
    (folder / "compile_commands.json").write_text(json.dumps(entries), encoding="utf-8")
    return folder


def chosen_files(given):
    tracked = git("ls-files", "--cached", "--others", "--exclude-standard", "--",
                  *(f"{folder}*.cpp" for folder in LINTED))
    if given.files:
        return [os.path.relpath(Path(name).resolve(), ROOT) for name in given.files]
    base = None if given.all else given.since or usual_base()
    if base is None:
        return tracked
    includes = {source: set(INCLUDE.findall((ROOT / source).read_text(encoding="utf-8")))
                for source in tracked if (ROOT / source).is_file()}
    return sources_for(changed_since(base), includes)


def main():
    parser = argparse.ArgumentParser(prog="scripts/lint.py")
    parser.add_argument("--build", type=Path, default=ROOT / "build" / "release")
    parser.add_argument("--since")
    parser.add_argument("--all", action="store_true")
    parser.add_argument("files", nargs="*")
    given = parser.parse_args()
    files = chosen_files(given)
    print(f"clang-tidy looks at {len(files)} sources.", flush=True)
    if not files:
        return 0
    done = subprocess.run(
        ["run-clang-tidy", "-quiet", f"-header-filter=^{ROOT}/(src|tools)/", "-p",
         str(commands_for_lint(given.build)), "-j", str(os.cpu_count()),
         *(f"^{re.escape(str(ROOT / file))}$" for file in files)],
        cwd=ROOT, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        print(done.stdout + done.stderr)
        print("clang-tidy finds fault with the source; its words are above.")
    return done.returncode


if __name__ == "__main__":
    sys.exit(main())
