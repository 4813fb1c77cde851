#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the package for Windows: libraries, program, headers and data, which only have to be unpacked.
#   tools/windows-package.sh [FILE.zip]           builds it; else build/windows/utilitydll-VERSION-windows-x86_64.zip
#   tools/windows-package.sh --built FOLDER FILE  packs what that folder has built
set -euo pipefail
if [ "${1:-}" = --built ]; then
    build=$(realpath "$2")
    shift 2
fi
file=${1:+$(realpath -m "$1")}
cd "$(dirname "$0")/.."
if [ -z "${build:-}" ]; then
    . tools/prepare.sh
    prepare $packages_build $packages_windows
    build=$PWD/build/windows
    step "Build"
    cmake --preset windows >/dev/null
    cmake --build "$build" --target chartutil
fi

cached() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"; }
name=utilitydll-$(cached CMAKE_PROJECT_VERSION)-windows-x86_64
file=${file:-$build/$name.zip}
staging=$(mktemp -d)
trap 'rm -rf "$staging"' EXIT
cmake --install "$build" --prefix "$staging/$name" >/dev/null
# Most of the C++ runtime is what debuggers read. The time in a file's header stays as it was.
"$(cached CMAKE_STRIP)" --strip-all --preserve-dates "$staging/$name"/bin/*.{dll,exe}
python3 tools/pack.py "$staging/$name" "$file"
echo "$file"
