#!/usr/bin/env python3
"""Takes the pictures of the windows for README and help, with the built editor on a private desktop.

usage: docs/pictures/make.py [build/release]
"""
import os
import shutil
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(ROOT / "scripts"))
from virtual_desktop import VirtualDesktop, is_main_window  # noqa: E402

STYLES = {1: "line", 2: "bar", 3: "bar-and-line", 4: "uniform-bar", 5: "uniform-bar-and-line"}

# The pages of the options, in their order.
OPTIONS = ("options", "options-play", "options-guide", "options-disk", "options-sound")


class Camera:
    def __init__(self, desktop, build):
        self.desktop = desktop
        self.folder = Path(desktop.folder, "program")
        self.folder.mkdir()
        for name in ("quoril-wave-editor", "quoril-player", "quoril-wma-encoder"):
            shutil.copy2(build / "src" / name, self.folder)
        for help_file in (build / "src").glob("*.qch"):
            shutil.copy2(help_file, self.folder)
        self.sound = Path(desktop.folder, "Demonstration.wav")
        subprocess.run([build / "tools" / "demo-sound", self.sound], check=True)
        self.mono = Path(desktop.folder, "Mono.wav")
        subprocess.run(["sox", self.sound, self.mono, "remix", "1"], check=True)

    def start(self, file, style=3, tips=0):
        (self.folder / "quoril-wave-editor.ini").write_text(
            f"[General]\nShowNewUserGuide={tips}\n[Color]\nWaveFormDrawStyle={style}\n"
            "[MainWindow]\nWindow Size=0,150,150,16500,10500\n")
        editor = self.desktop.start([self.folder / "quoril-wave-editor", file])
        window = self.desktop.wait_for_window(editor, lambda window: window.title.startswith(file.name))
        if not tips:
            self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        return editor, window

    def keys(self, *keys):
        self.desktop.run("xdotool", "key", "--clearmodifiers", *keys)

    def take(self, window, name):
        self.desktop.wait_for_picture(window, str(HERE / (name + ".png")))

    def dialog(self, editor, name, *keys, close="Escape"):
        """Takes the dialog that is open, after some keys, and closes it by a key."""
        window = self.desktop.wait_for_window(editor, lambda window: not is_main_window(window))
        if keys:
            self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
            self.keys(*keys)
        self.take(window, name)
        self.keys(close)

    def disk_space(self, editor):
        """Takes the window that finds no room for a copy: the folder of the working files is away."""
        folder = Path(self.desktop.env["TMPDIR"])
        away = folder.rename(folder.with_name("away"))
        self.keys("ctrl+c")
        self.dialog(editor, "disk-space")
        away.rename(folder)
        self.desktop.wait_for_window(editor, lambda window: window.title == "Quoril Wave Editor")
        self.keys("Return")  # the copy has failed

    def raw_format(self):
        """Takes the dialog that asks for the format of a raw file."""
        raw = self.sound.with_suffix(".raw")
        raw.write_bytes(self.sound.read_bytes())
        editor = self.desktop.start([self.folder / "quoril-wave-editor", raw])
        self.dialog(editor, "raw-format")
        self.desktop.wait_for_window(editor, is_main_window)
        self.end(editor)

    def next_dialog(self, editor, title):
        """The dialog with this title, in front."""
        window = self.desktop.wait_for_window(editor, lambda window: window.title.strip() == title)
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        return window

    def main_window_in_front(self, editor):
        window = self.desktop.wait_for_window(editor, is_main_window)
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)

    def name_file(self, editor, title, file):
        self.next_dialog(editor, title)
        self.keys("ctrl+a")
        self.desktop.run("xdotool", "type", str(file))
        self.keys("Return")

    def encoders(self, editor):
        """Takes the dialogs before a sound goes to an encoder."""
        self.keys("alt+f")
        self.keys("a")
        self.name_file(editor, "Choose wave file name to save", self.sound.with_suffix(".mp3"))
        self.take(self.next_dialog(editor, "Need a command line Mp3 encoder"), "choose-encoder")
        self.keys("Return")
        self.take(self.next_dialog(editor, "Select Mp3 Compressing Parameters"), "mp3-parameters")
        self.keys("Escape")
        self.main_window_in_front(editor)
        self.keys("alt+f")
        self.keys("e")
        self.name_file(editor, "Choose a Windows media file name to export to",
                       self.sound.with_suffix(".wma"))
        self.next_dialog(editor, "Need a command line Wma encoder")
        self.keys("Return")
        self.take(self.next_dialog(editor, "Select Wma Compressing Parameters"), "wma-parameters")
        self.keys("Escape")
        self.main_window_in_front(editor)

    def bookmarked_parts(self, editor):
        for _ in range(2):
            self.keys("ctrl+a", "b")
            self.next_dialog(editor, "Add New Bookmark")
            self.keys("Return")
            self.main_window_in_front(editor)
        self.keys("alt+f")
        self.keys("b")
        self.dialog(editor, "save-bookmarked")

    def record(self, editor):
        """Takes the recording window while it records the demonstration sound from its start."""
        self.keys("ctrl+r")
        question = self.desktop.wait_for_window(editor, lambda window: not is_main_window(window))
        self.desktop.run("xdotool", "windowactivate", "--sync", question.id, "key", "Return")
        window = self.desktop.wait_for_window(editor, lambda window: window.title == "Record")
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        self.keys("alt+s")
        player = self.desktop.start(["paplay", "--device=quoril_out", self.sound])
        player.wait(60)
        self.keys("alt+t")
        self.take(window, "record")
        self.keys("Escape")
        self.desktop.wait_for_window(editor, is_main_window)

    def draw(self, window):
        """Takes the main window in the midst of a stroke, and drops the stroke."""
        self.desktop.run("xdotool", "mousemove", "--window", window.id, "640", "250", "keydown", "ctrl",
                         "click", "--repeat", "12", "--delay", "20", "4", "keyup", "ctrl")
        self.keys("alt+e")
        self.keys("r", "d")
        stroke = [("400", "260"), ("480", "190"), ("560", "280"), ("640", "210")]
        self.desktop.run("xdotool", "mousemove", "--window", window.id, "320", "200", "mousedown", "1",
                         "sleep", "0.2", *(word for place in stroke for word in
                                           ("mousemove", "--window", window.id, *place)))
        self.take(window, "draw")
        self.desktop.run("xdotool", "mouseup", "1")
        self.keys("Escape", "ctrl+z", "F5")

    def end(self, editor):
        self.desktop.close_all(editor)


