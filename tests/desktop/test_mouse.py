"""The mouse over the wave panels of the real window: select, adjust, zoom, scroll, pan. What is
selected is told by the length of the part that is saved, what is in view by the picture."""

import unittest
import wave

from desktop_test import DesktopTest
from virtual_desktop import picture_digest, wait_until

# A hand holds the button for a while before it moves; a quicker move counts as a shaky click.
HOLD = ("sleep", "0.2")
# In the upper wave panel, from the upper edge of the window.
PANEL_Y = 230
# Both wave panels and the scale between them: width, height, left and upper edge.
PANELS = "1000x400+0+100"
# Beside the buttons, from the right and the upper edge.
AWAY = (30, 40)


class Mouse(DesktopTest):
    def setUp(self):
        super().setUp()
        self.file = self.demonstration_sound()
        with wave.open(str(self.file)) as sound:
            self.frames = sound.getnframes()
        self.editor, self.window = self.start_editor(self.file)
        self.xdotool("windowactivate", "--sync", self.window.id)
        shape = dict(line.split("=") for line in self.xdotool(
            "getwindowgeometry", "--shell", self.window.id).split())
        self.width = int(shape["WIDTH"])

    def xdotool(self, *words):
        return self.desktop.run("xdotool", *map(str, words))

    def keys(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def to(self, share):
        """The words that move the mouse to a share of the panel's width."""
        return ["mousemove", "--window", self.window.id, round(share * (self.width - 1)), PANEL_Y]

    def click(self, share, button=1):
        self.xdotool(*self.to(share), "click", button)

    def drag(self, start, end):
        self.xdotool(*self.to(start), "mousedown", 1, *HOLD, *self.to((start + end) / 2),
                     *HOLD, *self.to(end), *HOLD, "mouseup", 1)

    def picture(self):
        """What tells a steady picture of the panels, with the mouse away from them."""
        self.xdotool("mousemove", "--window", self.window.id, self.width - AWAY[0], AWAY[1])
        path = self.picture_of(self.window)
        self.desktop.run("mogrify", "-crop", PANELS, "+repage", path)
        return picture_digest(path)

    def after(self, deed, *words):
        """What tells the picture after a deed that changes it."""
        before = self.picture()
        deed(*words)
        return wait_until(lambda: (new := self.picture()) != before and new,
                          "another picture of the window")

    def selected(self, name):
        """The selected part of the sound, 0 to 1."""
        self.keys("alt+f", "p")
        title = "Select file name to to save selected"
        dialog = self.desktop.wait_for_window(self.editor, lambda window: title in window.title)
        self.xdotool("windowactivate", "--sync", dialog.id)
        self.xdotool("type", "--clearmodifiers", self.folder / name)
        self.keys("Return")
        wait_until(lambda: not any(title in window.title
                                   for window in self.desktop.windows(self.editor)),
                   f"the end of the window {title}")
        saved = self.folder / f"{name}.wav"
        wait_until(saved.exists, f"the file {saved.name}")
        with wave.open(str(saved)) as part:
            return part.getnframes() / self.frames

    def test_select_by_drag_by_two_clicks_and_adjust(self):
        self.after(self.drag, 0.2, 0.5)
        self.assertAlmostEqual(self.selected("dragged"), 0.3, delta=0.01)
        self.after(self.click, 0.6, 3)
        self.assertAlmostEqual(self.selected("adjusted"), 0.4, delta=0.01)
        self.after(self.click, 0.8)
        self.after(self.click, 0.7)
        self.assertAlmostEqual(self.selected("clicked"), 0.1, delta=0.01)
        self.after(self.xdotool, *self.to(0.4), "click", "--repeat", 2, "--delay", 40, 1)
        self.assertEqual(self.selected("all"), 1)

    def turn(self, share, button, *modifiers):
        """Turns the wheel by one notch over a share of the panel's width."""
        held = [word for key in modifiers for word in ("keydown", key)]
        released = [word for key in modifiers for word in ("keyup", key)]
        self.xdotool(*self.to(share), *held, "click", button, *released)

    def test_zoom_by_two_clicks_turn_the_wheel_pan_and_go_back(self):
        whole = self.picture()
        self.keys("z")
        self.click(0.2)
        part = self.after(self.click, 0.6)
        on = self.after(self.turn, 0.5, 5)
        self.assertEqual(self.after(self.turn, 0.5, 4), part)
        self.after(self.turn, 0.5, 4, "ctrl")
        self.after(self.turn, 0.5, 5, "ctrl")
        # A whole view to the left is more than there is: the view ends at the start of the sound.
        start = self.after(self.turn, 0.5, 4, "shift")
        self.assertEqual(len({whole, part, on, start}), 4)
        self.keys("alt+v", "p")
        self.after(self.drag, 0.6, 0.3)
        self.keys("Escape")
        self.assertEqual(self.after(self.keys, "F5"), whole)


if __name__ == "__main__":
    unittest.main()
