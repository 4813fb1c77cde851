# SPDX-License-Identifier: MIT
"""Does what README.md says, as it is printed there: in a folder that has what a fresh clone has and the built program
where ./run puts it, its commands in their order, and then the example, which the build compiles as it is printed."""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True  # beside the sources
from Page import SOURCE, commands

# What is not run, by its beginning, and why.
LEFT_OUT = {
    "./run": "builds this program",
    "./test": "runs this test",
    "tools/windows-package.sh": "builds for Windows",
    "cmake --preset release": "builds, and installs where only root may",
    "chartutil edit": "waits for its user in a window; EditCommand_DialogTest opens it",
}
# What does not end with 0.
EXIT_CODES = {"chartutil settings check chart.ini": 1}
ENDLESS = "--watch"  # runs until Ctrl-C


def is_left_out(command):
    return any(command.startswith(begin) for begin in LEFT_OUT)


class Readme(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.commands = commands((SOURCE / "README.md").read_text(encoding="utf-8"))
        folder = tempfile.TemporaryDirectory(prefix="utilitydll-readme-")
        cls.addClassCleanup(folder.cleanup)
        cls.clone = pathlib.Path(folder.name)
        for entry in SOURCE.iterdir():
            if entry.name not in ("build", ".git"):
                (cls.clone / entry.name).symlink_to(entry)
        program = pathlib.Path(os.environ["CHARTUTIL"])
        bin = cls.clone / "build/release/bin"
        bin.mkdir(parents=True)
        (bin / program.name).symlink_to(program)

    def in_shell(self, lines):
        """A shell that does the lines up to the first that fails, each of which it shows before."""
        expected = {line: f"{line} && exit 1 || test $? = {code}" for line, code in EXIT_CODES.items()}
        script = "\n".join(["set -ex"] + [expected.get(line, line) for line in lines])
        return subprocess.Popen(["sh", "-c", script], cwd=self.clone, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, errors="replace", start_new_session=True)

    def test_commands_and_example_do_what_they_say(self):
        lasting = [command for command in self.commands if not is_left_out(command) and ENDLESS not in command]
        self.assertGreaterEqual(len(lasting), 10)
        with self.in_shell(lasting) as shell:
            said = shell.communicate(timeout=300)[0]
        self.assertEqual(0, shell.returncode, said)
        for name in ("mybay.pdf", "sealed.csv", "bay.svg"):
            self.assertGreater((self.clone / name).stat().st_size, 0, name)

        # It doubles the scale that the command line has set.
        self.assertIn("Scale          = 50000", self.settings())
        subprocess.run([os.environ["EXAMPLE"]], cwd=self.clone, check=True)
        self.assertIn("Scale          = 100000", self.settings())

        for command in [line for line in self.commands if ENDLESS in line]:
            with self.in_shell([line for line in lasting if line.startswith("PATH=")] + [command]) as shell:
                drawn = any("drawn: " in line for line in iter(shell.stdout.readline, ""))
                os.killpg(shell.pid, signal.SIGINT)
            self.assertTrue(drawn, command)

    def settings(self):
        return (self.clone / "chart.ini").read_text(encoding="latin-1")

    def test_what_is_left_out_is_there(self):
        for begin in LEFT_OUT:
            self.assertTrue(any(command.startswith(begin) for command in self.commands), begin)


if __name__ == "__main__":
    unittest.main()
