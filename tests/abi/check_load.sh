#!/usr/bin/env bash
# The plug-in loads by its absolute path from a folder that holds the host library beside it and nothing else:
#     check_load.sh LOADER PLUGIN HOST_LIBRARY EMULATOR...
set -euo pipefail
loader=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$2" "$3" "$folder"
plugin=$folder/$(basename "$2")
shift 3
cd /
"$@" "$loader" "$plugin" | tr -d '\r' | diff - <(printf 'a translator\nstays\n')
