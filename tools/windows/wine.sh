#!/bin/bash
# wine.sh COMMAND...: runs a command that uses Wine: on a virtual display, with a configuration of
# its own in build/, and in a network that has nothing but its own loopback interface. Wine sends
# what a loopback socket broadcasts from another address; there it reaches nobody.
set -euo pipefail
cd "$(dirname "$0")/../.."

build=$PWD/build/wine
export WINEPREFIX=$build/prefix WINEDEBUG=-all
export LOCPATH=$build/locale
chinese=(env LC_ALL=zh_CN.UTF-8)  # the language of the system, and its code page 936

# A registry value of the user's.
set_value() {
    wine reg add "HKCU\\Software\\Wine\\$1" /v "$2" /d "$3" ${4:+/t "$4"} /f >/dev/null 2>&1
}

# The user's folders are links into a home folder that goes with this command: without them the
# dialogs that ask for a file end the program.
own_user_folders() {
    local link
    find "$WINEPREFIX/drive_c/users" -type l | while read -r link; do
        rm "$link"
        mkdir "$link"
    done
}

# Without a window manager every window that closes would wait for one. Wine has no Chinese font.
configure() {
    mkdir -p "$LOCPATH"
    localedef -i zh_CN -f UTF-8 "$LOCPATH/zh_CN.UTF-8"
    "${chinese[@]}" wineboot --init >/dev/null 2>&1
    set_value "X11 Driver" Managed N
    set_value WineDbg ShowCrashDialog 0 REG_DWORD
    local font
    for font in "MS Shell Dlg" "MS Shell Dlg 2" Tahoma "Segoe UI" SimSun "Microsoft YaHei" \
        "Microsoft YaHei UI"; do
        set_value "Fonts\\Replacements" "$font" "Noto Sans CJK SC"
    done
    wineserver --wait
    own_user_folders
    touch "$build/complete"
}

run() {
    ip link set lo up
    [[ -e $build/complete ]] || configure
    local code=0
    "${chinese[@]}" "$@" || code=$?
    wineserver --kill || true
    return $code
}

if [[ ${WINE_NETWORK:-} == private ]]; then
    run "$@"
else
    export WINE_NETWORK=private
    exec unshare --net --map-root-user tools/headless.sh "$(readlink -f "$0")" "$@"
fi
