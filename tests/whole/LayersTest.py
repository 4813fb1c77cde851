#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds every include against the tables of docs/architecture.md: which room stands on which, and which places may
include more than the C++ library. Nothing includes upward or in a circle, and no source asks for its platform.

That each fault is found is shown on small houses that are made up here.
"""

import fnmatch
import pathlib
import re
import tempfile
import unittest

PAGE = "docs/architecture.md"
ROOMS = "| Room | Stands on |"
PLACES = "| Place | Headers besides the C++ library |"

# The build takes one backend of a service and leaves the others.
BACKENDS = {"posix", "win32", "qt", "noqt", "freetype", "gdal", "none"}
# Folders that are no rooms of their own.
INNER = BACKENDS | {"detail", "private"}
# They see all rooms, and no room sees them.
OUTSIDE = {"tests", "bench", "fuzz", "examples"}

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:"([^"]*)"|<([^>]*)>|(.*))', re.M)
PLATFORM = re.compile(r"^[ \t]*#[ \t]*(?:if|elif)(?:\\\n|.)*?\b"
                      r"(_?WIN(?:32|64)|_WIN32_WINNT|__MINGW\w*|__CYGWIN__|_MSC_VER|__linux__|__unix__|__APPLE__|"
                      r"Q_OS_\w+)\b", re.M)
STANDARD = re.compile(r"[a-z][a-z0-9_]*")
# Their waits read the value before they take the lock that the waking thread holds, in the C++ runtime of the Windows
# build, and can then sleep for ever. A mutex with a condition variable does the same and wakes.
LOSE_WAKE_UPS = {"latch", "barrier", "semaphore"}


class House:
    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.page = (self.root / PAGE).read_text(encoding="utf-8")
        self.rooms = self.table(ROOMS)
        self.places = self.table(PLACES)
        self.files = sorted(path.relative_to(root).as_posix() for top in self.root.iterdir()
                            if top.is_dir() and top.name != "build" and not top.name.startswith(".")
                            for path in top.rglob("*") if path.suffix in (".h", ".inc", ".cpp"))

    def table(self, heading):
        """The rows below a heading: the name in the first cell, and the names in the second."""
        lines = self.page[self.page.index(heading):].splitlines()[2:]
        rows = {}
        for line in lines:
            if not line.startswith("|"):
                break
            first, second = line.strip("|").split("|")
            rows[re.findall("`(.*?)`", first)[0]] = re.findall("`(.*?)`", second)
        return rows

    def room(self, folder):
        """The room that the folder is or is a part of. In a room with rooms of their own, each has to be in the table."""
        parts = folder.split("/")
        for count in range(len(parts), 0, -1):
            room = "/".join(parts[:count])
            if room in self.rooms:
                has_rooms = any(other.startswith(room + "/") for other in self.rooms)
                return None if has_rooms and not INNER.issuperset(parts[count:]) else room
        return None

    def target(self, name):
        """The file that an include means: one of the tree, or one that the build makes of it."""
        folder, _, base = name.rpartition("/")
        if base == "Export.h" or any(f"{folder}/{backend}/{base}" in self.files for backend in BACKENDS):
            return name
        return name if name in self.files else None

    def faults(self):
        faults = self.table_faults()
        self.used = set()
        self.arrows = {}
        for name in self.files:
            folder = name.rpartition("/")[0]
            text = (self.root / name).read_text(encoding="utf-8")
            if not BACKENDS & set(folder.split("/")):
                for condition in PLATFORM.finditer(text):
                    faults.append(f"{name} asks for its platform: {condition[1]}")
            includes = INCLUDE.findall(text)
            faults += [f"{name} includes <{foreign}>, which loses wake-ups on Windows"
                       for _, foreign, _ in includes if foreign in LOSE_WAKE_UPS]
            if folder.split("/")[0] in OUTSIDE:
                continue
            room = self.room(folder)
            if room is None:
                faults.append(f"{name} is in no room of {PAGE}")
                continue
            for own, foreign, unreadable in includes:
                if own:
                    faults += self.own_faults(name, room, own)
                else:
                    faults += self.foreign_faults(name, foreign or unreadable)
        for table in (self.rooms, self.places):
            for row, entries in table.items():
                faults += [f"{PAGE} gives {row} {entry}, which no include there needs"
                           for entry in entries if (row, entry) not in self.used]
        return faults + self.circles()

    def table_faults(self):
        faults = []
        order = list(self.rooms)
        for i, room in enumerate(order):
            if not any(self.room(name.rpartition("/")[0]) == room for name in self.files):
                faults.append(f"{PAGE} shows the room {room}, which has no source")
            for entry in self.rooms[room]:
                if not any(covers(entry, lower) for lower in order[i + 1:]) or any(
                        covers(entry, upper) for upper in order[:i + 1]):
                    faults.append(f"{PAGE} lets {room} stand on {entry}, which is not below it")
        return faults

    def own_faults(self, name, room, include):
        if self.target(include) is None:
            return [f"{name} includes {include}, which is no file of the tree"]
        folder = include.rpartition("/")[0]
        backend = BACKENDS & set(folder.split("/"))
        if backend and not backend <= set(name.split("/")):
            return [f"{name} includes {include}, which is for its backend alone"]
        if "private" in folder.split("/"):
            library = include.split("/")[0]
            if not name.startswith(library + "/") or name.endswith(".h") and "/private/" not in name:
                return [f"{name} includes {include}, which is for the sources of {library} alone"]
        if include.endswith("/Export.h"):
            return []
        self.arrows.setdefault(unit(name), set()).add(unit(include))
        target = self.room(folder) or folder
        if target == room:
            return []
        entries = [entry for entry in self.rooms[room] if covers(entry, target)]
        self.used.update((room, entry) for entry in entries)
        return [] if entries else [f"{name} includes {include}: {room} does not stand on {target}"]

    def foreign_faults(self, name, include):
        places = [(place, pattern) for place, patterns in self.places.items() for pattern in patterns
                  if f"/{place}/" in f"/{name}" and fnmatch.fnmatchcase(include, pattern)]
        self.used.update(places)
        return [] if places or STANDARD.fullmatch(include) else [f"{name} includes <{include}>, which has no place there"]

    def circles(self):
        """A fault for each circle that a walk along the includes comes upon."""
        faults = []
        done = set()
        path = []

        def walk(node):
            if node in path:
                circle = path[path.index(node):]
                first = circle.index(min(circle))
                circle = circle[first:] + circle[:first + 1]
                faults.append("a circle of includes: " + " -> ".join(circle))
            elif node not in done:
                path.append(node)
                for following in sorted(self.arrows.get(node, set()) - {node}):
                    walk(following)
                done.add(path.pop())

        for node in sorted(self.arrows):
            walk(node)
        return faults


def covers(entry, room):
    """A name stands for the rooms in it as well, but not one that ends in "/."."""
    return room == entry.removesuffix("/.") or room.startswith(entry + "/")


def unit(name):
    """A header and its sources, one for each backend, count as one."""
    return "/".join(part for part in name.rpartition(".")[0].split("/") if part not in BACKENDS)


PAGE_OF_THE_MADE_UP = f"""
{ROOMS}
|---|---|
| `app` | `app/window`, `module`, `base` |
| `app/window` | `base` |
| `module/upper` | `module/lower`, `base` |
| `module/lower` | `base` |
| `base` | nothing |

