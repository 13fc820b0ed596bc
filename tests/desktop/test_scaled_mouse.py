"""The mouse on a desktop with a scale of 2: the screen's own pixels count."""

import unittest

from gestures import BAR, GestureTest


class Scaled(GestureTest):
    screen = (2100, 1400)
    scale = 2

    def test_a_drag_selects_to_the_pixel(self):
        first, last = self.sample(401), self.sample(1203)
        wanted = self.typed((first, last))
        self.drag(401, 1203)
        self.shows(wanted)
        self.assert_saved("dragged", first, last)

    def test_zoom_by_two_clicks_and_drag_the_overview_bar(self):
        first, last = self.sample(601), self.sample(1401)
        way = round(241 * self.total / self.width)
        wanted = self.typed(view=(first + way, last - first))
        self.keys("z")
        self.click(601)
        self.click(1401)
        self.xdotool(*self.to(1000, BAR), "mousedown", 1, *self.to(1241, BAR), "sleep", "0.2",
                     "mouseup", 1)
        self.shows(wanted)


if __name__ == "__main__":
    unittest.main()
