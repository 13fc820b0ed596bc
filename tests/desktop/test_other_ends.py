"""Whatever ends the editor, its working files go with it."""

import os
import signal
import unittest

from desktop_test import DesktopTest

SECONDS_TO_END = 5


class OtherEnds(DesktopTest):
    def ends_without_a_trace(self, editor):
        """The process ends as it always does, and takes its session folder along."""
        self.assertEqual(editor.wait(SECONDS_TO_END), 1)
        self.assertEqual(self.session_folders(), [])

    def test_a_signal_to_terminate_ends_it(self):
        editor, _ = self.start_editor(self.demonstration_sound())
        editor.send_signal(signal.SIGTERM)
        self.ends_without_a_trace(editor)

    def test_an_interrupt_from_the_keyboard_ends_it(self):
        editor, _ = self.start_editor(self.demonstration_sound())
        editor.send_signal(signal.SIGINT)
        self.ends_without_a_trace(editor)

    def test_a_signal_under_an_open_box_ends_it(self):
        editor, window = self.start_editor()
        self.desktop.run("xdotool", "key", "--window", window.id, "ctrl+o")
        self.desktop.wait_for_window(editor,
                                     lambda each: each.title == "Select a Wave file to Open")
        editor.send_signal(signal.SIGTERM)
        self.ends_without_a_trace(editor)

    def test_the_end_of_the_terminal_leaves_it_open(self):
        editor, window = self.start_editor(self.demonstration_sound())
        editor.send_signal(signal.SIGHUP)
        self.desktop.close(window)
        self.ends_without_a_trace(editor)

    def test_the_loss_of_the_window_system_ends_it(self):
        editor, window = self.start_editor(self.demonstration_sound())
        self.desktop.run("xdotool", "windowkill", window.id)
        self.ends_without_a_trace(editor)

    def test_a_name_that_is_no_text_is_opened(self):
        file = os.fsencode(self.demonstration_sound())
        named = os.path.join(os.path.dirname(file), b"gr\xfc\xdf \"x\".wav")
        os.rename(file, named)
        editor = self.desktop.start([self.program_folder / "quoril-wave-editor", named])
        window = self.desktop.wait_for_window(
            editor, lambda each: each.title == 'gr\u00fc\u00df "x".wav [Quoril Wave Editor]')
        self.desktop.close(window)
        self.ends_without_a_trace(editor)


if __name__ == "__main__":
    unittest.main()
