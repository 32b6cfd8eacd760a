#!/usr/bin/env bash
# Types bytes for the serial port of a simulated player, which answers a keep-alive with them, and
# ends the program while its input is still open.
# Usage: serial_bytes.sh SONTARO_PLAYER NETWORK   (NETWORK such as 127.9.8)
player=$1 network=$2
source "$(dirname "$0")/session.sh"

mkfifo "$work/typed"
start player bash -c 'exec "$@" <"$0"' "$work/typed" \
    "$player" --count 2 --base-address "$network.2" --port 0 --log "$work/events.log"
exec 4>"$work/typed"
await 10 "the players do not start" grep -q 'PLAYER2 ready' "$work/player.log"
port=$(sed -n "s/^$network.3:\([0-9]*\) .*/\1/p" "$work/player.log")

# keep_alive: the payload of the second player's answer as hexadecimal digits.
keep_alive() {
    exec 3<>"/dev/tcp/$network.3/$port"
    printf '\x5A\x5A\x5A\xA5\x32\0\0\0\0\0\0\0\0\0\0\0' >&3
    local length
    length=$(head -c 16 <&3 | od -An -v -tu1 -j12 -N1)
    head -c "$length" <&3 | od -An -v -tx1 | tr -d ' \n'
    exec 3>&-
}
[ -z "$(keep_alive)" ] || fail "bytes that nobody has typed"
printf '2: A5 01 02\nA5 0\n' >&4
await 10 "a wrong line is taken without a word" grep -q 'not understood' "$work/player.log"
[ "$(keep_alive)" = a50102 ] || fail "the bytes are not those that were typed"

kill "$process"
status=0
wait "$process" || status=$?
[ $status -eq 0 ] || fail "the players ended with $status"
