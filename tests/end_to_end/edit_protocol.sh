#!/usr/bin/env bash
# Starts the real program and a simulated player in a second process, edits the player's control
# protocol by keyboard, has it learn a command, and compares what the player holds with the working
# copy.
# Usage: edit_protocol.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

# The working copy stands beside the program: a program of our own has one of our own.
mkdir "$work/program"
cp "$1" "$work/program/sontaro"
mkfifo "$work/serial"
cat >"$work/player" <<END
#!/bin/bash
exec "$player" "\$@" <"$work/serial"
END
chmod +x "$work/player"
exec 3<>"$work/serial"
player_options=(--store "$work/store")
start_with_player "$work/program/sontaro" "$work/player" "$network"

# uploaded: whether the document in the player's state file is the working copy, as JSON has it.
uploaded() {
    local copy
    copy=$(sed -z 's/\\/\\\\/g; s/"/\\"/g; s/\t/\\t/g; s/\n/\\n/g' \
        "$work/program/ControlProtocol.Json")
    grep -qF -- "$copy" "$work"/store/*
}

main="Sontaro $version"
open_feature "$main" Tab Tab Tab space
await 10 "no dialog" has_window "Setup UART"
await 20 "the control protocol was not read" received "received 50 "
# The third row is the port of the server.
keys "Setup UART" Down Down Return ctrl+a 9 0 0 1
# On the third tab the first category; its bytes answer the keep-alive after the next.
keys "Setup UART" ctrl+Tab
sleep 0.7
keys "Setup UART" ctrl+Tab
sleep 0.7
keys "Setup UART" Down
sleep 0.5
keep_alives() { grep -c "received 50 " "$player_log"; }
answered() { [ "$(keep_alives)" -ge $((before + 2)) ]; }
before=$(keep_alives)
echo "a5 01 0f" >&3
await 10 "no keep-alive" answered
sleep 0.5
keys "Setup UART" alt+o
await 10 "no question" has_window "$main"
sleep 0.5
xdotool key --delay 60 space
await 10 "the document did not arrive" received "received 3 sub 1 arg 1"
await 10 "the player holds something else than the working copy" uploaded
grep -q '"KTVServerPort" : 9001' "$work/program/ControlProtocol.Json" || fail "the edit is missing"
grep -q '"SendCmd" : "A5010F"' "$work/program/ControlProtocol.Json" || fail "the command is missing"
