#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks the layout of every source (clang-format) and what clang-tidy finds.
#   tools/lint.sh                 libraries, program and tests, with the analyzer that follows paths through the code
#   tools/lint.sh --quick         libraries and program, without that analyzer, which takes most of the time
#   tools/lint.sh --format-only   the layout alone
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepare.sh
sources=('VelmBase/*.cpp' 'VelmConfigure/*.cpp' 'VersionControl/*.cpp' 'Framework/*.cpp' 'UtilityDLL/*.cpp' 'apps/*.cpp')
case "${1:-}" in
    '') sources+=('tests/*.cpp'); checks= ;;
    --quick) checks=-clang-analyzer-* ;;
    --format-only) sources=() ;;
    *) echo "usage: tools/lint.sh [--quick | --format-only]" >&2; exit 2 ;;
esac
prepare $packages_build $packages_test $packages_lint

step "clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

step "Licence lines"
! git ls-files '*.cpp' '*.h' '*.py' '*.sh' '*.cmake' '*CMakeLists.txt' | xargs grep -L '^\(#\|//\) SPDX-License-Identifier: MIT$' | grep . ||
    { echo "tools/lint.sh: these sources do not name their licence in their first lines" >&2; exit 1; }
[ ${#sources[@]} -gt 0 ] || exit 0

step "clang-tidy"
# How each source is compiled, and the generated headers; without the headers that a compiler reads once for all.
cmake --preset release -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
git ls-files "${sources[@]}" | grep -vE '/(win32|none)/' | xargs -P "$(nproc)" -n 4 \
    clang-tidy --quiet --checks="$checks" --extra-arg=-Wno-unknown-warning-option -p build/lint 2>/dev/null
echo "nothing found"
