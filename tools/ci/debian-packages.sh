#!/usr/bin/env bash
# Builds the Debian packages (cpack -G DEB) of a configured and built tree and
# checks them with lintian, which must report no error and no warning (the
# warnings accepted are overridden in the packages themselves, each with its
# reason: packaging/debian/*.lintian-overrides).
# Usage: tools/ci/debian-packages.sh [BUILD_DIR]   (default build/default)
set -euo pipefail
build=${1:-build/default}
cd "$build"
rm -f ./*.deb
cpack -G DEB
for package in ./*.deb; do
  dpkg-deb --field "$package" Package Version Depends
done
lintian --fail-on error,warning --display-info ./*.deb
