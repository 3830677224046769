#!/usr/bin/env bash
# Builds a small program against the project: check_install.sh find_package BUILD_FOLDER COMPILER FLAGS, after an installation into
# a folder of its own, or check_install.sh add_subdirectory SOURCE_FOLDER COMPILER FLAGS.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
how=$1
place=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
options=(-G Ninja -DCMAKE_CXX_COMPILER="$3" -DCMAKE_CXX_FLAGS="$4" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0)
if [ "$how" = find_package ]; then
    cmake --install "$place" --prefix "$work/prefix" >/dev/null
    options+=(-DCMAKE_PREFIX_PATH="$work/prefix")
    (cd "$work" && "$work/prefix/bin/brevix" version)
else
    options+=(-DBREVIX_SOURCE="$place")
fi
cmake -S "$here/$how" -B "$work/build" "${options[@]}" >/dev/null
cmake --build "$work/build" --target consumer embed_scoring
embed=$(find "$work/build" -name embed_scoring -type f -perm -u+x)
"$embed" "$here/../../examples/iris/model.pmml" "petal length (cm)=1.4" "petal width (cm)=0.2" \
    "sepal length (cm)=5.1" "sepal width (cm)=3.5" | grep -x 'predicted_species = setosa'
find "$work/build" -name consumer -type f -perm -u+x -exec {} \; | grep -x 'consumer works'
