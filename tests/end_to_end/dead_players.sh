#!/usr/bin/env bash
# Forty players, three of them dead in different ways: every command serves the others, tells which
# have failed and how, and ends in time.
# Usage: dead_players.sh SONTARO_CLI SONTARO_PLAYER NETWORK   (NETWORK such as 127.9.8)
program=$1 player=$2 network=$3
source "$(dirname "$0")/session.sh"
export LC_ALL=C.UTF-8
parallel=9 timeout=1 dead=3

start players "$player" --count 40 --base-address "$network.2" --name HALL \
    --fault 5:refuse --fault 17:silent --fault 33:close-after=8
await 20 "the players do not start" grep -q 'HALL40 ready' "$work/players.log"
for ((i = 1; i <= 40; ++i)); do echo "HALL$i"; done >"$work/hall.txt"

# in_time REQUESTS ARGUMENT...: a command that asks each player so many things.
in_time() {
    local requests=$1 code=0 begin=$EPOCHREALTIME took limit
    shift
    "$program" "$@" --expect "$work/hall.txt" --local-address "$network.1" --data "$work/data" \
        --json --timeout $timeout --parallel $parallel >"$work/told.log" 2>"$work/remarks.log" ||
        code=$?
    took=$(((${EPOCHREALTIME/./} - ${begin/./}) / 1000))
    limit=$((((dead + parallel - 1) / parallel * timeout * requests + 5) * 1000))
    echo "$1: $took ms of $limit"
    [ "$took" -le "$limit" ] || fail "$*: it has taken $took ms"
    [ "$code" -eq "${expected-1}" ] || fail "$*: it ended with $code"
    [ "$(failures)" = "HALL17 timed-out HALL33 link-ended HALL5 not-sent" ] ||
        fail "$*: it tells $(failures)"
}
failures() { jq -r 'select(.error) | .id + " " + .error.end' "$work/told.log" | sort -u | xargs; }
served() { jq -r "select($1).id" "$work/told.log" | sort -u | wc -l; }

in_time 1 videos
[ "$(served .name)" -eq 37 ] || fail "others have not been asked for their videos"
in_time 1 get osd
[ "$(served .document)" -eq 37 ] || fail "others have not been read"
in_time 3 set osd data/0/texts/0=Tonight
[ "$(served '.after == "Tonight"')" -eq 37 ] || fail "others have not been set"
in_time 2 control pause
[ "$(served .sent)" -eq 37 ] || fail "others have not been told to pause"
in_time 3 show
[ "$(served .mode)" -eq 37 ] || fail "others have not been shown"
in_time 9 backup "$work/backups"
backup=$(jq -r 'select(.backup).backup' "$work/told.log")
[ "$(find "$backup" -name osd.json | wc -l)" -eq 37 ] || fail "others have not been backed up"
expected=4 in_time 9 compare "$backup"
