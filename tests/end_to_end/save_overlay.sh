#!/usr/bin/env bash
# Starts the real program and a simulated player in a second process, edits the player's on-screen
# display by keyboard, and checks what the player has saved.
# Usage: save_overlay.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
sontaro=$1 player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

player_log=$work/received.log
received() { grep -qF -- "$1" "$player_log"; }

start player "$player" --base-address "$network.2" --port 0 --log "$player_log"
await 10 "the player does not start" grep -q ready "$work/player.log"
start sontaro "$sontaro" --language en --local-address "$network.1"

main="Sontaro $version"
await 20 "no main window" has_window "$main"
keys "$main" Tab Tab space
await 10 "no scan dialog" has_window "Scan for devices"
keys "Scan for devices" space
await 10 "the player was not asked" received "discovery"
sleep 0.5
keys "Scan for devices" Tab space Tab space
await 10 "no dialog" has_window "OSD"
await 20 "the settings were not read" received "received 3 sub 4 arg 0"
sleep 0.7
# From the first row to the fourth, the transparency, and on to OK without an Enter.
keys "OSD" Down Down Down Return ctrl+a 2 7 Tab Tab Tab Tab Tab space
await 10 "the edit did not arrive" received '"transparent":27'