{PLACES}
|---|---|
| `base/posix` | `sys/*` |
| `qt` | `Q*` |
"""

MADE_UP = {
    "app/Main.cpp": '#include "module/upper/Shape.h"\n#include "app/window/Frame.h"\n#include "base/Text.h"\n',
    "app/window/Frame.h": '#include "base/detail/Piece.h"\n',
    "app/qt/Window.cpp": "#include <QWidget>\n",
    "module/upper/Shape.h": '#pragma once\n#include "module/Export.h"\n#include "module/lower/Point.h"\n',
    "module/upper/Shape.cpp": '#include "module/upper/Shape.h"\n\n#include "base/Text.h"\n#include <string>\n',
    "module/lower/Point.h": '#include "base/Text.h"\n#include "module/lower/Storage.h"\n',
    "module/lower/posix/Storage.h": "",
    "base/Text.h": "#include <string_view>\n#ifdef __GNUC__\n#endif\n",
    "base/Number.h": "",
    "base/detail/Piece.h": "",
    "base/parts/Text.h": '#include "base/Number.h"\n',
    "base/private/Fast.h": "",
    "base/Fast.cpp": '#include "base/private/Fast.h"\n',
    "base/posix/Text.cpp": '#include "base/Text.h"\n#include <sys/stat.h>\n#if defined(__linux__)\n#endif\n',
    "tests/base/TextTest.cpp": '#include "app/Anything.h"\n#include <gtest/gtest.h>\n',
}


def faults_of(changes, page=PAGE_OF_THE_MADE_UP):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in ({PAGE: page} | MADE_UP | changes).items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        return House(folder).faults()


class Layers(unittest.TestCase):
    maxDiff = None

    def test_of_this_house_hold(self):
        faults = House(pathlib.Path(__file__).parents[2]).faults()
        self.assertFalse(faults, "\n" + "\n".join(faults))

    def test_of_a_made_up_house_hold(self):
        self.assertEqual([], faults_of({}))

    def test_find_each_fault(self):
        for changes, fault in [
            ({"module/lower/Point.h": '#include "base/Text.h"\n#include "module/upper/Shape.h"\n'},
             "module/lower/Point.h includes module/upper/Shape.h: module/lower does not stand on module/upper"),
            ({"base/Number.h": '#  include "app/Main.h"\n', "app/Main.h": ""},
             "base/Number.h includes app/Main.h: base does not stand on app"),
            ({"base/Number.h": '#include "tests/Support.h"\n', "tests/Support.h": ""},
             "base/Number.h includes tests/Support.h: base does not stand on tests"),
            ({"base/Number.cpp": '#include "base/Text.h"\n', "base/Text.cpp": '#include "base/Number.h"\n'},
             "a circle of includes: base/Number -> base/Text -> base/Number"),
            ({"base/posix/Text.cpp": '#include "base/Number.h"\n#include <sys/stat.h>\n',
              "base/Number.h": '#include "base/Text.h"\n'},
             "a circle of includes: base/Number -> base/Text -> base/Number"),
            ({"module/upper/Shape.cpp": '#include "base/Text.h"\n#include <QString>\n'},
             "module/upper/Shape.cpp includes <QString>, which has no place there"),
            ({"module/upper/posix/Shape.cpp": "#include <QString>\n"},
             "module/upper/posix/Shape.cpp includes <QString>, which has no place there"),
            ({"app/qt/File.cpp": "#include <sys/stat.h>\n"},
             "app/qt/File.cpp includes <sys/stat.h>, which has no place there"),
            ({"base/Number.h": "#include <windows.h>\n"}, "base/Number.h includes <windows.h>, which has no place there"),
            ({"base/Number.h": "#include <ft2build.h>\n"},
             "base/Number.h includes <ft2build.h>, which has no place there"),
            ({"base/Number.h": "#include FT_FREETYPE_H\n"},
             "base/Number.h includes <FT_FREETYPE_H>, which has no place there"),
            ({"base/Number.h": '#include "gdal.h"\n'}, "base/Number.h includes gdal.h, which is no file of the tree"),
            ({"base/Number.h": '#include "base/posix/Handle.h"\n', "base/posix/Handle.h": ""},
             "base/Number.h includes base/posix/Handle.h, which is for its backend alone"),
            ({"module/upper/private/Secret.h": "", "app/Main.cpp": '#include "module/upper/private/Secret.h"\n'},
             "app/Main.cpp includes module/upper/private/Secret.h, which is for the sources of module alone"),
            ({"base/private/Secret.h": "", "base/Number.h": '#include "base/private/Secret.h"\n'},
             "base/Number.h includes base/private/Secret.h, which is for the sources of base alone"),
            ({"base/Number.h": "#ifdef _WIN32\n#endif\n"}, "base/Number.h asks for its platform: _WIN32"),
            ({"tests/base/TextTest.cpp": "#include <latch>\n"},
             "tests/base/TextTest.cpp includes <latch>, which loses wake-ups on Windows"),
            ({"tests/base/TextTest.cpp": "#if A && \\\n  !defined(__linux__)\n#endif\n"},
             "tests/base/TextTest.cpp asks for its platform: __linux__"),
            ({"module/attic/Old.cpp": ""}, f"module/attic/Old.cpp is in no room of {PAGE}"),
            ({"app/attic/Old.cpp": ""}, f"app/attic/Old.cpp is in no room of {PAGE}"),
        ]:
            with self.subTest(fault):
                self.assertEqual([fault], [found for found in faults_of(changes) if found == fault])

    def test_find_each_fault_of_the_page(self):
        for row, changed, fault in [
            ("| `base` | nothing |", "| `base` | `module` |", f"{PAGE} lets base stand on module, which is not below it"),
            ("| `base` | nothing |", "| `base` | nothing |\n| `cellar` | nothing |",
             f"{PAGE} shows the room cellar, which has no source"),
            ("| `base` | nothing |", "| `base` | `cellar` |\n| `cellar` | nothing |",
             f"{PAGE} gives base cellar, which no include there needs"),
            ("| `Q*` |", "| `Q*`, `X11/*` |", f"{PAGE} gives qt X11/*, which no include there needs"),
        ]:
            with self.subTest(fault):
                self.assertIn(fault, faults_of({}, PAGE_OF_THE_MADE_UP.replace(row, changed)))


if __name__ == "__main__":
    unittest.main()
