#!/usr/bin/env bash
# Runs the test suite under Valgrind memcheck, on the RelWithDebInfo build of
# the memcheck preset (build/memcheck). Fails when a test fails, or when
# Valgrind reports any error or any block definitely or indirectly lost.
#
# Usage: tools/ci/memcheck.sh [REGEX]   (only the CTest tests whose names match)
#
# MEMCHECK_BUILD_DIR=build/default runs the suite of an existing
# RelWithDebInfo build instead (CI does, after the plain test step has built
# it: the memcheck preset would build the same thing again).
#
# How the tests run, so that the step takes minutes rather than the better
# part of an hour (Valgrind takes about a second to start a test program,
# whatever the test does):
#   - the test cases of a GoogleTest program run together, a few dozen to a
#     process, except those of the files marked as needing a process of
#     their own (tests/support/FreshProcess.h), which the program lists and
#     which run one per process, as CTest runs them;
#   - the tests that run lumsess from a CMake script run the script as usual
#     and the tool under Valgrind (LUMSESS_LAUNCHER, see
#     tests/lumsess/ScriptSetup.cmake);
#   - the tests' own environment settings (ENVIRONMENT_MODIFICATION) apply.
# Left out, by name: the installed-tree and subproject tests build client
# projects with cmake and the compiler, the manual page and completion tests
# run groff and bash; under Valgrind they would check those tools rather
# than our code (they run in the plain test step). The PO round trips run
# msgfmt and msgmerge, and libgettextpo, which never frees the context of a
# message (see tests/lsan.supp); they run in the plain and the
# AddressSanitizer steps.
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

# --error-exitcode=99 with --errors-for-leak-kinds=definite,indirect: any
#   error, and any block definitely or indirectly lost, fails the process
#   (99: no test exits so of its own), and is written to the process's log.
# --trace-children=yes: death tests re-run their test program; the child is
#   checked too. --child-silent-after-fork=yes keeps the output of a death
#   test's forked child (which dies on purpose) out of the log.
# --soname-synonyms=somalloc=nouserintercepts: the test programs replace
#   operator new to count allocations (some tests check those counts);
#   Valgrind then checks the blocks through malloc, which the replacement
#   calls, instead of bypassing the replacement. (A new/delete mismatch is
#   still caught by the AddressSanitizer run.)
# --read-inline-info=no: a report names the functions that were not
#   inlined, with their lines; reading where each inlined call stands takes
#   a fifth of the start of a test program.
options=(
  -q
  --read-inline-info=no
  --error-exitcode=99
  --leak-check=full
  --errors-for-leak-kinds=definite,indirect
  --show-leak-kinds=definite,indirect
  --trace-children=yes
  --child-silent-after-fork=yes
  --soname-synonyms=somalloc=nouserintercepts
)

exec python3 - "$build" "$valgrind" "${1:-}" "${options[@]}" <<'EOF'
import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile

build, valgrind, only = sys.argv[1:4]
options = sys.argv[4:]
left_out = re.compile(r"^(InstalledTree|Subproject|ManualPage|Completion|lumsess\.Po)\.")
group_size = 40

tests = json.loads(subprocess.run(["ctest", "--test-dir", build, "--show-only=json-v1"],
                                  check=True, capture_output=True, text=True).stdout)["tests"]
work = tempfile.mkdtemp(prefix="vx0sess0-memcheck.")
logs = os.path.join(work, "logs")
os.makedirs(logs)


def environment_of(test):
    """The environment CTest gives the test."""
    environment = dict(os.environ)
    for prop in test.get("properties", []):
        if prop["name"] != "ENVIRONMENT_MODIFICATION":
            continue
        for change in prop["value"]:
            name, _, rest = change.partition("=")
            operation, _, value = rest.partition(":")
            if operation == "unset":
                environment.pop(name, None)
            elif operation == "set":
                environment[name] = value
            elif operation == "reset":
                if name in os.environ:
                    environment[name] = os.environ[name]
                else:
                    environment.pop(name, None)
            else:
                sys.exit(f"memcheck: {test['name']}: unknown environment change {change!r}")
    return environment


