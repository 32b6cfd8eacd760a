#!/bin/bash
# Builds and measures. Fails when a figure misses its goal.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/build.sh release
mkdir -p build/bench
exec tools/headless.sh build/release/bench/sontaro_bench build/bench/summary.txt
