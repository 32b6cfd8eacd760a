#!/usr/bin/env bash
# Starts the real program and two simulated players, each in a process of its own, makes one wall of
# their three screens by keyboard and with a drag, sends it, and fetches and sends it once more. In
# Chinese: the English main window does not offer walls.
# Usage: make_wall.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
player=$2 network=$3 version=$4
source "$(dirname "$0")/session.sh"

second_log=$work/second_received.log
start second "$player" --base-address "$network.3" --port 0 --name SECOND --outputs 1 \
    --store "$work/second" --log "$second_log"
await 10 "the second player does not start" grep -q ready "$work/second.log"
player_options=(--outputs 2 --store "$work/first")
start_with_player "$1" "$player" "$network" zh

main="Sontaro $version" devices=选择设备 parameters=设置参数
await 20 "no main window" has_window "$main"
keys "$main" Tab Tab Tab Tab space
await 10 "no wizard" has_window "$devices"
keys "$devices" space
await 10 "the players were not asked" grep -q discovery "$second_log"
sleep 0.5
# Stop, and from there over the list to the button that ticks all, and on to Next.
keys "$devices" space Tab Tab space Tab Tab Tab Tab space

# times LOG TEXT: how often the text stands in a player's log.
times() { grep -cF -- "$2" "$1" || true; }
# both N TEXT: whether each player's log has the text N times.
both() {
    [ "$(times "$player_log" "$2")" -ge "$1" ] && [ "$(times "$second_log" "$2")" -ge "$1" ]
}
await 10 "no second page" has_window "$parameters"
await 10 "the wall was not fetched" both 1 "received 3 sub 12 arg 0"
sleep 0.7
# From the first grid over its help and the direction to Apply, and back; the ninth row of the next
# grid is an overlap.
keys "$parameters" Tab Tab Tab space
sleep 0.5
keys "$parameters" shift+Tab shift+Tab shift+Tab ctrl+Tab
sleep 0.5
keys "$parameters" Down Down Down Down Down Down Down Down Return ctrl+a 1 2 0 Return

# press_after TABS: goes so many controls on, and presses the one that has the keyboard then.
press_after() {
    local i
    for ((i = 0; i < $1; ++i)); do xdotool key --delay 60 Tab; done
    xdotool key space
}
# The third screen is dragged ahead of the first one. The picture is in the upper left part of the
# window; the seams stay where they are.
eval "$(xdotool getwindowgeometry --shell "$(window "$parameters")")"
xdotool mousemove $((X + WIDTH * 36 / 100)) $((Y + HEIGHT * 30 / 100)) mousedown 1 sleep 0.1 \
    mousemove_relative -- -100 0 sleep 0.1 mousemove $((X + 40)) $((Y + HEIGHT * 30 / 100)) \
    sleep 0.1 mouseup 1
sleep 0.5
# The picture comes first and Finish last. The box at the end goes by its OK.
xdotool key --delay 60 shift+Tab space
await 10 "the wall did not arrive" both 1 "received 3 sub 13 arg 0"
await 10 "the players show no wall" grep -q "wall of 5640 x 1080: .*screen 2 at 0,0; screen 0 at 1800,0; screen 1 at 3720,0" "$player_log"
sleep 1
xdotool key space
sleep 0.5

press_after 15
await 10 "Back does not lead back" has_window "$devices"
sleep 0.5
press_after 6
await 10 "the wall was not fetched again" both 2 "received 3 sub 12 arg 0"
sleep 0.7
# As it has been fetched: fewer controls can be pressed.
press_after 14
await 10 "the wall did not arrive again" both 2 "received 3 sub 13 arg 0"
documents() { grep -ho "received 3 sub 13 arg 0.*" "$player_log" "$second_log"; }
[ "$(documents | wc -l)" = 4 ] || fail "not every player got the document twice"
[ "$(documents | sort -u | wc -l)" = 1 ] || fail "not every player got the same"
