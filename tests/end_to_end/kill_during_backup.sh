#!/usr/bin/env bash
# Kills a process that writes backups over and over, a hundred times at random moments: what is
# called a whole backup is of one run, and the next run leaves nothing that is none.
# Usage: kill_during_backup.sh BACK_UP_REPEATEDLY
backs_up=$1
source "$(dirname "$0")/session.sh"

for ((i = 1; i <= 100; ++i)); do
    start backups "$backs_up" run "$work/backups" "$work/flat"
    await 20 "no backup was written" test -s "$work/flat/manifest.json"
    sleep "0.$((RANDOM % 150 + 100))"
    kill -KILL "$process"
    wait "$process" 2>/dev/null || true
    "$backs_up" check "$work/backups" "$work/flat" || fail "kill $i left half a backup"
done
echo "killed 100 times: every backup was whole, or none"
