#!/bin/bash
# Builds the Windows programs, runs their tests under Wine, one at a time, and has them talk to the
# Linux ones.
set -uo pipefail
cd "$(dirname "$0")/../.."

tools/windows/build.sh || exit 1
failed=0

# run SUITE: Wine may call a program that has crashed a success, so that its last line has to be seen.
run() {
    local log=build/windows/$1.log
    echo "== $(basename "$1")"
    timeout 1500 tools/windows/wine.sh wine "build/windows/$1.exe" 2>&1 | tee "$log" |
        grep -av '^\[ RUN \|^\[  *OK \|^\[---' || failed=1
    grep -q 'tests from .* ran' "$log" || failed=1
}

run tests/sontaro_core_tests
run tests/cli/sontaro_cli_tests
run tests/ui/sontaro_ui_tests
echo "== Linux and Windows talk"
tools/windows/talk.sh || failed=1
exit $failed
