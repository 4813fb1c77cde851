# SPDX-License-Identifier: MIT
"""Holds the pages of docs/ together without building the site: links lead somewhere, every page is in the navigation of
mkdocs.yml, links to the reference name public classes, and commands stand where a test runs them or a reason is given."""

import pathlib
import re
import sys
import unittest

sys.dont_write_bytecode = True  # beside the sources
from Page import SOURCE, blocks, including

DOCS = SOURCE / "docs"
PAGES = {path.relative_to(DOCS).as_posix(): path.read_text(encoding="utf-8") for path in sorted(DOCS.rglob("*.md"))}
NO_PAGES = {"pictures/README.md": "says how the pictures are made, to who reads the sources"}

# Why PageTest does not run the commands of these; it names those that it runs.
NOT_RUN = {
    "chart-sheets.md": "those of the first steps once more",
    "dialogs.md": "wait for their user, or are for who makes a package by hand",
    "settings-files.md": "on files that are only named; SettingsCommandTest and CrcCommandTest run each",
    "text-on-both-platforms.md": "build for two platforms",
    "pictures/README.md": "redraw the pictures",
}


def rendered(page):
    """The page's text with the files that it includes, without code."""
    text = "\n".join(whole for line in page.split("\n") for whole in including(line))
    return re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL)


def anchors(page):
    headings = re.findall(r"^#+ (.*)$", rendered(page), re.MULTILINE)
    return {re.sub(r"[-\s]+", "-", re.sub(r"[^\w\s-]", "", heading).strip().lower()) for heading in headings}


def links(page):
    """Targets of links and pictures."""
    text = re.sub(r"`[^`]*`", "", rendered(page))
    return re.findall(r"\]\(([^)\s]+)\)", text)


class Manual(unittest.TestCase):
    def test_links_lead_to_pages_pictures_and_headings(self):
        for name, page in PAGES.items():
            for link in links(page):
                with self.subTest(page=name, link=link):
                    if re.match(r"[a-z]+:", link):
                        continue
                    target, _, anchor = link.partition("#")
                    path = (DOCS / name).parent / target if target else DOCS / name
                    self.assertTrue(path.is_file(), "there is no such file")
                    self.assertTrue(path.resolve().is_relative_to(DOCS), "it is not on the site")
                    if anchor:
                        self.assertIn(anchor, anchors(path.read_text(encoding="utf-8")))

    def test_every_page_is_in_the_navigation(self):
        navigation = (SOURCE / "mkdocs.yml").read_text(encoding="utf-8").split("\nnav:\n")[1]
        named = re.findall(r": (\S+\.md)$", navigation, re.MULTILINE)
        self.assertEqual(sorted(set(PAGES) - set(NO_PAGES)), sorted(named))

    def test_links_to_the_reference_name_public_classes(self):
        headers = [path for folder in ("VelmBase", "VelmConfigure", "VersionControl", "UtilityDLL", "Framework")
                   for path in (SOURCE / folder).rglob("*.h") if "private" not in path.parts]
        public = {name for path in headers for name in re.findall(
            r"^(?:class|struct)(?: [A-Z_]+_API| \[\[nodiscard\]\])? (\w+)", path.read_text(encoding="utf-8"), re.MULTILINE)}
        public |= {name for path in headers for name in re.findall(
            r"^template <typename.*> class (\w+)", path.read_text(encoding="utf-8"), re.MULTILINE)}
        found = 0
        for name, page in PAGES.items():
            up = "../" * name.count("/")
            for link in re.findall(r'href="([^"]*)"', rendered(page)):
                with self.subTest(page=name, link=link):
                    target = re.fullmatch(re.escape(up) + r"reference/(?:index|(?:class|struct)(?:\w+_1_1)?(\w+?))\.html",
                                          link)
                    self.assertTrue(target, "it does not lead to the reference")
                    if target[1]:
                        self.assertIn(target[1], public)
                        found += 1
        self.assertGreater(found, 40)

    def test_commands_are_run_or_say_why_not(self):
        with_commands = {name for name, page in PAGES.items() if any(block.language == "sh" for block, _ in blocks(page))}
        test = (SOURCE / "tests/whole/PageTest.py").read_text(encoding="utf-8")
        run = re.findall(r'^    "(.*\.md)": \(', test, re.MULTILINE)
        self.assertEqual(with_commands, set(run) | set(NOT_RUN))
        for name, page in PAGES.items():
            for language in ("bash", "shell", "console", "cmd", "powershell"):
                self.assertFalse(f"```{language}" in page, f"{name}: commands stand in blocks of sh")

    def test_topics_have_a_page_a_program_and_its_output(self):
        programs = {path.stem for path in (SOURCE / "examples/manual").glob("*.cpp")}
        topics = {pathlib.PurePath(name).stem for name in PAGES if name.startswith("hosts/")} - {"index"}
        self.assertEqual(topics, programs)
        for topic in programs:
            page = PAGES[f"hosts/{topic}.md"]
            for ending in ("cpp", "txt"):
                self.assertIn(f'--8<-- "examples/manual/{topic}.{ending}"', page)


if __name__ == "__main__":
    unittest.main()