def main():
    build = Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "release").resolve()
    with VirtualDesktop(1280, 800) as desktop:
        desktop.start_sound()
        camera = Camera(desktop, build)
        editor, window = camera.start(camera.sound, tips=1)
        camera.dialog(editor, "guide-tip")
        camera.end(editor)
        for style, name in STYLES.items():
            if style == 5:
                continue  # holds only within a session
            editor, window = camera.start(camera.sound, style)
            camera.take(window, "style-" + name)
            camera.end(editor)
        editor, window = camera.start(camera.sound)
        camera.keys("alt+o")
        camera.keys("o")
        camera.dialog(editor, "options", "alt+t", "End", close="Return")
        camera.take(window, "style-" + STYLES[5])
        camera.end(editor)
        camera.raw_format()
        editor, window = camera.start(camera.mono)
        camera.take(window, "main-window-mono")
        camera.end(editor)
        editor, window = camera.start(camera.sound)
        camera.take(window, "main-window")
        for menu, keys, name in (("alt+f", ("o",), "open-file"),
                                 ("alt+f", ("a",), "save-as"),
                                 ("alt+f", ("p",), "confirm-selection")):
            camera.keys(menu)
            camera.keys(*keys)
            camera.dialog(editor, name)
        for steps, name in enumerate(OPTIONS):
            camera.keys("alt+o")
            camera.keys("o")
            camera.dialog(editor, name, *["ctrl+Tab"] * steps)
        camera.desktop.run("xdotool", "mousemove", "--window", window.id, "115", "664", "click", "1")
        camera.dialog(editor, "enter-value")
        camera.keys("F1")
        camera.dialog(editor, "help")
        camera.keys("ctrl+a", "ctrl+c")
        camera.dialog(editor, "copied")
        camera.keys("alt+e")
        camera.keys("l")
        camera.dialog(editor, "lap")
        for menu, keys, name in (("alt+c", ("v", "c", "e"), "enter-volume"),
                                 ("alt+t", ("u",), "enter-height"),
                                 ("alt+t", ("f",), "enter-distance"),
                                 ("alt+t", ("c",), "channel-mix"),
                                 ("alt+m", ("m",), "convert-to-mono"),
                                 ("alt+m", ("r", "o"), "enter-rate"),
                                 ("alt+c", ("e",), "equalizer"),
                                 ("alt+c", ("p",), "band-filter"),
                                 ("alt+c", ("d",), "delete-silence"),
                                 ("alt+e", ("r", "s"), "enter-frequency"),
                                 ("alt+c", ("h",), "echo"),
                                 ("alt+c", ("s",), "stretch"),
                                 ("alt+c", ("c",), "speed")):
            camera.keys(menu)
            camera.keys(*keys)
            camera.dialog(editor, name)
        camera.draw(window)
        camera.encoders(editor)
        camera.bookmarked_parts(editor)
        camera.disk_space(editor)
        camera.record(editor)
        camera.keys("ctrl+a", "ctrl+v")
        camera.dialog(editor, "confirm-paste")
        camera.keys("ctrl+a", "Delete")
        camera.keys("alt+e")
        camera.keys("b")
        camera.dialog(editor, "undo-clear")
        camera.keys("ctrl+q")
        camera.dialog(editor, "question", close="n")
        editor.wait(10)
    for name in sorted(os.listdir(HERE)):
        print(name)


if __name__ == "__main__":
    main()
