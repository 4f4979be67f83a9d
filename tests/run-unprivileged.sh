#!/usr/bin/env bash
# Runs the tests about files that cannot be read as an unprivileged user.
#
# CI runs as root, which reads any file whatever its permissions, so those
# tests skip themselves there. This script runs them again as the user
# "nobody", each test case in its own process (as CTest would), so that they
# really run. Usage: tests/run-unprivileged.sh BUILD_DIR
set -euo pipefail
build=${1:?usage: $0 BUILD_DIR}
filter='*Unreadable*:*WithoutReadPermission*:*CannotBeRead*:*NoReadPermission*'
if [ "$(id -u)" -ne 0 ]; then
  echo "Not root: these tests already ran unskipped in the normal run."
  exit 0
fi
passed=0
failed=0
while read -r executable; do
  while read -r name; do
    [ -n "$name" ] || continue
    if setpriv --reuid=65534 --regid=65534 --clear-groups \
        env -u KOR_DCLS_PATH -u KOR_MSGCATALOG_PATH -u KOR_ADMIN_SETTINGS -u KOR_LANGUAGE \
        -u LC_ALL -u LC_MESSAGES -u LANG -u KORHUB_TRACE -u KORHUB_TRACE_FILE \
        "$executable" --gtest_filter="$name" --gtest_brief=1 >/tmp/unprivileged-test.log 2>&1 &&
        ! grep -q "SKIPPED" /tmp/unprivileged-test.log; then
      passed=$((passed + 1))
    else
      echo "FAILED as nobody: $name"
      cat /tmp/unprivileged-test.log
      failed=$((failed + 1))
    fi
  done < <("$executable" --gtest_list_tests --gtest_filter="$filter" |
           awk '/^[^ ]/ {suite=$1} /^  / {print suite $1}')
done < <(find "$build/tests" -type f -perm -u+x -name '*Tests' | sort)
echo "Unprivileged file-permission tests: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
