#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the benchmarks and prints our times beside the peers': tools/bench.sh [NAME_PART...]
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/prepare.sh
prepare $packages_build $packages_bench python3
cmake --preset bench >/dev/null
cmake --build build/bench
python3 tools/bench.py build/bench "$@"
