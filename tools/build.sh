#!/bin/bash
# build.sh PRESET [TARGET...]: configures and builds a preset; quiet unless something is wrong.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=$1
shift
log=build/$preset.configure.log
mkdir -p build
if ! cmake --preset "$preset" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
cmake --build --preset "$preset" ${1:+--target "$@"}
