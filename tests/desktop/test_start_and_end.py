"""The editor starts with a file, shows it, and ends without a trace."""

import time
import unittest

from desktop_test import DesktopTest, is_main_window
from virtual_desktop import picture_colours

SECONDS_TO_END = 5


class StartAndEnd(DesktopTest):
    def close_in_time(self, editor, window):
        """Clicks the window away; the process must end by itself, in the ordinary way."""
        begin = time.monotonic()
        self.desktop.close(window)
        self.assertEqual(editor.wait(SECONDS_TO_END), 1)
        self.assertLess(time.monotonic() - begin, SECONDS_TO_END)

    def test_a_file_is_shown_and_nothing_is_left_after_the_end(self):
        file = self.demonstration_sound()
        before = file.read_bytes()
        editor, window = self.start_editor(file)
        self.assertGreater(picture_colours(self.picture_of(window)), 8)
        self.assertEqual(len(self.session_folders()), 1)
        self.close_in_time(editor, window)
        self.assertEqual(self.session_folders(), [])
        self.assertEqual(file.read_bytes(), before)
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()),
                         [file.name, "window.png"])

    def test_without_a_file_there_is_a_new_sound(self):
        editor, window = self.start_editor()
        self.close_in_time(editor, window)
        self.assertEqual(self.session_folders(), [])

    def test_two_editors_have_their_own_working_files(self):
        first = self.start_editor(self.demonstration_sound("first.wav"))
        second = self.start_editor(self.demonstration_sound("second.wav"))
        self.assertEqual(len(self.session_folders()), 2)
        self.close_in_time(*first)
        self.assertEqual(len(self.session_folders()), 1)
        self.assertIsNone(second[0].poll())
        self.close_in_time(*second)
        self.assertEqual(self.session_folders(), [])

    def test_the_first_start_greets_with_a_tip_that_can_be_closed(self):
        self.write_settings({})
        editor, window = self.start_editor(self.demonstration_sound())
        tip = self.desktop.wait_for_window(editor, lambda window: not is_main_window(window))
        self.desktop.close(tip)
        self.close_in_time(editor, window)


if __name__ == "__main__":
    unittest.main()
