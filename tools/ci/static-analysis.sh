#!/usr/bin/env bash
# Static analysis of the library, the platform, the tests, the command-line
# tool and the fuzz targets: clang-tidy (checks in .clang-tidy, every finding
# an error) and cppcheck, both on the compile database of the static-analysis
# preset (build/tidy; it holds the fuzz targets' sources too, compiled
# without libFuzzer). Fails on any finding of either tool.
#
# Usage: tools/ci/static-analysis.sh
#   TIDY_DIRS      directories checked by clang-tidy, relative to the
#                  repository (default: Platform VirtualServices tools/lumsess
#                  fuzz)
#   CPPCHECK_DIRS  directories checked by cppcheck
#                  (default: Platform VirtualServices tests tools/lumsess fuzz)
# e.g. TIDY_DIRS=tests tools/ci/static-analysis.sh to check the tests too
# (clang-tidy takes some ten minutes of processor time on them).
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD

read -r -a tidy_directories <<<"${TIDY_DIRS:-Platform VirtualServices tools/lumsess fuzz}"
read -r -a cppcheck_directories <<<"${CPPCHECK_DIRS:-Platform VirtualServices tests tools/lumsess fuzz}"

for tool in run-clang-tidy clang-tidy cppcheck; do
  command -v "$tool" >/dev/null || { echo "static analysis: $tool is not installed" >&2; exit 2; }
done

# The compile database only: nothing is built.
cmake --preset static-analysis >/dev/null
database=build/tidy

status=0

echo "-- clang-tidy ($(clang-tidy --version | sed -n 's/.*version \([0-9.]*\).*/\1/p')) on ${tidy_directories[*]}"
pattern="^$root/($(IFS='|'; echo "${tidy_directories[*]}"))/"
tidy_status=0
run-clang-tidy -quiet -j 2 -p "$database" "$pattern" >"$database/clang-tidy.log" 2>&1 || tidy_status=$?
# Only the findings and their context: run-clang-tidy colours its output
# whatever the terminal, and echoes each command and its counts.
sed -e 's/\x1b\[[0-9;]*m//g' "$database/clang-tidy.log" \
  | grep -vE '^(clang-tidy-[0-9]+ |[0-9]+ warnings? generated\.|Suppressed [0-9]+ warnings|Use -header-filter|Running clang-tidy|$)' \
  || true
# Every check is a WarningsAsErrors check: any finding makes clang-tidy fail.
if ((tidy_status != 0)); then
  echo "static analysis: clang-tidy found problems" >&2
  status=1
fi

echo "-- cppcheck ($(cppcheck --version)) on ${cppcheck_directories[*]}"
filters=()
for directory in "${cppcheck_directories[@]}"; do filters+=("--file-filter=$directory/*"); done
mkdir -p "$database/cppcheck"
# Suppressed everywhere, each for its reason:
#   missingIncludeSystem: cppcheck reads no system or third-party header, on
#     purpose (its own library files describe the standard library);
#   useStlAlgorithm: a style preference; the raw loops it points at return
#     early or fill two values at once, and read better as loops.
if ! cppcheck --project="$database/compile_commands.json" "${filters[@]}" \
  --cppcheck-build-dir="$database/cppcheck" \
  --enable=warning,style,performance,portability \
  --std=c++17 --inline-suppr --quiet -j 2 \
  --suppress=missingIncludeSystem --suppress=useStlAlgorithm \
  --error-exitcode=1 \
  --template='{file}:{line}:{column}: {severity}: {message} [{id}]'; then
  echo "static analysis: cppcheck found problems" >&2
  status=1
fi

if ((status == 0)); then echo "static analysis: no finding"; fi
exit "$status"
