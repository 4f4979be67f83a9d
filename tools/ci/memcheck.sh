#!/usr/bin/env bash
# Runs the whole test suite under Valgrind memcheck, on the RelWithDebInfo
# build of the memcheck preset (build/memcheck). Fails when a test fails, when
# valgrind reports any error, or when a block is definitely or indirectly
# lost: valgrind then exits with status 1, which fails the test, and the
# defect summary of ctest's memcheck is checked as well.
#
# Usage: tools/ci/memcheck.sh [extra ctest arguments, e.g. -R KORLumViewer]
#
# MEMCHECK_BUILD_DIR=build/default runs the suite of an existing
# RelWithDebInfo build instead (CI does, after the plain test step has built
# it: the memcheck preset would build the same thing again).
set -euo pipefail
cd "$(dirname "$0")/../.."

valgrind=$(command -v valgrind) || { echo "memcheck: valgrind is not installed" >&2; exit 2; }

if [[ -n ${MEMCHECK_BUILD_DIR:-} ]]; then
  build=$MEMCHECK_BUILD_DIR
  cmake --build "$build" -j 2
else
  cmake --preset memcheck
  cmake --build --preset memcheck
  build=build/memcheck
fi
rm -f "$build"/Testing/Temporary/MemoryChecker.*.log

# --error-exitcode=1 with --errors-for-leak-kinds=definite,indirect: any
#   error, and any block definitely or indirectly lost, fails the process.
# --trace-children=yes: the command-line tool's tests run lumsess from a
#   cmake script, and the death tests re-run their test binary; both are
#   checked too. --child-silent-after-fork=yes keeps the output of a death
#   test's forked child (which dies on purpose) out of the log.
# --soname-synonyms=somalloc=nouserintercepts: the test programs replace
#   operator new to count allocations (some tests check those counts);
#   valgrind then checks the blocks through malloc, which the replacement
#   calls, instead of bypassing the replacement. (A new/delete mismatch is
#   still caught by the AddressSanitizer run.)
options=(
  --error-exitcode=1
  --leak-check=full
  --errors-for-leak-kinds=definite,indirect
  --show-leak-kinds=definite,indirect
  --trace-children=yes
  --child-silent-after-fork=yes
  --soname-synonyms=somalloc=nouserintercepts
)

# Left out, by name: the installed-tree and subproject tests build client
# projects with cmake and the compiler, the manual page and completion tests
# run groff and bash; under valgrind they would check those tools rather than
# our code, and take most of the run's time (they run in the plain test step).
# The PO round trips run msgfmt and msgmerge, and libgettextpo, which never
# frees the context of a message (see tests/lsan.supp); they run in the plain
# and the AddressSanitizer steps.
exclude='^(InstalledTree|Subproject|ManualPage|Completion|lumsess\.Po)\.'

status=0
ctest --test-dir "$build" -T memcheck -j2 --output-on-failure -E "$exclude" \
  --overwrite "MemoryCheckCommand=$valgrind" \
  --overwrite "MemoryCheckCommandOptions=${options[*]}" \
  "$@" | tee "$build/memcheck-summary.txt" || status=$?  # pipefail: ctest's status

# ctest closes with "Memory checking results:" and one line per kind of
# defect found ("Memory Leak - 2", "Invalid Read - 1", ...): any such line
# fails the run, even if every test passed.
if sed -n '/^Memory checking results:/,$p' "$build/memcheck-summary.txt" | grep -qE ' - [0-9]+$'; then
  echo "memcheck: valgrind reported defects (see $build/Testing/Temporary/MemoryChecker.*.log)" >&2
  status=1
fi
if ((status == 0)); then echo "memcheck: no error, no block definitely or indirectly lost"; fi
exit "$status"
