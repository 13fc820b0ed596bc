"""The lock that keeps two runs of the project's commands apart."""

import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


class OneAtATime(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def shell(self, text):
        return subprocess.Popen(["bash", "-uc", f"source scripts/common.sh\n{text}"], cwd=ROOT,
                                env={"PATH": "/usr/bin:/bin", "F": str(self.folder)},
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True)

    def test_no_two_commands_run_at_the_same_time(self):
        # Each run makes a folder that may not be there yet, and takes it away again.
        work = 'work() { mkdir "$F/here" && ls / >/dev/null && rmdir "$F/here" || echo met; }\n'
        runs = [self.shell(work + 'for turn in 1 2 3 4 5; do one_at_a_time "$F/a/lock" work; done')
                for _ in range(6)]
        said = [run.communicate(timeout=60)[0] for run in runs]
        self.assertNotIn("met", "".join(said))
        self.assertEqual([run.returncode for run in runs], [0] * 6)

    def test_the_command_keeps_its_own_exit_and_arguments(self):
        run = self.shell('say_all() { printf "<%s>" "$@"; }\none_at_a_time "$F/lock" say_all "a b" "*"')
        self.assertEqual(run.communicate(timeout=60)[0], "<a b><*>")

    def test_a_process_left_behind_does_not_keep_the_lock(self):
        run = self.shell('leave() { tail -f /dev/null >/dev/null & }\n'
                         'one_at_a_time "$F/lock" leave\n'
                         'timeout 10 flock "$F/lock" echo free; kill $!')
        self.assertIn("free", run.communicate(timeout=60)[0])
        self.assertEqual(run.returncode, 0)


if __name__ == "__main__":
    unittest.main()
