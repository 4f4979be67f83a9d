#!/usr/bin/env bash
# Builds the libFuzzer targets (preset "fuzz": clang, AddressSanitizer +
# UndefinedBehaviorSanitizer) and runs each of them for SECONDS seconds,
# starting from its seed corpus in fuzz/corpus/<target>/ and its dictionary.
# Fails when a target finds a crash, a sanitizer report, a leak, a broken
# invariant or a time-out; the input is then kept in build/fuzz/artifacts/.
#
#   fuzz/run.sh 60                  # every target, one minute each
#   fuzz/run.sh 20 nls_file_fuzzer  # one target
#
# The seed corpus in the repository is never written to: what a run finds
# goes to build/fuzz/corpus/<target>/, kept between runs.
set -euo pipefail
cd "$(dirname "$0")/.."

if (($# < 1)) || ! [[ $1 =~ ^[0-9]+$ ]]; then
  echo "usage: fuzz/run.sh SECONDS [TARGET...]" >&2
  exit 2
fi
seconds=$1
shift
targets=("$@")
if ((${#targets[@]} == 0)); then
  targets=(resource_file_fuzzer unicode_string_fuzzer expand_path_fuzzer
           build_from_num_fuzzer nls_file_fuzzer viewer_catalog_fuzzer)
fi

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

build=build/fuzz
mkdir -p "$build/artifacts"
# The targets write a file per input: keep them in memory when the machine
# offers it, rather than on a disk that journals every write.
scratch=${TMPDIR:-/tmp}
[[ -d /dev/shm && -w /dev/shm ]] && scratch=/dev/shm
work=$(mktemp -d "$scratch/vx0sess0-fuzz-run.XXXXXX")
trap 'rm -rf "$work"' EXIT

# Targets run side by side, one per processor (FUZZ_JOBS, default: all of
# them): each still gets its SECONDS of fuzzing on a processor of its own,
# and the step takes a fraction of the time.
jobs=${FUZZ_JOBS:-$(nproc)}
((jobs >= 1)) || jobs=1

# Runs one target; its exit status goes to $work/<target>.status.
run_target() {
  local target=$1
  local executable="$build/fuzz/$target"
  local corpus="$build/corpus/$target"
  mkdir -p "$corpus"
  local options=(-max_total_time="$seconds" -timeout=25 -print_final_stats=1
                 -artifact_prefix="$build/artifacts/$target-")
  [[ -f fuzz/$target.dict ]] && options+=(-dict="fuzz/$target.dict")
  local status=0
  TMPDIR="$work" "$executable" "${options[@]}" "$corpus" "fuzz/corpus/$target" \
    >"$work/$target.log" 2>&1 || status=$?
  echo "$status" >"$work/$target.status"
}

for target in "${targets[@]}"; do
  if [[ ! -x $build/fuzz/$target ]]; then
    echo "no such fuzz target: $target" >&2
    exit 2
  fi
done
echo "== ${targets[*]}: $seconds s each, $jobs at a time =="
running=0
for target in "${targets[@]}"; do
  if ((running >= jobs)); then
    wait -n || true  # a target's own status is in its status file
    running=$((running - 1))
  fi
  run_target "$target" &
  running=$((running + 1))
done
wait || true

failed=()
summary=()
for target in "${targets[@]}"; do
  log="$work/$target.log"
  status=$(cat "$work/$target.status" 2>/dev/null || echo "no status")
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  coverage=$(grep -o 'cov: [0-9]*' "$log" | tail -n 1 || true)
  if [[ $status != 0 ]]; then
    failed+=("$target")
    summary+=("$target: FAILED (exit $status)")
    # The report: the end of the log, where libFuzzer and the sanitizers
    # write what happened and which input did it.
    echo "== $target =="
    tail -n 60 "$log"
  else
    summary+=("$target: ${executions:-?} executions, ${coverage:-cov: ?}")
  fi
done

echo "== Fuzzing summary ($seconds s per target) =="
printf '%s\n' "${summary[@]}"
if ((${#failed[@]})); then
  echo "Fuzz targets that found a problem: ${failed[*]} (inputs in $build/artifacts/)" >&2
  exit 1
fi
