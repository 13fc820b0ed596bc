"""Whatever ends the editor, its working files go with it."""

import hashlib
import os
import signal
import unittest
import wave

from desktop_test import DesktopTest
from virtual_desktop import wait_until

SECONDS_TO_END = 5
SECONDS_TO_WRITE = 60


class OtherEnds(DesktopTest):
    def ends_without_a_trace(self, editor):
        """The process ends as it always does, and takes its session folder along."""
        self.assertEqual(editor.wait(SECONDS_TO_END), 1)
        self.assertEqual(self.session_folders(), [])

    def test_a_signal_to_terminate_ends_it(self):
        editor, _ = self.start_editor(self.demonstration_sound())
        editor.send_signal(signal.SIGTERM)
        self.ends_without_a_trace(editor)

    def test_a_signal_in_the_midst_of_saving_leaves_the_whole_file(self):
        path = self.folder / "long.wav"
        with wave.open(str(path), "wb") as sound:
            sound.setnchannels(2)
            sound.setsampwidth(2)
            sound.setframerate(44100)
            sound.writeframes(os.urandom(1 << 20) * 200)
        before = path.stat()
        digest = hashlib.sha256(path.read_bytes()).hexdigest()
        editor, window = self.start_editor(path)
        self.desktop.run("xdotool", "key", "--window", window.id, "ctrl+s")
        wait_until(lambda: self.is_half_written(path, before), "the file being written",
                   pause=0.002)
        editor.send_signal(signal.SIGTERM)
        self.assertEqual(editor.wait(SECONDS_TO_WRITE), 1)
        self.assertEqual(self.session_folders(), [])
        self.assertEqual(path.stat().st_size, before.st_size)
        self.assertEqual(hashlib.sha256(path.read_bytes()).hexdigest(), digest)

    @staticmethod
    def is_half_written(path, before):
        """Whether the file has been made anew, be it with the first bytes only."""
        try:
            now = path.stat()
        except FileNotFoundError:
            return False
        return now.st_ino != before.st_ino or now.st_size < before.st_size

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
