#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""tools/pack.py FOLDER FILE.zip: packs the folder with all that is in it.

The same files give the same bytes: they are sorted by name, and have one time and no owner.
"""

import os
import pathlib
import sys
import zipfile

TIME = (1980, 1, 1, 0, 0, 0)  # the first that a zip can say


def pack(folder, file):
    with zipfile.ZipFile(file, "w") as archive:
        for path in sorted(path for path in folder.rglob("*") if path.is_file()):
            entry = zipfile.ZipInfo(path.relative_to(folder.parent).as_posix(), TIME)
            entry.external_attr = 0o100644 << 16
            archive.writestr(entry, path.read_bytes(), zipfile.ZIP_DEFLATED, 9)


def main():
    if len(sys.argv) != 3 or not os.path.isdir(sys.argv[1]):
        sys.exit("usage: tools/pack.py FOLDER FILE.zip")
    folder, file = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
    unfinished = file.with_name(file.name + ".part")  # so that no half of a package has its name
    pack(folder, unfinished)
    unfinished.replace(file)


if __name__ == "__main__":
    main()
