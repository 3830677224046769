#!/usr/bin/env bash
# Every line of code on a page stands in the program that it quotes: check_quotes.sh PAGE PROGRAM
set -euo pipefail
quoted=0
missing=0
while IFS= read -r line; do
    quoted=$((quoted + 1))
    grep -qF -- "$line" "$2" || { echo "not in $2: $line"; missing=1; }
done < <(grep -E '^    [^ ]' "$1" | grep -vE '^    (find_package|target_link_libraries)' | sed -E 's/^ +//; s/ +\/\/ .*$//')
[ "$missing" -eq 0 ] && [ "$quoted" -ge 20 ]
