"""The editor starts with a file, shows it, and ends without a trace."""

import time
import unittest

from desktop_test import QUIET, DesktopTest, is_main_window
from virtual_desktop import picture_colours, wait_until

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

    def test_a_window_that_must_grow_has_its_title_on_the_screen(self):
        self.write_settings({**QUIET, "MainWindow": {"Window Size": "0,0,0,7500,7440"}})
        editor, window = self.start_editor(self.demonstration_sound())

        def place():
            shape = self.desktop.run("xdotool", "getwindowgeometry", "--shell", window.id)
            edges = self.desktop.run("xprop", "-id", window.id, "_NET_FRAME_EXTENTS")
            top = int(edges.split("=")[1].split(",")[2])
            y = int(dict(line.split("=") for line in shape.split())["Y"])
            return top > 0 and y >= top
        wait_until(place, "the whole frame of the window on the screen")
        self.close_in_time(editor, window)

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
