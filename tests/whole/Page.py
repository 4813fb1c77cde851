# SPDX-License-Identifier: MIT
"""What a page of the manual has its reader do. A block between lines of ``` is

  sh                  commands, done in their order, all in one folder; a remark "# ends with 1" says the exit code of one
  text                directly below commands: all that these print
  ... title="NAME"    a file: what the reader writes where it is C++ or CMake, else what the file holds by then

A line --8<-- "FILE" in a block stands for that file of the repository.

    Page.py PAGE [--root FOLDER] [--without BEGIN]

prints a script for sh that does what the page says and fails where something else happens.
"""

import argparse
import pathlib
import re
import shlex

SOURCE = pathlib.Path(__file__).resolve().parents[2]


class Block:
    """`language` as the page names it, `title` of a file or empty, `lines` between the fences."""

    def __init__(self, info, lines):
        self.language = info.split(" ")[0]
        title = re.search(r'title="([^"]*)"', info)
        self.title = title[1] if title else ""
        self.lines = lines

    def text(self):
        return "".join(line + "\n" for line in self.lines)

    def commands(self):
        """Each command without its remark, and the exit code that the remark says."""
        result = []
        for line in self.lines:
            code = re.search(r"\s#.*\bends with ([0-9]+)", line)
            if command := re.sub(r"(^|\s+)#.*", "", line):
                result.append((command, int(code[1]) if code else 0))
        return result

    def is_written(self):
        return self.title and self.language in ("cpp", "cmake")


def including(line):
    found = re.fullmatch(r'--8<-- "(.*)"', line)
    return (SOURCE / found[1]).read_text(encoding="latin-1").splitlines() if found else [line]


def blocks(page):
    """The blocks of the page's text, in their order, and of each whether nothing stands between it and the one before."""
    result, last = [], -1
    for found in re.finditer(r"^```(.+)\n((?:.*\n)*?)^```$", page, re.MULTILINE):
        lines = [whole for line in found[2].splitlines() for whole in including(line)]
        result.append((Block(found[1], lines), result and not page[last:found.start()].strip()))
        last = found.end()
    return result


def commands(page):
    return [command for block, _ in blocks(page) if block.language == "sh" for command, _ in block.commands()]


def script(page, left_out=(), root="/"):
    """For sh. `left_out` are beginnings of commands that are not done; what is below `root` stands for what is below /."""
    lines = ["set -e", "work=$(mktemp -d)",
             'trap \'code=$?; [ "$code" = 0 ] || cat "$work/output"; rm -rf "$work"\' EXIT']

    def compare(block, what):
        lines.extend(["cat >\"$work/expected\" <<'END_OF_BLOCK'", *block.lines, "END_OF_BLOCK",
                      f'tr -d "\\r" <{what} >"$work/found"', 'diff -u "$work/expected" "$work/found" >"$work/difference" ||'
                      ' { cat "$work/difference"; exit 1; }'])

    before, found = None, blocks(page)
    if 2 * len(found) != len(re.findall("^```", page, re.MULTILINE)):
        raise ValueError("a block does not say what is in it")
    for block, is_next in found:
        if block.language == "sh":
            lines.append("{")
            for command, code in block.commands():
                if any(command.startswith(begin) for begin in left_out):
                    continue
                command = command.replace(" /usr/", f" {root.rstrip('/')}/usr/")
                lines.append(f"echo {shlex.quote('$ ' + command)} >&3")
                lines.append(f"{command} && exit 99 || test $? = {code}" if code else command)
            lines.append('true; } >"$work/output" 2>&1')
        elif block.is_written():
            lines.extend([f"cat >{shlex.quote(block.title)} <<'END_OF_BLOCK'", *block.lines, "END_OF_BLOCK"])
        elif block.title:
            compare(block, shlex.quote(block.title))
        elif block.language == "text" and is_next and before.language == "sh":
            compare(block, '"$work/output"')
        else:
            raise ValueError(f"a block that is no command, no output and no file: {block.language} {block.lines[:2]}")
        before = block
    return "\n".join(["exec 3>&1", *lines, ""])


if __name__ == "__main__":
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("page", type=pathlib.Path)
    arguments.add_argument("--root", default="/", help="what is below /usr on the page is below this folder's usr")
    arguments.add_argument("--without", action="append", default=[], metavar="BEGIN", help="leaves such commands out")
    options = arguments.parse_args()
    print(script(options.page.read_text(encoding="utf-8"), options.without, options.root), end="")
