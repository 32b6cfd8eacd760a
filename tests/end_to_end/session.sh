# A private X session for a test: its own display, folders and processes. Sourced by the tests.
set -euo pipefail

work=$(mktemp -d)
export HOME=$work/home XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work/run XDG_DATA_HOME=$work/data
export GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR" "$XDG_DATA_HOME"
started=()

end_session() {
    status=$?
    for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
    wait 2>/dev/null || true
    if [ $status -ne 0 ]; then cat "$work"/*.log >&2 || true; fi
    rm -rf "$work"
}
trap end_session EXIT

# start NAME COMMAND...: runs the command in the background, its output in NAME.log; sets $process.
# A Windows program runs under Wine.
start() {
    local name=$1
    shift
    if [[ $1 == *.exe ]]; then set -- wine "$@"; fi
    "$@" >"$work/$name.log" 2>&1 &
    process=$!
    started+=("$process")
}

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# await SECONDS WHAT COMMAND...: waits until the command succeeds.
await() {
    local limit=$1 what=$2 i
    shift 2
    for ((i = 0; i < limit * 20; ++i)); do
        if "$@" >/dev/null 2>&1; then return 0; fi
        sleep 0.05
    done
    fail "$what"
}

# window TITLE: the id of the visible window with exactly this title. The search itself reads no
# Chinese.
window() {
    local id
    for id in $(xdotool search --onlyvisible --name '.*'); do
        if [ "$(xdotool getwindowname "$id")" = "$1" ]; then echo "$id"; fi
    done | tail -n 1
}
has_window() { [ -n "$(window "$1")" ]; }
lacks_window() { ! has_window "$1"; }

# keys TITLE KEY...: gives the window the keyboard and types.
keys() {
    local title=$1
    shift
    xdotool windowfocus --sync "$(window "$title")"
    xdotool key --delay 60 "$@"
}

# start_with_player SONTARO SONTARO_PLAYER NETWORK [LANGUAGE]: a simulated player in a process of its
# own, with $player_options, and the program to find it, in English unless told otherwise; sets
# $player_log.
player_options=()
start_with_player() {
    local language=${4-en}
    scan="Scan for devices" player_log=$work/received.log
    if [ "$language" = zh ]; then scan=查找播放器; fi
    start player "$2" --base-address "$3.2" --port 0 --log "$player_log" \
        "${player_options[@]}"
    await 10 "the player does not start" grep -q ready "$work/player.log"
    start sontaro "$1" --language "$language" --local-address "$3.1"
}
received() { grep -qF -- "$1" "$player_log"; }

# open_feature MAIN_TITLE KEY...: presses the button that the keys lead to, and chooses the player.
open_feature() {
    await 20 "no main window" has_window "$1"
    keys "$@"
    await 10 "no scan dialog" has_window "$scan"
    keys "$scan" space
    await 10 "the player was not asked" received "discovery"
    sleep 0.5
    keys "$scan" Tab space Tab space
}
