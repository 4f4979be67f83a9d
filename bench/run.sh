#!/usr/bin/env bash
# Runs every benchmark of the bench preset once, each case repeated
# (5 repetitions by default; the repetitions of the trace, platform and
# viewer catalogue cases run in a random interleaved order, so that a slow
# spell of the shared machine falls on a measure and its baseline alike), and
# prints the median CPU time of each case with the ratios of each measure to
# its baselines, as docs/performance.md shows them; then the library's performance goals, each a ratio of this run
# with its bound, and whether the spdlog baselines had spdlog's code inlined.
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

# run NAME BINARY [ARGUMENTS...]: one run of a benchmark program, its JSON
# results in $results/NAME.json.
run() {
  local name=$1 binary=$2
  shift 2
  echo "-- $name" >&2
  "$binaries/$binary" --benchmark_repetitions="$repetitions" \
    --benchmark_report_aggregates_only=true \
    --benchmark_out="$results/$name.json" --benchmark_out_format=json "$@" >&2
}

interleaved=--benchmark_enable_random_interleaving=true
rm -f "$results"/*.json
run trace_bench trace_bench "$interleaved"
run platform_services_bench platform_services_bench "$interleaved"
run viewer_catalogue nls_bench "$interleaved" --benchmark_filter='ViewerCatalogue|LoadAndUnload|MethodList'
# The display lines run one case after another: each case sets up its own
# catalogues, and a case interleaved with the others would measure lines
# just after the catalogue cache changed hands.
run display_line nls_bench --benchmark_filter='^(DisplayLine|LookupOf|PlatformLookup|RaiseAndCatch)'

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
    ("BM_TracedGetTypeTracingOff", "BM_SpdlogDisabledTraceAtO2"),
    ("BM_TracedGetTypeTracingOff", "BM_SpdlogDefaultLoggerDisabledTraceAtO2"),
    ("BM_TracedGetTypeTracingOff", "BM_SpdlogDisabledTrace"),
    ("BM_SpdlogDisabledTraceAtO2", "BM_SpdlogDisabledTrace"),
    ("BM_TracedGetTypeTracingOn", "BM_SpdlogTraceToOstreamSink"),
    ("DisplayLineTranslated", "DisplayLineWithDgettext"),
    ("DisplayLineTranslated", "DisplayLineByConcatenation"),
    ("DisplayLineWithoutCatalogue", "DisplayLineTranslated"),
    ("DisplayLineWithoutCatalogue", "DisplayLineWithDgettext"),
    ("LookupOfAMissingText", "LookupOfAFoundText"),
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

# The performance goals of the library, each a ratio of two medians of this
# run and its bound: (what, measure, baseline, bound, strict).
goals = [
    ("display line, French catalogues / the same line from dgettext",
     "DisplayLineTranslated", "DisplayLineWithDgettext", 1.0, False),
    ("display line, no catalogue file / French catalogues",
     "DisplayLineWithoutCatalogue", "DisplayLineTranslated", 2.0, False),
    ("GetType, tracing off / spdlog disabled trace (program built at -O2)",
     "BM_TracedGetTypeTracingOff", "BM_SpdlogDisabledTraceAtO2", 0.3, True),
    ("GetType, tracing off / empty call into a shared library",
     "BM_TracedGetTypeTracingOff", "BM_EmptyCallIntoSharedLibrary", 2.0, False),
    ("GetViewers() first call, 100,000 / 10,000 entries",
     "ViewerCatalogueFirstReadWithLoadAndUnload/100000",
     "ViewerCatalogueFirstReadWithLoadAndUnload/10000", 10.5, False),
]
print()
print("| Goal | Ratio | Bound | Met |")
print("| --- | ---: | ---: | --- |")
for what, measure, baseline, bound, strict in goals:
    if measure in medians and baseline in medians:
        ratio = medians[measure] / medians[baseline]
        met = ratio < bound if strict else ratio <= bound
        print(f"| {what} | {ratio:.2f} | {'<' if strict else '≤'} {bound} | {'yes' if met else 'no'} |")
EOF

# The spdlog baselines are only worth what their build is: say whether the
# caller's compiler inlined spdlog's logger::log_ into each of them.
calls_log() {
  objdump -d -C --no-show-raw-insn "$binaries/trace_bench" |
    awk -v f="<(anonymous namespace)::$1(benchmark::State&)>:" 'index($0, f) { p = 1 } p && /^$/ { p = 0 } p' |
    grep -q 'call.*spdlog::logger::log_<'
}
echo
for name in BM_SpdlogDisabledTrace BM_SpdlogDisabledTraceAtO2; do
  if calls_log "$name"; then
    echo "$name: spdlog's logger::log_ is called out of line"
  else
    echo "$name: spdlog's logger::log_ is inlined into the loop"
  fi
done
