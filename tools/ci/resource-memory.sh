#!/usr/bin/env bash
# Peak memory of loading large resource files: 10 MB message catalogues of
# blank lines, of malformed lines, of one key declared again and again and of
# distinct keys (lines of about 20 bytes),
# each read by `lumsess show` (one catalogue lookup) and `lumsess check`
# (every file, every problem). Fails when a run's peak resident set is above
# twice the file's size plus 16 MB, or when a run fails.
#
# Usage: tools/ci/resource-memory.sh [BUILD_DIR]   (default build/default,
# which must hold a built lumsess). Prints one line per case: the peak RSS,
# the bound and the time taken.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build/default}
lumsess=$build/tools/lumsess/lumsess
[[ -x $lumsess ]] || { echo "resource-memory: no lumsess in $build" >&2; exit 2; }
[[ -x /usr/bin/time ]] || { echo "resource-memory: /usr/bin/time is not installed" >&2; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
size=$((10 * 1024 * 1024))
bound_kb=$(((2 * size + 16 * 1024 * 1024) / 1024))

# make_catalogue NAME LINE: a catalogue of LINE repeated up to 10 MB.
make_catalogue() {
  local config=$work/$1
  mkdir -p "$config/dcls" "$config/msgcatalog"
  cp resources/dcls/*.dcls "$config/dcls/"
  cp resources/msgcatalog/*.msgcat "$config/msgcatalog/"
  local file=$config/msgcatalog/KORLumSessionFile.msgcat
  # yes ends on SIGPIPE when head has enough: not a failure.
  { yes -- "$2" || true; } | head -c "$size" >"$file"
  [[ $(stat -c %s "$file") -eq $size ]] || { echo "resource-memory: cannot write $file" >&2; exit 2; }
}

make_catalogue blank-lines ''
make_catalogue malformed-lines 'x'   # the shortest malformed line: the most problems
make_catalogue duplicate-keys 'TypeGraph.Msg = Graph'
make_catalogue distinct-keys ''
awk -v size="$size" 'BEGIN { for (i = 0; total + 20 <= size; i++) {
    line = sprintf("Key%d = value %d", i, i); total += length(line) + 1; print line } }' \
  >"$work/distinct-keys/msgcatalog/KORLumSessionFile.msgcat"

failed=0
for case in blank-lines malformed-lines duplicate-keys distinct-keys; do
  for command in show check; do
    arguments=(--config "$work/$case" "$command")
    [[ $command == show ]] && arguments+=(--file /data/a.hub)
    status=0
    /usr/bin/time -f '%M %e' -o "$work/time" "$lumsess" "${arguments[@]}" \
      >/dev/null 2>"$work/stderr" || status=$?
    # (time writes a line of its own first when the status is not 0.)
    read -r peak_kb seconds < <(tail -n 1 "$work/time")
    verdict=ok
    # check reports the files' problems with status 1; anything else fails.
    if [[ $status -ne 0 && ! ($command == check && $status -eq 1) ]]; then
      verdict="FAILED (status $status: $(head -c 300 "$work/stderr"))"
      failed=1
    elif ((peak_kb > bound_kb)); then
      verdict="FAILED (above the bound)"
      failed=1
    fi
    printf '%-16s %-6s peak %7d kB (bound %d kB), %5.2f s  %s\n' \
      "$case" "$command" "$peak_kb" "$bound_kb" "$seconds" "$verdict"
  done
done
exit $failed
