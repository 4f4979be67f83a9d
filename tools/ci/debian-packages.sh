#!/usr/bin/env bash
# Builds the Debian packages (cpack -G DEB) of a configured and built tree and
# checks them with lintian, which must report no error and no warning but the
# ones named below, each for the reason given.
# Usage: tools/ci/debian-packages.sh [BUILD_DIR]   (default build/default)
set -euo pipefail
build=${1:-build/default}
cd "$build"
rm -f ./*.deb
cpack -G DEB
ls -l ./*.deb

# Accepted lintian tags (the reasons are in the report of the packaging work):
accepted=(
)
suppress=$(IFS=,; echo "${accepted[*]}")
lintian --fail-on error,warning --info ${suppress:+--suppress-tags "$suppress"} ./*.deb
