"""An editor is killed after it has copied: what the other one can still paste."""

import shutil
import unittest

from two_windows import TwoWindowsTest


class KilledWindow(TwoWindowsTest):
    def kill_after_copy(self, changed):
        """The clip of an editor that was killed right after it was copied, and the folder of its
        working files. The clip lies in one of them if it was `changed`, or else in the opened
        file."""
        self.one.create(self.noise(1000))
        folder, = self.session_folders()
        self.two.create(self.noise(700))
        self.one.select(301, 550)
        clip = self.one.copy()
        if changed:
            self.one.paste("Mix", clip)
            self.one.select(301, 550)
            clip = self.one.copy()
        self.keep_clipboard()
        self.one.process.kill()
        self.one.process.wait()
        self.assertEqual(any(folder.iterdir()), changed)
        return clip, folder

    def test_the_clip_of_a_killed_editor_is_pasted_from_its_files(self):
        for changed in (True, False):
            with self.subTest(changed=changed):
                clip, folder = self.kill_after_copy(changed)
                opened = self.one.file.read_bytes()
                before = {path.name: path.read_bytes() for path in folder.iterdir()}
                self.two.select(201, 300)
                self.two.paste("Mix", clip)
                self.two.save()
                self.goes_on_and_ends(self.two)
                # The files of the other one were not this one's to delete.
                self.assertEqual({path.name: path.read_bytes() for path in folder.iterdir()}, before)
                self.assertEqual(self.one.file.read_bytes(), opened)
                shutil.rmtree(folder)

    def test_files_of_a_killed_editor_that_are_gone_are_told(self):
        for changed in (True, False):
            with self.subTest(changed=changed):
                _, folder = self.kill_after_copy(changed)
                shutil.rmtree(folder)
                if not changed:
                    self.one.file.unlink()
                self.two.select(201, 300)
                self.two.paste("Replace", None)
                self.two.save()
                self.goes_on_and_ends(self.two)

    def test_without_a_clipboard_manager_a_killed_editor_takes_its_clip_along(self):
        self.one.create(self.noise(1000))
        self.two.create(self.noise(700))
        self.one.select(301, 550)
        self.one.copy()
        self.one.process.kill()
        self.one.process.wait()
        self.two.paste("Insert", None)
        self.two.save()
        self.goes_on_and_ends(self.two)


if __name__ == "__main__":
    unittest.main()
