"""Selecting with the mouse over the wave panels and the time scale of the real window."""

import unittest

from gestures import HOLD, LABELS, SCALE, GestureTest


class Select(GestureTest):
    def selects(self, name, first, last, gesture):
        """A gesture leads to the labels and the picture of that selection, and to its sound."""
        wanted = self.typed((first, last))
        gesture()
        self.shows(wanted)
        self.assert_saved(name, first, last)
        self.reset()

    def test_drag(self):
        self.selects("right", self.sample(200), self.sample(500), lambda: self.drag(200, 500))
        self.selects("left", self.sample(300), self.sample(700), lambda: self.drag(700, 300))

    def test_two_clicks_and_adjust(self):
        def clicks():
            self.click(800)
            self.click(600)
        self.selects("clicks", self.sample(600), self.sample(800), clicks)

        def adjusted():
            clicks()
            self.click(710, 3) # nearer to the end
            self.click(500, 3) # nearer to the start
        self.selects("adjusted", self.sample(500), self.sample(710), adjusted)

    def test_double_click_selects_all(self):
        def twice():
            self.xdotool(*self.to(400), "click", "--repeat", 2, "--delay", 40, 1)
        self.keys("ctrl+a")
        wanted = self.picture()
        self.reset()
        twice()
        self.shows(wanted)
        self.assert_saved("all", 1, self.total)

    def test_the_tools_for_start_and_end(self):
        def start():
            self.drag(300, 600)
            self.keys("alt+s", "t")
            self.click(450)
        self.selects("start", self.sample(450), self.sample(600), start)

        def end():
            self.keys("alt+s", "e")
            self.click(250)
        self.selects("end", 1, self.sample(250), end)

    def test_esc_takes_the_selection_away_but_not_in_a_drag(self):
        self.drag(300, 600)
        self.shows_something_else(self.whole)
        self.keys("Escape")
        self.shows(self.whole)

        def drag_with_keys():
            self.xdotool(*self.to(250), "mousedown", 1, *HOLD, *self.to(400), "key", "Escape",
                         *self.to(650), *HOLD, "mouseup", 1)
        self.selects("held", self.sample(250), self.sample(650), drag_with_keys)

    def test_a_drag_goes_on_outside_of_the_window(self):
        def far():
            self.xdotool(*self.to(400), "mousedown", 1, *HOLD, *self.to(700),
                         "mousemove", 1279, 5, *HOLD, "mouseup", 1)
        self.selects("far", self.sample(400), self.total, far)

    def test_a_drag_ends_when_another_window_takes_the_keyboard(self):
        other, front = self.start_editor()
        # Down to the corner, so that the labels of the first one stay in sight.
        self.xdotool("windowmove", "--sync", front.id, 1100, 720,
                     "windowactivate", "--sync", self.window.id)
        labels = self.picture(LABELS)
        self.xdotool(*self.to(300), "mousedown", 1, *HOLD, *self.to(600), *HOLD)
        self.xdotool("windowactivate", "--sync", front.id)
        self.shows(labels, LABELS)
        self.xdotool("mouseup", 1)
        self.desktop.close(front)
        self.assertEqual(other.wait(10), 1)
        self.xdotool("windowactivate", "--sync", self.window.id)
        self.shows(self.whole)

    def test_a_drag_ends_when_a_dialog_comes_up(self):
        self.xdotool(*self.to(300), "mousedown", 1, *HOLD, *self.to(600), *HOLD, "key", "ctrl+o")
        dialog = self.desktop.wait_for_window(
            self.editor, lambda window: window.title == "Select a Wave file to Open")
        self.xdotool("mouseup", 1, "windowactivate", "--sync", dialog.id, "key", "Escape")
        self.shows(self.whole)

    def test_a_drag_on_the_scale_makes_the_play_selection(self):
        first, last = self.sample(250), self.sample(640)
        wanted = self.typed((first, last), part=LABELS)
        self.drag(640, 250, SCALE)
        self.keys("alt+s", "p")
        self.shows(wanted, LABELS)
        self.assert_saved("play", first, last)


if __name__ == "__main__":
    unittest.main()
