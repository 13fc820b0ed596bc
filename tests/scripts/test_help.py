"""test_help.py FOLDER QHELPGENERATOR: the pages of the help and the project that binds them."""

import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from html.parser import HTMLParser
from pathlib import Path

GENERATOR = sys.argv.pop()
FOLDER = Path(sys.argv.pop())
PAGES = FOLDER / "pages"
WITHOUT_END = {"meta", "link", "br", "img"}


class Page(HTMLParser):
    """One page: its title, headings with their anchors, links, pictures with what they are called,
    and whether its tags are balanced."""

    def __init__(self, path):
        super().__init__()
        self.title, self.headings, self.links, self.faults = "", [], [], []
        self.pictures = {}
        self._open, self._text, self._anchor = [], "", None
        self.feed(path.read_text(encoding="utf-8"))
        self.close()
        self.faults += [f"<{tag}> has no end" for tag in self._open]

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        if "href" in attrs:
            self.links.append(attrs["href"])
        if tag == "img":
            self.pictures[attrs["src"].removeprefix("../")] = attrs.get("alt")
        if tag in ("title", "h1", "h2"):
            self._text, self._anchor = "", attrs.get("id")
        if tag not in WITHOUT_END:
            self._open.append(tag)

    def handle_endtag(self, tag):
        if not self._open or self._open.pop() != tag:
            self.faults.append(f"</{tag}> ends nothing")
        if tag == "title":
            self.title = self._text
        elif tag in ("h1", "h2"):
            self.headings.append((tag, self._anchor, self._text))

    def handle_data(self, data):
        self._text += data


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = {path.name: Page(path) for path in sorted(PAGES.glob("*.html"))}
        cls.project = xml.parse(FOLDER / "quoril.qhp").getroot()
        # A place on a page is "view.html#zoom-in"; the page itself is "view.html".
        cls.places = {}
        for name, page in cls.pages.items():
            for _, anchor, text in page.headings:
                cls.places[name if anchor is None else f"{name}#{anchor}"] = text

    def refs_of(self, element):
        return [each.get("ref").removeprefix("pages/") for each in self.project.iter(element)]

    def test_there_are_pages(self):
        self.assertGreater(len(self.pages), 10)

    def test_every_page_is_well_formed(self):
        for name, page in self.pages.items():
            self.assertEqual(page.faults, [], name)
            kinds = [kind for kind, _, _ in page.headings]
            self.assertEqual(kinds.count("h1"), 1, name)
            self.assertEqual(page.title, page.headings[0][2], name)

    def test_every_section_has_an_anchor_of_its_own(self):
        for name, page in self.pages.items():
            anchors = [anchor for kind, anchor, _ in page.headings if kind == "h2"]
            self.assertNotIn(None, anchors, name)
            self.assertEqual(len(set(anchors)), len(anchors), name)

    def test_no_link_is_dead(self):
        for name, page in self.pages.items():
            for link in page.links:
                if link.endswith(".css"):
                    self.assertTrue((PAGES / link).is_file(), link)
                else:
                    whole = name + link if link.startswith("#") else link
                    self.assertIn(whole, self.places, f"link on {name}")

    def test_every_picture_is_there_and_says_in_words_what_it_shows(self):
        for name, page in self.pages.items():
            for picture, words in page.pictures.items():
                self.assertTrue((FOLDER / picture).is_file(), f"{picture} on {name}")
                self.assertTrue(words, f"{picture} on {name}")

    def test_every_page_can_be_reached_from_the_overview(self):
        reached, waiting = set(), ["index.html"]
        while waiting:
            name = waiting.pop()
            if name not in reached:
                reached.add(name)
                waiting += [link.split("#")[0] for link in self.pages[name].links
                            if link.split("#")[0] in self.pages]
        self.assertEqual(reached, set(self.pages))

    def test_every_topic_is_in_the_contents_once_under_its_heading(self):
        entries = {each.get("ref").removeprefix("pages/"): each.get("title")
                   for each in self.project.iter("section")}
        self.assertEqual(len(entries), len(self.refs_of("section")))
        self.assertEqual(entries, {**self.places, "index.html": "Overview"})

    def test_every_topic_is_in_the_index(self):
        self.assertEqual(set(self.refs_of("keyword")), set(self.places))

    def test_words_and_identifiers_of_the_index_stand_once(self):
        for attribute in ("name", "id"):
            values = [each.get(attribute).lower() for each in self.project.iter("keyword")]
            self.assertEqual(sorted(set(values)), sorted(values), attribute)

    def test_every_file_is_compiled(self):
        listed = [each.text for each in self.project.iter("file")]
        pictures = {picture for page in self.pages.values() for picture in page.pictures}
        self.assertEqual(sorted(listed),
                         sorted(pictures | {f"pages/{path.name}" for path in PAGES.iterdir()}))

    def test_the_generator_has_nothing_to_say(self):
        with tempfile.TemporaryDirectory() as folder:
            made = subprocess.run(
                [GENERATOR, "-s", FOLDER / "quoril.qhp", "-o", Path(folder) / "help.qch"],
                env={"XDG_RUNTIME_DIR": folder}, check=True, capture_output=True, text=True)
            self.assertEqual((made.stdout + made.stderr).strip(), "")
            links = subprocess.run(
                [GENERATOR, "-s", "-c", FOLDER / "quoril.qhp"],
                env={"XDG_RUNTIME_DIR": folder}, check=True, capture_output=True, text=True)
            self.assertEqual((links.stdout + links.stderr).strip(), "")


if __name__ == "__main__":
    unittest.main()
