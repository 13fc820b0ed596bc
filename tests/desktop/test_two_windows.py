"""Two editors on one desktop: what is copied in one is pasted in the other."""

import signal
import time
import unittest

from two_windows import MODES, TwoWindowsTest


class TwoWindows(TwoWindowsTest):
    def test_every_paste_brings_over_what_was_copied(self):
        self.one.create(self.noise(1000))
        self.two.create(self.noise(700))
        self.one.select(301, 550)
        self.two.select(201, 600)
        for way in ("menu", "list"):
            for mode in MODES:
                if mode == "Multi-Insert":
                    continue # asks for more
                clip = self.one.copy()
                self.assertEqual(len(clip), 250)
                self.two.paste(mode, clip, way=way)
                self.two.save()
                self.two.undo()
                self.two.save()
        # The button pastes as the last time. What runs past the end comes over as it is.
        self.two.select(690, 700)
        self.two.paste("Cross Fade", clip, way="button")
        self.two.save()
        self.assertEqual(len(self.two.sound.samples), 939)
        self.one.save()
        for editor in (self.one, self.two):
            editor.close()
        self.nothing_is_left()

    def test_a_clip_stays_what_it_was_when_its_file_is_saved(self):
        self.one.create(self.noise(1000))
        self.two.create(self.noise(700))
        self.one.select(301, 550)
        clip = self.one.copy()
        self.one.keys("Delete")
        self.one.sound.delete()
        self.one.save()
        self.two.select(201, 300)
        self.two.paste("Replace", clip)
        self.two.save()
        for editor in (self.one, self.two):
            editor.close()
        self.nothing_is_left()

    def test_an_editor_takes_its_line_along_from_a_clipboard_manager_too(self):
        self.one.create(self.noise(1000))
        self.two.create(self.noise(700))
        self.one.select(301, 550)
        self.one.copy()
        self.keep_clipboard()
        self.one.close()
        self.two.select(201, 300)
        self.two.paste("Insert", None)
        self.goes_on_and_ends(self.two)
        self.nothing_is_left()

    def test_an_editor_that_does_not_answer_is_waited_for_once(self):
        self.one.create(self.noise(1000))
        self.two.create(self.noise(700))
        self.two.select(201, 300)
        self.two.copy()
        self.one.select(301, 550)
        self.one.copy()
        self.one.process.send_signal(signal.SIGSTOP)
        for act in (lambda: self.two.paste("Insert", None),
                    lambda: self.desktop.close(self.two.window) or self.two.process.wait(20)):
            begin = time.monotonic()
            act()
            self.assertLess(time.monotonic() - begin, 9) # a wait takes 5 seconds
        self.one.process.send_signal(signal.SIGCONT)
        self.one.close()
        self.nothing_is_left()


if __name__ == "__main__":
    unittest.main()
