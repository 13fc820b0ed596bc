"""An ordinary piece of work, done as a user does it: by keys and typed names in real windows."""

import configparser
import unittest

from desktop_test import DesktopTest
from virtual_desktop import is_main_window, picture_digest, wait_until

# In the middle of the label of the view's total.
VIEW_TOTAL_FROM_BOTTOM_LEFT = (115, 36)


class Work(DesktopTest):
    def keys(self, *keys):
        self.desktop.run("xdotool", "key", "--clearmodifiers", *keys)

    def dialog(self, editor, title):
        return self.desktop.wait_for_window(editor, lambda window: title in window.title)

    def gone(self, editor, title):
        wait_until(lambda: not any(title in window.title for window in self.desktop.windows(editor)),
                   f"the end of the window {title}")

    def answer_name(self, editor, title, name):
        window = self.dialog(editor, title)
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        self.desktop.run("xdotool", "type", "--clearmodifiers", str(name))
        self.keys("Return")
        self.gone(editor, title)

    def gone_question(self, editor):
        wait_until(lambda: all(map(is_main_window, self.desktop.windows(editor))),
                   "the end of the question")

    def click(self, window, right, up):
        """Clicks at a place that is counted from the lower left corner of a window."""
        shape = dict(line.split("=") for line in self.desktop.run(
            "xdotool", "getwindowgeometry", "--shell", window.id).split())
        self.desktop.run("xdotool", "mousemove", "--window", window.id, str(right),
                         str(int(shape["HEIGHT"]) - up), "click", "1")

    def new_picture(self, window, old):
        """What tells the next steady picture of a window that is not the old one."""
        return wait_until(lambda: (new := picture_digest(self.picture_of(window))) != old and new,
                          "another picture of the window")

    def settings(self):
        parser = configparser.ConfigParser(strict=False)
        parser.optionxform = str
        parser.read(self.program_folder / "quoril-wave-editor.ini", encoding="utf-8")
        return parser

    def test_open_zoom_select_save_as_and_close(self):
        file = self.demonstration_sound()
        editor, window = self.start_editor()
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        self.keys("ctrl+o")
        self.answer_name(editor, "Select a Wave file to Open", file)
        self.desktop.wait_for_window(editor, lambda window: window.title.startswith(file.name))

        # The picture changes with the view and with the selection.
        whole = picture_digest(self.picture_of(window))
        self.keys("ctrl+a")
        selected = self.new_picture(window, whole)
        self.keys("F3", "F3")
        self.new_picture(window, selected)

        # A value is changed by a click on its label: one second in view.
        before = self.new_picture(window, selected)
        self.click(window, *VIEW_TOTAL_FROM_BOTTOM_LEFT)
        self.answer_name(editor, "Change View (Total)", "1")
        self.new_picture(window, before)

        copy = self.folder / "copy"
        self.keys("ctrl+shift+s")
        self.answer_name(editor, "Choose wave file name to save", copy)
        saved = self.folder / "copy.wav"
        self.desktop.wait_for_window(editor, lambda window: window.title.startswith(saved.name))
        self.assertEqual(saved.read_bytes(), file.read_bytes())

        self.keys("ctrl+q")
        self.assertEqual(editor.wait(10), 1)
        self.assertEqual(self.session_folders(), [])
        settings = self.settings()
        self.assertEqual(settings["LastFiles"]["1"], str(saved))
        self.assertEqual(settings["LastFiles"]["2"], str(file))
        self.assertEqual(settings["Path"]["Last Wave Dir"], str(self.folder))
        self.assertEqual(settings["Format"]["SamplingRate"], "44100")
        self.assertEqual(settings["Format"]["Channel"], "2")

    def asked_at_the_end(self, editor, window, *answer):
        """Closes the main window, and answers the question about unsaved work by keys."""
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        self.keys("ctrl+q")
        question = self.desktop.wait_for_window(
            editor, lambda window: window.title == "Quoril Wave Editor")
        self.desktop.run("xdotool", "windowactivate", "--sync", question.id)
        self.keys(*answer)

    def test_close_changed_work_with_cancel_and_then_with_no(self):
        file = self.demonstration_sound()
        as_opened = file.read_bytes()
        editor, window = self.start_editor(file)
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        whole = picture_digest(self.picture_of(window))
        self.keys("ctrl+a", "Delete")
        self.new_picture(window, whole)
        working = self.session_folders()
        self.assertEqual(len(working), 1)

        self.asked_at_the_end(editor, window, "Escape")
        self.gone_question(editor)
        self.assertEqual(self.session_folders(), working)

        # The document and what undoes the change are still there.
        self.desktop.run("xdotool", "windowactivate", "--sync", window.id)
        self.keys("ctrl+z", "ctrl+shift+s")
        self.answer_name(editor, "Choose wave file name to save", self.folder / "kept")
        kept = self.folder / "kept.wav"
        self.desktop.wait_for_window(editor, lambda window: window.title.startswith(kept.name))
        self.assertEqual(kept.read_bytes(), as_opened)

        self.keys("ctrl+a", "Delete")
        self.asked_at_the_end(editor, window, "n")
        self.assertEqual(editor.wait(10), 1)
        self.assertEqual(self.session_folders(), [])
        self.assertEqual(file.read_bytes(), as_opened)
        self.assertEqual(kept.read_bytes(), as_opened)


if __name__ == "__main__":
    unittest.main()
