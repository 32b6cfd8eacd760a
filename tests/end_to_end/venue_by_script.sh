#!/usr/bin/env bash
# What an integrator's script does in a venue: finds its players, backs them up, changes one setting
# on all of them, compares, and restores.
# Usage: venue_by_script.sh SONTARO_CLI SONTARO_PLAYER NETWORK   (NETWORK such as 127.9.8)
program=$1 player=$2 network=$3
source "$(dirname "$0")/session.sh"
export LC_ALL=C.UTF-8

cli() { "$program" --local-address "$network.1" --data "$work/data" "$@"; }

# expect CODE COMMAND...: the command has to end with that code.
expect() {
    local expected=$1 code=0
    shift
    "$@" >"$work/last.log" 2>&1 || code=$?
    [ "$code" -eq "$expected" ] || fail "$*: ended with $code, not $expected"
}

start players "$player" --count 3 --base-address "$network.2" --name HALL
await 10 "the players do not start" grep -q 'HALL3 ready' "$work/players.log"

# Everybody is there; one more is missed by name.
printf '%s\n' HALL1 HALL2 HALL3 >"$work/hall.txt"
cli find --expect "$work/hall.txt" --json >"$work/found"
[ "$(jq -r .id "$work/found" | sort | xargs)" = "HALL1 HALL2 HALL3" ] || fail "not all were found"
[ "$(jq -r 'select(.id == "HALL2") | .ip' "$work/found")" = "$network.3" ] || fail "another address"
expect 1 cli find -p HALL1 -p HALL9
grep -q HALL9 "$work/last.log" || fail "it is not told who is missing"

others=$(find "$work/data" -mindepth 1 -perm /077)
[ -z "$others" ] || fail "others may read $others"

everyone=(--expect "$work/hall.txt")
backup=$(cli backup "$work/backups" "${everyone[@]}" --json | jq -r 'select(.backup).backup')
[ "$(jq '.players | length' "$backup/manifest.json")" = 3 ] || fail "the backup has other players"
for folder in "$backup"/*/; do
    jq -e . "$folder/osd.json" >/dev/null || fail "no document of the overlay in $folder"
done
expect 0 cli compare "$backup" "${everyone[@]}"

# One setting on all of them.
line=data/0/texts/0
cli set osd "$line=今晚 20:00" "${everyone[@]}" --json >"$work/set"
[ "$(jq -r .after "$work/set" | sort -u)" = "今晚 20:00" ] || fail "not everyone has the new line"
for hall in HALL1 HALL2 HALL3; do
    [ "$(cli get osd -p "$hall" | jq -r '.data[0].texts[0]')" = "今晚 20:00" ] ||
        fail "$hall has another line"
done
expect 1 cli compare "$backup" "${everyone[@]}" --json
[ "$(jq -r .key "$work/last.log" | sort | uniq -c | xargs)" = "3 $line" ] ||
    fail "something else differs"

# Back again: not without a yes, and then as it was.
expect 2 cli restore "$backup" "${everyone[@]}"
expect 0 cli restore "$backup" "${everyone[@]}" --yes
expect 0 cli compare "$backup" "${everyone[@]}"
new_backup() {
    cli backup "$work/backups" "${everyone[@]}" --only-changed --json |
        jq -r 'select(.backup).isNew'
}
new_backup >/dev/null
[ "$(new_backup)" = false ] || fail "an unchanged venue was backed up again"

# One that is dead: told by its name, and no reason to leave the others out.
start dead "$player" --base-address "$network.9" --name DEAD --fault silent
await 10 "the dead player does not start" grep -q ready "$work/dead.log"
expect 1 cli get osd -p DEAD -p HALL1 --json --timeout 0.5
[ "$(jq -r 'select(.error) | .id + " " + .error.end' "$work/last.log")" = "DEAD timed-out" ] ||
    fail "it is not told how the dead player failed"
[ "$(jq -r 'select(.document) | .id' "$work/last.log")" = HALL1 ] || fail "the other one was left out"

# Whoever reads no more is no reason to complain.
complaint=$({ cli find "${everyone[@]}" --json | head -n 1 >/dev/null || true; } 2>&1)
[ -z "$complaint" ] || fail "a closed pipe is complained about: $complaint"

# An interruption ends it at once, with its own code.
# A shell has what it starts in the background ignore interruptions.
start waiting env --default-signal=INT "$program" videos --local-address "$network.1" --data "$work/data" \
    -p "$network.9:9000" --timeout 60
sleep 0.5
kill -INT "$process"
code=0
wait "$process" || code=$?
[ "$code" -eq 130 ] || fail "an interruption ends with $code"
! ldd "$program" | grep -qE 'libwx|libgtk' || fail "the program links a window library"
