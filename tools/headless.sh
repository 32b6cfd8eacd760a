#!/bin/bash
# headless.sh COMMAND...: runs a command on a virtual display, away from the user's files,
# settings and session. Exits with its code.
set -euo pipefail

home=$(mktemp -d)
run=$(mktemp -d -p "$([[ -w /dev/shm ]] && echo /dev/shm || echo "$home")")  # in memory, as a session's is
trap 'rm -rf "$home" "$run"' EXIT

unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS LANGUAGE XDG_DATA_HOME XDG_CACHE_HOME
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_RUNTIME_DIR=$run
export LC_ALL=C.UTF-8
export GDK_BACKEND=x11 GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1

# Without -noreset the display starts anew whenever its last program ends, under the next one.
xvfb-run -a -s "-screen 0 1366x768x24 -noreset" "$@"
