#!/bin/bash
# Builds Sontaro and runs it against simulated players. Without a display it walks through its
# windows on a virtual one, in both languages, and leaves pictures of them.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/build.sh release sontaro
program=build/release/src/app/sontaro

if [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; then
    exec "$program" --demo
fi

echo "There is no display: Sontaro walks through its windows on a virtual one."
for language in zh en; do
    pictures=build/tour/$language
    rm -rf "$pictures"
    mkdir -p "$pictures"
    echo
    echo "The tour, --language $language:"
    tools/headless.sh "$program" --demo --tour "$pictures" --language "$language"
    compgen -G "$pictures/*.png" >/dev/null || { echo "The tour left no pictures." >&2; exit 1; }
done
echo
echo "The pictures are in build/tour/zh and build/tour/en."
