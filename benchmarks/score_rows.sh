#!/usr/bin/env bash
# score_rows.sh BREVIX [ROWS ...]: rows per second and peak memory of `brevix score` on tables of so many iris rows.
set -euo pipefail

if [ $# -lt 1 ]; then
    echo "usage: score_rows.sh BREVIX [ROWS ...]" >&2
    exit 2
fi
root=$(cd "$(dirname "$0")/.." && pwd)
brevix=$1
shift
[ $# -gt 0 ] || set -- 1000000 10000000

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# The most memory that a running process has had, in kB, read until it ends.
watch_peak() {
    local peak=0 key value rest
    while kill -0 "$1" 2>/dev/null; do
        while read -r key value rest; do
            [ "$key" = VmHWM: ] && peak=$value
        done 2>/dev/null <"/proc/$1/status" || true
        sleep 0.02
    done
    echo "$peak"
}

printf '| %s | %s | %s | %s |\n|---:|---:|---:|---:|\n' rows seconds 'rows per second' 'peak memory, MB'
for rows in "$@"; do
    python3 "$root/examples/generate/make_rows.py" "$rows" >"$folder/rows.csv"
    start=$EPOCHREALTIME
    "$brevix" score "$root/examples/iris/model.pmml" "$folder/rows.csv" --no-progress --quiet >"$folder/scores.csv" &
    process=$!
    peak=$(watch_peak "$process")
    wait "$process"
    end=$EPOCHREALTIME
    [ "$(wc -l <"$folder/scores.csv")" -eq $((rows + 1)) ] || { echo "score_rows.sh: rows are missing" >&2; exit 1; }
    LC_ALL=C awk -v rows="$rows" -v start="$start" -v end="$end" -v peak="$peak" 'BEGIN {
        printf "| %d | %.2f | %.0f | %.1f |\n", rows, end - start, rows / (end - start), peak / 1024 }'
done
