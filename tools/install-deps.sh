#!/bin/sh
# tools/install-deps.sh GROUP...: installs the Debian packages of the given
# groups of tools/packages.txt that this machine lacks: as root directly,
# otherwise through sudo. Where neither can install them, it names them in
# one sentence and fails.
set -eu
list="$(dirname "$0")/packages.txt"
if [ "$#" -eq 0 ]; then
  echo "usage: $0 GROUP... (groups of $list)" >&2
  exit 2
fi
for group in "$@"; do
  if ! grep -q "^$group " "$list"; then
    echo "$0: $list has no group '$group'." >&2
    exit 2
  fi
done

packages=$(awk -v groups=" $* " '/^[a-z]/ && index(groups, " " $1 " ") { print $2 }' "$list")
missing=
for package in $packages; do
  status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
  [ "$status" = "install ok installed" ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

cannot() {
  echo "$0: this machine lacks the Debian packages$missing; install them as root (apt-get install$missing) and run the command again." >&2
  exit 1
}
if ! command -v apt-get >/dev/null 2>&1; then
  cannot
elif [ "$(id -u)" -eq 0 ]; then
  as_root=
elif command -v sudo >/dev/null 2>&1; then
  as_root=sudo
else
  cannot
fi
echo "Installing the Debian packages$missing"
$as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q >/dev/null || cannot
# shellcheck disable=SC2086 # one word per package
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing ||
  cannot
