#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares the binary interface of the libraries with that of the last release, which is kept in tests/golden/abi: what was
# compiled against that release must run with these. What is added is no break.
#   tools/abi.sh BUILD [LIBRARY...]   fails where something was taken away or changed, and says what
#   tools/abi.sh --keep BUILD         keeps the interface of these libraries instead: for a release (docs/compatibility.md)
# BUILD is a folder of the preset release, for Linux: the comparison reads its debug information. Its libraries are compared
# where none are named.
set -euo pipefail
keep=
if [ "${1:-}" = --keep ]; then keep=yes; shift; fi
[ -e "${1:-}/CMakeCache.txt" ] || { echo "usage: tools/abi.sh [--keep] BUILD [LIBRARY...]" >&2; exit 2; }
build=$(realpath "$1")
shift
[ $# -gt 0 ] || set -- "$build"/lib/{VelmBaseR,VelmConfigureR,VersionControlR,Framework,UtilityDLL}.so.?
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare abigail-tools xz-utils

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Types that no installed header shows may change as they like. The kept interfaces name each header by its file, since without
# that all of them would count as such.
cmake --install "$build" --prefix "$work/installed" >/dev/null
headers=$work/installed/include
broken=0
for library in "$@"; do
    name=$(basename "$library")
    kept=tests/golden/abi/$name.abi.xz
    if [ "$keep" ]; then
        abidw --headers-dir "$headers" --drop-private-types --no-corpus-path --no-comp-dir-path --short-locs \
            --out-file "$work/$name.abi" "$library"
        mkdir -p "$(dirname "$kept")"
        xz -9e <"$work/$name.abi" >"$kept"
        echo "$kept"
    elif [ ! -e "$kept" ]; then
        echo "$name: there is no $kept; tools/abi.sh --keep makes it for the first release with this number" >&2
        broken=1
    else
        xz -d <"$kept" >"$work/$name.abi"
        # Asked to leave types that are not public out of the kept one too, which has none, abidiff 2.2 aborts.
        if abidiff --headers-dir2 "$headers" --drop-private-types --no-added-syms "$work/$name.abi" "$library" \
            >"$work/changes"; then
            echo "$name: as in the last release, or more"
        else
            echo "$name: programs that were compiled against the last release may fail with this one:" >&2
            cat "$work/changes" >&2
            broken=1
        fi
    fi
done
[ $broken = 0 ] || { echo "tools/abi.sh: docs/compatibility.md says what to do" >&2; exit 1; }
