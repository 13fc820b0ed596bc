"""The editor plays what it shows, from keys and buttons, and leaves no player behind."""

import array
import math
import struct
import subprocess
import threading
import unittest
from pathlib import Path

from desktop_test import DesktopTest
from virtual_desktop import wait_until

RATE = 44100
TONE = 1000


def tone_file(path, seconds):
    """A mono file of 16 bits with a sine tone."""
    frames = array.array("h", (round(12000 * math.sin(2 * math.pi * TONE * i / RATE))
                               for i in range(int(seconds * RATE))))
    data = frames.tobytes()
    path.write_bytes(b"RIFF" + struct.pack("<I", 36 + len(data)) + b"WAVEfmt " +
                     struct.pack("<IHHIIHH", 16, 1, 1, RATE, 2 * RATE, 2, 16) + b"data" +
                     struct.pack("<I", len(data)) + data)
    return path


class Listener:
    """What the desktop's sound server sounds, from now on, as 16-bit samples of one channel."""

    def __init__(self, desktop):
        self._samples = bytearray()
        self._lock = threading.Lock()
        self._process = subprocess.Popen(
            ["parec", "--device=quoril_out.monitor", "--raw", "--format=s16le", f"--rate={RATE}",
             "--channels=1", "--latency-msec=10"],
            env=desktop.env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
        self._thread = threading.Thread(target=self._listen)
        self._thread.start()
        wait_until(lambda: self._samples, "the recording of the sound server")

    def _listen(self):
        while piece := self._process.stdout.read1(65536):
            with self._lock:
                self._samples += piece

    def stop(self):
        self._process.kill()
        self._thread.join()
        self._process.wait()
        self._process.stdout.close()

    def count(self):
        return len(self._samples) // 2

    def last(self, seconds):
        """The samples heard last."""
        with self._lock:
            end = len(self._samples) // 2 * 2
            begin = max(0, end - 2 * int(seconds * RATE))
            return array.array("h", bytes(self._samples[begin:end]))

    def hears_tone(self):
        """Whether the last fifth of a second is the tone: its crossings of zero are counted."""
        samples = self.last(0.2)
        if len(samples) < 0.2 * RATE - 1 or max(samples) < 10000:
            return False
        rises = sum(1 for a, b in zip(samples, samples[1:]) if a < 0 <= b)
        return abs(rises - 0.2 * TONE) <= 3

    def hears_nothing(self):
        return not any(self.last(0.2))


def players_of(editor):
    """The processes that an editor has started, ended ones that it has not waited for among them."""
    found = []
    for stat in Path("/proc").glob("[0-9]*/stat"):
        try:
            name, fields = stat.read_text(errors="replace").rsplit(")", 1)
        except OSError:
            continue # it has ended meanwhile
        if "quoril-player" in name and int(fields.split()[1]) == editor.pid:
            found.append(int(stat.parent.name))
    return found


class Play(DesktopTest):
    def setUp(self):
        super().setUp()
        self.listener = Listener(self.desktop)
        self.addCleanup(self.listener.stop)

    def key(self, window, name):
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id, "key", name)

    def hear(self, seconds):
        """Waits until so much has been heard."""
        end = self.listener.count() + seconds * RATE
        wait_until(lambda: self.listener.count() > end, f"{seconds} seconds of sound")

    def test_space_plays_the_document_and_stops_it(self):
        editor, window = self.start_editor(tone_file(self.folder / "tone.wav", 30))
        self.key(window, "space")
        wait_until(self.listener.hears_tone, "the tone")
        self.hear(2)
        self.key(window, "u")
        self.hear(0.7)
        self.assertTrue(self.listener.hears_tone()) # it is the same backwards
        self.key(window, "space")
        wait_until(self.listener.hears_nothing, "silence")
        self.desktop.close(window)
        self.assertEqual(editor.wait(5), 1)

    def test_closing_while_playing_leaves_no_player_and_no_files(self):
        editor, window = self.start_editor(tone_file(self.folder / "tone.wav", 30))
        players = players_of(editor)
        self.assertEqual(len(players), 1)
        self.key(window, "space")
        wait_until(self.listener.hears_tone, "the tone")
        self.desktop.close(window)
        self.assertEqual(editor.wait(5), 1)
        wait_until(lambda: not Path(f"/proc/{players[0]}").exists(), "the end of the player", 1)
        self.assertEqual(self.session_folders(), [])

    def test_a_killed_editor_takes_its_player_along(self):
        editor, window = self.start_editor(tone_file(self.folder / "tone.wav", 30))
        player = players_of(editor)[0]
        self.key(window, "space")
        wait_until(self.listener.hears_tone, "the tone")
        editor.kill()
        editor.wait()

        def has_ended():
            try:
                return Path(f"/proc/{player}/stat").read_text().rsplit(")", 1)[1].split()[0] == "Z"
            except OSError:
                return True
        wait_until(has_ended, "the end of the player", 1)

    def test_a_killed_player_is_replaced_by_the_next_command(self):
        editor, window = self.start_editor(tone_file(self.folder / "tone.wav", 30))
        first = players_of(editor)[0]
        subprocess.run(["kill", "-9", str(first)], check=True)
        self.key(window, "space")
        wait_until(self.listener.hears_tone, "the tone")
        self.assertEqual(len(players_of(editor)), 1)
        self.assertNotEqual(players_of(editor)[0], first)
        self.desktop.close(window)
        self.assertEqual(editor.wait(5), 1)

    def test_a_player_killed_while_it_plays_is_told_and_space_starts_another(self):
        editor, window = self.start_editor(tone_file(self.folder / "tone.wav", 30))
        self.key(window, "space")
        wait_until(self.listener.hears_tone, "the tone")
        subprocess.run(["kill", "-9", str(players_of(editor)[0])], check=True)
        box = self.desktop.wait_for_window(editor, lambda one: one.title == "Play failed")
        self.desktop.close(box)
        wait_until(self.listener.hears_nothing, "silence")
        self.key(window, "space")
        wait_until(self.listener.hears_tone, "the tone")
        self.desktop.close(window)
        self.assertEqual(editor.wait(5), 1)


if __name__ == "__main__":
    unittest.main()
