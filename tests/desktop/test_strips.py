"""The time scale and the overview bar under a real mouse."""

import unittest

from desktop_test import DesktopTest
from test_play import Listener, tone_file
from virtual_desktop import picture_digest, wait_until

SIZE = ("1024", "700")
# Heights in a window of this size: the time scale of a mono document, and the overview bar.
SCALE = 104
BAR = 595


class Strips(DesktopTest):
    def start(self):
        editor, window = self.start_editor(tone_file(self.folder / "tone.wav", 30))
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id,
                         "windowsize", "--sync", window.id, *SIZE)
        return editor, window

    def mouse(self, window, x, y, *then):
        self.desktop.run("xdotool", "mousemove", "--sync", "--window", window.id, str(x), str(y),
                         *then)

    def picture(self, window):
        return picture_digest(self.picture_of(window))

    def other_picture(self, window, old):
        return wait_until(lambda: (new := self.picture(window)) != old and new,
                          "another picture of the window")

    def test_a_click_on_the_scale_plays_from_there(self):
        listener = Listener(self.desktop)
        self.addCleanup(listener.stop)
        editor, window = self.start()
        self.mouse(window, 300, SCALE, "click", "1")
        wait_until(listener.hears_tone, "the tone")
        self.desktop.run("xdotool", "key", "space")
        wait_until(listener.hears_nothing, "silence")
        self.desktop.close(window)
        self.assertEqual(editor.wait(5), 1)

    def test_the_bar_is_dragged_and_paged_and_the_wheel_turns_over_it(self):
        editor, window = self.start()
        whole = self.picture(window)
        self.desktop.run("xdotool", "key", "F3", "F3", "F3")
        self.other_picture(window, whole)
        self.mouse(window, 512, BAR)
        middle = self.picture(window)
        self.desktop.run("xdotool", "mousedown", "1")
        self.mouse(window, 600, BAR)
        dragged = self.other_picture(window, middle)
        self.mouse(window, 512, BAR)
        self.assertEqual(self.other_picture(window, dragged), middle)
        self.desktop.run("xdotool", "mouseup", "1")

        self.mouse(window, 900, BAR)
        before = self.picture(window)
        self.desktop.run("xdotool", "click", "1")
        paged = self.other_picture(window, before)
        self.desktop.run("xdotool", "click", "4")
        self.other_picture(window, paged)
        self.desktop.run("xdotool", "click", "5")
        wait_until(lambda: self.picture(window) == paged, "the view before the wheel")
        self.desktop.close(window)
        self.assertEqual(editor.wait(5), 1)


if __name__ == "__main__":
    unittest.main()
