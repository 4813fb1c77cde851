#!/usr/bin/env bash
# Checks the layout of every source (clang-format) and what clang-tidy finds: tools/lint.sh [--format-only]
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare $packages_build $packages_test $packages_lint

step "clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
[ "${1:-}" != --format-only ] || exit 0

step "clang-tidy"
cmake --preset release >/dev/null
cmake --build build/release     # generated headers
git ls-files 'VelmBase/*.cpp' 'VelmConfigure/*.cpp' 'UtilityDLL/*.cpp' 'apps/*.cpp' 'tests/*.cpp' | grep -v win32 |
    xargs -P "$(nproc)" -n 4 clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build/release 2>/dev/null
