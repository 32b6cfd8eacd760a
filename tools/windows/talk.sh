#!/bin/bash
# Has the Windows programs find and remote-control a simulated player of this system, and the other way round.
# All addresses are of 127.0.0: Wine sends datagrams from 127.0.0.1, whichever one they are bound
# to, and simulated players hear broadcasts of their own network alone.
set -uo pipefail
cd "$(dirname "$0")/../.."

tools/build.sh release sontaro sontaro-cli sontaro-player || exit 1
version=$(sed -n 's/^project(Sontaro VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
failed=0

# talk TEST PROGRAM PLAYER
talk() {
    echo "-- $1: $(basename "$2") and $(basename "$3")"
    timeout 180 tools/windows/wine.sh "tests/end_to_end/$1.sh" "build/$2" "build/$3" \
        127.0.0 "$version" || failed=1
}

for test in press_play save_overlay; do
    talk "$test" windows/src/app/sontaro.exe release/simulator/sontaro-player
    talk "$test" release/src/app/sontaro windows/simulator/sontaro-player.exe
done
talk script_between_systems windows/src/cli/sontaro-cli.exe release/simulator/sontaro-player
talk script_between_systems release/src/cli/sontaro-cli windows/simulator/sontaro-player.exe
exit $failed
