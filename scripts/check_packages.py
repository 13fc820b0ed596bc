"""check_packages.py LISTS BUILD: what a build has really read and is linked to must come from the
packages of the lists (separated by commas) or from what those depend on. On a machine that has more
installed, a package that the lists forget would be missed only by the next fresh machine."""

import re
import subprocess
import sys
from pathlib import Path


def lines_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()


def listed(paths):
    """The packages that lists name."""
    lines = [line.split("#")[0].split() for path in paths
             for line in Path(path).read_text(encoding="utf-8").splitlines()]
    return {words[0] for words in lines if words}


class Installed:
    """The packages of this machine, and what they need."""

    def __init__(self):
        self.needs, self.providers = {}, {}
        for line in lines_of("dpkg-query", "-W", "-f", "${Package}\t${Essential}\t${Provides}\t"
                             "${Depends}, ${Pre-Depends}\n"):
            name, essential, provides, depends = line.split("\t")
            self.needs[name] = [self._names(choice) for choice in depends.split(",")]
            for given in [name, *self._names(provides.replace(",", "|"))]:
                self.providers.setdefault(given, set()).add(name)
            if essential == "yes":
                self.providers.setdefault("", set()).add(name)

    @staticmethod
    def _names(choice):
        return re.findall(r"(?:^|\|)\s*([a-z0-9][a-z0-9.+-]+)", choice)

    def closure(self, names):
        """The named packages, the essential ones, and what all of them need."""
        waiting = set(names) | self.providers[""]
        found = set()
        while waiting:
            name = waiting.pop()
            if name in found or name not in self.needs:
                continue
            found.add(name)
            for choices in self.needs[name]:
                for choice in choices:
                    waiting |= self.providers.get(choice, set())
        return found


def files_of(build):
    """The system's files that the build has read as headers, and the libraries it is linked to."""
    files = set()
    for line in lines_of("ninja", "-C", build, "-t", "deps"):
        if line.startswith("    /"):
            files.add(line.strip())
    for path in Path(build).rglob("*"):
        if path.is_file() and path.stat().st_mode & 0o100 and path.read_bytes()[:4] == b"\x7fELF":
            for line in lines_of("ldd", path):
                found = re.search(r"=> (/\S+)", line)
                if found:
                    files.add(found.group(1))
    own = str(Path.cwd()) + "/"
    return {Path(file).resolve() for file in files if not file.startswith(own)}


def packages_of(files):
    """Which package each file comes from."""
    owners = {}
    for record in Path("/var/lib/dpkg/info").glob("*.list"):
        name = record.stem.split(":")[0]
        for file in record.read_text(encoding="utf-8").splitlines():
            owners[file] = name
    result = {}
    for file in files:
        # Where /lib is /usr/lib, a package may name either.
        owner = owners.get(str(file)) or owners.get(str(file).removeprefix("/usr"))
        result.setdefault(owner, []).append(str(file))
    return result


def main(lists, build):
    needed = packages_of(files_of(build))
    if len(needed) < 3:
        print(f"{build} has not been built: it reads nothing of the system.")
        return 1
    known = Installed().closure(listed(lists.split(",")))
    forgotten = {name: files for name, files in needed.items() if name not in known}
    for name, files in forgotten.items():
        print(f"{name or 'No package'} is needed and not listed: {sorted(files)[0]}")
    print(f"{build} needs {len(needed)} packages, {len(forgotten)} of them not listed.")
    return 1 if forgotten else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
