#!/usr/bin/env bash
# score_rows.sh BREVIX [ROWS ...]: speed and peak memory of `brevix score` on tables of so many iris rows.
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

# The most memory that a running process has had, in kB, and its processor time, in ticks; read until it ends.
watch() {
    local peak=0 ticks=0 key value rest stat
    while kill -0 "$1" 2>/dev/null; do
        while read -r key value rest; do
            [ "$key" = VmHWM: ] && peak=$value
        done 2>/dev/null <"/proc/$1/status" || true
        if read -ra stat 2>/dev/null <"/proc/$1/stat"; then
            ticks=$((stat[13] + stat[14]))
        fi
        sleep 0.05
    done
    echo "$peak $ticks"
}

printf '| %s | %s | %s | %s | %s |\n|---:|---:|---:|---:|---:|\n' rows seconds 'rows per second' \
    'rows per processor second' 'peak memory, MB'
for rows in "$@"; do
    python3 "$root/examples/generate/make_rows.py" "$rows" >"$folder/rows.csv"
    start=$EPOCHREALTIME
    "$brevix" score "$root/examples/iris/model.pmml" "$folder/rows.csv" --no-progress --quiet >"$folder/scores.csv" &
    process=$!
    read -r peak ticks < <(watch "$process")
    wait "$process"
    end=$EPOCHREALTIME
    [ "$(wc -l <"$folder/scores.csv")" -eq $((rows + 1)) ] || { echo "score_rows.sh: rows are missing" >&2; exit 1; }
    LC_ALL=C awk -v rows="$rows" -v seconds="$start $end" -v ticks="$ticks" -v hertz="$(getconf CLK_TCK)" -v peak="$peak" '
        BEGIN {
            split(seconds, at)
            elapsed = at[2] - at[1]
            perProcessor = ticks > 0 ? rows * hertz / ticks : 0
            printf "| %d | %.2f | %.0f | %.0f | %.1f |\n", rows, elapsed, rows / elapsed, perProcessor, peak / 1024
        }'
done
