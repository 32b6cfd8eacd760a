#!/usr/bin/env bash
# The tour through every feature succeeds while a screen reader listens, and leaves its pictures, in
# a folder with a Chinese name, which the locale does not know.
# Usage: tour.sh SONTARO SCREEN_READER LANGUAGE
if [[ ${1-} != --in-session ]]; then exec dbus-run-session -- "$0" --in-session "$@"; fi
sontaro=$2 screen_reader=$3 language=$4
source "$(dirname "$0")/session.sh"

start reader "$screen_reader"
await 20 "nobody listens" grep -q ready "$work/reader.log"
unset NO_AT_BRIDGE
LC_ALL=C "$sontaro" --demo --tour "$work/图片" --language "$language"
[ "$(find "$work/图片" -name '*.png' -size +1k | wc -l)" -ge 32 ] || fail "pictures are missing"
