#!/usr/bin/env bash
# Kills a process that saves a document over and over, a hundred times at random moments: the file
# always holds one of the two documents, whole.
# Usage: kill_during_save.sh SAVE_REPEATEDLY
saves=$1
source "$(dirname "$0")/session.sh"

file=$work/ControlProtocol.Json
for ((i = 1; i <= 100; ++i)); do
    rm -f "$work/first" "$work/second"
    start saves "$saves" "$file" "$work/first" "$work/second"
    await 10 "nothing was saved" test -s "$work/second" -a -s "$file"
    sleep "0.0$((RANDOM % 50 + 10))"
    kill -KILL "$process"
    wait "$process" 2>/dev/null || true
    cmp -s "$file" "$work/first" || cmp -s "$file" "$work/second" || fail "kill $i left a mixture"
done
echo "killed 100 times: always the one or the other"
