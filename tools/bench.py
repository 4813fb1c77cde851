#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the benchmark programs of a build folder and prints, per task, our time beside each peer's.

usage: tools/bench.py [BUILD_FOLDER] [NAME_PART...]
The ratio is the peer's time divided by ours: above 1 we are faster. Times are medians of five repetitions: processor
times, or the time on the clock where a benchmark asks for it (whole processes, threads)."""
import json
import pathlib
import re
import subprocess
import sys

folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench")
wanted = sys.argv[2:]
for program in sorted((folder / "bin").glob("*Bench")):
    if wanted and not any(part in program.name for part in wanted):
        continue
    output = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_repetitions=5",
         "--benchmark_report_aggregates_only=true", "--benchmark_enable_random_interleaving=true"],
        check=True, capture_output=True, text=True).stdout
    tasks = {}
    counters = {}
    for row in json.loads(output)["benchmarks"]:
        if row.get("aggregate_name") != "median":
            continue
        run = re.sub(r"/iterations:\d+", "", row["run_name"])
        name = run.removesuffix("/real_time").removesuffix("/manual_time")
        time = "cpu_time" if name == run else "real_time"
        task, who = name.rsplit("/", 1) if "/" in name else (name, "ours")
        tasks.setdefault(task, {})[who] = (row[time], row["time_unit"])
        more = []
        if "bytes_per_second" in row:
            more.append(f"{row['bytes_per_second'] / 1e6:.0f} MB/s")
        if "bytes_per_file_byte" in row:
            more.append(f"{row['bytes_per_file_byte']:.2f} bytes in memory per byte of the file")
        if "more_resident_bytes" in row:
            more.append(f"{row['more_resident_bytes'] / 1e6:.1f} MB more resident")
        if "more_heap_bytes" in row:
            more.append(f"{row['more_heap_bytes'] / 1e6:.1f} MB more in use of the heap")
        if "bytes_per_style" in row:
            more.append(f"{row['bytes_per_style']:.0f} bytes in memory per style")
        if "shortest_us" in row:
            more.append(f"shortest {row['shortest_us']:.0f} us")
        counters.setdefault(task, {})[who] = ", ".join(more)
    print(f"\n## {program.name}\n")
    print("| task | who | time | peer / ours | more |\n|---|---|---|---|---|")
    for task, times in tasks.items():
        ours = times.get("ours")
        for who, (time, unit) in sorted(times.items(), key=lambda item: item[0] != "ours"):
            ratio = f"{time / ours[0]:.2f}" if ours and who != "ours" else ""
            print(f"| {task} | {who} | {time:.4g} {unit} | {ratio} | {counters.get(task, {}).get(who, '')} |")
