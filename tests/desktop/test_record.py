"""A take through the real window: what is played to the sink stands in the saved file, sample for
sample, whatever the user and the disk do meanwhile; and ends of all kinds while it records."""

import os
import signal
import threading
import unittest

from take_test import PLAIN, TakeFormat, TakeTest
from virtual_desktop import is_main_window, wait_until


class RecordTest(TakeTest):
    def test_a_mono_take_is_sample_for_sample_what_was_played(self):
        self.recorded_whole(TakeFormat(channels=1), 5)

    def test_so_is_one_of_eight_bits_from_the_plain_sound(self):
        self.recorded_whole(TakeFormat(PLAIN, channels=2, bits=8), 5)

    def test_a_minute_of_stereo_beside_a_busy_disk_and_a_busy_user(self):
        def write():
            with open(self.folder / "large", "wb") as file:
                piece = bytes(1 << 20)
                for _ in range(2048):
                    file.write(piece)
            os.remove(self.folder / "large")

        def use(window):
            writer = threading.Thread(target=write)
            writer.start()
            try:
                for step in range(40):
                    self.desktop.run("xdotool", "windowmove", window.id,
                                     str(50 + 7 * step), str(30 + step))
                    self.desktop.run("xdotool", "windowactivate", "--sync", window.id,
                                     "key", "Tab", "Tab", "Tab")
            finally:
                writer.join()
        self.recorded_whole(TakeFormat(channels=2), 60, use)

    def test_a_server_that_hangs_does_not_keep_the_take(self):
        form = TakeFormat(PLAIN)
        editor, window, path = self.start_take(form)
        wait_until(lambda: self.work_bytes() > form.rate, "half a second of the take")
        self.sound_server.send_signal(signal.SIGSTOP)
        self.addCleanup(self.sound_server.send_signal, signal.SIGCONT)
        self.keys(window, "alt+t")

        def state():
            shown = next((each for each in self.desktop.windows(editor) if is_main_window(each)),
                         None)
            if shown is None:
                self.keys(window, "alt+d")  # does nothing until the recording has stopped
            return shown
        main = wait_until(state, "the main window", 5, pause=1)
        length = path.stat().st_size
        self.keys(main, "ctrl+s")
        wait_until(lambda: path.stat().st_size > length, "the saved take")
        self.assertGreaterEqual(path.stat().st_size, length + form.rate)

    def test_the_end_of_the_editor_takes_the_recording_with_it(self):
        form = TakeFormat()
        editor, _, _ = self.start_take(form)
        wait_until(lambda: self.work_bytes() > form.rate, "half a second of the take")
        editor.send_signal(signal.SIGTERM)
        wait_until(lambda: editor.poll() is not None, "the end of the editor", 5)
        self.assertEqual(editor.returncode, 1)
        self.assertEqual(self.session_folders(), [])
        settings = (self.program_folder / "quoril-wave-editor.ini").read_text(encoding="utf-8")
        self.assertIn("RecordTime", settings)

    def test_closing_the_window_brings_the_main_window_back(self):
        editor, window, _ = self.start_take(TakeFormat())
        self.desktop.close(window)
        self.desktop.wait_for_window(editor, is_main_window)
        self.assertIsNone(editor.poll())
        self.assertEqual(self.desktop.close_all(editor), 1)
        self.assertEqual(self.session_folders(), [])


if __name__ == "__main__":
    unittest.main()
