#!/usr/bin/env bash
# Packs the program for another system, unpacks it, scores with it and builds a small program against it:
#     check_package.sh BUILD_FOLDER TOOLCHAIN_FILE DEPENDENCIES EMULATOR...
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
toolchain=$2
dependencies=$3
shift 3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

(cd "$work" && cpack -G ZIP --config "$build/CPackConfig.cmake" -B "$work/packed" >/dev/null)
mkdir "$work/a place"
(cd "$work/a place" && unzip -q "$work"/packed/*.zip)
place=$(echo "$work/a place"/*)
for file in bin/brevix.exe bin/brevix_svm.dll bin/brevix_host.dll bin/brevix_runtime.dll include/brevix/host/ScoreModel.h \
    include/brevix/runtime/ScoringModel.h lib/cmake/brevix/brevix-config.cmake share/brevix/examples/iris/model.pmml; do
    [ -f "$place/$file" ] || { echo "the package lacks $file" >&2; exit 1; }
done

# Of the system each needs these libraries and no more.
needs() { objdump -p "$place/bin/$1" | sed -n 's/^[[:space:]]*DLL Name: //p' | LC_ALL=C sort | tr '\n' ' '; }
[ "$(needs brevix.exe)" = "KERNEL32.dll brevix_host.dll brevix_runtime.dll msvcrt.dll " ]
[ "$(needs brevix_runtime.dll)" = "KERNEL32.dll SHELL32.dll brevix_host.dll msvcrt.dll " ]
[ "$(needs brevix_host.dll)" = "ADVAPI32.dll KERNEL32.dll msvcrt.dll " ]
[ "$(needs brevix_svm.dll)" = "KERNEL32.dll brevix_host.dll msvcrt.dll " ]

iris=$place/share/brevix/examples/iris
"$@" "$place/bin/brevix.exe" score "$iris/model.pmml" "$iris/cases.csv" --quiet -o "$work/result.csv"
diff <(cut -d, -f1 "$work/result.csv" | tail -n +2) <(cut -d, -f1 "$iris/expected.csv" | tail -n +2)
[ "$(wc -l <"$work/result.csv")" -gt 100 ]

cmake -S "$here/find_package" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DBREVIX_WINDOWS_PREFIX="$dependencies;$place" >/dev/null
cmake --build "$work/build" --target consumer embed_scoring >/dev/null
cp "$work/build/consumer.exe" "$work/build/embed_scoring.exe" "$place/bin"
"$@" "$place/bin/consumer.exe" | tr -d '\r' | grep -x 'consumer works'
"$@" "$place/bin/embed_scoring.exe" "$iris/model.pmml" "petal length (cm)=1.4" "petal width (cm)=0.2" \
    "sepal length (cm)=5.1" "sepal width (cm)=3.5" | tr -d '\r' | grep -x 'predicted_species = setosa'
