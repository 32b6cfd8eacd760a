#!/usr/bin/env bash
# Starts the real program and a simulated player in a second process, edits the player's on-screen
# display by keyboard, and checks what the player has saved.
# Usage: save_overlay.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
sontaro=$1 player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

main="Sontaro $version"
start_with_player "$sontaro" "$player" "$network"
open_feature "$main" Tab Tab space
await 10 "no dialog" has_window "OSD"
await 20 "the settings were not read" received "received 3 sub 4 arg 0"
sleep 0.7
# From the first row to the fourth, the transparency, out of the cell, and OK without an Enter.
keys "OSD" Down Down Down Return ctrl+a 2 7 Tab alt+o
await 10 "the edit did not arrive" received '"transparent":27'
