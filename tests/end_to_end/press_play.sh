#!/usr/bin/env bash
# Starts the real program and a simulated player in a second process, presses the real buttons by
# keyboard, and checks what the player received.
# Usage: press_play.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
sontaro=$1 player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

main="Sontaro $version"
start_with_player "$sontaro" "$player" "$network"
open_feature "$main" Tab space
await 10 "no remote control" has_window "${main}Video Control"
await 20 "the captions were not asked for" received "received 59 sub 3"
sleep 0.7
keys "${main}Video Control" space
await 10 "播放 did not arrive" received '{"cmdId":4,"playMode":"播放"}'
grep -F '"playMode"' "$player_log"
