#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The libraries' binary interface is that of the last release, or more; and the comparison sees what breaks a host.
#   AbiTest.sh BUILD COMPILER
set -euo pipefail
build=$1 compiler=$2
cd "$(dirname "$0")/../.."
tools/abi.sh "$build"

# A library of one source, as it is and changed: each row is what is replaced in its header or source, and by what.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
library=$work/VelmConfigureR.so.5
compare() { # [REPLACED BY]
    mkdir -p "$work/VelmConfigure"
    grep -qhe "${1:-}" VelmConfigure/DataSearch.{h,cpp} || { echo "AbiTest: there is no $1 any more" >&2; exit 2; }
    for file in DataSearch.h DataSearch.cpp; do
        sed "s|${1:-}|${2:-&}|g" "VelmConfigure/$file" >"$work/VelmConfigure/$file"
    done
    "$compiler" -std=c++20 -g -O1 -fPIC -shared -fvisibility=hidden -I "$work" -I . -I "$build/include" \
        -DVelmConfigureR_EXPORTS '-DDATA_FROM_LIBRARY=L"."' -Wl,-soname,VelmConfigureR.so.5 \
        "$work/VelmConfigure/DataSearch.cpp" -o "$library" || exit 2
    tools/abi.sh "$build" "$library" >"$work/said" 2>&1
}
fail() { cat "$work/said" >&2; echo "AbiTest: $1" >&2; exit 1; }

compare '^$' || fail "the library as it is does not count as the same"
compare 'private:' 'void Added() const {} private:' || fail "a function more counts as a break"
compare 'std::map<int, std::wstring> m_folders;' 'std::map<int, std::wstring> m_folders; int m_more = 0;' &&
    fail "a larger class is not seen"
compare GetFilePath GetFolderPath && fail "a function less is not seen"
compare 'SetFolder(int ' 'SetFolder(long ' && fail "another parameter is not seen"
echo "the comparison sees what breaks a host"
