#!/usr/bin/env bash
# Runs every benchmark of the bench preset once, each case repeated
# (5 repetitions by default), and prints the median CPU time of each case
# with the ratios of each measure to its baselines, as docs/performance.md
# shows them.
#
#   cmake --preset bench && cmake --build --preset bench && bench/run.sh
#
# Usage: bench/run.sh [repetitions]   (JSON results in build/bench/results/)
set -euo pipefail
cd "$(dirname "$0")/.."

repetitions=${1:-5}
binaries=build/bench/bench
results=build/bench/results
mkdir -p "$results"

for name in trace_bench nls_bench platform_services_bench; do
  echo "-- $name" >&2
  "$binaries/$name" --benchmark_repetitions="$repetitions" \
    --benchmark_report_aggregates_only=true \
    --benchmark_out="$results/$name.json" --benchmark_out_format=json >&2
done

python3 - "$results" <<'EOF'
import json, sys, pathlib

medians = {}
for path in sorted(pathlib.Path(sys.argv[1]).glob("*.json")):
    for run in json.load(open(path))["benchmarks"]:
        if run.get("aggregate_name") == "median":
            scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]
            medians[run["run_name"]] = run["cpu_time"] * scale

def show(ns):
    return f"{ns / 1e6:.2f} ms" if ns >= 1e6 else f"{ns / 1e3:.2f} µs" if ns >= 1e3 else f"{ns:.2f} ns"

print("| Benchmark | Median CPU time |")
print("| --- | ---: |")
for name, ns in medians.items():
    print(f"| {name} | {show(ns)} |")

# Each measure with its baselines (measure / baseline).
pairs = [
    ("BM_TracedGetTypeTracingOff", "BM_EmptyCallIntoSharedLibrary"),
    ("BM_TracedGetTypeTracingOff", "BM_SpdlogDisabledTrace"),
    ("BM_TracedGetTypeTracingOn", "BM_SpdlogTraceToOstreamSink"),
    ("DisplayLineTranslated", "DisplayLineWithDgettext"),
    ("DisplayLineTranslated", "DisplayLineByConcatenation"),
    ("DisplayLineWithoutCatalogue", "DisplayLineWithDgettext"),
    ("ViewerCatalogueFirstReadWithLoadAndUnload/10000", "ViewerCatalogueFirstReadWithLoadAndUnload/1000"),
    ("ViewerCatalogueFirstReadWithLoadAndUnload/100000", "ViewerCatalogueFirstReadWithLoadAndUnload/10000"),
    ("ViewerCatalogueFirstReadWithLoadAndUnload/1000", "MethodListReadWithThePool/1000"),
    ("ViewerCatalogueFirstReadWithLoadAndUnload/10000", "MethodListReadWithThePool/10000"),
    ("ViewerCatalogueFirstReadWithLoadAndUnload/100000", "MethodListReadWithThePool/100000"),
    ("MethodListReadWithThePool/10000", "MethodListReadWithThePool/1000"),
    ("MethodListReadWithThePool/100000", "MethodListReadWithThePool/10000"),
    ("RemoveDuplicatesOfViewerNames/1000", "RemoveDuplicatesOfViewerNames/100"),
    ("RemoveDuplicatesOfViewerNames/100", "CopyOfViewerNames/100"),
    ("RemoveDuplicatesOfViewerNames/1000", "CopyOfViewerNames/1000"),
]
print()
print("| Measure | Baseline | Ratio |")
print("| --- | --- | ---: |")
for measure, baseline in pairs:
    if measure in medians and baseline in medians:
        print(f"| {measure} | {baseline} | {medians[measure] / medians[baseline]:.2f} |")
EOF
