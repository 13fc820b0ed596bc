"""A take through the real window: what is played to the sink stands in the saved file, sample for
sample, whatever the user and the disk do meanwhile; and the editor that ends while it records."""

import array
import os
import signal
import threading
import unittest
import wave

from desktop_test import DesktopTest
from virtual_desktop import is_main_window, wait_until

RATE = 44100


def known_samples(count):
    """Samples of which each can be told from its neighbours; none is silent."""
    return array.array("h", (((place * 40503 + 12345) % 65536 - 32768) | 1
                             for place in range(count)))


class RecordTest(DesktopTest):
    def document(self, channels):
        """A short silent file that a take goes into."""
        path = self.folder / "document.wav"
        with wave.open(str(path), "wb") as file:
            file.setnchannels(channels)
            file.setsampwidth(2)
            file.setframerate(RATE)
            file.writeframes(bytes(2 * channels * 1000))
        return path

    def sink(self, channels):
        """A sink of the document's format, whose monitor is what the server records by itself."""
        self.desktop.run("pactl", "load-module", "module-null-sink", "sink_name=known",
                         "format=s16le", f"rate={RATE}", f"channels={channels}", "norewinds=1")
        self.desktop.run("pactl", "set-default-source", "known.monitor")

    def open_window(self, path):
        """Opens the recording window at the start of the document, and gives editor and window."""
        editor, main = self.start_editor(path)
        self.keys(main, "ctrl+r")
        question = self.desktop.wait_for_window(editor, lambda window: "Record" in window.title)
        self.keys(question, "Return")
        window = self.desktop.wait_for_window(editor, lambda window: window.title == "Record")
        return editor, window

    def keys(self, window, *keys):
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id, "key",
                         "--clearmodifiers", *keys)

    def player(self, samples, channels):
        raw = self.folder / "known.raw"
        raw.write_bytes(samples.tobytes())
        return self.desktop.start(
            ["pacat", "--playback", "--raw", "--device=known", "--format=s16le", f"--rate={RATE}",
             f"--channels={channels}", "--latency-msec=2000", raw])

    def work_bytes(self):
        """How much the takes of the editors hold on the disk by now."""
        return sum(path.stat().st_size for folder in self.session_folders()
                   for path in folder.glob("tm*.tmp"))

    def wait_until_stopped(self):
        """A take that does not grow any more, in the time of several blocks, is stopped."""
        sizes = [-1]

        def state():
            sizes.append(self.work_bytes())
            return sizes[-1] == sizes[-2]
        wait_until(state, "the end of the take", pause=0.5)

    def recorded_whole(self, channels, seconds, meanwhile=lambda window: None):
        self.sink(channels)
        path = self.document(channels)
        editor, window = self.open_window(path)
        self.keys(window, "alt+s")
        wait_until(lambda: self.work_bytes() > 0, "the first block of the take")
        known = known_samples(seconds * RATE * channels)
        player = self.player(known, channels)
        meanwhile(window)
        wait_until(lambda: player.poll() is not None, "the end of the sound", seconds + 30)
        played = self.work_bytes()
        wait_until(lambda: self.work_bytes() > played + RATE * channels, "a silent end")
        self.keys(window, "alt+t")
        self.wait_until_stopped()
        self.keys(window, "alt+d")
        main = self.desktop.wait_for_window(editor, is_main_window)
        self.keys(main, "ctrl+s")
        wait_until(lambda: path.stat().st_size > 2 * len(known), "the saved file")
        self.assertEqual(self.desktop.close_all(editor), 1)
        with wave.open(str(path), "rb") as file:
            self.assertEqual((file.getnchannels(), file.getframerate()), (channels, RATE))
            heard = array.array("h", file.readframes(file.getnframes()))
        first = next(place for place, sample in enumerate(heard) if sample != 0)
        self.assertEqual(first % channels, 0)
        self.assertEqual(heard[first:first + len(known)], known)
        self.assertFalse(any(heard[first + len(known):]))

    def test_a_mono_take_is_sample_for_sample_what_was_played(self):
        self.recorded_whole(1, 5)

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
        self.recorded_whole(2, 60, use)

    def test_the_end_of_the_editor_takes_the_recording_with_it(self):
        self.sink(1)
        editor, window = self.open_window(self.document(1))
        self.keys(window, "alt+s")
        wait_until(lambda: self.work_bytes() > RATE, "half a second of the take")
        editor.send_signal(signal.SIGTERM)
        wait_until(lambda: editor.poll() is not None, "the end of the editor", 5)
        self.assertEqual(editor.returncode, 1)
        self.assertEqual(self.session_folders(), [])
        settings = (self.program_folder / "quoril-wave-editor.ini").read_text(encoding="utf-8")
        self.assertIn("RecordTime", settings)

    def test_closing_the_window_brings_the_main_window_back(self):
        self.sink(1)
        editor, window = self.open_window(self.document(1))
        self.keys(window, "alt+s")
        wait_until(lambda: self.work_bytes() > 0, "the first block of the take")
        self.desktop.close(window)
        self.desktop.wait_for_window(editor, is_main_window)
        self.assertIsNone(editor.poll())
        self.assertEqual(self.desktop.close_all(editor), 1)
        self.assertEqual(self.session_folders(), [])


if __name__ == "__main__":
    unittest.main()
