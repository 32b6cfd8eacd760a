#!/usr/bin/env bash
# Kills an upload over and over at random moments, and has what is left sent again: in the end the
# players have every byte of every video.
# Usage: kill_during_upload.sh SEND_WHAT_IS_LEFT SONTARO_PLAYER NETWORK [KILLS]
sends=$1 player=$2 network=$3 kills=${4:-25}
source "$(dirname "$0")/session.sh"

mkdir "$work/videos"
for ((i = 0; i < 6; ++i)); do
    head -c "$((i * 1500000))" /dev/urandom >"$work/videos/视频 $i.mp4"
done
head -c 8192000 /dev/urandom >"$work/videos/whole.mp4"
start player "$player" --count 2 --base-address "$network.2" --port 9000 --store "$work/store" \
    --log "$work/events.log"
await 10 "the players do not start" grep -q 'PLAYER2 ready' "$work/player.log"

# An upload that has come to its end has brought everything; the next one begins anew.
expect_whole() {
    for octet in 2 3; do
        diff -r "$work/videos" "$work/store/$network.$octet/7" || fail "a player has something else"
    done
    rm -r "$work/runs" "$work/store/$network".[23]/7
    whole=$((whole + 1))
}

whole=0
for ((i = 1; i <= kills; ++i)); do
    start sends "$sends" "$work/runs" "$work/videos" "$network.2" "$network.3"
    sleep "0.$((RANDOM % 90 + 10))"
    kill -KILL "$process" 2>/dev/null || true
    status=0
    wait "$process" 2>/dev/null || status=$?
    [ $status -ne 0 ] || expect_whole
    [ $status -eq 0 ] || [ $status -eq 137 ] || [ $status -eq 3 ] || fail "it ended with $status"
done
for ((i = 1; ; ++i)); do
    "$sends" "$work/runs" "$work/videos" "$network.2" "$network.3" && break
    [ "$i" -lt 10 ] || fail "what is left is never sent"
done
expect_whole
! grep -q 'wrong upload' "$work/events.log" || fail "the players were sent something wrong"
echo "killed $kills times, $whole uploads came to their end"
