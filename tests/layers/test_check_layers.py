"""The checker of includes finds what it is there to find: each kind of wrong include is put into a
small tree of its own."""

import tempfile
import unittest
from pathlib import Path

from check_layers import complaints

GOOD = {
    "CMakeLists.txt": "add_library(quoril_core STATIC)\n",
    "main.cpp": '#include "view/Main_Frm.h"\n#include <QApplication>\n',
    "base/Sum.h": "#include <vector>\n",
    "storage/CMakeLists.txt": "target_sources(quoril_core PRIVATE\n  Store.cpp) # the store\n",
    "storage/Store.h": '#include "base/Sum.h"\n',
    "storage/Store.cpp": '#include "storage/Store.h"\n#include <cstdint>\n',
    "view/Main_Frm.h": '#include "storage/Store.h"\n#include <QMainWindow>\n',
    "shell/Entry.cpp": '#include "view/Main_Frm.h"\n',
}


class CheckLayers(unittest.TestCase):
    def complaints_with(self, **files):
        """What is said of the good tree with some files put in; "__" in a name stands for "/"."""
        with tempfile.TemporaryDirectory() as root:
            changed = {name.replace("__", "/"): text for name, text in files.items()}
            for name, text in {**GOOD, **changed}.items():
                path = Path(root, "src", name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            return complaints(root)

    def test_a_tree_in_order_has_no_complaint(self):
        self.assertEqual(self.complaints_with(), [])

    def test_an_include_upward_is_found(self):
        self.assertEqual(
            self.complaints_with(**{"base__Sum.h": '#include "storage/Store.h"\n'}),
            ["base/Sum.h includes storage/Store.h, which is not below base"])

    def test_an_include_between_neighbours_is_found(self):
        found = self.complaints_with(**{"edit__Cut.h": "", "effects__Echo.cpp":
                                        '  #  include "edit/Cut.h"\n'})
        self.assertEqual(found, ["effects/Echo.cpp includes edit/Cut.h, which is not below effects"])

    def test_a_window_of_another_folder_is_found(self):
        found = self.complaints_with(**{"effects__EchoFrm.h": "", "view__Tool.cpp":
                                        '#include "effects/EchoFrm.h"\n'})
        self.assertEqual(
            found, ["view/Tool.cpp includes effects/EchoFrm.h, a window of another folder"])

    def test_shell_and_main_may_include_windows(self):
        found = self.complaints_with(**{
            "effects__EchoFrm.h": "", "shell__Wire.cpp": '#include "effects/EchoFrm.h"\n',
            "main.cpp": '#include "effects/EchoFrm.h"\n'})
        self.assertEqual(found, [])

    def test_qt_in_a_source_of_the_core_is_found(self):
        found = self.complaints_with(**{"storage__Store.cpp": "#include <QString>\n"})
        self.assertEqual(found, ["storage/Store.cpp is compiled without Qt and includes <QString>"])

    def test_qt_by_its_module_is_found(self):
        found = self.complaints_with(**{"storage__Store.cpp": "#include <QtCore/qstring.h>\n"})
        self.assertEqual(
            found, ["storage/Store.cpp is compiled without Qt and includes <QtCore/qstring.h>"])

    def test_qt_behind_headers_of_the_core_is_found(self):
        found = self.complaints_with(**{"base__Sum.h": "#include <QObject>\n"})
        self.assertEqual(found, ["storage/Store.cpp is compiled without Qt and includes <QObject>"
                                 " through storage/Store.h and base/Sum.h"])

    def test_qt_in_the_inner_part_of_the_player_is_found(self):
        found = self.complaints_with(**{
            "player__CMakeLists.txt": "add_library(quoril_player_core STATIC\n  Ring.cpp)\n"
                                      "add_executable(quoril-player main.cpp)\n",
            "player__Ring.cpp": "#include <QDBusConnection>\n",
            "player__main.cpp": "#include <QCoreApplication>\n"})
        self.assertEqual(
            found, ["player/Ring.cpp is compiled without Qt and includes <QDBusConnection>"])

    def test_qt_outside_the_core_is_allowed(self):
        self.assertEqual(self.complaints_with(**{"base__Window.cpp": "#include <QWidget>\n"}), [])

    def test_a_folder_outside_the_house_is_found(self):
        found = self.complaints_with(**{"attic__Box.h": ""})
        self.assertEqual(found, ["attic/Box.h lies in no folder of the house"])

    def test_an_include_of_nothing_is_found(self):
        found = self.complaints_with(**{"shell__Entry.cpp": '#include "base/Gone.h"\n'})
        self.assertEqual(found, ["shell/Entry.cpp includes base/Gone.h, which does not exist"])

    def test_a_core_source_that_does_not_exist_is_found(self):
        found = self.complaints_with(**{"base__CMakeLists.txt":
                                        "target_sources(quoril_core PRIVATE Gone.cpp)\n"})
        self.assertEqual(found, ["base/Gone.cpp is compiled into a library without Qt and does not exist"])

    def test_a_tree_without_a_core_is_found(self):
        found = self.complaints_with(**{"storage__CMakeLists.txt": ""})
        self.assertEqual(found, ["no CMake file names a source of a library without Qt"])

    def test_an_empty_tree_is_refused(self):
        with tempfile.TemporaryDirectory() as root, self.assertRaises(ValueError):
            complaints(root)


if __name__ == "__main__":
    unittest.main()
