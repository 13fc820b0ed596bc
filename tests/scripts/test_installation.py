"""test_installation.py BUILD: what `cmake --install` puts where, and whether a desktop accepts it."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from configparser import RawConfigParser
from pathlib import Path

BUILD = sys.argv.pop()
ROOT = Path(__file__).resolve().parents[2]


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.prefix = Path(folder.name)
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True,
                       stdout=subprocess.DEVNULL)
        cls.share = cls.prefix / "share"
        cls.entry_file = cls.share / "applications" / "quoril-wave-editor.desktop"
        cls.entry = RawConfigParser()
        cls.entry.optionxform = str
        cls.entry.read(cls.entry_file, encoding="utf-8")

    def test_the_menu_entry_is_valid(self):
        subprocess.run(["desktop-file-validate", self.entry_file], check=True)

    def test_the_menu_entry_starts_a_program_that_is_installed(self):
        program, argument = self.entry["Desktop Entry"]["Exec"].split()
        self.assertEqual(argument, "%f")
        self.assertTrue(os.access(self.prefix / "bin" / program, os.X_OK))

    def test_the_player_and_the_encoder_are_installed_beside_the_editor(self):
        for name in ("quoril-player", "quoril-wma-encoder"):
            self.assertTrue(os.access(self.prefix / "bin" / name, os.X_OK), name)

    def test_the_menu_entry_and_the_description_name_the_same_types(self):
        description = self.share / "metainfo" / "org.quoril.WaveEditor.metainfo.xml"
        told = [each.text for each in xml.parse(description).iter("mediatype")]
        self.assertEqual(self.entry["Desktop Entry"]["MimeType"].rstrip(";").split(";"), told)
        for kind in ("audio/x-wav", "audio/basic", "audio/mpeg"):
            self.assertIn(kind, told)

    def test_the_icon_of_the_menu_entry_is_installed_and_square(self):
        name = self.entry["Desktop Entry"]["Icon"] + ".svg"
        icon = xml.parse(self.share / "icons" / "hicolor" / "scalable" / "apps" / name).getroot()
        self.assertEqual(icon.get("viewBox"), "0 0 128 128")

    def test_the_description_is_valid_and_names_the_menu_entry(self):
        description = self.share / "metainfo" / "org.quoril.WaveEditor.metainfo.xml"
        subprocess.run(["appstreamcli", "validate", "--no-net", description], check=True,
                       stdout=subprocess.DEVNULL)
        self.assertEqual(xml.parse(description).findtext("launchable"), self.entry_file.name)

    def test_the_help_is_installed_where_the_program_looks_for_it(self):
        help_file = self.prefix / "share" / "quoril-wave-editor" / "quoril-wave-editor.qch"
        self.assertEqual(help_file.read_bytes()[:15], b"SQLite format 3")

    def test_the_pages_of_the_help_are_installed_for_a_browser(self):
        pages = self.prefix / "share" / "quoril-wave-editor" / "help" / "pages"
        self.assertEqual({path.name for path in pages.iterdir()},
                         {path.name for path in (ROOT / "help" / "pages").iterdir()})
        for page in pages.glob("*.html"):
            for link in re.findall(r'(?:src|href)="([^"#]+)', page.read_text(encoding="utf-8")):
                self.assertTrue((pages / link).is_file(), f"{link} on {page.name}")

    def test_nothing_of_the_build_and_its_tests_is_installed(self):
        names = [path.name for path in self.prefix.rglob("*") if path.is_file()]
        for unwanted in ("demo-sound", "_tests", ".a", ".h", ".txt"):
            self.assertFalse([name for name in names if name.endswith(unwanted)], unwanted)


if __name__ == "__main__":
    unittest.main()
