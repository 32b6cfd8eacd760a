#!/bin/bash
# Builds everything and runs every test; the last lines are the test runner's own.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/build.sh release
exec tools/headless.sh ctest --preset release -j2
