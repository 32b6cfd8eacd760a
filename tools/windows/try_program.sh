# Within wine.sh: a folder $work for a test, and the trial of a folder with the programs. Sourced.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$*" >&2
    exit 1
}

# try_program FOLDER: takes the tour with the program there.
try_program() {
    local pictures=$work/pictures
    rm -rf "$pictures"
    wine "$1/sontaro.exe" --demo --tour "Z:$pictures" >"$work/log" 2>&1 || {
        tail -20 "$work/log" >&2
        fail "The tour failed in $1."
    }
    (($(find "$pictures" -name '*.png' | wc -l) >= 21)) || fail "The tour left too few pictures."
    wine "$1/sontaro-player.exe" --help | grep -q -- --base-address || fail "No help in $1."
    wine "$1/sontaro-cli.exe" --help | grep -q restore || fail "No commands in $1."
}
