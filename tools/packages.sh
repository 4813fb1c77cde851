#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes Debian's packages of the release preset: library, windows, chart sheets, program, development files, manual.
#   tools/packages.sh [FOLDER]     builds what they have and puts them into FOLDER; else build/release/packages
#   tools/packages.sh --symbols    renews the kept list of what the libraries export, when a change is meant
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepare.sh
build=$PWD/build/release
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
kept=cmake/debian/utilitydll5.symbols

renew_symbols=
if [ "${1:-}" = --symbols ]; then
    renew_symbols=yes
    shift
fi
folder=$(realpath -m "${1:-$build/packages}")

prepare $packages_build $packages_manual $packages_packages
# Whoever packs these sources again gets the same bytes, but for the debug symbols.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CHANGELOG.md)}
export SOURCE_DATE_EPOCH

step "Build"
cmake --preset release >/dev/null
rm -rf "$build/share-of-chartutil" # its pages have the date of whoever built before
cmake --build "$build" --target chartutil chartutil_share manual reference

staging=$(mktemp -d)
trap 'rm -rf "$staging"' EXIT
if [ "$renew_symbols" ]; then
    # As somebody reads them; constructors and destructors have two symbols each that read the same. With a revision in the
    # version, what was listed for this version and is gone again is seen to be missing.
    cmake --install "$build" --component runtime --prefix "$staging/usr" >/dev/null
    dpkg-gensymbols -q -c0 -t -putilitydll5 -P"$staging" -v"$version-1" -I"$kept" -O"$staging/symbols"
    sed -E -e '/^ ?#/d' -e 's/^ (_Z[^@]*)@Base /\ (c++)"\1@Base" /' -e 's/-1$//' "$staging/symbols" | c++filt |
        awk '/^[^ ]/ { split("", seen) } !seen[$0]++' >"$staging/kept"
    cp "$staging/kept" "$kept"
    git --no-pager diff --stat -- "$kept"
    exit
fi

step "Pack"
mkdir -p "$folder"
rm -f "$folder"/{utilitydll,chartutil}*.{deb,ddeb}
cpack --config "$build/CPackConfig.cmake" -B "$staging/packed" >"$staging/log" 2>&1 || { cat "$staging/log" >&2; exit 1; }
mv "$staging/packed"/*.*deb "$folder"
