#!/usr/bin/env bash
# Includes point one way: every folder includes only itself, what stands below it here, and libraries.
set -euo pipefail
cd "$1"

allowed() {
    case "$1" in
        host) echo "host" ;;
        numerics) echo "numerics" ;;
        pmml-record) echo "host pmml-record" ;;
        svm) echo "host numerics pmml-record svm" ;;
        pmml) echo "host pmml-record svm pmml" ;;
        plugin) echo "host numerics pmml-record svm pmml plugin" ;;
        runtime) echo "host runtime" ;;
        tools) echo "host runtime tools" ;;
    esac
}

# The model record stands below svm/, the readers above it.
record='SVMModelData|SVMVectorField|SVMVectorInstance|SVMMachineExtension|ST_SUPPORTVECTORMACHINE'

layer_of() {
    if [[ $1 =~ ^pmml/($record)\.(h|cpp)$ ]]; then
        echo pmml-record
    else
        echo "${1%%/*}"
    fi
}

faults=0
while IFS=: read -r file line; do
    included=$(sed -E 's/.*"([^"]+)".*/\1/' <<<"$line")
    from=$(layer_of "$file")
    to=$(layer_of "$included")
    [ "$from" = runtime ] && [ "$included" = svm/SVMRegResult.h ] && continue
    case " $(allowed "$from") " in
        *" $to "*) ;;
        *)
            echo "$file includes $included"
            faults=1
            ;;
    esac
done < <(grep -rnE --include='*.h' --include='*.cpp' '^#include "' host numerics pmml svm plugin runtime tools |
    sed -E 's/^([^:]+):[0-9]+:/\1:/')
exit $faults
