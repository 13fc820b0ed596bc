"""scripts/show_window.py, with which ./run shows the editor where there is no display."""

import os
import subprocess
import sys
import unittest
from pathlib import Path

import show_window
from desktop_test import PROGRAMS, DesktopTest
from virtual_desktop import picture_colours


class ShowWindow(DesktopTest):
    def setUp(self):
        super().setUp()
        self.editor = self.program_folder / PROGRAMS[0].name
        self.picture = self.folder / "window.png"

    def start(self, editor, file):
        return subprocess.Popen(
            [sys.executable, "-B", show_window.__file__, editor, file, self.picture],
            env=dict(os.environ, TMPDIR=self.desktop.env["TMPDIR"]), stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def ends_with(self, code, run):
        said = run.communicate(timeout=120)[0]
        self.assertEqual(run.returncode, code, said)
        self.assertNotIn("Traceback", said)
        # The desktop of the run has gone with all that was on it.
        self.assertEqual(list(Path(self.desktop.env["TMPDIR"]).iterdir()), [])
        return said

    def test_the_picture_is_taken_and_the_editor_closed(self):
        said = self.ends_with(0, self.start(self.editor, self.demonstration_sound()))
        self.assertIn(f"a picture of it is in {self.picture}.\nThe editor was closed.\n", said)
        self.assertGreater(picture_colours(self.picture), 8)

    def test_a_tip_in_front_of_the_window_is_closed_first(self):
        self.write_settings({})
        said = self.ends_with(0, self.start(self.editor, self.demonstration_sound()))
        self.assertIn("The editor was closed.\n", said)

    def test_runs_at_once_leave_a_whole_picture(self):
        file = self.demonstration_sound()
        runs = [self.start(self.editor, file) for _ in range(3)]
        said = [run.communicate(timeout=120)[0] for run in runs]
        self.assertEqual([run.returncode for run in runs], [0] * 3, said)
        self.assertGreater(picture_colours(self.picture), 8)
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()),
                         [file.name, self.picture.name])

    def test_a_program_that_ends_early_is_told(self):
        said = self.ends_with(1, self.start("/bin/false", "any.wav"))
        self.assertIn("The program ended before it showed its window (exit code 1).", said)

    def test_a_program_that_is_not_there_is_told(self):
        said = self.ends_with(1, self.start("/no/such/editor", "any.wav"))
        self.assertIn("/no/such/editor cannot be started: No such file or directory.", said)


if __name__ == "__main__":
    unittest.main()
