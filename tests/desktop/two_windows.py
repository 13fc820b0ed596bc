"""The frame of tests with two editors on one desktop: an editor as a user handles it, with what it must
hold worked out beside it and compared with the bytes that it saves."""

import os
import random
import re
import subprocess

from desktop_test import PROGRAMS, DesktopTest
from edited_sound import RATE, EditedSound, wav_bytes
from virtual_desktop import DesktopError, is_main_window, wait_until

CONFIRM = "Confirm Selection ["
COPIED = "Wave samples placed in private ClipBoard"
NOT_COPIED = "Get Wave Form from Clipboard Failed"
# With their letters in the menu.
MODES = {"Replace": "r", "Insert": "i", "Multi-Insert": "u", "Mix": "m", "Modulate": "d",
         "Cross Fade": "c"}
# From the lower left corner of a window: the labels of the selection.
SELECTION_FROM, SELECTION_TO = (214, 58), (313, 58)
# From the upper left corner: the button that pastes as the last time, and its list.
PASTE_BUTTON, PASTE_LIST = (238, 38), (258, 38)
CLIPBOARD_KEEPER = os.environ["CLIPBOARD_KEEPER"]


class Editor:
    """An editor with its window, and `sound`, what it must hold."""

    def __init__(self, test, file):
        self.test = test
        self.file = file
        self.sound = EditedSound(())
        self.process = self.window = None

    def create(self, samples):
        """Makes the file new and opens it."""
        self.sound = EditedSound(samples)
        self.file.write_bytes(wav_bytes(self.sound.samples))
        self.start()
        return self

    def start(self):
        self.process, self.window = self.test.start_editor(self.file)
        self.sound = EditedSound(self.sound.samples)
        width, height = re.search(r"Geometry: (\d+)x(\d+)", self.test.xdotool(
            "getwindowgeometry", self.window.id)).groups()
        self.height = int(height)

    def close(self):
        """Closes the window; what is changed must have been saved."""
        self.test.desktop.close(self.window)
        self.test.assertEqual(self.process.wait(10), 1)

    # ---- What a user does

    def keys(self, *keys):
        """Keys for the main window."""
        self.test.xdotool("windowactivate", "--sync", self.window.id, "key", "--delay", 1, *keys)

    def answer(self, title, *keys):
        """Waits until a window of this editor with such a title has the keyboard, presses keys and
        then the return key, and waits for the window's end."""
        def is_active():
            try:
                said = self.test.xdotool("getactivewindow", "getwindowpid", "getwindowname")
            except DesktopError:
                return False # no window has it at the moment
            pid, name = said.splitlines()[:2]
            return int(pid) == self.process.pid and title in name
        self.test.until(is_active, f'the window "{title}"')
        self.test.xdotool("key", "--delay", 1, *filter(None, keys), "Return")
        self.test.until(lambda: not any(title in window.title for window in
                                        self.test.desktop.windows(self.process)),
                        f'the end of the window "{title}"')

    def shows(self, count):
        """Waits until so many windows and menus of this editor are on the screen."""
        def state():
            try:
                return count == len(self.test.xdotool(
                    "search", "--onlyvisible", "--pid", self.process.pid).split())
            except DesktopError:
                return False # one of them went while it was looked at
        self.test.until(state, f"{count} windows and menus")

    def click(self, place, up=True):
        x, y = place
        self.test.xdotool("windowactivate", "--sync", self.window.id, "mousemove", "--window",
                          self.window.id, x, self.height - y if up else y, "click", 1)

    def select(self, start, end):
        """Enters a range by its two labels."""
        self.keys("ctrl+a")
        for label, title, position in ((SELECTION_FROM, "Change Selection (From)", start),
                                       (SELECTION_TO, "Change Selection (To)", end)):
            self.click(label)
            self.answer(title, *("period" if sign == "." else sign
                                 for sign in f"{position / RATE:.3f}"))
        self.sound.select(start, end)

    def select_some(self, choice):
        count = len(self.sound.samples)
        start = choice.randint(count // 8, count // 3)
        self.select(start, start + choice.randint(count // 16, count // 4))

    def copy(self, cut=False, second=False):
        """`second`: takes the second offer of the question for the selection."""
        asked = not self.sound.has_range()
        self.keys("ctrl+x" if cut else "ctrl+c")
        if asked:
            self.answer(CONFIRM + "Copy]", "Down" if second else None)
        self.answer(COPIED)
        return self.sound.cut(second) if cut else self.sound.copy(second)

    def choose_paste(self, mode, way):
        if way == "menu":
            self.shows(1)
            self.keys("alt+e", "p")
            self.shows(3) # the list of the menu comes up after a moment
            self.test.xdotool("key", MODES[mode])
        elif way == "list":
            self.click(PASTE_LIST, up=False)
            self.test.xdotool("key", "--delay", 1, *["Down"] * (1 + list(MODES).index(mode)), "Return")
        else:
            self.click(PASTE_BUTTON, up=False)

    def paste(self, mode, clip, second=False, way="list"):
        """Pastes by the menu, by the list of the button, or by the button, for which the mode must
        be the one of the last time. `clip` None: there is nothing to paste, which a message must
        tell."""
        asked = not self.sound.has_point()
        self.choose_paste(mode, way)
        if asked:
            self.answer(f"{CONFIRM}Paste {mode}]", "Down" if second else None)
        if clip is None:
            self.answer(NOT_COPIED)
            return
        self.sound.paste(mode, clip, second)
        if not asked:
            self.save() # so that the menu has gone, which would take keys that are meant for others

    def undo(self):
        self.keys("ctrl+z")
        self.sound.undo()

    def save(self):
        """Saves, and waits until the file holds what it must hold."""
        self.keys("ctrl+s")
        expected = wav_bytes(self.sound.samples)
        def is_written():
            try:
                return self.file.read_bytes() == expected
            except FileNotFoundError:
                return False # it is just being made new
        self.test.until(is_written, f"the right bytes in {self.file.name}")


class TwoWindowsTest(DesktopTest):
    """`one` and `two` are editors that are not started yet; `random` gives the same numbers each time."""

    def setUp(self):
        super().setUp()
        self.one = Editor(self, self.folder / "one.wav")
        self.two = Editor(self, self.folder / "two.wav")
        self.random = random.Random(1)

    def xdotool(self, *words):
        return self.desktop.run("xdotool", *map(str, words))

    def until(self, state, what):
        return wait_until(state, what, limit=20, pause=0.004)

    def noise(self, count):
        return [self.random.randint(-20000, 20000) for _ in range(count)]

    def no_window_but_the_main_ones(self):
        for editor in (self.one, self.two):
            self.assertTrue(all(is_main_window(window)
                                for window in self.desktop.windows(editor.process)))

    def nothing_is_left(self):
        """No working file, and beside the programs only what stays there for good."""
        self.assertEqual(self.session_folders(), [])
        self.assertEqual(
            {path.name for path in self.program_folder.iterdir()},
            {*(program.name for program in PROGRAMS), "Work",
             "quoril-wave-editor.ini", "quoril-wave-editor.ini.lock",
             "InfoFiles.dat", "InfoLeft.dat", "InfoRight.dat"})
        self.assertEqual(list((self.program_folder / "Work").iterdir()), [])
        self.assertEqual({path.name for path in self.folder.iterdir()}, {"one.wav", "two.wav"})

    def keep_clipboard(self):
        """The text of the clipboard outlives the editor that it came from, from now on."""
        keeper = subprocess.Popen([CLIPBOARD_KEEPER], env=self.desktop.env,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        self.addCleanup(keeper.stdout.close)
        self.addCleanup(keeper.wait)
        self.addCleanup(keeper.kill)
        self.assertTrue(keeper.stdout.readline().startswith("kept QuorilWaveEditorClip,1,"))

    def goes_on_and_ends(self, editor):
        """An editor copies, pastes, undoes, saves and ends as ever."""
        editor.select(11, 30)
        editor.paste("Insert", editor.copy())
        editor.save()
        editor.undo()
        editor.save()
        editor.close()
