"""Commands chosen by keys from the menus of the real window: menus, dialogs, what is saved, and
undo."""

from desktop_test import QUIET, DesktopTest
from virtual_desktop import DesktopError, wait_until


class MenuSteps(DesktopTest):
    """A test has `editor` and its main `window`, and the `file` that it saves: see `open_sound`."""

    def keys(self, *keys):
        self.desktop.run("xdotool", "key", "--clearmodifiers", *keys)

    def shows(self, count):
        """Waits until so many windows and menus are on the screen."""
        def state():
            try:
                return count == len(self.desktop.run("xdotool", "search", "--onlyvisible", "--pid",
                                                     str(self.editor.pid)).split())
            except DesktopError:
                return False # one of them went while it was looked at
        wait_until(state, f"{count} windows and menus")

    def menu(self, *keys):
        """Chooses from a menu. The next key waits until the menu of the last one is there."""
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)
        for before, key in enumerate(keys):
            self.shows(1 + before)
            self.keys(key)

    def answer(self, title, *keys):
        """Presses keys in a dialog and closes it with the return key."""
        def dialogs():
            return [window for window in self.desktop.windows(self.editor)
                    if window.title == title]
        dialog, = wait_until(dialogs, f'the window "{title}"')
        self.desktop.run("xdotool", "windowactivate", "--sync", dialog.id)
        self.keys(*keys, "Return")
        wait_until(lambda: not dialogs(), f'the end of the window "{title}"')

    def saved(self, sound):
        """Saves, and waits until the file holds that sound."""
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)
        self.keys("ctrl+s")
        expected = sound.wav_bytes()
        def is_written():
            try:
                return self.file.read_bytes() == expected
            except FileNotFoundError:
                return False # it is just being made new
        wait_until(is_written, f"the right bytes in {self.file.name}")

    def step(self, sound, expected, command):
        """Runs a command, and undo takes it back."""
        command()
        self.saved(expected)
        self.keys("ctrl+z")
        self.saved(sound)

    def open_sound(self, name, sound):
        """Opens a file of that sound with everything selected, as if there had been no last time."""
        self.write_settings(QUIET)
        self.file = self.folder / name
        self.file.write_bytes(sound.wav_bytes())
        self.editor, self.window = self.start_editor(self.file)
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window.id)
        self.keys("ctrl+a")

    def end(self):
        self.desktop.close(self.window)
        self.assertEqual(self.editor.wait(10), 1)
        self.assertEqual(self.session_folders(), [])
