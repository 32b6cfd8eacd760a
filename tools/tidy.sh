#!/bin/bash
# Runs clang-tidy over the product and the simulated players; a finding is an error.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/build.sh release
find src simulator -name '*.cpp' -not -name '*_windows.cpp' | sort |
    xargs -P "$(nproc)" -n 1 clang-tidy-14 -p build/release --quiet
