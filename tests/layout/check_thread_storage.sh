#!/usr/bin/env bash
# A thread's objects that have destructors are kept by host/ThreadKept.h, which does it on every system: other
# thread_local objects are constinit, and of types without a destructor. check_thread_storage.sh ROOT
set -euo pipefail
cd "$1"
found=$(grep -rn --include='*.h' --include='*.cpp' -w thread_local host numerics pmml svm plugin runtime tools |
    grep -v '^host/ThreadKept.h:' | grep -vE '^[^:]+:[0-9]+: *//' | grep -v 'constinit' || true)
if [ -n "$found" ]; then
    echo "$found"
    exit 1
fi
