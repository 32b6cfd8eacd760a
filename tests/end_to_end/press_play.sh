#!/usr/bin/env bash
# Starts the real program and a simulated player in a second process, presses the real buttons by
# keyboard, and checks what the player received.
# Usage: press_play.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
sontaro=$1 player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

player_log=$work/received.log
received() { grep -qF -- "$1" "$player_log"; }

start player "$player" --base-address "$network.2" --port 0 --log "$player_log"
await 10 "the player does not start" grep -q ready "$work/player.log"
start sontaro "$sontaro" --language en --local-address "$network.1"

main="Sontaro $version"
await 20 "no main window" has_window "$main"
keys "$main" Tab space
await 10 "no scan dialog" has_window "Scan for devices"
keys "Scan for devices" space
await 10 "the player was not asked" received "discovery"
sleep 0.5
keys "Scan for devices" Tab space Tab space
await 10 "no remote control" has_window "${main}Video Control"
await 20 "the captions were not asked for" received "received 59 sub 3"
sleep 0.7
keys "${main}Video Control" space
await 10 "播放 did not arrive" received '{"cmdId":4,"playMode":"播放"}'
grep -F '"playMode"' "$player_log"
