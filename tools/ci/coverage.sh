#!/usr/bin/env bash
# Line and branch coverage of the library (VirtualServices/) and the platform
# (Platform/) by the whole test suite: builds and runs the tests with the
# coverage preset (gcc --coverage, Debug), then reports with gcovr. Fails
# below 95 % of lines or 85 % of branches, and when a test fails.
#
# The preset is the asan preset with coverage added: the tests run under
# AddressSanitizer and UndefinedBehaviorSanitizer (leaks checked), so that
# CI builds and runs the suite once for both checks.
#
# Branches counted: --exclude-throw-branches leaves out the branches that
# gcc adds to every call that may throw (the path taken when the callee
# throws), and --exclude-unreachable-branches those of lines holding no code
# of their own (a closing brace that runs destructors, for instance). Neither
# kind is a decision written in our code; every if, loop, ?: and && / || is
# still counted.
#
# The preset counts with atomic updates (-fprofile-update=atomic): tests that
# share a resource file between threads would otherwise race on the counters
# and leave counts that gcov cannot read (negative branch counts).
#
# Reports: build/coverage/coverage.txt (per file, with the lines missed) and
# build/coverage/coverage.html (per line).
set -euo pipefail
cd "$(dirname "$0")/../.."

command -v gcovr >/dev/null || { echo "coverage: gcovr is not installed" >&2; exit 2; }

build=build/coverage
# Counts of an earlier run would add up with this one.
if [[ -d $build ]]; then find "$build" -name '*.gcda' -delete; fi

cmake --workflow --preset coverage

gcovr --root . --object-directory "$build" \
  --exclude-directories "$build/CMakeFiles/" \
  --filter 'VirtualServices/' --filter 'Platform/' \
  --exclude-throw-branches --exclude-unreachable-branches \
  -j 2 \
  --txt "$build/coverage.txt" --html-details "$build/coverage.html" \
  --print-summary \
  --fail-under-line 95 --fail-under-branch 85
