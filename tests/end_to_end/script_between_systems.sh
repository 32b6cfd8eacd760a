#!/usr/bin/env bash
# What a script does with a player: find, get, set, and back up; program and player may be those of
# different systems.
# Usage: script_between_systems.sh SONTARO_CLI SONTARO_PLAYER NETWORK   (NETWORK such as 127.9.8)
program=$1 player=$2 network=$3
source "$(dirname "$0")/session.sh"
export LC_ALL=C.UTF-8

if [[ $program == *.exe ]]; then run=(wine "$program"); else run=("$program"); fi
cli() { "${run[@]}" --local-address "$network.1" --data "$work/data" "$@"; }

start player "$player" --base-address "$network.2" --name HALL
await 30 "the player does not start" grep -q 'HALL ready' "$work/player.log"
[ "$(cli find -p HALL --json | jq -r .ip)" = "$network.2" ] || fail "the player was not found"
cli get osd -p HALL -o "$work/osd.json"
jq -e .data "$work/osd.json" >/dev/null || fail "no document"
[ "$(cli set osd "data/0/texts/0=今晚 20:00" -p HALL --json | jq -r .after)" = "今晚 20:00" ] ||
    fail "the line was not set"
[ "$(cli get osd -p HALL | jq -r '.data[0].texts[0]')" = "今晚 20:00" ] || fail "another line"
cli backup "$work/backups" -p HALL >"$work/backup.log"
[ "$(jq -r '.data[0].texts[0]' "$work"/backups/*/HALL/osd.json)" = "今晚 20:00" ] ||
    fail "another line in the backup"
jq -e .players "$work"/backups/*/manifest.json >/dev/null || fail "the backup is not whole"
