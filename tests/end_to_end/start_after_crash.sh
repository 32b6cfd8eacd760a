#!/usr/bin/env bash
# What a crash leaves behind in a folder that outlives the session does not refuse the next start,
# which still refuses one more.
# Usage: start_after_crash.sh SONTARO VERSION
sontaro=$1 version=$2
source "$(dirname "$0")/session.sh"
unset XDG_RUNTIME_DIR

title="Sontaro $version"
has_main_window() {
    local height
    height=$(xdotool getwindowgeometry --shell "$(window "$title")" | sed -n 's/^HEIGHT=//p')
    [ "${height:-0}" -gt 300 ] # a message box is lower
}
has_two_windows() { [ "$(xdotool search --onlyvisible --name "^$title\$" | wc -l)" -eq 2 ]; }

start first "$sontaro" --language en --local-address 127.0.81.1
await 20 "no main window" has_main_window
kill -KILL "$process"
wait "$process" 2>/dev/null || true

# By now another program of the user's has its number.
for file in "$HOME"/.cache/sontaro-*; do
    if [ -f "$file" ]; then printf '%d' $$ >"$file"; fi
done
start next "$sontaro" --language en --local-address 127.0.81.1
await 20 "the program does not start again" has_main_window
start refused "$sontaro" --language en --local-address 127.0.81.1
await 20 "one more start is not refused" has_two_windows
