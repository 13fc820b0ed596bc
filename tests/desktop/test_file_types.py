"""Files of every type in the real window: opened and saved under other types by keys, and what was
saved held against sox, byte by byte or sample by sample."""

import subprocess
import unittest

from desktop_test import QUIET, DesktopTest
from virtual_desktop import is_main_window, wait_until

RAW = ["-t", "raw", "-r", "44100", "-c", "2", "-b", "16", "-e", "signed", "-L"]


def sox(*words):
    subprocess.run(["sox", "-V1", "-D", *map(str, words)], check=True)


class FileTypes(DesktopTest):
    screen = (1024, 700)

    def setUp(self):
        super().setUp()
        self.wav = self.folder / "sound.wav"
        sox("-R", "-n", "-r", 44100, "-c", 2, "-b", 16, self.wav, "synth", 1.5, "pinknoise",
            "gain", -6)

    def samples(self, file, form=()):
        """What sox reads in a file, as raw bytes."""
        raw = self.folder / "samples.raw"
        sox(*form, file, *RAW, raw)
        return raw.read_bytes()

    def dialog(self, title):
        window = self.desktop.wait_for_window(
            self.editor, lambda window: window.title.strip() == title)
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        return window

    def keys(self, *keys):
        self.desktop.run("xdotool", "key", "--clearmodifiers", *keys)

    def start(self, file):
        self.editor, self.window = self.start_editor(file)
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)

    def shows(self, file):
        self.desktop.wait_for_window(
            self.editor, lambda window: window.title == f"{file.name} [Quoril Wave Editor]")
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)

    def type_name(self, file):
        self.keys("ctrl+a")
        self.desktop.run("xdotool", "type", "--delay", "5", str(file))
        self.keys("Return")

    def save_as(self, file, *answers):
        """Saves under another name; `answers` are titles of dialogs and the key for each."""
        self.keys("ctrl+shift+s")
        self.dialog("Choose wave file name to save")
        self.type_name(file)
        for title, key in answers:
            self.dialog(title)
            self.keys(key)
        self.shows(file)

    def open(self, file, *answers):
        self.keys("ctrl+o")
        self.dialog("Select a Wave file to Open")
        self.type_name(file)
        for title, key in answers:
            self.dialog(title)
            self.keys(key)
        self.shows(file)

    def end(self):
        self.assertEqual(self.desktop.close_all(self.editor), 1)
        self.assertEqual(self.session_folders(), [])

    def test_au_and_raw_files_hold_the_samples_that_sox_reads(self):
        sound = self.samples(self.wav)
        au, raw = self.folder / "by us.au", self.folder / "by us.raw"
        self.start(self.wav)
        self.save_as(au, ("Choose .au file compress option", "n"))
        self.assertEqual(self.samples(au), sound)
        by_sox = self.folder / "by-sox.au"
        sox(self.wav, by_sox)
        self.assertEqual(au.read_bytes()[24:], by_sox.read_bytes()[-len(sound):])
        self.save_as(raw)
        self.assertEqual(raw.read_bytes(), sound)
        self.open(by_sox)
        back = self.folder / "back.wav"
        self.save_as(back)
        self.assertEqual(self.samples(back), sound)
        # The dialog begins with the current format, which is the file's.
        self.open(raw, ("Choose format for loading a Raw/Snd/Binary file", "Return"))
        again = self.folder / "again.wav"
        self.save_as(again)
        self.assertEqual(again.read_bytes(), back.read_bytes())
        self.end()

    def test_an_mp3_goes_there_and_back_through_lame(self):
        mp3, back = self.folder / "it's $HOME;.mp3", self.folder / "back.wav"
        self.start(self.wav)
        self.save_as(mp3, ("Need a command line Mp3 encoder", "Return"),
                     ("Select Mp3 Compressing Parameters", "Return"))
        decoded = self.folder / "decoded.wav"
        subprocess.run(["lame", "--quiet", "--decode", mp3, decoded], check=True)
        self.open(mp3)
        self.save_as(back)
        self.assertEqual(self.samples(back), self.samples(decoded))
        self.end()

    def test_an_encoder_that_hangs_is_shown_and_can_be_ended(self):
        encoder = self.folder / "hangs"
        encoder.write_text("#!/bin/sh\nexec sleep 1000\n", encoding="utf-8")
        encoder.chmod(0o755)
        self.write_settings({**QUIET, "Mp3": {"ExeName": encoder}})
        self.start(self.wav)
        mp3 = self.folder / "out.mp3"
        mp3.write_bytes(b"old")
        self.keys("ctrl+shift+s")
        known = {self.window.id, self.dialog("Choose wave file name to save").id}
        self.type_name(mp3)
        question = self.desktop.wait_for_window(
            self.editor, lambda window: window.id not in known)
        self.desktop.run("xdotool", "windowactivate", "--sync", question.id)
        self.keys("alt+y")
        self.dialog("Select Mp3 Compressing Parameters")
        self.keys("Return")
        waiting = self.dialog("Quoril Wave Editor")
        first, second = self.folder / "1.png", self.folder / "2.png"
        def moved():
            self.desktop.take_picture(waiting, first)
            self.desktop.take_picture(waiting, second)
            return first.read_bytes() != second.read_bytes()
        wait_until(moved, "a picture that moves while the encoder works")
        self.keys("Escape")
        wait_until(lambda: not [window for window in self.desktop.windows(self.editor)
                                if not is_main_window(window)], "the end of the wait")
        self.assertEqual(mp3.read_bytes(), b"old")
        self.shows(self.wav)
        self.end()

    def test_bookmarked_parts_and_wma_are_written(self):
        self.start(self.wav)
        self.keys("ctrl+a", "b")
        self.dialog("Add New Bookmark")
        self.keys("Return")
        self.shows(self.wav)
        self.keys("alt+f")
        self.keys("b")
        self.dialog("Save bookmarked parts")
        self.keys("Return")
        self.dialog("Quoril Wave Editor")
        self.keys("Return")
        part = self.folder / "soundNew-1.wav"
        self.assertEqual(self.samples(part), self.samples(self.wav))
        wma = self.folder / "sound.wma"
        self.keys("alt+f")
        self.keys("e")
        self.dialog("Choose a Windows media file name to export to")
        self.keys("Return")
        self.dialog("Need a command line Wma encoder")
        self.keys("Return")
        self.dialog("Select Wma Compressing Parameters")
        self.keys("Return")
        wait_until(lambda: wma.exists() and wma.stat().st_size > 10000, "the exported file")
        told = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "stream=codec_name",
                               "-of", "csv=p=0", wma], check=True, capture_output=True, text=True)
        self.assertEqual(told.stdout.strip(), "wmav2")
        self.end()


if __name__ == "__main__":
    unittest.main()
