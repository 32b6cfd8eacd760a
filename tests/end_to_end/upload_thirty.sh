#!/usr/bin/env bash
# Sends thirty videos to three players in processes of their own, of which one is killed in the
# middle: the journal tells what has arrived, and sending again brings exactly the rest.
# Usage: upload_thirty.sh SEND_WHAT_IS_LEFT SONTARO_PLAYER NETWORK   (NETWORK such as 127.9.8)
sends=$1 player=$2 network=$3
source "$(dirname "$0")/session.sh"

mkdir "$work/videos"
for ((i = 1; i <= 28; ++i)); do
    head -c "$((i * 100000))" /dev/urandom >"$work/videos/$i. 夜色（第 $i 版）.mp4"
done
head -c 8192000 /dev/urandom >"$work/videos/整块.mp4"
head -c 17000000 /dev/urandom >"$work/videos/开场 霓虹之夜.mp4"

# start_player NAME OCTET: a player in a process of its own; sets $process.
start_player() {
    start "$1" "$player" --base-address "$network.$2" --port 9000 --store "$work/store" \
        --log "$work/$1.events.log"
    await 10 "a player does not start" grep -q ready "$work/$1.log"
}
send() { start "$1" "$sends" "$work/runs" "$work/videos" "$network".{2,3,4}; }
stored() { find "$work/store/$network.3/7" -name '*.mp4' | wc -l; }
has_stored() { [ "$(stored)" -ge "$1" ]; }
# told RUN OCTET: what the journal of a run tells of a player.
told() { sed -n "s/^$network.$2 //p" "$work/$1.log"; }
sums() { (cd "$1" && sha256sum -- *); }

start_player first 2
start_player second 3
killed=$process
start_player third 4
send run
await 60 "the second player gets nothing" has_stored 10
kill -KILL "$killed"
wait "$killed" 2>/dev/null || true
status=0
wait "$process" || status=$?
[ $status -eq 3 ] || fail "the run ended with $status"
for octet in 2 4; do
    [ "$(told run $octet)" = "30/30 status 7" ] || fail "a player that lived has not got all"
done
arrived=$(told run 3 | sed -n 's|/30 status 4$||p')
[ -n "$arrived" ] || fail "the journal does not tell that the second player was lost"
# The last one may have been stored without its acknowledgement.
[ $(($(stored) - arrived)) -eq 0 ] || [ $(($(stored) - arrived)) -eq 1 ] ||
    fail "the journal tells of $arrived videos, the player has $(stored)"

start_player back 3
send again
wait "$process" || fail "something is left"
left=$((30 - arrived))
[ "$(cat "$work/again.log")" = "$network.3 $left/$left status 7" ] ||
    fail "something else than the rest was sent again"
for octet in 2 3 4; do
    [ "$(sums "$work/store/$network.$octet/7")" = "$(sums "$work/videos")" ] ||
        fail "a player has something else"
done
! grep -q 'wrong upload' "$work"/*.events.log || fail "the players were sent something wrong"
echo "$arrived videos had arrived when the player was killed, $left were sent again"
