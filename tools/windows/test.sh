#!/bin/bash
# Builds the Windows programs, runs their tests under Wine, one at a time, and has them talk to the
# Linux ones.
set -uo pipefail
cd "$(dirname "$0")/../.."

tools/windows/build.sh || exit 1
failed=0
for suite in tests/sontaro_core_tests tests/ui/sontaro_ui_tests; do
    echo "== $(basename "$suite")"
    timeout 600 tools/windows/wine.sh wine "build/windows/$suite.exe" --gtest_brief=1 || failed=1
done
echo "== Linux and Windows talk"
tools/windows/talk.sh || failed=1
exit $failed
