#!/usr/bin/env bash
# Ends the real program as a desktop session does, with a question open over a feature: it leaves
# by itself, and the feature's place is kept.
# Usage: end_of_session.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
sontaro=$1 player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

main="Sontaro $version"
messages() { [ "$(xdotool search --onlyvisible --name "^$main\$" | wc -l)" -eq "$1" ]; }

start_with_player "$sontaro" "$player" "$network"
open_feature "$main" Tab Tab space
await 10 "no dialog" has_window "OSD"
await 20 "the settings were not read" received "received 3 sub 4 arg 0"
sleep 0.7
keys "OSD" alt+c
await 10 "no question" messages 2  # titled as the main window is
kill -TERM "$process"
wait "$process" || fail "it ended with $?"
grep -F '"osd"' "$XDG_CONFIG_HOME/sontaro/preferences.json"
