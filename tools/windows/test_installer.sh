#!/bin/bash
# Within wine.sh: installs silently, runs what was installed, and removes it silently; in the usual
# folder, then in another one with a Chinese name.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/windows/try_program.sh

setup=(build/packages/sontaro-*-setup.exe)
profile=$WINEPREFIX/drive_c/users/$(id -un)
shortcut="$profile/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Sontaro.lnk"
usual=$profile/AppData/Local/Programs/Sontaro
chinese=$WINEPREFIX/drive_c/软件/播放器

# Every file and every value of the user's in the registry, without the settings that stay, and
# without Wine's own.
state() {
    find "$WINEPREFIX/drive_c" -not -path "*/Roaming/Sontaro*" -not -path "*/Temp/*" | sort
    wine reg export "HKCU\\Software" "$work/registry" /y >/dev/null 2>&1
    iconv -f UTF-16 -t UTF-8 "$work/registry" | tr -d '\r' | awk -v RS= '!/Software\\Wine/'
}

install_into() {
    wine "${setup[@]}" /S ${1:+"/D=$1"}
}

# The uninstaller goes on in a copy of itself.
uninstall() {
    wine "$1/uninstall.exe" /S
    wineserver --wait
}

expect_as_before() {
    state >"$work/after"
    diff "$work/before" "$work/after" >&2 || fail "$1: the system is not as it was."
}

# A running program is neither overwritten nor removed, and the installer says so by its code.
expect_running_program_is_left_alone() {
    : >"$work/player"
    wine "$1/sontaro-player.exe" --base-address 127.0.5.2 >>"$work/player" &
    local player=$!
    until grep -q ready "$work/player"; do
        kill -0 "$player" || fail "The installed sontaro-player.exe ends by itself."
        sleep 0.1
    done
    ! install_into "" || fail "The installer overwrites a running program."
    ! wine "$1/uninstall.exe" /S "_?=$(wine winepath -w "$1")" ||
        fail "The uninstaller removes a running program."
    [[ -e $1/sontaro.exe && -e $shortcut ]] || fail "Only part of it is left."
    kill "$player"
    wait "$player" || true
}

# A Windows system has these.
mkdir -p "$profile/AppData/Local/Programs" "$WINEPREFIX/drive_c/软件"
wine reg add "HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall" /f >/dev/null 2>&1
state >"$work/before"

install_into ""
[[ -e $shortcut ]] || fail "There is no shortcut."
try_program "$usual"
expect_running_program_is_left_alone "$usual"
uninstall "$usual"
expect_as_before "After the usual folder"

install_into ""
install_into 'C:\软件\播放器'
[[ ! -e $usual ]] || fail "The earlier installation is still there."
try_program "$chinese"
mkdir "$chinese/Templates"
echo 客户 >"$chinese/Templates/Co.txt"
uninstall "$chinese"
[[ $(find "$chinese" -type f) == "$chinese/Templates/Co.txt" ]] ||
    fail "It is not the customer's name that stays."
rm -r "$chinese"
expect_as_before "After the folder with a Chinese name"
