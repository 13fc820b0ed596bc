"""The frame of tests that work the panels with a real mouse. What a gesture must come to is worked
out in samples, typed into the boxes of the value labels, and kept as a picture of the window; the
gesture must then lead to the very same picture: panels, scale, overview and labels together."""

import wave

from desktop_test import DesktopTest
from virtual_desktop import picture_digest, wait_until

# A hand holds the button for a while before it moves; a quicker move counts as a shaky click.
HOLD = ("sleep", "0.2")

# Places in a window of 1000 x 640 at a scale of 1. Heights of the upper panel, the scale and the
# overview bar, from the upper edge:
PANEL, SCALE, BAR = 230, 307, 535
# All that shows the document: width, height, left and upper edge. And the value labels alone.
DOCUMENT = (1000, 520, 0, 95)
LABELS = (300, 50, 65, 568)
# Beside the buttons, where the mouse is over nothing.
AWAY = (970, 40)
# The value labels.
SELECT_FROM, SELECT_TO = (214, 581), (313, 581)
VIEW_TOTAL, VIEW_FROM = (114, 603), (214, 603)


def frames_of(path):
    """The samples of a file, as bytes; nothing while it is still being written."""
    try:
        with wave.open(str(path)) as sound:
            return sound.readframes(sound.getnframes())
    except (EOFError, OSError, wave.Error):
        return None


class GestureTest(DesktopTest):
    """The demonstration sound in a window of 1000 x 640, all of it in view, nothing selected."""

    scale = 1

    def setUp(self):
        super().setUp()
        self.desktop.env["QT_SCALE_FACTOR"] = str(self.scale)
        self.write_settings({"General": {"ShowNewUserGuide": "0", "ShowHhmmss": "0"},
                             "Setting": {"QuickPlay": "0"}})
        self.file = self.demonstration_sound()
        with wave.open(str(self.file)) as sound:
            self.total = sound.getnframes()
            self.sound = sound.readframes(self.total)
        self.editor, self.window = self.start_editor(self.file)
        self.xdotool("windowactivate", "--sync", self.window.id)
        shape = dict(line.split("=") for line in self.xdotool(
            "getwindowgeometry", "--shell", self.window.id).split())
        self.assertEqual((shape["WIDTH"], shape["HEIGHT"]),
                         (str(1000 * self.scale), str(640 * self.scale)))
        self.width = 1000 * self.scale
        self.whole = self.picture()

    # ---- Mouse and keys

    def xdotool(self, *words):
        return self.desktop.run("xdotool", *map(str, words))

    def keys(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def to(self, x, y=PANEL):
        """The words that move the mouse to a column of the panels' pictures."""
        return ["mousemove", "--window", self.window.id, x, y * self.scale]

    def click(self, x, button=1, y=PANEL):
        self.xdotool(*self.to(x, y), "click", button)

    def drag(self, start, end, y=PANEL):
        self.xdotool(*self.to(start, y), "mousedown", 1, *HOLD, *self.to((start + end) // 2, y),
                     *HOLD, *self.to(end, y), *HOLD, "mouseup", 1)

    def turn(self, x, button, *modifiers):
        """Turns the wheel by one notch: button 4 is away from the user, 5 towards."""
        held = [word for key in modifiers for word in ("keydown", key)]
        released = [word for key in modifiers for word in ("keyup", key)]
        self.xdotool(*self.to(x), *held, "click", button, *released)

    # ---- Numbers

    def sample(self, x, view=None):
        """The sample under a column, with a view of (first, samples) or all of it."""
        first, samples = view or (1, self.total)
        return min(max(round(x / ((self.width - 1) / samples) + first), 1), self.total)

    # ---- What the window shows

    def picture(self, part=DOCUMENT):
        """What tells a steady picture of a part of the window, with the mouse away from it."""
        self.xdotool("mousemove", "--window", self.window.id, *(self.scale * at for at in AWAY))
        path = self.picture_of(self.window)
        width, height, left, top = (self.scale * length for length in part)
        self.desktop.run("mogrify", "-crop", f"{width}x{height}+{left}+{top}", "+repage", path)
        return picture_digest(path)

    def shows(self, wanted, part=DOCUMENT):
        wait_until(lambda: self.picture(part) == wanted, "the picture that was typed in")

    def shows_something_else(self, old):
        wait_until(lambda: self.picture() != old, "another picture")

    def type_value(self, label, title, samples):
        x, y = label
        self.xdotool("mousemove", "--window", self.window.id, x * self.scale, y * self.scale,
                     "click", 1)
        dialog = self.desktop.wait_for_window(self.editor, lambda window: title in window.title)
        self.xdotool("windowactivate", "--sync", dialog.id)
        self.keys("alt+n")
        self.xdotool("type", str(samples))
        self.keys("Return")
        wait_until(lambda: not any(title in window.title
                                   for window in self.desktop.windows(self.editor)),
                   f"the end of the window {title}")

    def typed(self, selection=None, view=None, part=DOCUMENT):
        """The picture of a selection (first, last) and a view (first, samples)."""
        if view:
            self.type_value(VIEW_TOTAL, "Change View (Total)", view[1])
            self.type_value(VIEW_FROM, "Change View (From)", view[0])
        if selection:
            self.keys("ctrl+a")
            self.type_value(SELECT_TO, "Change Selection (To)", selection[1])
            self.type_value(SELECT_FROM, "Change Selection (From)", selection[0])
        picture = self.picture(part)
        self.assertNotEqual(picture, self.whole)
        self.reset()
        return picture

    def reset(self):
        """All in view, nothing selected."""
        self.keys("Escape", "Escape", "F5")
        self.shows(self.whole)

    # ---- What is selected

    def assert_saved(self, name, first, last):
        """The selection, saved to a file, is the sound from one sample to another."""
        self.keys("alt+f", "p")
        title = "Select file name to to save selected"
        dialog = self.desktop.wait_for_window(self.editor, lambda window: title in window.title)
        self.xdotool("windowactivate", "--sync", dialog.id)
        self.xdotool("type", "--clearmodifiers", self.folder / name)
        self.keys("Return")
        wait_until(lambda: not any(title in window.title
                                   for window in self.desktop.windows(self.editor)),
                   f"the end of the window {title}")
        size = len(self.sound) // self.total
        wanted = self.sound[(first - 1) * size:last * size]
        wait_until(lambda: frames_of(self.folder / f"{name}.wav") == wanted,
                   f"the samples {first} to {last} in {name}.wav")
