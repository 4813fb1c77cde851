#!/usr/bin/env bash
# Builds the fuzz targets and runs each from its kept corpus.
#   tools/fuzz.sh EXECUTIONS [NAME_PART...]      a number of executions a target
#   tools/fuzz.sh --seconds N [NAME_PART...]     a time a target; what it finds new is kept in build/fuzz/found
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare $packages_build $packages_fuzz
cmake --preset fuzz >/dev/null
cmake --build build/fuzz

if [ "${1:-}" = --seconds ]; then limit=-max_total_time=$2; shift 2; else limit=-runs=${1:-200000}; shift || true; fi
for program in build/fuzz/bin/*Fuzz; do
    name=$(basename "$program")
    [ $# -eq 0 ] || [[ " $* " == *" $name "* ]] || continue
    step "$name"
    found=build/fuzz/found/$name
    mkdir -p "$found" "fuzz/corpus/$name"
    "$program" "$limit" -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$found/crash-" \
        "$found" "fuzz/corpus/$name" 2>&1 | grep -E '^(stat::|==|SUMMARY|Done)|ERROR' || exit 1
done
