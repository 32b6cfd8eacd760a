#!/usr/bin/env bash
# A second start says that the program runs already, brings the first window to the front and ends.
# Usage: second_start.sh SONTARO VERSION
sontaro=$1 version=$2
source "$(dirname "$0")/session.sh"

title="Sontaro $version"
windows() { xdotool search --onlyvisible --name "^$title\$" || true; }
count_is() { [ "$(windows | wc -l)" -eq "$1" ]; }
newest() { comm -13 <(sort <<<"$known") <(windows | sort); }
in_front() { [ "$(xwininfo -root -children | grep -F "\"$title\"" | head -n 1 | awk '{print $1}')" = \
    "$(printf '0x%x' "$1")" ]; }

start first "$sontaro" --language en
await 20 "no main window" count_is 1
first_window=$(windows)

# Another user's program, as it were, covers the first window.
mkdir "$work/other"
XDG_RUNTIME_DIR=$work/other start other "$sontaro" --language en
await 20 "no second window" count_is 2
known=$(windows)
if in_front "$first_window"; then fail "the first window is not covered"; fi

start second "$sontaro" --language en
second=$process
await 20 "no message" count_is 3
box=$(newest)
xdotool windowfocus --sync "$box"
xdotool key space
status=0
wait "$second" || status=$?
[ $status -eq 0 ] || fail "the second start ended with $status"
await 10 "the first window is not in front" in_front "$first_window"
count_is 2 || fail "a window is left over"
