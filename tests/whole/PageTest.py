# SPDX-License-Identifier: MIT
"""Does what a page of docs/ says, as it is printed there, with what is installed below the folder PREFIX: its commands in
their order, each with the output and the exit code that the page shows, and files as the page shows them."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True  # beside the sources
from Page import SOURCE, commands, script

# Of each page: commands that are not run, by their beginning, with the reason; and files that its reader has in the end,
# with what they begin with.
INSTALLS = {"sudo apt ": "needs the packages and their root; ./test --packages does it"}
PAGES = {
    "getting-started-charts.md": (
        INSTALLS | {"chartutil sheet pensacola -o pensacola.svg --watch": "runs until Ctrl-C; ReadmeTest does it"},
        {"pensacola.pdf": b"%PDF", "pensacola.png": b"\x89PNG", "mybay.pdf": b"%PDF"}),
    "getting-started-hosts.md": (INSTALLS, {"chart.ini": b"[Chart Sheet]\r\n"}),
    "program.md": ({}, {}),
    "file-formats.md": ({}, {}),
}
NAME = sys.argv.pop(1)
LEFT_OUT, MADE = PAGES[NAME]


class PageSays(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = (SOURCE / "docs" / NAME).read_text(encoding="utf-8")

    def test_page_does_what_it_says(self):
        prefix = pathlib.Path(os.environ["PREFIX"])
        with tempfile.TemporaryDirectory(prefix="utilitydll-page-") as folder:
            work = pathlib.Path(folder) / "work"
            work.mkdir()
            (pathlib.Path(folder) / "usr").symlink_to(prefix)
            environment = os.environ | {"PATH": f"{prefix}/bin:{os.environ['PATH']}", "CMAKE_PREFIX_PATH": str(prefix)}
            done = subprocess.run(["sh", "-s"], input=script(self.page, LEFT_OUT, folder), cwd=work, env=environment,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                                  timeout=500)
            self.assertEqual(0, done.returncode, done.stdout)
            for name, begin in MADE.items():
                self.assertEqual(begin, (work / name).read_bytes()[:len(begin)], name)

    def test_what_is_left_out_is_there(self):
        for begin in LEFT_OUT:
            self.assertTrue(any(command.startswith(begin) for command in commands(self.page)), begin)

    @unittest.skipUnless(NAME == "program.md", "that page lists the commands")
    def test_every_command_of_the_program_is_listed(self):
        said = subprocess.run([os.environ["PREFIX"] + "/bin/chartutil", "--help"], check=True, capture_output=True,
                              text=True).stdout
        has = re.findall(r"^  ([a-z]+) {2,}\S", said.split("\nTopics, ")[0], re.MULTILINE)
        self.assertEqual(has, re.findall(r"^\| `([a-z]+)` \|", self.page, re.MULTILINE))


if __name__ == "__main__":
    unittest.main()