def property_of(test, name, default=None):
    for prop in test.get("properties", []):
        if prop["name"] == name:
            return prop["value"]
    return default


def gtest_filter(command):
    for argument in command:
        if argument.startswith("--gtest_filter="):
            return argument[len("--gtest_filter="):]
    return None


# Jobs: (title, command, environment, working directory, test count).
jobs = []
programs = {}
for test in tests:
    name = test["name"]
    if left_out.match(name) or (only and not re.search(only, name)):
        continue
    command = test["command"]
    environment = environment_of(test)
    directory = property_of(test, "WORKING_DIRECTORY", build)
    case = gtest_filter(command)
    if case is None:
        # A script: it runs as CTest runs it, the tool under Valgrind.
        launched = dict(environment)
        launched["LUMSESS_LAUNCHER"] = shlex.join(
            [valgrind, f"--log-file={logs}/{name}.%p.log"] + options)
        jobs.append((name, command, launched, directory, 1))
        continue
    key = (command[0], directory, tuple(sorted(environment.items())))
    programs.setdefault(key, []).append(case)

for (program, directory, environment), cases in programs.items():
    environment = dict(environment)
    listing = os.path.join(work, "fresh.txt")
    listed = dict(environment, VX0SESS0_FRESH_PROCESS_TEST_LIST=listing)
    if os.path.exists(listing):
        os.remove(listing)
    subprocess.run([program, "--gtest_filter=-*"], env=listed, cwd=directory, check=True,
                   capture_output=True)
    fresh = set()
    if os.path.exists(listing):
        with open(listing) as names:
            fresh = {line.strip() for line in names if line.strip()}
    alone = [case for case in cases if case in fresh]
    together = [case for case in cases if case not in fresh]
    batches = [[case] for case in alone]
    batches += [together[i:i + group_size] for i in range(0, len(together), group_size)]
    for batch in batches:
        title = batch[0] if len(batch) == 1 else f"{os.path.basename(program)}: {len(batch)} test cases from {batch[0]}"
        log = os.path.join(logs, f"{os.path.basename(program)}-{len(jobs)}.%p.log")
        command = [valgrind, f"--log-file={log}"] + options + [
            program, "--gtest_filter=" + ":".join(batch), "--gtest_brief=1"]
        jobs.append((title, command, environment, directory, len(batch)))


def run(job):
    title, command, environment, directory, count = job
    done = subprocess.run(command, env=environment, cwd=directory, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace")
    return job, done.returncode, done.stdout


failed_jobs = []
passed = failed = 0
with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
    for (title, command, _, _, count), status, output in pool.map(run, jobs):
        if status == 0:
            passed += count
            continue
        # A process of several test cases that ended normally names those
        # that failed; one that crashed or that Valgrind failed fails them all.
        named = set(re.findall(r"^\[  FAILED  \] (\S+) \(\d+ ms\)$", output, re.MULTILINE))
        lost = len(named) if status == 1 and named else count
        failed += lost
        passed += count - lost
        failed_jobs.append((title, status, output))
        print(f"memcheck: FAILED ({status}): {title}", flush=True)

# Valgrind's own lines begin with "==PID=="; a test that writes on a
# descriptor it found open (a program's standard error it closed and
# reopened, say) may leave lines of its own in a log, which are no report.
reports = []
for entry in sorted(os.listdir(logs)):
    with open(os.path.join(logs, entry), errors="replace") as report:
        text = report.read()
    if re.search(r"^==\d+==", text, re.MULTILINE):
        reports.append((entry, text))

for title, status, output in failed_jobs:
    print(f"\n--- {title} (status {status}) ---\n{output[-4000:]}")
for entry, text in reports:
    print(f"\n--- Valgrind: {entry} ---\n{text[-8000:]}")
print(f"memcheck: {len(jobs)} processes, {len(reports)} Valgrind reports")
print(f"{passed} passed, {failed} failed")
if failed or reports:
    sys.exit(1)
print("memcheck: no error, no block definitely or indirectly lost")
EOF
