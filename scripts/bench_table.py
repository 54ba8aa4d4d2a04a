#!/usr/bin/env python3
"""Prints each benchmark case beside its peers, as a ratio of medians in one process run.

A case is named BM_<case>_<who>; the library's own is `zor`. A ratio below 1 means that the library
is faster.
"""
import json
import platform
import sys

print(f"machine: {platform.machine()}, {platform.system()} {platform.release()}")
rows = {}
for path in sys.argv[1:]:
    report = json.load(open(path))
    context = report["context"]
    if context.get("library_build_type") == "debug":
        print("warning: the benchmark library is a debug build")
    for entry in report["benchmarks"]:
        if entry.get("aggregate_name") != "median":
            continue
        case, who = entry["run_name"].removeprefix("BM_").rsplit("_", 1)
        rows.setdefault(case, {})[who] = entry["real_time"]
print(f"processors: {context['num_cpus']} at {context['mhz_per_cpu']} MHz\n")
print("| case | library, ns | peer | peer, ns | ratio |")
print("|---|---:|---|---:|---:|")
status = 0
for case, times in rows.items():
    own = times.pop("zor", None)
    if own is None or not times:
        print(f"| {case} | without its peer | | | |")
        status = 1
        continue
    for peer, time in times.items():
        print(f"| {case} | {own:.1f} | {peer} | {time:.1f} | {own / time:.2f} |")
sys.exit(status)
