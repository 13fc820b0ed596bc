"""The frame of tests with the real programs: a private desktop with a sound server, and copies of
the programs in a folder of their own, beside which they keep their settings."""

import os
import shutil
import subprocess
import unittest
from pathlib import Path

from virtual_desktop import VirtualDesktop, is_main_window, wait_until

# What CMake has built: the programs, separated by colons, the editor first.
PROGRAMS = [Path(path) for path in os.environ["QUORIL_PROGRAMS"].split(":")]
DEMO_SOUND = os.environ["QUORIL_DEMO_SOUND"]

# Without these a tip may come up in front of the window at any command.
QUIET = {"General": {"ShowNewUserGuide": "0"}}


class DesktopTest(unittest.TestCase):
    """A test on a desktop of its own. `desktop` is there for each test, and `folder` is empty."""

    screen = (1280, 800)

    def setUp(self):
        self.desktop = self.enterContext(VirtualDesktop(*self.screen))
        self.sound_server = self.desktop.start_sound()
        self.folder = Path(self.desktop.folder, "files")
        self.folder.mkdir()
        self.program_folder = Path(self.desktop.folder, "program")
        self.program_folder.mkdir()
        for program in PROGRAMS:
            shutil.copy2(program, self.program_folder)
        self.write_settings(QUIET)

    def write_settings(self, sections):
        """The settings that the next editor finds: section -> key -> value."""
        text = "".join(f"[{section}]\n" + "".join(f"{key}={value}\n" for key, value in keys.items())
                       for section, keys in sections.items())
        (self.program_folder / "quoril-wave-editor.ini").write_text(text, encoding="utf-8")

    def demonstration_sound(self, name="Demonstration.wav"):
        """A new file with the demonstration sound."""
        path = self.folder / name
        subprocess.run([DEMO_SOUND, path], check=True)
        return path

    def start_editor(self, file=None):
        """Starts an editor, and gives its process and its main window once the file is open."""
        editor = self.desktop.start(
            [self.program_folder / PROGRAMS[0].name, *([file] if file else [])])
        title = f"{file.name if file else 'New.wav'} [Quoril Wave Editor]"
        window = self.desktop.wait_for_window(editor, lambda window: window.title == title)
        return editor, window

    def picture_of(self, window):
        """A steady picture of a window, as a file that is kept only as long as the test."""
        path = self.folder / "window.png"
        self.desktop.wait_for_picture(window, path)
        return path

    def session_folders(self):
        """The folders for working files that editors have at the moment."""
        return sorted(Path(self.desktop.env["TMPDIR"]).glob("qw*"))
