#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the fuzz targets and runs each from its kept inputs, as many at once as there are processors.
#   tools/fuzz.sh [EXECUTIONS [NAME...]]     a number of executions a target, 200,000 without it
#   tools/fuzz.sh --seconds N [NAME...]      a time a target
# What a target finds new is kept in build/fuzz/found, an input that breaks it in build/fuzz/broken.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepare.sh

if [ "${1:-}" = --seconds ]; then limit=-max_total_time=$2; shift 2; else limit=-runs=${1:-200000}; shift || true; fi
for name in "$@"; do
    [ -e "fuzz/$name.cpp" ] || { echo "tools/fuzz.sh: there is no target $name" >&2; exit 2; }
done

prepare $packages_build $packages_fuzz
step "Build (fuzz)"
cmake --preset fuzz >/dev/null
cmake --build build/fuzz
mkdir -p build/fuzz/{found,broken,logs}

run_target() { # NAME: all paths are absolute, for a target may change its folder
    local found=$PWD/build/fuzz/found/$1 broken=$PWD/build/fuzz/broken/$1 log=$PWD/build/fuzz/logs/$1
    mkdir -p "$found"
    if "$PWD/build/fuzz/bin/$1" "$limit" -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$broken-" "$found" "$PWD/fuzz/corpus/$1" >"$log" 2>&1; then
        echo "$1: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") executions"
    else
        printf '%s\n' "$(grep -v '^#' "$log" | tail -n 60)" "$1: broken, see $log and $(ls -t "$broken"-* | head -n 1)"
        return 1
    fi
}
export -f run_target
export limit

step "Fuzz targets ($limit each)"
[ $# -gt 0 ] || set -- $(basename -s .cpp fuzz/*Fuzz.cpp)
printf '%s\n' "$@" | xargs -P "$(nproc)" -I{} bash -c 'run_target {}' ||
    { echo "tools/fuzz.sh: a target is broken" >&2; exit 1; }
