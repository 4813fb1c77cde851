#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds what the package for Windows has against what any machine with Windows can give it.

Usage: WindowsPackageTest.py FOLDER --objdump OBJDUMP --machine PATH...

Programs and DLLs need no more than what lies beside them and the system's DLLs; no file names one of the paths,
which are those of the machine that built it; and what is built again from the same sources is the same.
"""

import argparse
import pathlib
import re
import struct
import subprocess
import sys

# Every Windows has them.
SYSTEM = {"advapi32", "comctl32", "comdlg32", "gdi32", "gdiplus", "kernel32", "msvcrt", "ole32", "oleacc", "shell32",
          "user32", "uxtheme", "winmm"}
# They come from the compiler's package as they are.
RUNTIME = {"libstdc++-6.dll", "libgcc_s_seh-1.dll", "libwinpthread-1.dll"}


def imports(path, objdump):
    shown = subprocess.run([objdump, "-p", path], capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"DLL Name: (\S+)", shown))


def time_of_link(path):
    contents = path.read_bytes()
    header, = struct.unpack_from("<I", contents, 0x3C)
    return struct.unpack_from("<I", contents, header + 8)[0]


def faults(folder, objdump, machine):
    binaries = sorted(path for path in (folder / "bin").iterdir() if path.suffix in (".exe", ".dll"))
    beside = {path.name.lower() for path in binaries}
    for name in RUNTIME | {"chartutil.exe", "UtilityDLL.dll", "Framework.dll"}:
        if name.lower() not in beside:
            yield f"bin/{name} is missing"
    needed = set()
    for path in binaries:
        for name in imports(path, objdump):
            needed.add(name.lower())
            if name.lower() not in beside and name.lower().removesuffix(".dll") not in SYSTEM:
                yield f"{path.name} needs {name}, which is neither beside it nor the system's"
        if path.name not in RUNTIME and time_of_link(path):
            yield f"{path.name} has the time at which it was linked"
    if not needed & beside or not needed - beside:
        yield f"{objdump} found nothing that is needed"
    for path in sorted(path for path in folder.rglob("*") if path.is_file()):
        contents = path.read_bytes()
        for place in machine:
            if place.encode() in contents or place.encode("utf-16-le") in contents:
                yield f"{path.relative_to(folder)} names {place}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--machine", nargs="+", required=True)
    arguments = parser.parse_args()
    found = list(faults(arguments.folder, arguments.objdump, arguments.machine))
    print("\n".join(found))
    sys.exit(bool(found))


if __name__ == "__main__":
    main()
