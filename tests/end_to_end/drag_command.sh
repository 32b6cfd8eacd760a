#!/usr/bin/env bash
# Starts the real program and a simulated player in a second process, adds a command to its timeline
# by keyboard, drags it in the picture of time, uploads and tries it, and looks when the player sends
# it. In Chinese: the English main window does not offer timelines.
# Usage: drag_command.sh SONTARO SONTARO_PLAYER NETWORK VERSION   (NETWORK such as 127.9.8)
network=$3 version=$4
source "$(dirname "$0")/session.sh"

# The player plays one short video over and over.
mkdir "$work/store"
cat >"$work/store/$network.2.json" <<END
{"playing": true, "playMode": 3, "timeline": "",
 "folders": [{"name": "show", "videos": [{"name": "opening.mp4", "seconds": 11}]}]}
END
player_options=(--store "$work/store")
start_with_player "$1" "$2" "$network" zh
open_feature "Sontaro $version" Tab Tab space
dialog=播放器时间轴控制
await 10 "no dialog" has_window "$dialog"
await 20 "the timeline was not read" received "received 3 sub 23 arg 0"
sleep 0.7

keys "$dialog" Insert
await 10 "no editor" has_window "添加时间轴"
keys "添加时间轴" Tab Tab 1 0 Tab Tab Tab Tab Tab Tab Tab Tab a 5 0 1 Return
await 10 "the editor stays" lacks_window "添加时间轴"
sleep 0.5

# The only command stands where the time ends, in a lane somewhere in the lower half. Of what is
# dragged there, its mark alone goes anywhere.
eval "$(xdotool getwindowgeometry --shell "$(window "$dialog")")"
for ((y = HEIGHT - 240; y > HEIGHT - 400; y -= 20)); do
    xdotool mousemove $((X + WIDTH - 64)) $((Y + y)) mousedown 1 sleep 0.1 \
        mousemove_relative -- -50 0 sleep 0.1 mousemove_relative -- -50 0 sleep 0.1 mouseup 1
done

keys "$dialog" ctrl+t
await 10 "not tried" received "test 232:0 A5 01"
sleep 0.5
xdotool key --delay 60 space
sleep 0.5
# From the table, OK is the third control backwards.
keys "$dialog" shift+Tab shift+Tab shift+Tab space
await 10 "the timeline did not arrive" received "received 3 sub 23 arg 1"
moment() { sed -n 's/.* \([0-9]*\)\.\([0-9]*\) 232:0 A5 01$/\1\2/p' "$work/player.log" | head -n 1; }
sent() { [ -n "$(moment)" ]; }
await 25 "the player does not send the command" sent
[ "$(moment)" -lt 9900 ] || fail "the command was not dragged"
grep -q "milliseconds[^0-9]*$(moment)\b" "$work"/store/* || fail "sent at another moment than it has"
