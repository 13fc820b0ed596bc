"""scripts/install-packages, with a dpkg, an apt and a sudo made up for the test."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "scripts" / "install-packages"

# Each writes what it was called with into "calls"; "installed" is the state of the made-up system.
FAKES = {
    "dpkg-query": """
for name in "$@"; do
    case $name in -*) continue ;; esac
    if grep -qx "$name" installed; then echo "installed $name"
    elif grep -qx "$name" removed; then echo "config-files $name"
    else echo "dpkg-query: no packages found matching $name" >&2; fi
done""",
    "apt-get": """
while [ $# -gt 0 ]; do
    case $1 in -o) shift ;; update | install) break ;; esac
    shift
done
echo "apt-get $*" >>calls
if [ -s locked ]; then
    sed -i 1d locked
    echo "E: Could not get lock /var/lib/apt/lists/lock." >&2
    exit 100
fi
[ -e broken-$1 ] && { echo "E: no network" >&2; exit 100; }
[ "$1" = install ] || exit 0
shift
for name in "$@"; do case $name in -*) ;; *) echo "$name" >>installed ;; esac; done""",
    "sudo": """
echo "sudo $1 $2" >>calls
[ -e no-sudo ] && exit 1
while [ "$1" = -n ]; do shift; done
touch as-root
exec "$@" """,
    "id": "[ -e ordinary-user ] && echo 1000 || echo 0",
    "sleep": "",
}


class InstallPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "bin").mkdir()
        for name, body in FAKES.items():
            self.write(f"bin/{name}", f"#!/bin/sh\ncd '{self.root}'\n{body}\n").chmod(0o755)
        for name in ("calls", "installed", "removed", "locked"):
            self.write(name, "")
        self.list = self.write("packages.txt", "# things\ncmake   the build\n\ng++  # compiler\n")

    def write(self, name, text=""):
        path = self.root / name
        path.write_text(text, encoding="utf-8")
        return path

    def install(self, *lists, path=None):
        env = dict(os.environ, PATH=path or f"{self.root}/bin:/usr/bin:/bin",
                   QUORIL_APT_LOCK=str(self.root / "lock"))
        return subprocess.run([SCRIPT, *(lists or [self.list])], env=env, cwd=self.root,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60)

    def calls(self):
        return (self.root / "calls").read_text(encoding="utf-8").splitlines()

    def test_nothing_missing_asks_nothing_of_apt(self):
        self.write("installed", "cmake\ng++\n")
        done = self.install()
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertEqual(self.calls(), [])

    def test_only_what_is_missing_is_installed_and_named(self):
        self.write("installed", "cmake\n")
        done = self.install()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("needed and missing: g++\n", done.stdout)
        self.assertEqual(self.calls(), ["apt-get update", "apt-get install -y --no-install-recommends g++"])

    def test_lists_are_added_up_and_each_package_counts_once(self):
        other = self.write("more.txt", "g++\nsox\n")
        self.assertEqual(self.install(self.list, other).returncode, 0)
        self.assertEqual(self.calls()[-1],
                         "apt-get install -y --no-install-recommends cmake g++ sox")

    def test_a_removed_package_whose_settings_are_left_is_missing(self):
        self.write("installed", "cmake\n")
        self.write("removed", "g++\n")
        self.install()
        self.assertEqual(self.calls()[-1], "apt-get install -y --no-install-recommends g++")

    def test_an_ordinary_user_installs_through_sudo(self):
        self.write("ordinary-user")
        done = self.install()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue((self.root / "as-root").exists())
        self.assertIn("apt-get update", self.calls())

    def test_root_needs_no_sudo(self):
        self.assertEqual(self.install().returncode, 0)
        self.assertFalse((self.root / "as-root").exists())

    def test_a_user_whom_sudo_refuses_is_told_what_to_install(self):
        self.write("ordinary-user")
        self.write("no-sudo")
        done = self.install()
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("sudo does not let you install them. As root: apt-get install cmake g++",
                      done.stderr)

    def test_without_the_lists_of_packages_those_at_hand_are_used(self):
        self.write("broken-update")
        done = self.install()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("could not all be fetched", done.stdout)

    def test_a_failed_installation_fails_and_names_the_packages(self):
        self.write("broken-install")
        done = self.install()
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("could not install: cmake g++", done.stderr)
        self.assertIn("E: no network", done.stdout)

    def test_another_user_of_apt_is_waited_for(self):
        self.write("locked", "once\ntwice\n")
        done = self.install()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.calls()[:3], ["apt-get update"] * 3)
        self.assertIn("waiting for it", done.stdout)

    def test_two_runs_at_once_install_once(self):
        env = dict(os.environ, PATH=f"{self.root}/bin:/usr/bin:/bin",
                   QUORIL_APT_LOCK=str(self.root / "lock"))
        runs = [subprocess.Popen([SCRIPT, self.list], env=env, stdin=subprocess.DEVNULL,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
                for _ in range(4)]
        said = [run.communicate(timeout=60)[0] for run in runs]
        self.assertEqual([run.returncode for run in runs], [0] * 4, said)
        installs = [call for call in self.calls() if call.startswith("apt-get install")]
        self.assertEqual(len(installs), 1, said)

    def test_a_missing_list_is_named(self):
        done = self.install("nowhere.txt")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("nowhere.txt cannot be read", done.stderr)

    def test_a_system_without_apt_is_told_what_is_needed(self):
        # Only the tools that the script uses, and neither dpkg nor apt among them.
        bare = self.root / "bare"
        bare.mkdir()
        for tool in ("bash", "env", "sed", "awk", "sort", "tr"):
            (bare / tool).symlink_to(f"/usr/bin/{tool}")
        done = self.install(path=str(bare))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("not a Debian system", done.stdout)
        self.assertIn("cmake g++", done.stdout)


class ListsOfPackages(unittest.TestCase):
    def test_each_package_says_what_it_is_for(self):
        lists = sorted((SCRIPT.parents[1] / "packaging").glob("packages-*.txt"))
        self.assertEqual([path.stem for path in lists],
                         ["packages-check", "packages-run", "packages-screen", "packages-test"])
        for path in lists:
            for line in path.read_text(encoding="utf-8").splitlines():
                if line and not line.startswith("#"):
                    self.assertRegex(line, r"^[a-z0-9][a-z0-9.+-]+ +\S", path)


if __name__ == "__main__":
    unittest.main()
