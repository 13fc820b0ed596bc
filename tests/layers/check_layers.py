"""check_layers.py ROOT: finds includes that the house does not allow, in ROOT/src:

- A folder includes only itself and folders below it.
- A window (a header named *Frm) is included by another folder only in the shell and in main.cpp.
- What is compiled into quoril_core or quoril_player_core includes no Qt header, neither itself nor
  through a header.
- Every include in quotes names a file that is there, by its path from src.
"""

import re
import sys
from pathlib import Path

# The floors of the house from the ground up; folders on one floor do not know each other.
FLOORS = [
    {"base"},
    {"platform"},
    {"settings"},
    {"storage"},
    {"selection"},
    {"audiofile", "bookmarks", "playback", "recording"},
    {"edit", "effects"},
    {"view"},
    {"shell"},
]
# Programs of their own: the player stands on the lower floors, the encoder on none, and nothing
# stands on them.
BESIDE = {"player": {"base", "platform", "settings", "storage"}, "wmaencoder": set()}
ALL_FOLDERS = set().union(*FLOORS)
MAIN = "main.cpp"

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
CORE_SOURCES = re.compile(
    r"(?:target_sources|add_library)\s*\(\s*(?:quoril_core|quoril_player_core)\b([^)]*)\)")


def folders_below(folder):
    """The folders that a folder may include, itself among them."""
    if folder in BESIDE:
        return BESIDE[folder] | {folder}
    below = {folder}
    for floor in FLOORS:
        if folder in floor:
            return below
        below |= floor
    return None


class House:
    """The source tree below `root`/src, as includes see it."""

    def __init__(self, root):
        self.src = Path(root) / "src"
        self.includes = {}  # path from src -> list of (is_system, name)
        for path in sorted(self.src.rglob("*")):
            if path.suffix in (".h", ".cpp"):
                text = path.read_text(encoding="utf-8")
                self.includes[path.relative_to(self.src).as_posix()] = [
                    (mark == "<", name) for mark, name in INCLUDE.findall(text)]
        if not self.includes:
            raise ValueError(f"there is no source in {self.src}")

    def target(self, path, name):
        """The file of the tree that an include in quotes means, or None."""
        beside = (Path(path).parent / name).as_posix()
        return next((known for known in (name, beside) if known in self.includes), None)

    def core_sources(self):
        """The files that the CMake files compile into the libraries without Qt."""
        sources = []
        for lists in sorted(self.src.rglob("CMakeLists.txt")):
            text = re.sub(r"#.*", "", lists.read_text(encoding="utf-8"))
            for words in CORE_SOURCES.findall(text):
                for word in words.split():
                    if word not in ("PRIVATE", "PUBLIC", "INTERFACE", "STATIC"):
                        sources.append((lists.parent / word).relative_to(self.src).as_posix())
        return sources


def check_floors(house):
    for path, includes in house.includes.items():
        if path == MAIN:
            continue
        folder = path.split("/")[0]
        below = folders_below(folder)
        if below is None:
            yield f"{path} lies in no folder of the house"
            continue
        for is_system, name in includes:
            other = name.split("/")[0]
            if is_system or other == folder or "/" not in name:
                continue
            if other not in below:
                yield f"{path} includes {name}, which is not below {folder}"
            elif Path(name).stem.endswith("Frm") and folder != "shell":
                yield f"{path} includes {name}, a window of another folder"


def check_files(house):
    for path, includes in house.includes.items():
        for is_system, name in includes:
            if is_system and name in house.includes:
                yield f"{path} includes its own {name} in angle brackets"
            # What a build step makes (moc, the player's interface) is not in the tree.
            elif not is_system and "/" in name and house.target(path, name) is None:
                yield f"{path} includes {name}, which does not exist"


def is_qt(name):
    return re.match(r"Q[A-Z]|Qt[A-Z]\w*/|q[a-z]+\.h$", name) is not None


def check_core(house):
    sources = house.core_sources()
    if not sources:
        yield "no CMake file names a source of a library without Qt"
    for source in sources:
        if source not in house.includes:
            yield f"{source} is compiled into a library without Qt and does not exist"
            continue
        way = {source: None}  # file -> the file that included it
        waiting = [source]
        while waiting:
            path = waiting.pop()
            for is_system, name in house.includes[path]:
                if is_qt(name):
                    yield (f"{source} is compiled without Qt and includes <{name}>"
                           f"{_through(way, path)}")
                target = None if is_system else house.target(path, name)
                if target is not None and target not in way:
                    way[target] = path
                    waiting.append(target)


def _through(way, path):
    steps = []
    while way[path] is not None:
        steps.append(path)
        path = way[path]
    return " through " + " and ".join(reversed(steps)) if steps else ""


def complaints(root):
    """Everything in the tree that the house does not allow, one sentence each."""
    house = House(root)
    return [*check_floors(house), *check_files(house), *check_core(house)]


def main(root):
    found = complaints(root)
    for sentence in found:
        print(sentence)
    print(f"{len(found)} includes against the order of the house" if found
          else "All includes keep the order of the house.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
