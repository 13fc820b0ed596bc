"""Zooming, scrolling and panning with the mouse in the real window."""

import unittest

from gestures import BAR, GestureTest


class View(GestureTest):
    def views(self, first, samples, gesture):
        """A gesture leads to the labels and the picture of that view."""
        wanted = self.typed(view=(first, samples))
        gesture()
        self.shows(wanted)
        self.reset()

    def test_zoom_by_two_clicks(self):
        def clicks():
            self.keys("z")
            self.click(600)
            self.click(200)
        first, last = self.sample(200), self.sample(600)
        self.views(first, last - first, clicks)

    def test_zoom_in_and_out_at_the_mouse(self):
        inner = round(self.total * 0.6)
        first = round(self.sample(500) - inner / 2)

        def zoom_in():
            self.keys("x")
            self.click(500)
        self.views(first, inner, zoom_in)

        second = self.sample(400, (first, inner))
        smaller = round(inner * 0.6)
        view = (round(second - smaller / 2), smaller)
        third = self.sample(700, view)
        larger = round(smaller / 0.6)

        def zoom_in_twice_and_out():
            zoom_in()
            self.click(400)
            self.click(700, 3)
        self.views(round(third - larger / 2), larger, zoom_in_twice_and_out)

    def zoomed(self):
        """Two fifths of the sound in the midst of it, by two clicks: first sample, samples."""
        self.keys("z")
        self.click(300)
        self.click(700)
        first, last = self.sample(300), self.sample(700)
        return first, last - first

    def test_pan(self):
        first, samples = self.zoomed()
        self.reset()
        way = self.sample(600, (first, samples)) - self.sample(350, (first, samples))

        def pan():
            self.zoomed()
            self.keys("alt+v", "p")
            self.drag(600, 350)
        self.views(first + way, samples, pan)

    def test_the_wheel_scrolls_by_a_tenth_of_the_view_and_with_shift_by_all_of_it(self):
        first, samples = self.zoomed()
        self.reset()

        def down():
            self.zoomed()
            self.turn(500, 5)
        self.views(round(first + samples / 10), samples, down)

        def up():
            self.zoomed()
            self.turn(500, 4, "shift")
        # There is less before the view than the view is long.
        self.views(1, samples, up)

    def test_the_wheel_with_ctrl_zooms_around_the_sample_under_the_mouse(self):
        first, samples = self.zoomed()
        self.reset()
        share = 400 / (self.width - 1)
        inner = samples * 0.6

        def closer():
            self.zoomed()
            self.turn(400, 4, "ctrl")
        self.views(round(first + share * (samples - inner)), round(inner), closer)

        def closer_and_back():
            closer()
            self.turn(400, 5, "ctrl")
        self.views(first, samples, closer_and_back)

    def test_dragging_the_overview_bar(self):
        first, samples = self.zoomed()
        self.reset()

        def drag():
            self.zoomed()
            self.xdotool(*self.to(500, BAR), "mousedown", 1, *self.to(620, BAR), "sleep", "0.2",
                         "mouseup", 1)
        self.views(first + round(120 * self.total / self.width), samples, drag)

    def test_a_press_beside_the_view_on_the_overview_bar_pages(self):
        first, samples = self.zoomed()
        self.reset()

        def page():
            self.zoomed()
            self.click(100, y=BAR)
        self.views(max(first - samples, 1), samples, page)


if __name__ == "__main__":
    unittest.main()
